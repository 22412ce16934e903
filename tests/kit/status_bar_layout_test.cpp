#include "chrome/us_status_bar/status_bar_layout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace kestrelon::status_bar {
namespace {

Item fixed(int64_t width) {
  Item out;
  out.width = width;
  return out;
}

Item spring(int64_t least = 20) {
  Item out;
  out.sizing = Sizing::kSpring;
  out.min_width = least;
  return out;
}

Item contents(int64_t content, int64_t least = 0) {
  Item out;
  out.sizing = Sizing::kContents;
  out.content = content;
  out.min_width = least;
  return out;
}

int width_of(const PixelRect& area) {
  return area.right - area.left;
}

TEST(StatusBarLayout, SpringsFillTheRoomToThePixelAtEveryWidthAndScale) {
  const std::vector<Item> items{fixed(70), spring(), contents(43), spring(), spring(90)};
  for (const int dpi : {96, 144, 288})
    for (int width = 0; width < 700; ++width) {
      const Arrangement bar = arrange({width, 24, true, Scale(dpi)}, items);
      int right = bar.room.left;
      for (const PixelRect& panel : bar.panels) {
        if (panel.empty()) continue;
        ASSERT_GE(panel.left, right) << width;
        right = panel.right;
        ASSERT_LE(right, bar.room.right) << width;
      }
      const int needed = 70 + 20 + 43 + 20 + 90 + 4 * Scale(dpi)(2);
      if (bar.room.right - bar.room.left < needed) continue;
      ASSERT_EQ(right, bar.room.right) << width;
      ASSERT_LE(std::abs(width_of(bar.panels[1]) - width_of(bar.panels[3])), 1) << width;
      ASSERT_GE(width_of(bar.panels[4]), 90) << width;
    }
}

TEST(StatusBarLayout, ASpringWithALargeLeastWidthTakesNoMoreWhileTheOthersGrow) {
  const std::vector<Item> items{spring(10), spring(200), spring(10)};
  const Arrangement bar = arrange({4 + 4 + 300, 24, false, {}}, items);
  EXPECT_EQ(width_of(bar.panels[0]), 50);
  EXPECT_EQ(width_of(bar.panels[1]), 200);
  EXPECT_EQ(width_of(bar.panels[2]), 50);
}

TEST(StatusBarLayout, AContentsPanelThatGrowsTakesFromTheSpringBesideIt) {
  for (const int64_t content : {40, 41, 150}) {
    const std::vector<Item> items{spring(), contents(content)};
    const Arrangement bar = arrange({300, 24, true, {}}, items);
    EXPECT_EQ(width_of(bar.panels[1]), content);
    EXPECT_EQ(bar.panels[1].right, bar.room.right);
  }
}

TEST(StatusBarLayout, WhatDoesNotFitIsClippedAtTheEndAndNeverNegative) {
  const std::vector<Item> items{fixed(100), fixed(100), fixed(100)};
  const Arrangement bar = arrange({150, 24, false, {}}, items);
  EXPECT_EQ(width_of(bar.panels[0]), 100);
  EXPECT_EQ(bar.panels[1].right, bar.room.right);
  EXPECT_TRUE(bar.panels[2].empty());
  const int64_t huge = std::numeric_limits<int32_t>::max();
  const std::vector<Item> hostile{fixed(huge), fixed(-huge), fixed(huge * 5), spring(huge)};
  const Arrangement cut = arrange({150, 24, false, {}}, hostile);
  EXPECT_EQ(cut.panels[0].right, cut.room.right);
  for (size_t i = 1; i < 4; ++i) EXPECT_TRUE(cut.panels[i].empty());
}

TEST(StatusBarLayout, AHiddenPanelTakesNeitherRoomNorGap) {
  std::vector<Item> items{fixed(50), fixed(60), fixed(70)};
  items[1].visible = false;
  const Arrangement bar = arrange({400, 24, false, {}}, items);
  const Arrangement without = arrange({400, 24, false, {}}, std::vector<Item>{items[0], items[2]});
  EXPECT_EQ(bar.panels[2], without.panels[1]);
  EXPECT_EQ(hit(bar, bar.panels[2].left, 10), 3);
}

TEST(StatusBarLayout, TheGripTakesTheCornerAndNoPanelsPlace) {
  const std::vector<Item> items{spring()};
  const Arrangement bar = arrange({200, 24, true, {}}, items);
  EXPECT_EQ(hit(bar, 199, 23), kGrip);
  EXPECT_EQ(hit(bar, bar.panels[0].right - 1, 12), 1);
  EXPECT_TRUE(intersect(bar.grip, bar.panels[0]).empty());
  EXPECT_EQ(hit(arrange({200, 24, false, {}}, items), 199, 23), kNothing);
  EXPECT_EQ(hit(bar, 100, 0), kNothing);  // the line above the panels
}

TEST(StatusBarLayout, ImageAndTextStandTogetherOnTheSideTold) {
  const PixelRect panel{100, 2, 300, 22};
  for (const int alignment : {0, 1, 2}) {
    const Face both = face(panel, {16, 16, 60, alignment}, {});
    EXPECT_EQ(both.text.left - both.image.right, 4);
    EXPECT_EQ(both.image.left == panel.left + 4, alignment == 0);
    EXPECT_EQ(both.text.right == panel.right - 4, alignment == 2);
    EXPECT_EQ(both.image.top - panel.top, panel.bottom - both.image.bottom);
  }
  const Face tight = face(panel, {16, 16, 900, 2}, {});
  EXPECT_EQ(tight.image.left, panel.left + 4);
  EXPECT_EQ(tight.text.right, panel.right - 4);
  EXPECT_TRUE(face({0, 0, 7, 20}, {16, 16, 60, 1}, {}).text.empty());
  EXPECT_EQ(width_of(panel), needed_width({16, 16, 172, 0}, {}));
}

TEST(StatusBarLayout, ProgressIsHeldToItsBar) {
  EXPECT_EQ(filled_width(50, 100, 80), 40);
  EXPECT_EQ(filled_width(-1, 100, 80), 0);
  EXPECT_EQ(filled_width(101, 100, 80), 80);
  EXPECT_EQ(filled_width(1e300, 1e-300, 80), 80);
  EXPECT_EQ(filled_width(5, 0, 80), 0);
  EXPECT_EQ(filled_width(5, -3, 80), 0);
  EXPECT_EQ(filled_width(std::nan(""), 100, 80), 0);
  EXPECT_EQ(filled_width(5, std::nan(""), 80), 0);
}

}  // namespace
}  // namespace kestrelon::status_bar
