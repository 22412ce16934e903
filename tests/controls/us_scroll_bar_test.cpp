#include <gmock/gmock.h>

#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

using testing::Each;
using Names = std::vector<std::wstring>;

constexpr int kBreadth = 17;
constexpr int kLength = 136;  // a track of 100 pixels
constexpr long kDelay = 60, kFrequency = 30;

// 101 values and pages of 25: a thumb of 20 pixels with 80 to move in.
class ScrollBarTest : public ControlTest {
 protected:
  ScrollBarTest() : site_(place(L"USScrollBar", RECT{20, 20, 20 + kBreadth, 20 + kLength})) {
    put(*site_, L"LargeChange", Variant(25L));
    put(*site_, L"ChangeDelay", Variant(60000L));  // nothing repeats unless a test asks
    bring_up(form_);
    mouse_away();
    part_clicks();
    take_log(*site_);
  }

  HWND window() { return site_->window(); }
  long value() { return number(*site_, L"Value"); }
  void set_value(long value) { put(*site_, L"Value", Variant(value)); }
  void press_at(int along) {
    mouse_move(window(), 8, along);
    mouse_down();
  }
  void click_at(int along) {
    part_clicks();
    mouse_click(window(), 8, along);
  }
  Picture shown() { return draw_control(*site_, kBreadth, kLength); }

  ComPtr<ControlSite> site_;
};

TEST_F(ScrollBarTest, StepsByButtonsAndTrackAndTellsOfEachChange) {
  click_at(kLength - 5);
  EXPECT_EQ(value(), 1);
  click_at(kLength - 30);
  EXPECT_EQ(value(), 26);
  click_at(20);
  EXPECT_EQ(value(), 1);
  click_at(5);
  EXPECT_EQ(value(), 0);
  EXPECT_EQ(take_log(*site_), (Names{L"Change", L"Change", L"Change", L"Change"}));
  click_at(5);  // at the end already
  EXPECT_TRUE(take_log(*site_).empty());
  set_value(100);
  click_at(kLength - 5);
  EXPECT_EQ(value(), 100);
  put(*site_, L"SmallChange", Variant(LONG_MAX));
  click_at(5);
  EXPECT_EQ(value(), 0);
  EXPECT_EQ(take_log(*site_), Names{L"Change"});
}

TEST_F(ScrollBarTest, RunsTheOtherWayByItsOrientation) {
  const auto across = place(L"USScrollBar", RECT{60, 20, 60 + kLength, 20 + kBreadth});
  put(*across, L"Orientation", Variant(1L));
  mouse_click(across->window(), kLength - 5, 8);
  EXPECT_EQ(number(*across, L"Value"), 1);
  part_clicks();
  mouse_click(across->window(), kLength - 30, 8);
  EXPECT_EQ(number(*across, L"Value"), 11);
  part_clicks();
  mouse_click(across->window(), 5, 8);
  EXPECT_EQ(number(*across, L"Value"), 10);
}

TEST_F(ScrollBarTest, StepsTwiceOnADoubleClick) {
  mouse_double_click(window(), 8, kLength - 5);
  EXPECT_EQ(value(), 2);
  EXPECT_EQ(take_log(*site_), (Names{L"Change", L"Change"}));
  EXPECT_NE(GetCapture(), window());
}

TEST_F(ScrollBarTest, DragsTheThumbToBothEndsAndReportsTheChangeAtTheEnd) {
  press_at(18 + 7);
  for (const int at : {26, 40, 65, 66, 300}) mouse_move(window(), 8, at);
  EXPECT_EQ(value(), 100);
  const Names scrolls = take_log(*site_);
  EXPECT_THAT(scrolls, Each(std::wstring(L"Scroll")));
  EXPECT_EQ(scrolls.size(), 5u);
  mouse_move(window(), 8, 18 + 7 + 40);
  EXPECT_EQ(value(), 50);
  mouse_up();
  EXPECT_EQ(take_log(*site_), (Names{L"Scroll", L"Change"}));
  press_at(18 + 40 + 2);  // the grab offset is that of this press
  mouse_move(window(), 8, -300);
  EXPECT_EQ(value(), 0);
  mouse_move(window(), 8, 18 + 40 + 2);
  EXPECT_EQ(value(), 50);
  mouse_up();
  EXPECT_EQ(take_log(*site_), (Names{L"Scroll", L"Scroll"}));  // back where it was: no change
}

