#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

using testing::Test;
using Names = std::vector<std::wstring>;

class CheckBoxTest : public ControlTest {
 protected:
  CheckBoxTest() : site_(place(L"USCheckBox", RECT{20, 20, 180, 50})) {
    other_ = place(L"USCheckBox", RECT{20, 80, 180, 110});
    put(*site_, L"Caption", Variant(L"&Emitir nota"));
    bring_up(form_);
    mouse_away();
    take_log(*site_);
  }

  HWND window() { return site_->window(); }

  ComPtr<ControlSite> site_;
  ComPtr<ControlSite> other_;
};

TEST_F(CheckBoxTest, ReportsAHoverAsOneEnterAndOneExit) {
  mouse_move(window(), 5, 15);
  EXPECT_EQ(take_log(*site_), Names{L"MouseEnter"});
  mouse_move(window(), 6, 15);
  EXPECT_EQ(take_log(*site_).size(), 1u);
  mouse_away();
  EXPECT_EQ(take_log(*site_), Names{L"MouseExit"});
}

TEST_F(CheckBoxTest, TogglesOnAClickAndTellsInOrder) {
  part_clicks();
  mouse_click(window(), 6, 15);
  EXPECT_EQ(take_names(*site_), (Names{L"MouseEnter", L"MouseDown", L"MouseUp", L"Click"}));
  EXPECT_EQ(number(*site_, L"Value"), 1);
  part_clicks();
  mouse_click(window(), 6, 15);
  EXPECT_EQ(number(*site_, L"Value"), 0);
}

TEST_F(CheckBoxTest, TakesADoubleClickAsASecondPressWithoutASecondClick) {
  part_clicks();
  mouse_double_click(window(), 6, 15);
  EXPECT_EQ(take_names(*site_),
            (Names{L"MouseEnter", L"MouseDown", L"MouseUp", L"Click", L"MouseDown", L"MouseUp"}));
  EXPECT_EQ(number(*site_, L"Value"), 1);
}

TEST_F(CheckBoxTest, IgnoresOtherButtonsAndReleasesOutside) {
  part_clicks();
  mouse_click(window(), 6, 15, MouseButton::kRight);
  EXPECT_EQ(take_names(*site_), (Names{L"MouseEnter", L"MouseDown", L"MouseUp"}));
  EXPECT_EQ(number(*site_, L"Value"), 0);
  mouse_move(window(), 6, 15);
  mouse_down();
  mouse_move(window(), 6, 200);
  mouse_up();
  EXPECT_EQ(number(*site_, L"Value"), 0);
}

TEST_F(CheckBoxTest, ExitsTwiceWhenThePointerLeavesUnderCapture) {
  mouse_move(window(), 6, 15);
  mouse_down();
  mouse_move(window(), 6, 200);
  pump_for(100);
  mouse_up();
  pump_for(100);
  const auto names = take_names(*site_);
  EXPECT_EQ(std::count(names.begin(), names.end(), L"MouseExit"), 2);
  EXPECT_EQ(std::count(names.begin(), names.end(), L"Click"), 0);
}

TEST_F(CheckBoxTest, TogglesWithTheSpaceKeyAndRaisesClickLast) {
  site_->take_focus();
  pump_for(20);
  take_log(*site_);
  key_press(VK_SPACE);
  EXPECT_EQ(take_log(*site_),
            (Names{L"KeyDown(32, 0)", L"KeyPress(32)", L"KeyUp(32, 0)", L"Click"}));
  EXPECT_EQ(number(*site_, L"Value"), 1);
}

TEST_F(CheckBoxTest, MovesTheFocusWithArrowsAndKeepsItsValue) {
  site_->take_focus();
  pump_for(20);
  key_press(VK_DOWN);
  EXPECT_TRUE(pump_until([&] { return GetFocus() == other_->window(); }, 500));
  key_press(VK_LEFT);
  EXPECT_TRUE(pump_until([&] { return GetFocus() == window(); }, 500));
  EXPECT_EQ(number(*site_, L"Value"), 0);
}

TEST_F(CheckBoxTest, AnswersItsAccessKey) {
  other_->take_focus();
  key_chord(VK_MENU, 'E');
  EXPECT_TRUE(pump_until([&] { return number(*site_, L"Value") == 1; }, 500));
}

TEST_F(CheckBoxTest, GoesOnWithTheKeyThatAHandlerLeaves) {
  short becomes = 0;
  site_->on_event([&](const std::wstring& name, DISPPARAMS& params) {
    if (name == L"KeyDown") set_event_argument(params, 0, Variant(becomes));
  });
  site_->take_focus();
  pump_for(20);
  key_press(VK_SPACE);
  EXPECT_EQ(number(*site_, L"Value"), 0);
  becomes = VK_SPACE;
  key_press(VK_SPACE);
  EXPECT_EQ(number(*site_, L"Value"), 1);
}

TEST_F(CheckBoxTest, SurvivesAHandlerThatRemovesIt) {
  site_->on_event([&](const std::wstring& name, DISPPARAMS&) {
    if (name == L"Click") form_.remove(*site_);
  });
  part_clicks();
  mouse_click(window(), 6, 15);
  site_.reset();
  pump_for(50);
}

TEST_F(CheckBoxTest, RaisesNothingWhileEventsAreFrozen) {
  site_->freeze_events(true);
  part_clicks();
  mouse_click(window(), 6, 15);
  EXPECT_EQ(site_->events_while_frozen(), 0);
  EXPECT_TRUE(take_log(*site_).empty());
  EXPECT_EQ(number(*site_, L"Value"), 1);
  site_->freeze_events(false);
  part_clicks();
  mouse_click(window(), 6, 15);
  EXPECT_FALSE(take_log(*site_).empty());
}

}  // namespace
}  // namespace kestrelon::host
