#include "imaging/picture/picture_look.h"

#include <gtest/gtest.h>

#include <climits>

#include "imaging/picture/picture_pixels.h"
#include "tests/imaging/pictures.h"

namespace kestrelon {
namespace {

using test::pixel;

// Four opaque quarters: red, green over blue, white.
void fill_quarters(c32bppDIB& image, int32_t side) {
  image.InitializeDIB(side, side);
  for (int32_t y = 0; y < side; ++y)
    for (int32_t x = 0; x < side; ++x) {
      const bool right = x >= side / 2, bottom = y >= side / 2;
      test::set_pixel(
          image, x, y,
          right ? (bottom ? 0xFFFFFFFFu : 0xFF00FF00u) : (bottom ? 0xFF0000FFu : 0xFFFF0000u));
    }
  image.set_alpha(AlphaType::None);
}

class PictureLookTest : public testing::Test {
 protected:
  PictureLookTest() {
    fill_quarters(picture_, 8);
    look_.room = {20, 12};
    look_.drawn = {8, 8};
  }
  void draw(const c32bppDIB* shadow = nullptr) {
    ASSERT_TRUE(picture_on_nothing(look_, picture_, shadow, canvas_));
  }
  uint32_t at(int32_t x, int32_t y) const { return pixel(canvas_, x, y); }
  // The colours of the four quarters of the picture where it should lie, clockwise.
  std::vector<uint32_t> quarters() const { return {at(7, 3), at(12, 3), at(12, 8), at(7, 8)}; }

