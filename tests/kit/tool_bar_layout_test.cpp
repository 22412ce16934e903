#include "chrome/us_tool_bar/tool_bar_layout.h"

#include <gtest/gtest.h>

namespace kestrelon::tool_bar {
namespace {

Item button(int text, bool icon = false, IconSide side = IconSide::kLeft) {
  Item out;
  out.text_width = text;
  out.text_height = text > 0 ? 13 : 0;
  out.icon = icon ? 16 : 0;
  out.side = side;
  return out;
}

Item separator() {
  Item out;
  out.separator = true;
  return out;
}

bool within(const PixelRect& inner, const PixelRect& outer) {
  return inner.left >= outer.left && inner.right <= outer.right && inner.top >= outer.top &&
         inner.bottom <= outer.bottom;
}

TEST(ToolBarLayout, AtEveryWidthNothingOverlapsAndNothingIsCut) {
  const std::vector<Item> items{button(40),       separator(), button(0, true),
                                button(60, true), separator(), button(25)};
  for (const int dpi : {96, 144, 288})
    for (int width = 0; width < 900; ++width) {
      const Arrangement bar = arrange({width, 28, true, true, false, Scale(dpi)}, items);
      int right = bar.gripper.right;
      bool hidden = false;
      size_t last = items.size();
      for (size_t i = 0; i < items.size(); ++i) {
        if (!bar.places[i].shown) {
          hidden = true;
          continue;
        }
        ASSERT_FALSE(hidden) << "shown behind a hidden one at " << width;
        last = i;
        ASSERT_GE(bar.places[i].area.left, right) << width;
        right = bar.places[i].area.right;
      }
      ASSERT_LE(right, std::max(hidden ? bar.chevron.left : bar.end_panel.left, bar.gripper.right));
      ASSERT_EQ(bar.chevron.empty(), !hidden || bar.center.right == bar.center.left) << width;
      ASSERT_TRUE(last == items.size() || !hidden || !items[last].separator) << width;
    }
}

TEST(ToolBarLayout, AFittingRowNeedsNoChevronToTheLastPixel) {
  const std::vector<Item> items{button(40), button(40)};
  const Arrangement wide = arrange({1000, 28, false, false, false, {}}, items);
  const int needed = wide.places[1].area.right;
  EXPECT_TRUE(arrange({needed, 28, false, false, false, {}}, items).chevron.empty());
  const Arrangement tight = arrange({needed - 1, 28, false, false, false, {}}, items);
  EXPECT_FALSE(tight.chevron.empty());
  EXPECT_TRUE(tight.places[0].shown);
  EXPECT_FALSE(tight.places[1].shown);
  EXPECT_EQ(hit(tight, needed - 2, 5), kChevron);
}

TEST(ToolBarLayout, StretchTakesTheBarAndKeepsTheNaturalHeight) {
  const std::vector<Item> items{button(40)};
  const Place plain = arrange({200, 60, true, true, false, {}}, items).places[0];
  const Place tall = arrange({200, 60, true, true, true, {}}, items).places[0];
  EXPECT_EQ(plain.area.bottom - plain.area.top, plain.natural_height);
  EXPECT_GT(tall.area.bottom - tall.area.top, plain.natural_height);
  EXPECT_EQ(tall.natural_height, plain.natural_height);
  EXPECT_TRUE(within(tall.area, {0, 0, 200, 60}));
}

TEST(ToolBarLayout, HitsEachPartOnceAndNothingOutside) {
  const std::vector<Item> items{button(40), button(40)};
  const Arrangement bar = arrange({300, 28, true, true, false, {}}, items);
  EXPECT_EQ(hit(bar, 0, 0), kGripper);
  EXPECT_EQ(hit(bar, 299, 27), kEndPanel);
  EXPECT_EQ(hit(bar, 300, 27), kNothing);
  EXPECT_EQ(hit(bar, bar.places[0].area.right - 1, 14), 1);
  EXPECT_EQ(hit(bar, bar.places[0].area.right, 14), 2);
  EXPECT_EQ(hit(bar, bar.places[1].area.right, 14), kNothing);
  EXPECT_EQ(hit(bar, bar.places[0].area.left, bar.places[0].area.top - 1), kNothing);
}

TEST(ToolBarLayout, IconAndCaptionLieInTheButtonOnTheSideTold) {
  for (const IconSide side : {IconSide::kLeft, IconSide::kRight, IconSide::kTop, IconSide::kBottom})
    for (const bool drop : {false, true}) {
      Item item = button(50, true, side);
      item.drop_mark = drop;
      const Arrangement bar = arrange({300, 60, true, true, false, {}}, std::span(&item, 1));
      const PixelRect area = bar.places[0].area;
      const Face parts = face(area, item, {});
      EXPECT_TRUE(within(parts.icon, area) && within(parts.text, area));
      EXPECT_TRUE(intersect(parts.icon, parts.text).empty());
      EXPECT_TRUE(intersect(parts.text, parts.drop_mark).empty());
      EXPECT_EQ(parts.icon.right - parts.icon.left, 16);
      EXPECT_EQ(parts.icon.right <= parts.text.left, side == IconSide::kLeft);
      EXPECT_EQ(parts.icon.left >= parts.text.right, side == IconSide::kRight);
      EXPECT_EQ(parts.icon.bottom <= parts.text.top, side == IconSide::kTop);
      EXPECT_EQ(parts.icon.top >= parts.text.bottom, side == IconSide::kBottom);
    }
}

TEST(ToolBarLayout, WalksRoundAndEndsWithoutATaker) {
  const auto even = [](int i) { return i % 2 == 0; };
  EXPECT_EQ(walk(0, 1, 5, even), 2);
  EXPECT_EQ(walk(4, 1, 5, even), 2);
  EXPECT_EQ(walk(2, -1, 5, even), 4);
  EXPECT_EQ(walk(6, -1, 5, even), 4);
  EXPECT_EQ(walk(3, 1, 5, [](int) { return false; }), 3);
  EXPECT_EQ(walk(0, 1, 0, even), 0);
}

TEST(ToolBarLayout, DisabledBeatsPressedBeatsHotBeatsChecked) {
  EXPECT_EQ(look({false, true, true, true, Look::kNormal}), Look::kDisabled);
  EXPECT_EQ(look({true, true, true, true, Look::kDisabled}), Look::kDisabled);
  EXPECT_EQ(look({true, true, true, true, Look::kNormal}), Look::kPressed);
  EXPECT_EQ(look({true, true, false, true, Look::kNormal}), Look::kOverDown);
  EXPECT_EQ(look({true, true, false, false, Look::kSelected}), Look::kOverDown);
  EXPECT_EQ(look({true, true, false, false, Look::kNormal}), Look::kOver);
  EXPECT_EQ(look({true, false, false, true, Look::kNormal}), Look::kSelected);
  EXPECT_EQ(look({true, false, false, false, Look::kNormal}), Look::kNormal);
}

}  // namespace
}  // namespace kestrelon::tool_bar