TEST_F(ScrollBarTest, RepeatsWhileAButtonIsHeldAndThePointerIsOnIt) {
  put(*site_, L"ChangeDelay", Variant(kDelay));
  put(*site_, L"ChangeFrequency", Variant(kFrequency));
  press_at(kLength - 5);
  EXPECT_EQ(value(), 1);
  EXPECT_TRUE(pump_until([&] { return value() >= 4; }, 3000));
  mouse_move(window(), 8, kLength - 60);
  pump_for(3 * kFrequency);
  const long left = value();
  pump_for(10 * kFrequency);
  EXPECT_EQ(value(), left);
  mouse_move(window(), 8, kLength - 6);
  EXPECT_TRUE(pump_until([&] { return value() >= left + 2; }, 3000));
  mouse_up();
  const long released = value();
  pump_for(10 * kFrequency);
  EXPECT_EQ(value(), released);
  EXPECT_EQ(take_log(*site_).size(), static_cast<size_t>(released));
}

TEST_F(ScrollBarTest, PagesUntilTheThumbIsUnderThePointer) {
  put(*site_, L"ChangeDelay", Variant(kDelay));
  put(*site_, L"ChangeFrequency", Variant(kFrequency));
  press_at(18 + 55);  // reached by the thumb at 50, which covers 40 to 60
  EXPECT_TRUE(pump_until([&] { return value() == 50; }, 3000));
  pump_for(10 * kFrequency);
  EXPECT_EQ(value(), 50);
  mouse_move(window(), 8, 18 + 95);  // further on, it goes on
  EXPECT_TRUE(pump_until([&] { return value() == 100; }, 3000));
  mouse_up();
}

TEST_F(ScrollBarTest, StopsWhenTheCaptureIsTakenOrItIsDisabled) {
  put(*site_, L"ChangeDelay", Variant(kDelay));
  put(*site_, L"ChangeFrequency", Variant(kFrequency));
  press_at(kLength - 5);
  SetCapture(form_.hwnd());
  pump_for(10 * kFrequency);
  EXPECT_EQ(value(), 1);
  ReleaseCapture();
  mouse_up();
  part_clicks();
  press_at(kLength - 5);
  put(*site_, L"Enabled", Variant(false));
  pump_for(10 * kFrequency);
  EXPECT_EQ(value(), 2);
  mouse_up();
  part_clicks();
  press_at(kLength - 5);
  SendMessageW(window(), WM_CANCELMODE, 0, 0);
  pump_for(10 * kFrequency);
  EXPECT_EQ(value(), 2);
  mouse_up();
}

TEST_F(ScrollBarTest, StartsNoRepeatForAButtonLetGoInsideTheHandler) {
  put(*site_, L"ChangeDelay", Variant(kDelay));
  put(*site_, L"ChangeFrequency", Variant(kFrequency));
  site_->on_event([&](const std::wstring&, DISPPARAMS&) { SetCapture(form_.hwnd()); });
  press_at(kLength - 5);
  pump_for(10 * kFrequency);
  EXPECT_EQ(value(), 1);
  ReleaseCapture();
  mouse_up();
}

TEST_F(ScrollBarTest, SurvivesAHandlerThatRemovesIt) {
  site_->on_event([&](const std::wstring&, DISPPARAMS&) { form_.remove(*site_); });
  press_at(kLength - 5);
  site_.reset();
  mouse_up();
  pump_for(50);
}

