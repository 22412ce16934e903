// The skin by real messages: taking over, buttons, moves, sizes, closing, handlers at their worst.
#include <algorithm>

#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

using Names = std::vector<std::wstring>;

constexpr LONG_PTR kFrameBits = WS_CAPTION | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;

class UsFormTest : public ControlTest {
 protected:
  void open(long theme = 2, std::vector<std::pair<const wchar_t*, Variant>> more = {}) {
    const auto bag = make_com<PropertyBag>();
    bag->set(L"Theme", Variant(theme));
    for (const auto& [name, value] : more) bag->set(name, value);
    skin_ = place(L"USForm", RECT{0, 0, 200, 28}, bag.get());
    skin_->set_align(Align::kTop);
    bring_up(form_);
    pump_for(30);
  }
  HWND strip() const { return skin_->window(); }
  LONG_PTR style() const { return GetWindowLongPtrW(form_.hwnd(), GWL_STYLE); }
  RECT client() const {
    RECT out{};
    GetClientRect(form_.hwnd(), &out);
    return out;
  }
  int strip_width() const { return static_cast<int>(client().right); }
  uint32_t pixel(int x, int y) { return draw_control(*skin_, strip_width(), 28).at(x, y); }
  void call(const wchar_t* name, std::vector<Variant> arguments = {}) {
    call_method(skin_->control_dispatch().get(), name, std::move(arguments));
  }
  /// The middle of a title button of the theme Windows 8.
  POINT button(int number) const {
    const int centers[] = {0, 15, 42, 78};
    return {strip_width() - 107 + centers[number], 10};
  }
  void click(int number) {
    part_clicks();
    const POINT at = button(number);
    mouse_click(strip(), static_cast<int>(at.x), static_cast<int>(at.y));
    pump_for(60);
  }

  ComPtr<ControlSite> skin_;
};

TEST_F(UsFormTest, TakesTheFrameOffAndLiesAtTheTop) {
  for (const long theme : {0L, 1L, 2L}) {
    if (skin_) form_.remove(*skin_);
    open(theme);
    EXPECT_EQ(style() & kFrameBits, 0);
    EXPECT_EQ(to_long(get_property(form_.dispatch(), L"BorderStyle")), 0);
    RECT place{};
    GetWindowRect(strip(), &place);
    const RECT outer = form_.window_rect();
    EXPECT_EQ(place.left, outer.left);
    EXPECT_EQ(place.top, outer.top);
    EXPECT_EQ(place.right, outer.right);
    EXPECT_EQ(place.bottom - place.top, 28);
    const uint32_t tops[] = {0x3B5A82, 0x727880, 0x354A59};
    EXPECT_EQ(pixel(strip_width() / 2, 0), tops[theme]);
    EXPECT_EQ(pixel(0, 14), tops[theme]);
    EXPECT_EQ(pixel(strip_width() - 1, 14), tops[theme]);
  }
}

TEST_F(UsFormTest, RoundsTheCornersOfTheOfficeThemesOnly) {
  const auto shape = [&] {
    const HRGN region = CreateRectRgn(0, 0, 0, 0);
    const int kind = GetWindowRgn(form_.hwnd(), region);
    const bool round = kind == COMPLEXREGION && !PtInRegion(region, 1, 1) &&
                       !PtInRegion(region, 0, 3) && !PtInRegion(region, 3, 0) &&
                       PtInRegion(region, 2, 1) && PtInRegion(region, 0, 4);
    DeleteObject(region);
    return kind == ERROR ? 0 : round ? 1 : 2;
  };
  open(0);
  EXPECT_EQ(shape(), 1);
  form_.move_window(make_rect(20, 20, 333, 222));
  pump_for(30);
  EXPECT_EQ(shape(), 1);
  put(*skin_, L"Theme", Variant(2L));
  EXPECT_EQ(shape(), 0);
  put(*skin_, L"Theme", Variant(1L));
  EXPECT_EQ(shape(), 1);
}

TEST_F(UsFormTest, PutsEdgesAlongTheSides) {
  open(2);
  const HDC dc = GetDC(form_.hwnd());
  const RECT area = client();
  const int y = static_cast<int>(area.bottom) / 2;
  EXPECT_EQ(GetPixel(dc, 0, y), RGB(0x35, 0x4A, 0x59));
  EXPECT_EQ(GetPixel(dc, 4, y), RGB(0x8B, 0xB8, 0xD7));
  EXPECT_EQ(GetPixel(dc, static_cast<int>(area.right) - 1, y), RGB(0x35, 0x4A, 0x59));
  EXPECT_EQ(GetPixel(dc, static_cast<int>(area.right) / 2, static_cast<int>(area.bottom) - 1),
            RGB(0x35, 0x4A, 0x59));
  ReleaseDC(form_.hwnd(), dc);
}

