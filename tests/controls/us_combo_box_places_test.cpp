// USComboBox under other hosts' message loops: our form, the system's container in a plain loop,
// and there under a dialog's, which would take Tab, arrows, Enter and Escape for itself.
#include "tests/controls/control_fixture.h"
#include "tests/frame/probe_places.h"

namespace kestrelon::host {
namespace {

class ComboPlacesTest : public testing::TestWithParam<PlaceKind> {
 protected:
  void SetUp() override {
    OleInitialize(nullptr);
    control_ = library().create(L"USComboBox");
    place_ = make_probe_place(GetParam(), control_);
    combo_ = control_.as<IDispatch>();
    call_method(combo_.get(), L"AddItems", {Variant(L"Arruela\nBroca\nBucha\nPorca")});
    place_->run_for(50);
    SetFocus(window());
    place_->run_for(30);
  }
  void TearDown() override {
    place_.reset();
    combo_.reset();
    control_.reset();
    drain_messages();
    OleUninitialize();
  }
  HWND window() { return reinterpret_cast<HWND>(static_cast<LONG_PTR>(to_long(get(L"hWnd")))); }
  Variant get(const wchar_t* name) { return get_property(combo_.get(), name); }
  bool open() { return to_bool(get(L"DroppedDown")); }
  std::wstring text() { return to_text(get(L"Text")); }
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

  ComPtr<IUnknown> control_;
  ComPtr<IDispatch> combo_;
  std::unique_ptr<ProbePlace> place_;
};

TEST_P(ComboPlacesTest, KeysReachTheOpenList) {
  press('P');
  EXPECT_TRUE(open()) << "a suggestion";
  press(VK_DOWN);
  EXPECT_EQ(text(), L"Porca");
  press(VK_RETURN);
  EXPECT_FALSE(open());
  press(VK_F4);
  ASSERT_TRUE(open());
  press(VK_HOME);
  press(VK_NEXT);
  EXPECT_EQ(text(), L"Porca");
  press(VK_UP);
  EXPECT_EQ(text(), L"Bucha");
  press(VK_ESCAPE);
  EXPECT_FALSE(open());
  EXPECT_EQ(text(), L"Porca");
  press(VK_F4);
  press(VK_UP);
  press(VK_TAB);
  EXPECT_FALSE(open());
  EXPECT_EQ(text(), L"Bucha");
}

TEST_P(ComboPlacesTest, ThePressOutsideReachesItsTarget) {
  press(VK_F4);
  ASSERT_TRUE(open());
  part_clicks();
  mouse_click(place_->other_window(), 10, 10);
  place_->run_for(50);
  EXPECT_FALSE(open());
  EXPECT_EQ(place_->presses_on_other(), 1);
}

TEST_P(ComboPlacesTest, GoesWithItsHostWhileOpen) {
  press(VK_F4);
  ASSERT_TRUE(open());
  place_->remove();
  place_->run_for(50);
  const HWND list = FindWindowW(L"KestrelonPopup2012", nullptr);
  EXPECT_FALSE(list != nullptr && IsWindowVisible(list));
}

INSTANTIATE_TEST_SUITE_P(Places, ComboPlacesTest,
                         testing::Values(PlaceKind::kForm, PlaceKind::kAxWindow,
                                         PlaceKind::kDialog),
                         [](const auto& test) { return place_name(test.param); });

}  // namespace
}  // namespace kestrelon::host
