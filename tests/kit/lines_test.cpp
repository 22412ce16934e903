#include "frame/kit/lines.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/kit/picture.h"

namespace kestrelon {
namespace {

constexpr ColorRef kInk = 0x0000FF;

// One letter a pixel, rows separated by '|'.
std::string marks(Picture picture) {
  std::string out;
  const PixelView view = picture.view();
  for (int y = 0; y < view.height; ++y) {
    for (int x = 0; x < view.width; ++x) out += view.row(y)[x] == 0 ? '.' : '#';
    out += '|';
  }
  EXPECT_TRUE(picture.margin_untouched());
  return out;
}

std::string line(int x1, int y1, int x2, int y2) {
  Picture picture(6, 3);
  DrawLineTo(picture.view(), kInk, x1, y1, x2, y2);
  return marks(picture);
}

TEST(DrawLineTo, StraightLinesIncludeTheirEndUnlessTheyRunBackwards) {
  EXPECT_EQ(line(1, 1, 4, 1), "......|.####.|......|");
  EXPECT_EQ(line(1, 0, 1, 2), ".#....|.#....|.#....|");
  EXPECT_EQ(line(2, 1, 2, 1), "......|..#...|......|");
  EXPECT_EQ(line(4, 1, 1, 1), "......|...##.|......|");
  EXPECT_EQ(line(2, 1, 1, 1), "......|......|......|");
  EXPECT_EQ(line(1, 2, 1, 0), "......|......|.#....|");
}

TEST(DrawLineTo, SlantingLinesLeaveTheirEndOut) {
  EXPECT_EQ(line(0, 0, 3, 3), "#.....|.#....|..#...|");
  EXPECT_EQ(line(0, 0, 6, 3), "##....|..##..|....##|");
  EXPECT_EQ(line(5, 0, -1, 3), "....##|..##..|##....|");
  EXPECT_EQ(line(0, 0, 3, 1), "##....|..#...|......|");
}

TEST(DrawLineTo, ClippingDoesNotBendALine) {
  // A line through a window of a large surface and the same line drawn on the window alone.
  std::mt19937 random(11);
  for (int round = 0; round < 500; ++round) {
    const auto any = [&] { return static_cast<int>(random() % 60); };
    const int x1 = any(), y1 = any(), x2 = any(), y2 = any();
    Picture large(60, 60), window(20, 20);
    DrawLineTo(large.view(), kInk, x1, y1, x2, y2);
    DrawLineTo(window.view(), kInk, x1 - 20, y1 - 20, x2 - 20, y2 - 20);
    for (int y = 0; y < 20; ++y)
      for (int x = 0; x < 20; ++x) ASSERT_EQ(window.at(x, y), large.at(x + 20, y + 20));
    ASSERT_TRUE(window.margin_untouched());
  }
}

TEST(DrawLineTo, EndsFarAwayCostNothingAndOverflowNothing) {
  Picture picture(6, 3);
  DrawLineTo(picture.view(), kInk, INT32_MIN, 1, INT32_MAX, 1);
  EXPECT_EQ(marks(picture), "......|######|......|");
  DrawLineTo(picture.view(), kInk, 2, INT32_MIN, 2, INT32_MAX);
  EXPECT_EQ(marks(picture), "..#...|######|..#...|");
  Picture slanting(3, 3);
  DrawLineTo(slanting.view(), kInk, -1000000, -1000000, 1000000, 1000000);
  EXPECT_EQ(marks(slanting), "#..|.#.|..#|");
  DrawLineTo(PixelView(), kInk, 0, 0, 5, 5);
}

TEST(DrawFrame, RightAndBottomAreOnePastAndEdgesMayBeSwapped) {
  const auto frame = [](int left, int top, int right, int bottom) {
    Picture picture(5, 4);
    DrawFrame(picture.view(), kInk, left, top, right, bottom);
    return marks(picture);
  };
  EXPECT_EQ(frame(0, 0, 5, 4), "#####|#...#|#...#|#####|");
  EXPECT_EQ(frame(4, 3, 1, 0), ".###.|.#.#.|.###.|.....|");
  EXPECT_EQ(frame(1, 1, 2, 4), ".....|.#...|.#...|.#...|");
  EXPECT_EQ(frame(1, 1, 1, 4), marks(Picture(5, 4)));
  EXPECT_EQ(frame(-1, -1, 9, 9), marks(Picture(5, 4)));
}

TEST(FillRect, FillsEveryWidthAndNothingElse) {
  for (int left = -2; left < 12; ++left)
    for (int right = -2; right < 14; ++right) {
      Picture picture(11, 3);
      fill_rect(picture.view(), {left, 1, right, 99}, kInk);
      for (int x = 0; x < 11; ++x) {
        ASSERT_EQ(picture.at(x, 0), 0u);
        ASSERT_EQ(picture.at(x, 2), x >= left && x < right ? 0xFF0000u : 0u);
      }
      ASSERT_TRUE(picture.margin_untouched());
    }
}

TEST(FocusRect, TwiceIsNothingWhereverItStands) {
  Picture picture(9, 7, 0x123456);
  const Picture before = picture;
  for (int left = -3; left < 11; ++left)
    for (int size = 0; size < 12; ++size) {
      const PixelRect box = {left, left - 1, left + size, left + size / 2};
      draw_focus_rect(picture.view(), box);
      draw_focus_rect(picture.view(), box);
      ASSERT_EQ(picture, before) << left << ' ' << size;
    }
  draw_focus_rect(picture.view(), {1, 1, 6, 4});
  Picture dots(9, 7, 0x123456);
  for (const auto& [x, y] : {std::pair{5, 1}, {3, 1}, {1, 1}, {1, 3}, {3, 3}, {5, 3}})
    dots.view().row(y)[x] ^= kColorBits;
  EXPECT_EQ(picture, dots);
}

}  // namespace
}  // namespace kestrelon
