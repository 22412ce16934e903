#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

using Names = std::vector<std::wstring>;

const std::wstring kDisc = L"" KESTRELON_SOURCE_DIR L"/resources/samples/disc.png";
constexpr COLORREF kBehind = RGB(40, 160, 220);

class AlphaImageTest : public ControlTest {
 protected:
  ComPtr<ControlSite> disc(const RECT& bounds) {
    auto site = place(L"USAlphaImage", bounds);
    load(*site);
    return site;
  }
  static bool load(ControlSite& site) {
    return to_bool(call_method(site.control_dispatch().get(), L"LoadImage_FromFile",
                               {Variant(kDisc.c_str())}));
  }
  COLORREF shown_at(int x, int y) {
    pump_for(20);
    const HDC dc = GetDC(form_.hwnd());
    const COLORREF colour = GetPixel(dc, x, y);
    ReleaseDC(form_.hwnd(), dc);
    return colour;
  }
};

// The disc of the samples: opaque in the middle, transparent in the corners.
TEST_F(AlphaImageTest, ShowsTheFormThroughItsAlphaWithAndWithoutAWindow) {
  for (const bool windowless : {true, false}) {
    SCOPED_TRACE(windowless);
    Form form;
    form.create_object = form_.create_object;
    form.allow_windowless = windowless;
    form.set_back_color(kBehind);
    ControlState state;
    const auto bag = make_com<PropertyBag>();
    state.bag = bag.get();
    const auto site = form.add_control(L"Kestrelon2012.USAlphaImage", L"", RECT{30, 20, 222, 212},
                                       nullptr, state);
    ASSERT_TRUE(load(*site));
    bring_up(form);
    EXPECT_EQ(site->window() == nullptr, windowless);
    pump_for(20);
    const HDC dc = GetDC(form.hwnd());
    EXPECT_EQ(GetPixel(dc, 31, 21), kBehind);
    EXPECT_NE(GetPixel(dc, 126, 116), kBehind);
    const COLORREF opaque = GetPixel(dc, 126, 116);
    put(*site, L"Opacity", Variant(50L));
    pump_for(20);
    const COLORREF half = GetPixel(dc, 126, 116);
    ReleaseDC(form.hwnd(), dc);
    EXPECT_NEAR(GetRValue(half), (GetRValue(opaque) + GetRValue(kBehind)) / 2, 2);
    EXPECT_NEAR(GetBValue(half), (GetBValue(opaque) + GetBValue(kBehind)) / 2, 2);
  }
}

TEST_F(AlphaImageTest, TellsOfThePointerWithoutAWindowOfItsOwn) {
  const auto site = disc({30, 20, 222, 212});
  bring_up(form_);
  mouse_away();
  take_log(*site);
  mouse_move(form_.hwnd(), 125, 115);
  mouse_move(form_.hwnd(), 126, 116);
  EXPECT_EQ(take_names(*site), (Names{L"MouseEnter"}));
  EXPECT_TRUE(to_bool(call_method(site->control_dispatch().get(), L"isMouseOver", {})));
  mouse_move(form_.hwnd(), 250, 230);  // elsewhere on the form: no one tells the control
  const auto left = [&] {
    return !to_bool(call_method(site->control_dispatch().get(), L"isMouseOver", {}));
  };
  EXPECT_TRUE(pump_until(left, 1000));
  mouse_move(form_.hwnd(), 125, 115);
  EXPECT_EQ(take_names(*site), (Names{L"MouseExit", L"MouseEnter"}));
}

TEST_F(AlphaImageTest, LeavesWhenAnotherControlCoversThePointer) {
  const auto below = disc({30, 20, 222, 212});
  const auto above = disc({120, 20, 312, 212});
  bring_up(form_);
  mouse_away();
  mouse_move(form_.hwnd(), 100, 115);
  take_log(*below);
  mouse_move(form_.hwnd(), 180, 115);  // inside both
  EXPECT_TRUE(pump_until([&] { return !below->events()->log().empty(); }, 1000));
  EXPECT_EQ(take_names(*below), (Names{L"MouseExit"}));
  EXPECT_EQ(take_names(*above), (Names{L"MouseEnter"}));
}

TEST_F(AlphaImageTest, GivesTheMouseOutsideItsShapeToWhatLiesBelow) {
  for (const bool windowless : {true, false}) {
    SCOPED_TRACE(windowless);
    form_.allow_windowless = windowless;
    auto below = disc({30, 20, 222, 212});
    auto above = disc({30, 20, 222, 212});
    if (!windowless) std::swap(below, above);  // the window made first is the upper one
    put(*above, L"HitTest", Variant(3L));
    if (windowless) bring_up(form_);
    mouse_away();
    take_log(*below);
    take_log(*above);
    mouse_click(form_.hwnd(), 31, 21);  // the corner, transparent in both
    EXPECT_EQ(take_names(*below), (Names{L"MouseEnter", L"MouseDown", L"MouseUp"}));
    EXPECT_EQ(take_names(*above), (Names{}));
    part_clicks();
    mouse_click(form_.hwnd(), 126, 116);
    EXPECT_EQ(take_names(*above), (Names{L"MouseEnter", L"MouseDown", L"MouseUp"}));
    form_.remove(*above);
    form_.remove(*below);
  }
}

TEST_F(AlphaImageTest, TakesNoMouseWhileDisabled) {
  const auto site = disc({30, 20, 222, 212});
  bring_up(form_);
  put(*site, L"Enabled", Variant(false));
  take_log(*site);
  mouse_click(form_.hwnd(), 125, 115);
  EXPECT_EQ(take_names(*site), (Names{}));
}

}  // namespace
}  // namespace kestrelon::host
