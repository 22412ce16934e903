// The distinct colours of a picture, up to a limit: exact tables for the formats that have one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kestrelon {

/// Collects up to 256 colours (0x00RRGGBB). Ranks are handed out once all are in.
class ColourCount {
 public:
  ColourCount();

  /// False if the colour is new and there are `limit` (at most 256) already.
  bool add(uint32_t colour, size_t limit);
  size_t size() const { return colours_.size(); }
  /// Sorts the colours in rising order, which settles their indexes.
  void sort();
  const std::vector<uint32_t>& colours() const { return colours_; }
  /// Index of a colour that was added, after sort().
  uint8_t index_of(uint32_t colour) const { return slots_[find(colour)].index; }

 private:
  struct Slot {
    uint32_t colour = kFree;
    uint8_t index = 0;
  };
  static constexpr uint32_t kFree = 0xFFFFFFFF;
  static constexpr uint32_t kSlots = 1024;
  uint32_t find(uint32_t colour) const {
    uint32_t at = colour * 0x9E3779B1u >> 22;
    while (slots_[at].colour != colour && slots_[at].colour != kFree) at = (at + 1) % kSlots;
    return at;
  }

  std::vector<Slot> slots_;
  std::vector<uint32_t> colours_;
};

}  // namespace kestrelon
