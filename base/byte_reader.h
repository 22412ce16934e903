// A bounded reader over bytes from outside: the one place of the decoders with pointer arithmetic.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>

namespace kestrelon {

/// Reads forward through a block of bytes that it does not own. Nothing is read past the end: a
/// value that does not fit comes out as 0, and the reader has failed from then on (`ok()` is
/// false), so a decoder may read a whole header and check once.
class ByteReader {
 public:
  explicit ByteReader(std::span<const uint8_t> data) : data_(data) {}

  bool ok() const { return ok_; }
  size_t position() const { return position_; }
  size_t remaining() const { return data_.size() - position_; }

  /// Moves to a byte offset from the start; the end itself is allowed.
  bool seek(size_t offset) {
    if (!ok_ || offset > data_.size()) return fail();
    position_ = offset;
    return true;
  }
  bool skip(size_t count) { return take(count).size() == count && ok_; }

  uint8_t u8() { return number<uint8_t>(false); }
  uint16_t u16le() { return number<uint16_t>(false); }
  uint32_t u32le() { return number<uint32_t>(false); }
  int32_t i32le() { return static_cast<int32_t>(number<uint32_t>(false)); }
  uint16_t u16be() { return number<uint16_t>(true); }
  uint32_t u32be() { return number<uint32_t>(true); }

  /// The next `count` bytes, in place; empty, and a failure, if there are fewer.
  std::span<const uint8_t> take(size_t count) {
    if (!ok_ || count > remaining()) {
      fail();
      return {};
    }
    const auto bytes = data_.subspan(position_, count);
    position_ += count;
    return bytes;
  }
  /// The next bytes, `count` or as many as are left.
  std::span<const uint8_t> take_up_to(size_t count) { return take(std::min(count, remaining())); }
  std::span<const uint8_t> rest() { return take(remaining()); }

  /// Fills a little-endian wire struct; leaves it alone, and fails, if the bytes run out.
  template <class T>
  bool read(T& wire) {
    static_assert(std::is_trivially_copyable_v<T>);
    const auto bytes = take(sizeof(T));
    if (ok_) std::memcpy(&wire, bytes.data(), sizeof(T));
    return ok_;
  }

 private:
  template <class T>
  T number(bool big_endian) {
    const auto bytes = take(sizeof(T));
    T value = 0;
    for (size_t i = 0; i < bytes.size(); ++i) {
      const size_t place = big_endian ? bytes.size() - 1 - i : i;
      value = static_cast<T>(value | static_cast<T>(bytes[i]) << (8 * place));
    }
    return value;
  }
  bool fail() {
    ok_ = false;
    return false;
  }

  std::span<const uint8_t> data_;
  size_t position_ = 0;
  bool ok_ = true;
};

}  // namespace kestrelon
