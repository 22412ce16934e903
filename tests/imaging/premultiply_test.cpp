#include "imaging/premultiply.h"

#include <gtest/gtest.h>

#include <vector>

namespace kestrelon {
namespace {

// Every (colour, alpha) pair in each of the three colour channels.
std::vector<uint8_t> all_pairs() {
  std::vector<uint8_t> pixels;
  for (int alpha = 0; alpha < 256; ++alpha) {
    for (int c = 0; c < 256; ++c) {
      for (int k : {c, 255 - c, (c + 85) & 255, alpha}) pixels.push_back(static_cast<uint8_t>(k));
    }
  }
  return pixels;
}

TEST(Premultiply, EqualsTruncatedQuotientForAllInputsInPlaceAndCopied) {
  const std::vector<uint8_t> source = all_pairs();
  std::vector<uint8_t> copied(source.size());
  premultiply_row(copied.data(), source.data(), source.size() / 4);
  std::vector<uint8_t> in_place = source;
  premultiply_row(in_place.data(), in_place.data(), in_place.size() / 4);
  ASSERT_EQ(copied, in_place);
  for (size_t i = 0; i < source.size(); i += 4) {
    const int alpha = source[i + 3];
    for (size_t c = 0; c < 3; ++c) ASSERT_EQ(copied[i + c], source[i + c] * alpha / 255) << i;
    ASSERT_EQ(copied[i + 3], alpha);
  }
}

TEST(Unpremultiply, EqualsTruncatedQuotientForAllInputs) {
  const std::vector<uint8_t> source = all_pairs();
  std::vector<uint8_t> out(source.size());
  unpremultiply_row(out.data(), source.data(), source.size() / 4);
  for (size_t i = 0; i < source.size(); i += 4) {
    const int alpha = source[i + 3];
    for (size_t c = 0; c < 3; ++c) {
      const int expected = alpha == 0 ? 0 : std::min(255, source[i + c] * 255 / alpha);
      ASSERT_EQ(out[i + c], expected) << int{source[i + c]} << " of " << alpha;
    }
    ASSERT_EQ(out[i + 3], alpha);
  }
}

// Lengths that are no multiple of the block, at odd addresses, must neither stop early nor run on.
TEST(Premultiply, RowsOfAnyLengthAndAlignmentTouchOnlyThemselves) {
  for (size_t offset = 0; offset < 4; ++offset) {
    for (size_t count = 0; count < 12; ++count) {
      for (auto* convert : {premultiply_row, unpremultiply_row}) {
        std::vector<uint8_t> row(offset + count * 4 + 16, 0x40);
        for (size_t i = 0; i < count; ++i) row[offset + i * 4 + 3] = 0x80;
        convert(row.data() + offset, row.data() + offset, count);
        const uint8_t expected = convert == premultiply_row ? 0x20 : 0x7F;
        for (size_t i = 0; i < row.size(); ++i) {
          const bool inside = i >= offset && i < offset + count * 4;
          const bool alpha = inside && (i - offset) % 4 == 3;
          ASSERT_EQ(row[i], alpha ? 0x80 : inside ? expected : 0x40) << count << " at " << i;
        }
      }
    }
  }
}

}  // namespace
}  // namespace kestrelon
