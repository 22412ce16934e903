// Which picture of the strip stands where, in every theme, value and state that can be reached.
#include "base/resource_ids.h"
#include "controls/mark_control/mark_layout.h"
#include "controls/us_check_box/us_check_box_layout.h"
#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

constexpr int kWidth = 120, kHeight = 31, kTop = (kHeight - 13) / 2;

// The strip of marks as the library carries it.
Picture load_strip() {
  const HMODULE module = GetModuleHandleW(L"kestrelon2012.ocx");
  const auto bitmap = static_cast<HBITMAP>(LoadImageW(module, MAKEINTRESOURCEW(IDB_CHECK_MARKS),
                                                      IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
  DIBSECTION facts{};
  GetObjectW(bitmap, sizeof facts, &facts);
  Picture strip{static_cast<int>(facts.dsBm.bmWidth), static_cast<int>(facts.dsBm.bmHeight), {}};
  const HDC dc = CreateCompatibleDC(nullptr);
  const HGDIOBJ displaced = SelectObject(dc, bitmap);
  for (int y = 0; y < strip.height; ++y) {
    for (int x = 0; x < strip.width; ++x) {
      const COLORREF colour = GetPixel(dc, x, y);
      strip.pixels.push_back(RGB(GetBValue(colour), GetGValue(colour), GetRValue(colour)));
    }
  }
  SelectObject(dc, displaced);
  DeleteDC(dc);
  DeleteObject(bitmap);
  return strip;
}

class CheckBoxPaintTest : public ControlTest {
 protected:
  CheckBoxPaintTest() : site_(place(L"USCheckBox", RECT{20, 20, 20 + kWidth, 20 + kHeight})) {
    put(*site_, L"BackStyle", Variant(1L));
    strip_ = load_strip();
  }

  // True when the mark at (left, kTop) is the picture at (column, row) of the strip.
  bool shows(int left, int column, int row) {
    const Picture shown = draw_control(*site_, kWidth, kHeight);
    for (int y = 0; y < 13; ++y)
      for (int x = 0; x < 13; ++x)
        if (shown.at(left + x, kTop + y) != strip_.at(column + x, row + y)) return false;
    return true;
  }

  ComPtr<ControlSite> site_;
  Picture strip_;
};

TEST_F(CheckBoxPaintTest, HasAStripOfTwoColumnsAndFifteenRows) {
  EXPECT_EQ(strip_.width, 26);
  EXPECT_EQ(strip_.height, 195);
}

TEST_F(CheckBoxPaintTest, TakesTheRowOfValueAndStateAndTheColumnOfTheTheme) {
  const struct {
    long value;
    int normal, hover, pressed, disabled;
  } rows[] = {{0, 0, 13, 26, 156},
              {1, 52, 39, 78, 169},
              {-1, 52, 39, 78, 169},
              {2, 117, 130, 143, 182},
              {7, 0, 13, 26, 156}};
  bring_up(form_);
  put(*site_, L"ShowFocusRect", Variant(false));
  for (long theme = 0; theme < 3; ++theme) {
    put(*site_, L"Theme", Variant(theme));
    const int column = theme == 2 ? 13 : 0;
    for (const auto& row : rows) {
      mouse_away();
      put(*site_, L"Value", Variant(row.value));
      EXPECT_TRUE(shows(0, column, row.normal)) << theme << " " << row.value;
      mouse_move(site_->window(), 6, 15);
      EXPECT_TRUE(shows(0, column, row.hover)) << theme << " " << row.value;
      mouse_down();
      EXPECT_TRUE(shows(0, column, row.pressed)) << theme << " " << row.value;
      mouse_move(site_->window(), 6, 300);
      mouse_up();
      mouse_away();
      put(*site_, L"Enabled", Variant(false));
      EXPECT_TRUE(shows(0, column, row.disabled)) << theme << " " << row.value;
      put(*site_, L"Enabled", Variant(true));
    }
  }
}

TEST_F(CheckBoxPaintTest, PutsTheMarkAtTheRightAndLeavesTheCaptionWhereItIs) {
  put(*site_, L"Caption", Variant(L"Texto"));
  const Picture left = draw_control(*site_, kWidth, kHeight);
  put(*site_, L"Alignment", Variant(1L));
  const Picture right = draw_control(*site_, kWidth, kHeight);
  EXPECT_TRUE(shows(kWidth - 14, 13, 0));
  for (int y = 0; y < kHeight; ++y)
    for (int x = 17; x < kWidth - 14; ++x)
      ASSERT_EQ(left.at(x, y), right.at(x, y)) << x << "," << y;
}

TEST_F(CheckBoxPaintTest, GraysTheCaptionOfADisabledControl) {
  put(*site_, L"Caption", Variant(L"IIIIIIII"));
  put(*site_, L"ForeColor", Variant(255L));
  put(*site_, L"Enabled", Variant(false));
  const Picture shown = draw_control(*site_, kWidth, kHeight);
  EXPECT_NE(std::count(shown.pixels.begin(), shown.pixels.end(), 0xACA899u), 0);
  EXPECT_EQ(std::count(shown.pixels.begin(), shown.pixels.end(), 0xFF0000u), 0);
}

TEST(CheckBoxLayout, TruncatesHalvesAndKeepsItsMargins) {
  using namespace check_layout;
  EXPECT_EQ(mark_layout::check_rect(100, 30, false), (PixelRect{0, 8, 13, 21}));
  EXPECT_EQ(mark_layout::check_rect(100, 12, false), (PixelRect{0, 0, 13, 13}));
  EXPECT_EQ(mark_layout::check_rect(100, 30, true), (PixelRect{86, 8, 100, 21}));
  EXPECT_EQ(mark_layout::focus_rect(100, 30, false), (PixelRect{16, 1, 98, 29}));
  EXPECT_EQ(mark_layout::focus_rect(100, 30, true), (PixelRect{1, 1, 85, 29}));
  EXPECT_EQ(mark_layout::caption_rect(100, 30, 13), (PixelRect{17, 8, 100, 21}));
}

}  // namespace
}  // namespace kestrelon::host
