// Little-endian and big-endian numbers appended to a byte vector: the writers' side of ByteReader.
#pragma once

#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>
#include <vector>

namespace kestrelon {

/// Appends to a vector that the caller owns and that must outlive the writer.
class ByteWriter {
 public:
  explicit ByteWriter(std::vector<uint8_t>& out) : out_(out) {}

  void u8(uint32_t value) { out_.push_back(static_cast<uint8_t>(value)); }
  void u16le(uint32_t value) { u8(value), u8(value >> 8); }
  void u32le(uint32_t value) { u16le(value), u16le(value >> 16); }
  void u16be(uint32_t value) { u8(value >> 8), u8(value); }
  void u32be(uint32_t value) { u16be(value >> 16), u16be(value); }
  void bytes(std::span<const uint8_t> data) { out_.insert(out_.end(), data.begin(), data.end()); }

  /// Appends a little-endian wire struct as it stands.
  template <class T>
  void wire(const T& value) {
    static_assert(std::is_trivially_copyable_v<T>);
    const size_t at = out_.size();
    out_.resize(at + sizeof(T));
    std::memcpy(out_.data() + at, &value, sizeof(T));
  }

 private:
  std::vector<uint8_t>& out_;
};

}  // namespace kestrelon
