#include "imaging/flatten.h"

#include <gtest/gtest.h>

#include "tests/imaging/pictures.h"

namespace kestrelon::test {
namespace {

TEST(Flatten, FollowsTheFormulaForEveryAlphaAndFill) {
  for (int alpha = 0; alpha < 256; ++alpha) {
    for (int fill = 0; fill < 256; ++fill) {
      const auto stored = static_cast<uint8_t>(alpha / 2);
      const uint8_t src[4] = {stored, stored, stored, static_cast<uint8_t>(alpha)};
      uint8_t out[3];
      flatten_row_24(out, src, 1, static_cast<uint32_t>(fill) * 0x010101u);
      ASSERT_EQ(out[1], stored + fill * (255 - alpha) / 255) << alpha << ' ' << fill;
    }
  }
}

TEST(Flatten, TakesTheFillColourInItsOwnOrder) {
  const uint8_t src[8] = {0, 0, 0, 0, 10, 20, 30, 255};
  uint8_t out[6];
  flatten_row_24(out, src, 2, 0x00332211);
  EXPECT_EQ(Bytes(out, out + 6), (Bytes{0x33, 0x22, 0x11, 10, 20, 30}));
}

TEST(Flatten, LeavesAlphaZeroOnlyWhereNothingWas) {
  const uint8_t src[12] = {0, 0, 0, 0, 0, 0, 0, 1, 9, 9, 9, 255};
  uint8_t out[12];
  flatten_row_32(out, src, 3, 0x000000FF);
  EXPECT_EQ(Bytes(out, out + 12), (Bytes{0, 0, 255, 0, 0, 0, 254, 255, 9, 9, 9, 255}));
}

TEST(Flatten, DoesNotWrapWhereColourExceedsAlpha) {
  const uint8_t src[4] = {255, 200, 0, 10};
  uint8_t out[3];
  flatten_row_24(out, src, 1, 0xFFFFFF);
  EXPECT_EQ(Bytes(out, out + 3), (Bytes{255, 255, 245}));
}

}  // namespace
}  // namespace kestrelon::test