TEST_F(ScrollBarTest, AnswersNoMouseInADesignerOrWhenItIsNew) {
  const auto fresh = place_new(L"USScrollBar", RECT{60, 20, 60 + kBreadth, 20 + kLength});
  mouse_click(fresh->window(), 8, kLength - 5);
  EXPECT_EQ(number(*fresh, L"Value"), 0);
  EXPECT_TRUE(take_log(*fresh).empty());
  part_clicks();
  mouse_click(window(), 8, kLength - 5, MouseButton::kRight);
  EXPECT_EQ(value(), 0);
}

TEST_F(ScrollBarTest, ShowsWhereThePointerIsAndWhatIsPressed) {
  const Picture idle = shown();
  mouse_move(window(), 8, 80);  // on the track: both buttons are drawn close_by
  const Picture close_by = shown();
  EXPECT_NE(close_by, idle);
  mouse_move(window(), 8, 81);
  EXPECT_EQ(shown(), close_by);
  mouse_move(window(), 8, 5);
  const Picture hot = shown();
  EXPECT_NE(hot, close_by);
  mouse_down();  // nothing moves, and yet the press shows
  const Picture pressed = shown();
  EXPECT_NE(pressed, hot);
  mouse_move(window(), 8, 81);  // off the button it is up
  EXPECT_EQ(shown(), close_by);
  mouse_move(window(), 8, 5);
  EXPECT_EQ(shown(), pressed);
  mouse_up();
  EXPECT_EQ(shown(), hot);
  mouse_away();
  EXPECT_EQ(shown(), idle);
  EXPECT_TRUE(take_log(*site_).empty());
  put(*site_, L"Enabled", Variant(false));
  const Picture disabled = shown();
  EXPECT_NE(disabled, idle);
  mouse_move(window(), 8, 5);
  EXPECT_EQ(shown(), disabled);
}

TEST_F(ScrollBarTest, DrawsTheWholeBarAtEverySize) {
  // Magenta lies behind the control and between the lines of its own pictures.
  for (long orientation = 0; orientation < 2; ++orientation) {
    put(*site_, L"Orientation", Variant(orientation));
    for (int side = 1; side < 60; side += (side < 20 ? 1 : 5))
      for (const int other : {1, 5, 17, 40}) {
        const int width = orientation == 0 ? other : side, height = orientation == 0 ? side : other;
        SetWindowPos(window(), nullptr, 0, 0, width, height, SWP_NOZORDER | SWP_NOMOVE);
        const Picture picture = draw_control(*site_, width, height);
        ASSERT_EQ(std::count(picture.pixels.begin(), picture.pixels.end(), 0xFF00FFu), 0)
            << width << 'x' << height;
        ASSERT_EQ(std::count(picture.pixels.begin(), picture.pixels.end(), 0u), 0)
            << width << 'x' << height;
      }
  }
}

TEST_F(ScrollBarTest, StandsEveryValueOfALong) {
  constexpr long kEnds[] = {LONG_MIN, LONG_MIN + 1, -1, 0, 1, LONG_MAX - 1, LONG_MAX};
  put(*site_, L"Min", Variant(LONG_MIN));
  for (const wchar_t* name : {L"Min", L"Max", L"Value", L"SmallChange", L"LargeChange"})
    for (const long end : kEnds) {
      put(*site_, name, Variant(end));
      EXPECT_EQ(number(*site_, name), end) << name;
    }
  put(*site_, L"Min", Variant(LONG_MIN));
  set_value(LONG_MIN);
  click_at(kLength - 5);
  EXPECT_EQ(value(), -1);  // LONG_MIN + LONG_MAX
  click_at(kLength - 5);
  click_at(kLength - 5);
  EXPECT_EQ(value(), LONG_MAX);
  set_value(0);
  press_at(kLength / 2);
  mouse_move(window(), 8, kLength + 50);
  EXPECT_EQ(value(), LONG_MAX);
  mouse_move(window(), 8, -50);
  EXPECT_EQ(value(), LONG_MIN);
  mouse_up();
}

}  // namespace
}  // namespace kestrelon::host
