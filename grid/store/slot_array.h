// Values by slot number, with memory only where something was written.
#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace kestrelon {

/// Reads T{} where nothing was written. Grows by chunks of 256 slots and never moves a value.
template <class T>
class SlotArray {
 public:
  T get(uint32_t slot) const {
    const size_t chunk = slot / kChunk;
    return chunk < chunks_.size() && chunks_[chunk] ? chunks_[chunk][slot % kChunk] : T{};
  }
  T& at(uint32_t slot) {
    const size_t chunk = slot / kChunk;
    if (chunk >= chunks_.size()) chunks_.resize(chunk + 1);
    if (!chunks_[chunk]) chunks_[chunk] = std::make_unique<T[]>(kChunk);
    return chunks_[chunk][slot % kChunk];
  }
  /// Writes T{} without taking memory for it; gives what stood there.
  T reset(uint32_t slot) { return T(has(slot) ? std::exchange(at(slot), T{}) : T{}); }
  void move(uint32_t from, uint32_t to) {
    if (has(from) || has(to)) at(to) = reset(from);
  }
  /// Gives back the chunks that lie wholly at or behind `slots`.
  void truncate(uint32_t slots) {
    const size_t keep = (static_cast<size_t>(slots) + kChunk - 1) / kChunk;
    if (keep >= chunks_.size()) return;
    chunks_.resize(keep);
    chunks_.shrink_to_fit();
  }
  /// Calls `visit(T&)` for each value in a chunk that exists.
  template <class Visit>
  void for_each(Visit&& visit) {
    for (auto& chunk : chunks_)
      for (size_t i = 0; chunk && i < kChunk; ++i) visit(chunk[i]);
  }

 private:
  static constexpr size_t kChunk = 256;

  bool has(uint32_t slot) const { return slot / kChunk < chunks_.size() && chunks_[slot / kChunk]; }

  std::vector<std::unique_ptr<T[]>> chunks_;
};

}  // namespace kestrelon