TEST_F(UsFormTest, MaximizesWithinTheWorkAreaAndComesBack) {
  open(2);
  const RECT before = form_.window_rect();
  click(2);
  EXPECT_EQ(form_.window_state(), 2);
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  const RECT full = form_.window_rect();
  EXPECT_TRUE(EqualRect(&full, &work));
  click(2);
  EXPECT_EQ(form_.window_state(), 0);
  const RECT after = form_.window_rect();
  EXPECT_TRUE(EqualRect(&after, &before));
}

TEST_F(UsFormTest, MinimizesWithABorderForTheTaskBarAndStripsItAgain) {
  open(2);
  click(1);
  EXPECT_EQ(form_.window_state(), 1);
  EXPECT_EQ(to_long(get_property(form_.dispatch(), L"BorderStyle")), 2);
  form_.set_window_state(0);
  pump_for(30);
  EXPECT_EQ(to_long(get_property(form_.dispatch(), L"BorderStyle")), 0);
  EXPECT_EQ(style() & kFrameBits, 0);
}

TEST_F(UsFormTest, ACancelledCloseLeavesALiveSkin) {
  int asked = 0;
  bool cancel = true;
  form_.on_event = [&](const std::wstring& name, DISPPARAMS& params) {
    if (name != L"QueryUnload") return;
    ++asked;
    if (cancel) *params.rgvarg[1].piVal = 1;
  };
  open(2);
  click(3);
  EXPECT_EQ(asked, 1);
  ASSERT_TRUE(form_.loaded());
  click(2);
  EXPECT_EQ(form_.window_state(), 2);
  cancel = false;
  click(3);
  EXPECT_FALSE(form_.loaded());
}

TEST_F(UsFormTest, AReleaseAboveRowSixHoversButDoesNotClick) {
  open(2);
  part_clicks();
  const POINT at = button(2);
  mouse_click(strip(), static_cast<int>(at.x), 5);
  pump_for(60);
  EXPECT_EQ(form_.window_state(), 0);
  EXPECT_EQ(pixel(static_cast<int>(at.x) - 9, 5), 0x6FB3E0u);
  mouse_away();
  EXPECT_EQ(pixel(static_cast<int>(at.x) - 9, 5), 0x3F95CFu);
}

TEST_F(UsFormTest, ShowsPressedHoverAndPlainAndRepaintsOnceForEach) {
  open(2);
  mouse_away();
  const POINT at = button(1);
  const int x = static_cast<int>(at.x) - 9;
  mouse_move(strip(), static_cast<int>(at.x), 10);
  EXPECT_EQ(pixel(x, 10), 0x6FB3E0u);
  const UINT repaints = RegisterWindowMessageW(L"Kestrelon2012.FullRepaints");
  const LRESULT before = SendMessageW(strip(), repaints, 0, 0);
  mouse_move(strip(), static_cast<int>(at.x) + 2, 12);
  mouse_move(strip(), static_cast<int>(at.x) + 3, 11);
  EXPECT_EQ(SendMessageW(strip(), repaints, 0, 0), before);
  put(*skin_, L"EnableMinimizeButton", Variant(false));
  mouse_move(strip(), static_cast<int>(at.x), 10);
  EXPECT_NE(pixel(x, 10), 0x6FB3E0u);
}

TEST_F(UsFormTest, ShowCloseFalseSparesTheSkinsCloseOnly) {
  Names events;
  form_.on_event = [&](const std::wstring& name, DISPPARAMS& params) {
    if (name != L"QueryUnload") return;
    events.push_back(name);
    *params.rgvarg[1].piVal = 1;
  };
  open(2, {{L"ShowClose", Variant(false)}});
  SendMessageW(form_.hwnd(), WM_SYSCOMMAND, SC_CLOSE, 0);
  pump_for(60);
  EXPECT_EQ(events.size(), 1u) << "the window's own close, and no second one by the skin";
  put(*skin_, L"ShowClose", Variant(true));
  events.clear();
  SendMessageW(form_.hwnd(), WM_SYSCOMMAND, SC_CLOSE, 0);
  pump_for(60);
  EXPECT_EQ(events.size(), 2u);
}