  c32bppDIB picture_, canvas_;
  PictureLook look_;
};

constexpr uint32_t kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlue = 0xFF0000FF, kWhite = 0xFFFFFFFF;
using Colours = std::vector<uint32_t>;

TEST_F(PictureLookTest, StandsInTheMiddleOnNothing) {
  draw();
  EXPECT_EQ(quarters(), (Colours{kRed, kGreen, kWhite, kBlue}));
  EXPECT_EQ(at(6, 2), kRed);
  EXPECT_EQ(at(5, 2), 0u);
  EXPECT_EQ(at(6, 1), 0u);
  EXPECT_EQ(at(13, 9), kWhite);
  EXPECT_EQ(at(14, 9), 0u);
  look_.x = 3;
  look_.y = -4;
  draw();
  EXPECT_EQ(at(9, 0), kRed);
  EXPECT_EQ(at(16, 5), kWhite);
  EXPECT_EQ(at(16, 6), 0u);
}

TEST_F(PictureLookTest, MirrorsAndTurns) {
  look_.mirror_x = true;
  draw();
  EXPECT_EQ(quarters(), (Colours{kGreen, kRed, kBlue, kWhite}));
  look_.mirror_y = true;
  draw();
  EXPECT_EQ(quarters(), (Colours{kWhite, kBlue, kRed, kGreen}));
  look_.mirror_x = false;
  draw();
  EXPECT_EQ(quarters(), (Colours{kBlue, kWhite, kGreen, kRed}));
  look_.mirror_y = false;
  look_.degrees = 90;
  draw();
  EXPECT_EQ(quarters(), (Colours{kBlue, kRed, kGreen, kWhite}));
  look_.degrees = -90;
  draw();
  EXPECT_EQ(quarters(), (Colours{kGreen, kWhite, kBlue, kRed}));
}

TEST_F(PictureLookTest, TiltsWithSoftEdgesUnlessAskedForHardOnes) {
  picture_.set_HighQualityInterpolation(true);
  look_.room = {30, 30};
  look_.drawn = {16, 16};
  look_.degrees = 30;
  const auto soft_pixels = [&] {
    int count = 0;
    draw();
    for (int32_t y = 0; y < 30; ++y)
      for (int32_t x = 0; x < 30; ++x) {
        const uint32_t alpha = at(x, y) >> 24;
        if (alpha != 0 && alpha != 255) ++count;
      }
    return count;
  };
  EXPECT_GT(soft_pixels(), 40);  // all around
  EXPECT_EQ(at(15, 10) >> 24, 255u);
  look_.smooth = false;
  EXPECT_EQ(soft_pixels(), 0);
  look_.smooth = true;
  look_.degrees = 270;
  EXPECT_EQ(soft_pixels(), 0);
  look_.degrees = 30;  // mirrored once, tones and opacity once
  look_.mirror_x = true;
  look_.gray = GrayScale::RedMask;
  look_.opacity = 50;
  draw();
  EXPECT_NEAR(at(20, 15) & 0xFF, 0x66, 1);  // red, 0.8, on the right
  EXPECT_NEAR(at(16, 20) & 0xFF, 0x0C, 1);  // blue, 0.1, below it
}

TEST_F(PictureLookTest, FadesGraysAndLightens) {
  look_.opacity = 50;
  draw();
  EXPECT_EQ(at(7, 3), 0x7F7F0000u);
  look_.opacity = 0;
  draw();
  EXPECT_EQ(at(7, 3), 0u);
  look_.opacity = 100;
  look_.gray = GrayScale::SimpleAvg;
  draw();
  EXPECT_EQ(at(7, 3), 0xFF555555u);
  look_.gray = GrayScale::None;
  look_.light = -100;
  draw();
  EXPECT_EQ(at(12, 8), 0xFF000000u);
}

TEST_F(PictureLookTest, CastsAShadowRightBehindItselfUntilItIsMoved) {
  c32bppDIB shadow;
  ASSERT_TRUE(picture_.CreateDropShadow(1, 0x0000C0, shadow));
  look_.room = {24, 24};
  look_.shadow = {true, 0x0000C0, 1, 100, 0, 0};
  draw(&shadow);
  EXPECT_EQ(at(8, 8), kRed);
  EXPECT_NE(at(7, 7), 0u);  // one pixel of blur on every side
  EXPECT_EQ(at(7, 7), at(16, 16));
  EXPECT_EQ(at(7, 12), at(16, 12));
  EXPECT_EQ(at(6, 12), 0u);
  EXPECT_EQ(at(17, 12), 0u);
  look_.shadow.x = 4;
  look_.shadow.y = 6;
  draw(&shadow);
  EXPECT_EQ(at(7, 7), 0u);
  EXPECT_EQ(at(18, 20), 0xFFC00000u);
  look_.shadow.opacity = 50;
  draw(&shadow);
  EXPECT_EQ(at(18, 20) >> 24, 127u);
  look_.opacity = 50;  // what fades takes its shadow along
  draw(&shadow);
  EXPECT_EQ(at(18, 20) >> 24, 63u);
  look_.opacity = 0;
  draw(&shadow);
  EXPECT_EQ(at(18, 20), 0u);
}

TEST_F(PictureLookTest, ScalesAndTurnsTheShadowWithThePicture) {
  c32bppDIB shadow;
  ASSERT_TRUE(picture_.CreateDropShadow(2, 0, shadow));
  look_.room = {40, 40};
  look_.drawn = {16, 16};
  look_.shadow = {true, 0, 2, 100, 0, 0};
  draw(&shadow);
  EXPECT_NE(at(9, 20), 0u);  // 12 - 2 * 2
  EXPECT_EQ(at(7, 20), 0u);
  EXPECT_EQ(at(9, 9) >> 24 < at(9, 20) >> 24, true);
  look_.degrees = 45;
  draw(&shadow);
  EXPECT_NE(at(20, 7), 0u);
  EXPECT_EQ(at(9, 9), 0u);
}

// Fades draw from layers; they must show what a fresh drawing would.
TEST_F(PictureLookTest, ShowsTheSameFromLayersAsDrawnAnew) {
  picture_.set_HighQualityInterpolation(true);
  c32bppDIB shadow;
  ASSERT_TRUE(picture_.CreateDropShadow(2, 0x30A0, shadow));
  look_.room = {40, 36};
  look_.drawn = {21, 17};
  PicturePainter painter;
  const auto expect_same = [&](const char* what) {
    draw(&shadow);
    c32bppDIB painted;
    ASSERT_TRUE(painter.draw(look_, picture_, &shadow, painted)) << what;
    EXPECT_EQ(test::pixels(painted), test::pixels(canvas_)) << what << look_.opacity;
  };
  const auto fade = [&](const char* what) {
    for (const int32_t opacity : {100, 70, 40, 1, 0, 150, 255, 100}) {
      look_.opacity = opacity;
      expect_same(what);
    }
  };
  fade("scaled");
  look_.shadow = {true, 0x30A0, 2, 60, 3, -2};
  fade("with a shadow");
  look_.shadow.opacity = 30;
  expect_same("another shadow opacity");
  look_.degrees = 33;
  look_.mirror_y = true;
  look_.gray = GrayScale::GreenMask;
  fade("turned");
  // Another picture with the same look but for its version.
  fill_quarters(picture_, 10);
  ++look_.version;
  fade("another picture");
  look_.shadow.shown = false;
  fade("no shadow");
  painter.release();
  expect_same("released");
  picture_.DestroyDIB();
  look_.drawn = {};
  ++look_.version;
  fade("no picture");
  look_.room = {0, 5};
  EXPECT_FALSE(painter.draw(look_, picture_, &shadow, canvas_));
}

TEST_F(PictureLookTest, StandsAnyNumbers) {
  c32bppDIB shadow;
  picture_.CreateDropShadow(10, 0, shadow);
  for (const int32_t number : {INT_MIN, INT_MIN + 1, -1, 0, 1, INT_MAX}) {
    PictureLook look = look_;
    look.x = look.y = look.shadow.x = look.shadow.y = number;
    look.shadow.shown = true;
    look.opacity = look.shadow.opacity = number;
    look.degrees = number % 360;
    look.gray = static_cast<GrayScale>(number);
    look.light = static_cast<float>(number);
    EXPECT_TRUE(picture_on_nothing(look, picture_, &shadow, canvas_));
    look.drawn = {number, 5};
    EXPECT_TRUE(picture_on_nothing(look, picture_, &shadow, canvas_));
    look.room = {number, number};
    EXPECT_EQ(picture_on_nothing(look, c32bppDIB(), nullptr, canvas_), number == 1);
  }
}

TEST_F(PictureLookTest, HasAShapeThatDoesNotFadeOrCastShadows) {
  look_.opacity = 1;
  look_.light = -100;
  look_.gray = GrayScale::RedMask;
  look_.shadow.shown = true;
  PictureLook plain;
  plain.room = look_.room;
  plain.drawn = look_.drawn;
  EXPECT_EQ(look_.shape(), plain);
}

TEST(StoredPixels, ArePremultipliedOnlyWhenTheyWereNot) {
  c32bppDIB image;
  image.InitializeDIB(3, 1);
  test::set_pixel(image, 0, 0, 0x80402010u);
  test::set_pixel(image, 1, 0, 0xFF102030u);
  settle_stored_pixels(image);
  EXPECT_EQ(pixel(image, 0, 0), 0x80402010u);
  EXPECT_EQ(image.Alpha(), AlphaType::Complex);
  test::set_pixel(image, 2, 0, 0x80FF0000u);
  settle_stored_pixels(image);
  EXPECT_EQ(pixel(image, 2, 0), 0x80800000u);
  EXPECT_EQ(pixel(image, 0, 0), 0x80201008u);
  EXPECT_EQ(pixel(image, 1, 0), 0xFF102030u);
}

TEST(StoredPixels, TellTheirAlpha) {
  c32bppDIB image;
  image.InitializeDIB(2, 2);
  EXPECT_EQ(alpha_type_of(std::as_const(image).view()), AlphaType::Simple);
  for (int i = 0; i < 4; ++i) test::set_pixel(image, i % 2, i / 2, 0xFF000000u);
  EXPECT_EQ(alpha_type_of(std::as_const(image).view()), AlphaType::None);
  test::set_pixel(image, 1, 1, 0xFE000000u);
  EXPECT_EQ(alpha_type_of(std::as_const(image).view()), AlphaType::Complex);
}

}  // namespace
}  // namespace kestrelon
