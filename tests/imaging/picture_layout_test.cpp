#include "imaging/picture/picture_layout.h"

#include <gtest/gtest.h>

#include <climits>

#include "imaging/c32bpp_dib.h"
#include "tests/imaging/pictures.h"

namespace kestrelon {

static void PrintTo(const PictureSize& size, std::ostream* out) {
  *out << size.width << "x" << size.height;
}

namespace {

PictureSize drawn(PictureScale scale, PictureSize picture, PictureSize room) {
  return drawn_size(scale, picture, room, {});
}

TEST(PictureLayout, ScalesByTheMethod) {
  struct Case {
    PictureSize picture, room, fit, fit_down;
  };
  const Case cases[] = {
      {{100, 50}, {40, 40}, {40, 20}, {40, 20}},
      {{50, 100}, {40, 40}, {20, 40}, {20, 40}},
      {{10, 5}, {40, 40}, {40, 20}, {10, 5}},       // grows only where it may
      {{10, 5}, {10, 5}, {10, 5}, {10, 5}},         // fits as it is
      {{10, 50}, {40, 40}, {8, 40}, {8, 40}},       // one side too long is enough
      {{1000, 1}, {100, 100}, {100, 1}, {100, 1}},  // never below one pixel
      {{7, 3}, {0, -5}, {1, 1}, {1, 1}},
      {{INT_MAX, INT_MAX}, {INT_MAX, 2}, {2, 2}, {2, 2}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(drawn(PictureScale::Fit, c.picture, c.room), c.fit);
    EXPECT_EQ(drawn(PictureScale::FitDown, c.picture, c.room), c.fit_down);
    EXPECT_EQ(drawn(PictureScale::Actual, c.picture, c.room), c.picture);
    EXPECT_EQ(drawn(static_cast<PictureScale>(9), c.picture, c.room), c.picture);
  }
  EXPECT_EQ(drawn(PictureScale::Stretch, {7, 3}, {40, 20}), (PictureSize{40, 20}));
  EXPECT_EQ(drawn(PictureScale::Stretch, {7, 3}, {0, -1}), (PictureSize{1, 1}));
}

TEST(PictureLayout, LocksASizeOnceThereIsOne) {
  const PictureSize picture{30, 20}, room{99, 99};
  EXPECT_EQ(drawn_size(PictureScale::Locked, picture, room, {5, 60}), (PictureSize{5, 60}));
  EXPECT_EQ(drawn_size(PictureScale::Locked, picture, room, {0, 60}), picture);
  EXPECT_EQ(drawn_size(PictureScale::Locked, picture, room, {-3, 4}), picture);
}

TEST(PictureLayout, DrawsNoSizeWithoutAPicture) {
  for (int scale = -1; scale < 6; ++scale)
    EXPECT_TRUE(drawn_size(static_cast<PictureScale>(scale), {}, {50, 50}, {9, 9}).empty());
}

TEST(PictureLayout, AgreesWithTheImageOnASize) {
  c32bppDIB image;
  image.InitializeDIB(37, 19);
  for (int side = 1; side < 90; side += 7) {
    int32_t width = 0, height = 0;
    ASSERT_TRUE(image.ScaleImage(side, 40, width, height, ScaleOption::ToSize));
    EXPECT_EQ(drawn(PictureScale::Fit, {37, 19}, {side, 40}), (PictureSize{width, height}));
    ASSERT_TRUE(image.ScaleImage(side, 40, width, height, ScaleOption::DownAsNeeded));
    EXPECT_EQ(drawn(PictureScale::FitDown, {37, 19}, {side, 40}), (PictureSize{width, height}));
  }
}

TEST(PictureLayout, BoxesATurnedPicture) {
  for (const int turns : {-720, -360, 0, 180, 540})
    EXPECT_EQ(turned_box({30, 20}, turns), (PictureSize{30, 20})) << turns;
  for (const int turns : {-90, 90, 270, 450})
    EXPECT_EQ(turned_box({30, 20}, turns), (PictureSize{20, 30})) << turns;
  EXPECT_EQ(turned_box({100, 100}, 45), (PictureSize{142, 142}));  // 141.42
  EXPECT_EQ(turned_box({100, 40}, 30), turned_box({100, 40}, -30));
  EXPECT_EQ(turned_box({100, 60}, 30), (PictureSize{117, 102}));  // 116.6, 101.96
  EXPECT_EQ(turned_box({40, 20}, 60), (PictureSize{38, 45}));     // 37.3, 44.6
  EXPECT_TRUE(turned_box({}, 33).empty());
  EXPECT_EQ(turned_box({20, 20}, INT_MIN), turned_box({20, 20}, INT_MIN % 360 + 360));
}

// Every point against the pixels themselves, for shapes with holes, gaps and empty rows.
TEST(PictureHitArea, HoldsTheVeryPixelsOfTheRegion) {
  c32bppDIB image;
  image.InitializeDIB(23, 17);
  for (int32_t y = 0; y < 17; ++y)
    for (int32_t x = 0; x < 23; ++x)
      if ((x * 5 + y * 3) % 7 < 3 && y != 4 && y != 16) test::set_pixel(image, x, y, 0x01000000u);
  const HitArea shaped(*image.CreateRegion(RegionStyle::Shaped));
  for (int32_t y = -2; y < 20; ++y)
    for (int32_t x = -2; x < 26; ++x) {
      const bool inside = x >= 0 && y >= 0 && x < 23 && y < 17;
      EXPECT_EQ(shaped.contains(x, y), inside && test::pixel(image, x, y) != 0) << x << "," << y;
    }
  const HitArea bounds(*image.CreateRegion(RegionStyle::Bounds));
  EXPECT_TRUE(bounds.contains(5, 4));
  EXPECT_FALSE(bounds.contains(5, 16));
  EXPECT_FALSE(HitArea().contains(0, 0));
}

std::vector<int32_t> fade(int32_t from, int32_t to, int32_t step) {
  std::vector<int32_t> seen;
  const auto plan = FadeSteps::plan(from, to, step);
  if (!plan) return seen;
  for (int32_t at = from; at != plan->end() && seen.size() < 300;)
    seen.push_back(at = plan->after(at));
  return seen;
}

TEST(FadeSteps, EndsOnItsTargetAndNeverPassesIt) {
  using Steps = std::vector<int32_t>;
  EXPECT_EQ(fade(0, 100, 40), (Steps{40, 80, 100}));
  EXPECT_EQ(fade(100, 0, 40), (Steps{60, 20, 0}));
  EXPECT_EQ(fade(100, 0, -50), (Steps{50, 0}));
  EXPECT_EQ(fade(10, 20, 500), (Steps{20}));
  EXPECT_EQ(fade(50, 900, 30), (Steps{80, 100}));
  EXPECT_EQ(fade(50, -900, 30), (Steps{20, 0}));
  EXPECT_EQ(fade(150, 100, 20), (Steps{130, 110, 100}));
  EXPECT_EQ(fade(3, 0, INT_MIN), (Steps{0}));
  EXPECT_EQ(fade(INT_MIN, 100, INT_MAX), (Steps{-1, 100}));
}

TEST(FadeSteps, HasNothingToDoWithoutAStepOrAWay) {
  EXPECT_FALSE(FadeSteps::plan(20, 80, 0));
  EXPECT_FALSE(FadeSteps::plan(80, 80, 10));
  EXPECT_FALSE(FadeSteps::plan(100, 300, 10));
  EXPECT_FALSE(FadeSteps::plan(0, -300, 10));
}

TEST(FadeSteps, EndsWhereAProgramMovedTheOpacityBeyondTheTarget) {
  EXPECT_EQ(FadeSteps::plan(0, 50, 10)->after(90), 50);
  EXPECT_EQ(FadeSteps::plan(100, 50, 10)->after(20), 50);
}

TEST(FadeSteps, WaitsAtLeastTenMilliseconds) {
  for (const auto& [asked, given] : {std::pair{5, 10}, {-1, 10}, {10, 10}, {11, 11}, {700, 700}})
    EXPECT_EQ(FadeSteps::interval(asked), given);
}

}  // namespace
}  // namespace kestrelon
