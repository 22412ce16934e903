#include "frame/kit/color.h"

#include <gtest/gtest.h>

namespace kestrelon {
namespace {

TEST(Color, MemoryOrderSwapsRedAndBlueAndDropsAlpha) {
  EXPECT_EQ(to_pixel(0xFF102030), 0x302010u);
  EXPECT_EQ(to_color(0x80302010), 0x102030u);
}

TEST(Color, PackRunsOverAndSplitIsItsInverseWithinRange) {
  EXPECT_EQ(PackRGB(256, 0, 0), 0x100u);
  EXPECT_EQ(PackRGB(-1, 1, 0), 0xFFu);
  for (uint32_t c = 0; c <= 0xFFFFFF; c += 0x1357) {
    const Channels s = SplitRGB(c | 0xAB000000);
    ASSERT_EQ(PackRGB(s.r, s.g, s.b), c);
  }
}

TEST(Color, LightenTruncatesAndStopsAtWhite) {
  EXPECT_EQ(LightenColor(0xFFFFFF, 50), 0xFFFFFFu);
  EXPECT_EQ(LightenColor(0, 50), 0x323232u);
  // 50 + 100 * 205 / 255 = 130.39; 50 + 200 * 205 / 255 = 210.78: both cut, not rounded.
  EXPECT_EQ(LightenColor(PackRGB(100, 200, 254), 50), PackRGB(130, 210, 254));
  EXPECT_EQ(LightenColor(0x808080, 300), 0xFFFFFFu);
}

TEST(Color, ShiftRoundsHalvesToEvenAndClampsOnItsOwnSide) {
  EXPECT_EQ(ShiftColor(0, -0.1), 0u);
  // A tenth of 255 is 25.5: odd and even neighbours show which way a half falls.
  EXPECT_EQ(ShiftColor(PackRGB(255, 254, 25), -0.1), PackRGB(230, 228, 0));
  EXPECT_EQ(ShiftColor(PackRGB(255, 13, 12), -0.05), PackRGB(242, 0, 0));
  EXPECT_EQ(ShiftColor(PackRGB(255, 100, 230), 0.1), PackRGB(255, 126, 255));
}

TEST(Color, BlendRoundsHalvesToEvenInBothDirections) {
  EXPECT_EQ(BlendColor(PackRGB(0, 1, 255), PackRGB(1, 2, 0), 0.5), PackRGB(0, 2, 128));
  EXPECT_EQ(BlendColor(PackRGB(1, 2, 0), PackRGB(0, 1, 255), 0.5), PackRGB(0, 2, 128));
  EXPECT_EQ(BlendColor(0x123456, 0x654321, 0), 0x123456u);
  EXPECT_EQ(BlendColor(0x123456, 0x654321, 1), 0x654321u);
}

TEST(Color, ClampTakesTheUpperLimitFirst) {
  EXPECT_EQ(ClampSingle(5, 3, 1), 3);
  EXPECT_EQ(ClampSingle(-5, 3, 1), 1);
  EXPECT_EQ(ClampSingle(2, 3, 1), 2);
}

}  // namespace
}  // namespace kestrelon
