#include "chrome/us_form/skin_layout.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace kestrelon::skin {
namespace {

constexpr int kWidth = 400;

// The button at a column counted from the box's left side.
int hit(long theme, int column, int y, const Buttons& buttons = {}) {
  return static_cast<int>(button_at(theme, buttons, kWidth, kWidth - box_width(theme) + column, y));
}

TEST(SkinLayout, HotZonesIncludeTheirEnds) {
  struct Case {
    long theme;
    int row, first, last, button;
  };
  for (const Case& c : {Case{0, 6, 2, 22, 1}, Case{0, 26, 25, 46, 2}, Case{1, 6, 50, 71, 3},
                        Case{2, 0, 2, 29, 1}, Case{2, 21, 30, 55, 2}, Case{2, 0, 56, 101, 3}}) {
    EXPECT_EQ(hit(c.theme, c.first, c.row), c.button);
    EXPECT_EQ(hit(c.theme, c.last, c.row), c.button);
    EXPECT_NE(hit(c.theme, c.first - 1, c.row), c.button);
    EXPECT_NE(hit(c.theme, c.last + 1, c.row), c.button);
  }
  EXPECT_EQ(hit(0, 10, 5), 0);
  EXPECT_EQ(hit(0, 10, 27), 0);
  EXPECT_EQ(hit(0, 23, 10), 0);
  EXPECT_EQ(hit(2, 10, 22), 0);
  EXPECT_EQ(hit(2, 102, 10), 0);
}

TEST(SkinLayout, OnlyAButtonThatIsShownAndEnabledAnswers) {
  Buttons buttons;
  buttons.enabled[1] = false;
  buttons.shown[2] = false;
  EXPECT_EQ(hit(0, 10, 10, buttons), 1);
  EXPECT_EQ(hit(0, 30, 10, buttons), 0);
  EXPECT_EQ(hit(0, 60, 10, buttons), 0);
  buttons.box = false;
  EXPECT_EQ(hit(0, 10, 10, buttons), 0);
}

TEST(SkinLayout, ThePictureOfEveryStateLiesInASheetOfItsOwn) {
  EXPECT_EQ(control_box_picture({true, false, Button::kNone, true}), 71);
  EXPECT_EQ(control_box_picture({true, false, Button::kClose, false}), 74);
  EXPECT_EQ(control_box_picture({true, false, Button::kMinimize, true}), 75);
  EXPECT_EQ(control_box_picture({true, true, Button::kClose, true}), 67);
  EXPECT_EQ(control_box_picture({false, true, Button::kNone, false}), 55);
  EXPECT_EQ(control_box_picture({false, false, Button::kClose, true}), 54);
  std::set<int> pictures, rows;
  for (const bool active : {false, true})
    for (const bool maximized : {false, true})
      for (int hot = 0; hot < 4; ++hot)
        for (const bool pressed : {false, true})
          pictures.insert(
              control_box_picture({active, maximized, static_cast<Button>(hot), pressed}));
  EXPECT_EQ(pictures.size(), 22u);
  for (const int picture : pictures) rows.insert(box_in_sheet(2, picture, Scale(144)).top);
  EXPECT_EQ(rows.size(), pictures.size());
  EXPECT_EQ(*rows.rbegin(), 21 * 42);
}

TEST(SkinLayout, MasksCoverWhatIsHidden) {
  const auto masks = [](long theme, bool minimize, bool maximize, bool close, bool box = true) {
    Buttons buttons;
    buttons.box = box;
    buttons.shown = {minimize, maximize, close};
    const Masks all = button_masks(theme, buttons, kWidth);
    return std::vector<Mask>(all.parts.begin(), all.parts.begin() + all.count);
  };
  using List = std::vector<Mask>;
  EXPECT_EQ(masks(0, true, true, true), List{});
  EXPECT_EQ(masks(0, true, true, true, false), (List{{324, 71}}));
  EXPECT_EQ(masks(1, false, false, false), (List{{324, 71}}));
  EXPECT_EQ(masks(0, false, true, false), (List{{324, 23}, {372, 23}}));
  EXPECT_EQ(masks(0, true, false, true), (List{{348, 23}}));
  EXPECT_EQ(masks(2, true, true, true, false), (List{{293, 103}}));
  EXPECT_EQ(masks(2, false, false, true), (List{{293, 56}}));
  EXPECT_EQ(masks(2, true, false, false), (List{{324, 72}}));
  EXPECT_EQ(masks(2, false, true, false), (List{{293, 30}, {350, 48}}));
  EXPECT_EQ(masks(2, true, false, true), (List{{324, 25}}));
}

TEST(SkinLayout, TheFillOfWindows8RunsPastTheEnd) {
  EXPECT_EQ(fill_width(0, true, kWidth), 324);
  EXPECT_EQ(fill_width(2, true, kWidth), 507);
  EXPECT_EQ(fill_width(1, false, kWidth), 392);
  EXPECT_EQ(fill_width(2, false, kWidth), 392);
}

TEST(SkinLayout, SplitsACaptionAtTheLastDelimiter) {
  EXPECT_EQ(caption_split(L"a - b - c", L"-"), 6u);
  EXPECT_EQ(caption_split(L"abc", L"-"), 3u);
  EXPECT_EQ(caption_split(L"abc", L""), 3u);
  EXPECT_EQ(caption_split(L"-abc", L"-"), 0u);
  EXPECT_EQ(caption_split(L"", L"-"), 0u);
  EXPECT_EQ(caption_split(L"aXb", L"x"), 3u) << "binary";
  EXPECT_EQ(caption_place(true, true, kWidth), (PixelRect{28, 7, 324, 28}));
  EXPECT_EQ(caption_place(false, false, kWidth), (PixelRect{7, 7, 393, 28}));
  EXPECT_EQ(caption_colors(2, false, {1, 2}).delimiter, 0x3B3B3Bu);
  EXPECT_EQ(caption_colors(0, false, {1, 2}).main, 0x808080u);
  EXPECT_EQ(caption_colors(0, true, {1, 2}).delimiter, 2u);
}

TEST(SkinLayout, BandsOfPointerAndPressDifferOnTheBottomEdge) {
  EXPECT_EQ(bottom_pointer(kWidth, 2), kPointerNESW);
  EXPECT_EQ(bottom_pointer(kWidth, 3), kPointerNS);
  EXPECT_EQ(bottom_pointer(kWidth, 392), kPointerNS);
  EXPECT_EQ(bottom_pointer(kWidth, 393), kPointerNWSE);
  EXPECT_EQ(bottom_grip(kWidth, 7), kBottomLeftGrip);
  EXPECT_EQ(bottom_grip(kWidth, 8), kBottomGrip);
  EXPECT_EQ(bottom_grip(kWidth, 397), kBottomGrip);
  EXPECT_EQ(bottom_grip(kWidth, 398), kBottomRightGrip);
  EXPECT_EQ(title_grip(kWidth, 7), kTopLeftGrip);
  EXPECT_EQ(title_grip(kWidth, 8), kTopGrip);
  EXPECT_EQ(title_grip(kWidth, 393), kTopRightGrip);
  EXPECT_EQ(title_pointer(kWidth, 7, 20), kPointerNWSE);
  EXPECT_EQ(title_pointer(kWidth, 393, 20), kPointerNESW);
  EXPECT_EQ(title_pointer(kWidth, 100, 5), kPointerNS);
  EXPECT_EQ(title_pointer(kWidth, 100, 6), kDefaultPointer);
  EXPECT_TRUE(moves_over_edge(0, kWidth, 2, 10));
  EXPECT_FALSE(moves_over_edge(0, kWidth, 3, 10));
  EXPECT_TRUE(moves_over_edge(0, kWidth, 398, 10));
  EXPECT_TRUE(moves_over_edge(2, kWidth, 100, 22));
}

TEST(SkinLayout, CutsTheCornersAlikeAtEveryScale) {
  for (const int dpi : {96, 120, 144, 192, 288}) {
    const Scale scale(dpi);
    std::set<std::pair<int, int>> cut;
    for (const PixelRect& part : corner_cuts(100, 80, scale))
      for (int y = part.top; y < part.bottom; ++y)
        for (int x = part.left; x < part.right; ++x) cut.insert({x, y});
    for (const auto& [x, y] : cut) {
      EXPECT_TRUE(cut.contains({99 - x, y}));
      EXPECT_TRUE(cut.contains({x, 79 - y}));
    }
    EXPECT_TRUE(cut.contains({scale(4) - 1, 0}));
    EXPECT_FALSE(cut.contains({scale(4), 0}));
    EXPECT_TRUE(cut.contains({0, scale(4) - 1}));
    if (dpi == 96) {
      EXPECT_EQ(cut.size(), 4u * 8u);
    }
  }
}

TEST(SkinLayout, ChoosesTheLargestSheetThatFits) {
  const std::pair<int, int> cases[] = {{96, 100},  {119, 100}, {120, 125}, {144, 150},
                                       {168, 150}, {192, 200}, {288, 300}, {480, 300}};
  for (const auto& [dpi, percent] : cases) EXPECT_EQ(sheet_percent(Scale(dpi)), percent);
}

TEST(SkinLayout, TheBackgroundEndsInItsColorsAtEveryHeight) {
  for (int rows = 1; rows < 40; ++rows) {
    std::vector<uint32_t> memory(static_cast<size_t>(rows) * 3, 0xABABAB);
    const PixelView view{memory.data(), 3, rows, 3};
    paint_background(view, 0x102030, 0xF0E0D1);
    if (rows > 2) {
      EXPECT_EQ(view.row(0)[2], to_pixel(0x102030));
    }
    if (rows > 1) {
      EXPECT_EQ(view.row(rows - 1)[0], to_pixel(0xF0E0D1));
    }
    if (rows % 2 == 1 && rows > 1) {
      EXPECT_EQ(view.row(rows / 2)[1], to_pixel(0x808080)) << rows;
    }
    for (int y = 1; y < rows; ++y)
      EXPECT_GE(SplitRGB(to_color(view.row(y)[0])).r, SplitRGB(to_color(view.row(y - 1)[0])).r);
  }
}

}  // namespace
}  // namespace kestrelon::skin
