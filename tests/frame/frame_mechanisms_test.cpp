// The mechanisms that larger controls stand on, all at once in one control: in our container, in
// the system's own and under a dialog's message loop.
#include <gtest/gtest.h>

#include <algorithm>

#include "host/form.h"
#include "host/input.h"
#include "host/message_loop.h"
#include "host/property_bag.h"
#include "tests/frame/frame_probe.h"
#include "tests/frame/probe_places.h"

namespace kestrelon {
namespace {

using host::drain_messages;
using host::key_press;

class ProbeTest : public testing::TestWithParam<PlaceKind> {
 protected:
  void SetUp() override {
    OleInitialize(nullptr);
    host::quicken_mouse_leave();
    probe_ = new FrameProbe;
    life_.attach(probe_->own_unknown());
    place_ = make_probe_place(GetParam(), life_);
    ASSERT_NE(probe_->hwnd(), nullptr);
    place_->run_for(50);
  }
  void TearDown() override {
    place_.reset();
    life_.reset();
    drain_messages();
    OleUninitialize();
  }
  void focus() {
    SetFocus(probe_->hwnd());
    place_->run_for(20);
    probe_->log.clear();
  }
  // Keys through the system's queue and the place's own message loop.
  void press(WORD key) {
    INPUT input[2]{};
    for (INPUT& each : input) {
      each.type = INPUT_KEYBOARD;
      each.ki.wVk = key;
      each.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, 0));
    }
    input[1].ki.dwFlags = KEYEVENTF_KEYUP;
    SendInput(2, input, sizeof(INPUT));
    place_->run_for(30);
  }
  long times(const std::wstring& line) const {
    return static_cast<long>(std::count(probe_->log.begin(), probe_->log.end(), line));
  }

  FrameProbe* probe_ = nullptr;
  ComPtr<IUnknown> life_;
  std::unique_ptr<ProbePlace> place_;
};

TEST_P(ProbeTest, GivesTheFocusToItsEditBoxAndTellsOfItOnce) {
  SetFocus(probe_->hwnd());
  place_->run_for(20);
  EXPECT_EQ(GetFocus(), probe_->edit.hwnd());
  SetFocus(probe_->hwnd());  // the body has been clicked: nothing has come or gone
  place_->run_for(20);
  EXPECT_TRUE(probe_->focus_within());
  EXPECT_EQ(times(L"got focus"), 1);
  EXPECT_EQ(times(L"lost focus"), 0);
  SetFocus(place_->other_window());
  place_->run_for(20);
  EXPECT_EQ(times(L"lost focus"), 1);
  EXPECT_FALSE(probe_->focus_within());
}

TEST_P(ProbeTest, TypesIntoTheEditBoxAndHearsEveryKeyFirst) {
  focus();
  press('A');
  press(VK_LEFT);
  press('B');
  EXPECT_EQ(probe_->edit.text(), L"ba");
  EXPECT_EQ(times(L"down 65"), 1);
  EXPECT_EQ(times(L"press 97"), 1);
  EXPECT_EQ(times(L"changed ba"), 1);
  press(VK_HOME);
  press(VK_DELETE);
  EXPECT_EQ(probe_->edit.text(), L"a");
}

TEST_P(ProbeTest, GoesOnWithWhatAHandlerMakesOfAKey) {
  focus();
  press('X');  // refused as a character
  press('Y');  // changed to z
  EXPECT_EQ(probe_->edit.text(), L"z");
  probe_->key_becomes = 0;
  press(VK_BACK);
  EXPECT_EQ(times(L"down 8"), 1);
  probe_->key_becomes = -1;
  EXPECT_EQ(probe_->edit.text(), L"");  // the character of Backspace is a key press of its own
}

TEST_P(ProbeTest, SurvivesAHandlerThatTakesTheControlAway) {
  focus();
  probe_->on_key = [this] { place_->remove(); };
  press('A');
  EXPECT_EQ(times(L"down 65"), 1);
  EXPECT_EQ(probe_->hwnd(), nullptr);
  EXPECT_EQ(probe_->edit.hwnd(), nullptr);
}

