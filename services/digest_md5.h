// The MD5 message digest of RFC 1321.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace kestrelon {

/// Takes a message in pieces of any size; `finish` gives the 16 bytes of the digest, once.
class Md5 {
 public:
  void update(std::span<const uint8_t> bytes);
  std::array<uint8_t, 16> finish();

 private:
  static constexpr size_t kBlock = 64;

  std::array<uint32_t, 4> state_{0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476};
  uint64_t length_ = 0;  // bytes taken
  std::array<uint8_t, kBlock> pending_{};
};

}  // namespace kestrelon
