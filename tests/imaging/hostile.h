// What every reader must survive: data cut off at every byte, and every bit near the front turned.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "imaging/c32bpp_dib.h"

namespace kestrelon::test {

using Reader = std::function<bool(std::span<const uint8_t>, c32bppDIB&)>;

/// A failed read leaves no image behind, though there was one before.
inline void expect_sound_answer(const Reader& read, const std::vector<uint8_t>& bytes) {
  c32bppDIB image;
  image.InitializeDIB(2, 2);
  if (read(bytes, image)) return;
  EXPECT_FALSE(image.has_image());
  EXPECT_EQ(image.ImageType(), ImageFormat::Error);
  EXPECT_EQ(image.Width(), 0);
}

/// Every cut is a buffer of its own, so that AddressSanitizer sees one byte too many.
inline void expect_survives_truncation(const Reader& read, const std::vector<uint8_t>& file) {
  for (size_t length = 0; length < file.size(); ++length) {
    const std::vector<uint8_t> cut(file.begin(),
                                   file.begin() + static_cast<std::ptrdiff_t>(length));
    expect_sound_answer(read, cut);
  }
}

inline void expect_survives_bit_flips(const Reader& read, std::vector<uint8_t> file) {
  const size_t reach = std::min<size_t>(file.size(), 200);
  for (size_t at = 0; at < reach; ++at) {
    for (int bit = 0; bit < 8; ++bit) {
      file[at] ^= static_cast<uint8_t>(1 << bit);
      expect_sound_answer(read, file);
      file[at] ^= static_cast<uint8_t>(1 << bit);
    }
  }
}

inline void expect_survives_hostile_bytes(const Reader& read, const std::vector<uint8_t>& file) {
  ASSERT_FALSE(file.empty());
  expect_survives_truncation(read, file);
  expect_survives_bit_flips(read, file);
}

}  // namespace kestrelon::test