TEST_F(UsFormTest, TellsOfActivation) {
  open(2);
  take_log(*skin_);
  SendMessageW(form_.hwnd(), WM_NCACTIVATE, FALSE, 0);
  EXPECT_EQ(pixel(strip_width() / 2, 14), 0xD1DDE6u);
  SendMessageW(form_.hwnd(), WM_NCACTIVATE, TRUE, 0);
  EXPECT_EQ(pixel(strip_width() / 2, 14), 0x3F95CFu);
  EXPECT_EQ(take_log(*skin_), (Names{L"FormActivated(False)", L"FormActivated(True)"}));
}

TEST_F(UsFormTest, FollowsTheHostsCaptionUntilGivenOne) {
  open(2);
  put_property(form_.dispatch(), L"Caption", Variant(L"Pedidos - 12"));
  EXPECT_EQ(to_text(get(*skin_, L"Caption")), L"Pedidos - 12");
  put(*skin_, L"Caption", Variant(L"Clientes"));
  EXPECT_EQ(form_.caption(), L"Clientes");
}

TEST_F(UsFormTest, TheDesignerLosesItsBorderAndNothingElse) {
  form_.set_user_mode(false);
  skin_ = place_new(L"USForm", RECT{0, 0, 200, 28});
  EXPECT_EQ(to_long(get_property(form_.dispatch(), L"BorderStyle")), 0);
  EXPECT_EQ(to_long(get_property(form_.dispatch(), L"BackColor")), 0xF9F9F9);
  EXPECT_EQ(skin_->align(), Align::kTop);
  bring_up(form_);
  EXPECT_EQ(FindWindowExW(form_.hwnd(), nullptr, L"KestrelonEdge2012", nullptr), nullptr);
}

TEST_F(UsFormTest, DragsByTheTitleAndSizesByTheEdges) {
  open(2, {{L"AllowResize", Variant(true)}});
  std::vector<WPARAM> grips;
  form_.message_filter = [&](UINT message, WPARAM wparam, LPARAM, LRESULT&) {
    if (message == WM_NCLBUTTONDOWN) grips.push_back(wparam);
    return message == WM_NCLBUTTONDOWN;
  };
  const auto press = [&](HWND window, int x, int y) {
    SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    SendMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
  };
  const int width = strip_width();
  press(strip(), 100, 12);
  press(strip(), 7, 25);
  press(strip(), 8, 25);
  press(strip(), width - 8, 25);
  press(strip(), width - 7, 25);
  std::vector<HWND> edges;
  for (HWND edge = nullptr;
       (edge = FindWindowExW(form_.hwnd(), edge, L"KestrelonEdge2012", nullptr)) != nullptr;)
    edges.push_back(edge);
  ASSERT_EQ(edges.size(), 3u);
  for (const HWND edge : edges) {
    RECT area{};
    GetClientRect(edge, &area);
    if (area.right < 6) continue;
    for (const int x : {7, 8, static_cast<int>(area.right) - 3, static_cast<int>(area.right) - 2})
      press(edge, x, 1);
  }
  EXPECT_EQ(grips, (std::vector<WPARAM>{HTCAPTION, HTTOPLEFT, HTTOP, HTTOP, HTTOPRIGHT,
                                        HTBOTTOMLEFT, HTBOTTOM, HTBOTTOM, HTBOTTOMRIGHT}));
  grips.clear();
  put(*skin_, L"AllowMove", Variant(false));
  press(strip(), 100, 12);
  EXPECT_TRUE(grips.empty());
}

TEST_F(UsFormTest, ClosesInEveryEvent) {
  for (const wchar_t* const event :
       {L"FormActivated", L"MouseDown", L"MouseUp", L"MouseMove", L"Click", L"DblClick"}) {
    FormOptions options;
    Form form(options);
    form.create_object = [](const std::wstring& prog_id) { return library().create(prog_id); };
    const auto bag = make_com<PropertyBag>();
    bag->set(L"AllowMove", Variant(false));
    ControlState state;
    state.bag = bag.get();
    const auto skin =
        form.add_control(L"Kestrelon2012.USForm", L"", RECT{0, 0, 200, 28}, nullptr, state);
    skin->set_align(Align::kTop);
    bool reached = false;
    bring_up(form);
    skin->events()->set_handler([&](const std::wstring& name, DISPPARAMS&) {
      if (name != event || reached) return;
      reached = true;
      form.unload();
    });
    part_clicks();
    SendMessageW(form.hwnd(), WM_NCACTIVATE, FALSE, 0);
    if (form.loaded()) mouse_double_click(skin->window(), 60, 12);
    pump_for(30);
    EXPECT_TRUE(reached) << std::wstring(event).c_str();
    EXPECT_FALSE(form.loaded());
  }
}

}  // namespace
}  // namespace kestrelon::host
