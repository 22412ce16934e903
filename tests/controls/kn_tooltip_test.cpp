#include "tests/controls/control_fixture.h"
//
#include <commctrl.h>

namespace kestrelon::host {
namespace {

// The tip window of this thread's windows, or null.
HWND find_tip() {
  HWND found = nullptr;
  EnumThreadWindows(
      GetCurrentThreadId(),
      [](HWND window, LPARAM out) CALLBACK -> BOOL {
        wchar_t name[64] = {};
        GetClassNameW(window, name, 64);
        if (lstrcmpiW(name, TOOLTIPS_CLASSW) != 0) return TRUE;
        *reinterpret_cast<HWND*>(out) = window;
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&found));
  return found;
}

class KnTooltipTest : public ControlTest {
 protected:
  KnTooltipTest()
      : site_(place(L"USCheckBox", RECT{20, 20, 180, 50})),
        service_(library().create(L"KN_TOOLTIP").as<IDispatch>()) {
    bring_up(form_);
  }
  void show(IDispatch* control) {
    call_method(service_.get(), L"ShowToolTip",
                {Variant(L"CNPJ"), Variant(L"Inv\u00e1lido"), Variant(control), Variant(2L)});
  }

  ComPtr<ControlSite> site_;
  ComPtr<IDispatch> service_;
};

TEST_F(KnTooltipTest, ShowsATipAtAControlUntilItIsDestroyed) {
  show(site_->dispatch());
  const HWND tip = find_tip();
  ASSERT_NE(tip, nullptr);
  EXPECT_TRUE(IsWindowVisible(tip));
  EXPECT_EQ(to_long(get_property(service_.get(), L"ToolhWnd")),
            static_cast<long>(reinterpret_cast<LONG_PTR>(site_->window())));
  EXPECT_EQ(GetFocus(), site_->window());
  EXPECT_EQ(SendMessageW(tip, TTM_GETTIPBKCOLOR, 0, 0), 14811135);
  call_method(service_.get(), L"DestroyToolTip");
  EXPECT_EQ(find_tip(), nullptr);
}

TEST_F(KnTooltipTest, ServesAControlThatIsOffWithoutTheFocus) {
  put(*site_, L"Enabled", Variant(false));
  SetFocus(form_.hwnd());
  show(site_->dispatch());
  EXPECT_NE(find_tip(), nullptr);
  EXPECT_NE(GetFocus(), site_->window());
}

TEST_F(KnTooltipTest, RaisesNothingForAnObjectWithoutAWindow) {
  EXPECT_NO_THROW(show(service_.get()));
  EXPECT_NO_THROW(show(nullptr));
  EXPECT_EQ(find_tip(), nullptr);
}

TEST_F(KnTooltipTest, TakesItsTipAlongWhenItEnds) {
  show(site_->dispatch());
  ASSERT_NE(find_tip(), nullptr);
  service_.reset();
  EXPECT_EQ(find_tip(), nullptr);
}

}  // namespace
}  // namespace kestrelon::host