TEST_P(ProbeTest, KeepsKeysOnlyWhileItWantsThem) {
  focus();
  CONTROLINFO info{};
  info.cb = sizeof info;
  probe_->GetControlInfo(&info);
  EXPECT_EQ(info.dwFlags, 0u);
  probe_->keeps_escape = true;
  probe_->GetControlInfo(&info);
  EXPECT_EQ(info.dwFlags, static_cast<DWORD>(CTRLINFO_EATS_ESCAPE));
  press(VK_ESCAPE);
  EXPECT_EQ(times(L"down 27"), 1);
}

TEST_P(ProbeTest, TakesHoverAndPressesOfInnerWindowsForItsOwn) {
  host::mouse_move(probe_->edit.hwnd(), 5, 5);
  place_->run_for(20);
  EXPECT_TRUE(probe_->pointer_over_window());
  host::mouse_click(probe_->edit.hwnd(), 5, 4);
  EXPECT_EQ(times(L"mouse 1 7 6"), 1);
  host::mouse_click(probe_->button->window(), 10, 10);
  EXPECT_EQ(times(L"button"), 1);
}

TEST_P(ProbeTest, ShowsTheEditBoxInItsColors) {
  UpdateWindow(probe_->edit.hwnd());
  const HDC dc = GetDC(probe_->edit.hwnd());
  EXPECT_EQ(GetPixel(dc, 40, 5), RGB(200, 210, 220));
  ReleaseDC(probe_->edit.hwnd(), dc);
}

TEST_P(ProbeTest, OpensAPopupThatNeverTakesTheFocus) {
  focus();
  ASSERT_TRUE(probe_->open_popup({80, 60}));
  place_->run_for(30);
  EXPECT_TRUE(IsWindowVisible(probe_->popup().hwnd()));
  EXPECT_EQ(GetFocus(), probe_->edit.hwnd());
  host::mouse_click(probe_->popup().hwnd(), 10, 10);
  EXPECT_TRUE(probe_->popup().is_open());
  EXPECT_EQ(GetFocus(), probe_->edit.hwnd());
  press('A');
  EXPECT_EQ(probe_->edit.text(), L"a");
}

TEST_P(ProbeTest, ClosesThePopupOnAPressOutsideWhichReachesItsTarget) {
  focus();
  ASSERT_TRUE(probe_->open_popup({80, 60}));
  place_->run_for(20);
  host::mouse_click(place_->other_window(), 5, 5);
  EXPECT_FALSE(probe_->popup().is_open());
  EXPECT_EQ(times(L"popup 0"), 1);
  EXPECT_EQ(place_->presses_on_other(), 1);
}

TEST_P(ProbeTest, ClosesThePopupWhenTheControlIsNoLongerThere) {
  ASSERT_TRUE(probe_->open_popup({80, 60}));
  ShowWindow(probe_->hwnd(), SW_HIDE);
  EXPECT_FALSE(probe_->popup().is_open());
  EXPECT_EQ(times(L"popup 3"), 1);
  ShowWindow(probe_->hwnd(), SW_SHOWNA);
  ASSERT_TRUE(probe_->open_popup({80, 60}));
  SetWindowPos(GetAncestor(probe_->hwnd(), GA_ROOT), nullptr, 90, 90, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  place_->run_for(250);
  EXPECT_FALSE(probe_->popup().is_open());
  EXPECT_EQ(times(L"popup 2"), 1);
  ASSERT_TRUE(probe_->open_popup({80, 60}));
  probe_->on_popup_end = [this] { place_->remove(); };
  place_->remove();
  EXPECT_FALSE(probe_->popup().is_open());
}

TEST_P(ProbeTest, SurvivesTheControlsEndInTheHandlerOfAPopup) {
  ASSERT_TRUE(probe_->open_popup({80, 60}));
  probe_->on_popup_end = [this] { place_->remove(); };
  host::mouse_click(place_->other_window(), 5, 5);
  EXPECT_EQ(probe_->hwnd(), nullptr);
  EXPECT_EQ(probe_->popup().hwnd(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(In, ProbeTest,
                         testing::Values(PlaceKind::kForm, PlaceKind::kAxWindow,
                                         PlaceKind::kDialog),
                         [](const auto& each) { return place_name(each.param); });

}  // namespace
}  // namespace kestrelon
