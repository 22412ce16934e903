// Tabs with controls on them: switches, their events, the way back of every control, keys and
// mouse.
#include <algorithm>
#include <random>

#include "host/contained_box.h"
#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

using Names = std::vector<std::wstring>;

class TabTest : public ControlTest {
 protected:
  TabTest() : tab_(place(L"USTab", RECT{10, 10, 410, 210})) {
    put(*tab_, L"TabCount", Variant(4L));
  }

  Variant call(const wchar_t* name, std::vector<Variant> arguments = {}) {
    return call_method(tab_->control_dispatch().get(), name, std::move(arguments));
  }
  long active() { return number(*tab_, L"ActiveTab"); }
  void activate(long index) { put(*tab_, L"ActiveTab", Variant(index)); }
  /// A button on the page that shows.
  ComPtr<ControlSite> button(int left, int top = 60) {
    ControlState state;
    const auto bag = make_com<PropertyBag>();
    state.bag = bag.get();
    return form_.add_control(L"Kestrelon2012.USButton", L"", RECT{left, top, left + 80, top + 25},
                             tab_->box(), state);
  }
  static double left_of(FormItem& item) {
    Variant left = get_property(item.dispatch(), L"Left");
    left.change(VT_R8);
    return V_R8(&left);
  }
  Names events() {
    Names out;
    for (const std::wstring& line : take_log(*tab_))
      if (line.find(L"Tab") != std::wstring::npos) out.push_back(line);
    return out;
  }
  void when(const std::wstring& event, std::function<void(DISPPARAMS&)> act) {
    tab_->events()->set_handler([=](const std::wstring& name, DISPPARAMS& params) {
      if (name == event) act(params);
    });
  }
  void click_tab(long index) {
    part_clicks();
    mouse_click(tab_->window(), 2 + static_cast<int>(index) * 90 + 20, 12);
  }

  ComPtr<ControlSite> tab_;
};

TEST_F(TabTest, ASwitchSlidesEveryControlByTheStrideAndBack) {
  const auto one = button(20), two = button(120);
  const double first = left_of(*one), second = left_of(*two);
  activate(2);
  EXPECT_EQ(left_of(*one), first + 150000);
  EXPECT_EQ(left_of(*two), second + 150000);
  const auto late = button(40);
  EXPECT_EQ(left_of(*late), 600);
  activate(0);
  EXPECT_EQ(left_of(*one), first);
  EXPECT_EQ(left_of(*late), 600 - 150000);
  EXPECT_EQ(number(*tab_, L"LastActiveTab"), 2);
}

TEST_F(TabTest, PositionsComeBackAfterEverySequenceOfSwitches) {
  put(*tab_, L"TabCount", Variant(40L));
  std::vector<ComPtr<ControlSite>> controls;
  std::vector<double> homes;
  for (long page = 0; page < 40; page += 3) {
    activate(page);
    controls.push_back(button(10 + static_cast<int>(page)));
    homes.push_back(left_of(*controls.back()));
  }
  std::mt19937 random(3);
  for (int i = 0; i < 60; ++i) activate(static_cast<long>(random() % 40));
  for (long page = 0; page < 40; page += 3) {
    activate(page);
    EXPECT_EQ(left_of(*controls[static_cast<size_t>(page / 3)]),
              homes[static_cast<size_t>(page / 3)])
        << page;
  }
}

TEST_F(TabTest, ARefusedSwitchMovesNothing) {
  const auto one = button(20);
  const double before = left_of(*one);
  when(L"BeforeTabSwitch",
       [](DISPPARAMS& params) { *V_BOOLREF(&params.rgvarg[0]) = VARIANT_TRUE; });
  activate(1);
  EXPECT_EQ(active(), 0);
  EXPECT_EQ(left_of(*one), before);
  when(L"BeforeTabSwitch", [&](DISPPARAMS&) { activate(3); });  // ignored there
  activate(1);
  EXPECT_EQ(active(), 1);
  EXPECT_EQ(left_of(*one), before + 75000);
  take_log(*tab_);
  for (const long bad : {-1L, 4L, 0x7FFFFFFFL, -0x7FFFFFFFL - 1}) activate(bad);
  activate(1);
  EXPECT_EQ(events(), Names{});
}

TEST_F(TabTest, AClickTellsBeforeSwitchClick) {
  bring_up(form_);
  take_log(*tab_);
  click_tab(1);
  EXPECT_EQ(events(), (Names{L"BeforeTabSwitch(1, False)", L"TabSwitch(0)", L"TabClick(1)"}));
  put_property(tab_->control_dispatch().get(), L"TabEnabled", Variant(false), {Variant(2L)});
  take_log(*tab_);
  click_tab(2);
  EXPECT_EQ(events(), Names{});
  activate(2);  // code may
  EXPECT_EQ(active(), 2);
}

TEST_F(TabTest, KeysWalkTheEnabledTabs) {
  put_property(tab_->control_dispatch().get(), L"TabEnabled", Variant(false), {Variant(1L)});
  bring_up(form_);
  tab_->take_focus();
  pump_for(20);
  key_press(VK_RIGHT);
  EXPECT_EQ(active(), 2);
  key_press(VK_LEFT);
  EXPECT_EQ(active(), 0);
  key_press(VK_LEFT);
  EXPECT_EQ(active(), 0);
  key_press(VK_NEXT);
  key_press(VK_TAB);
  EXPECT_EQ(active(), 3);
  key_chord(VK_CONTROL, VK_TAB);
  EXPECT_EQ(active(), 0);
  key_chord(VK_CONTROL, VK_PRIOR);
  EXPECT_EQ(active(), 3);
}

TEST_F(TabTest, PageKeysWorkFromAControlOnThePage) {
  const auto one = button(20);
  bring_up(form_);
  one->take_focus();
  pump_for(20);
  key_chord(VK_CONTROL, VK_NEXT);
  pump_for(20);
  EXPECT_EQ(active(), 1);
  EXPECT_EQ(GetFocus(), tab_->window());
}

TEST_F(TabTest, FocusOnAnotherPageBringsItOrIsTurnedAway) {
  const auto one = button(20);
  activate(2);
  const auto two = button(20);
  bring_up(form_);
  two->take_focus();
  pump_for(20);
  one->take_focus();
  pump_for(50);
  EXPECT_EQ(active(), 0);
  EXPECT_TRUE(GetFocus() == one->window() || IsChild(one->window(), GetFocus()));
  when(L"BeforeTabSwitch",
       [](DISPPARAMS& params) { *V_BOOLREF(&params.rgvarg[0]) = VARIANT_TRUE; });
  two->take_focus();
  pump_for(50);
  EXPECT_EQ(active(), 0);
  EXPECT_EQ(GetFocus(), tab_->window());
}

TEST_F(TabTest, InsertingAndRemovingTakesTheControlsAlong) {
  const auto one = button(20);
  activate(1);
  const auto two = button(20);
  const double home = left_of(*two);
  call(L"InsertTab", {Variant(0L), Variant(L"Meio")});
  EXPECT_EQ(active(), 2);
  EXPECT_EQ(left_of(*two), home);
  activate(0);
  EXPECT_EQ(left_of(*one), home);
  call(L"RemoveTab", {Variant(0L)});
  EXPECT_EQ(number(*tab_, L"TabCount"), 4);
  EXPECT_NE(left_of(*one), home);
  activate(1);
  EXPECT_EQ(left_of(*two), home);
  for (const long bad : {-2L, 99L}) {
    call(L"InsertTab", {Variant(bad)});
    call(L"RemoveTab", {Variant(bad)});
  }
  EXPECT_EQ(number(*tab_, L"TabCount"), 4);
  put(*tab_, L"TabCount", Variant(1L));
  EXPECT_EQ(active(), 0);
  put(*tab_, L"TabCount", Variant(0L));
  EXPECT_EQ(active(), 0);
  put(*tab_, L"TabCount", Variant(-5L));
  EXPECT_EQ(number(*tab_, L"TabCount"), 0);
}

TEST_F(TabTest, HandlersMayRemoveTabsOrTheControl) {
  const auto one = button(20);
  bring_up(form_);
  when(L"BeforeTabSwitch", [&](DISPPARAMS&) { put(*tab_, L"TabCount", Variant(1L)); });
  click_tab(2);
  EXPECT_EQ(active(), 0);
  put(*tab_, L"TabCount", Variant(4L));
  for (const wchar_t* event : {L"MouseDown", L"BeforeTabSwitch"}) {
    if (tab_->active()) form_.remove(*tab_);  // it would lie over the next
    tab_ = place(L"USTab", RECT{10, 10, 410, 210});
    put(*tab_, L"TabCount", Variant(4L));
    const HWND window = tab_->window();
    when(event, [&](DISPPARAMS&) { form_.remove(*tab_); });
    click_tab(1);
    EXPECT_FALSE(IsWindow(window)) << event;
  }
}

TEST_F(TabTest, LoadingKeepsPositionsAndTheActiveTabEvenOfFarPages) {
  put(*tab_, L"TabCount", Variant(20L));
  const auto one = button(20);
  const double home = left_of(*one);
  activate(19);
  const double parked = left_of(*one);
  const auto bag = make_com<PropertyBag>();
  ASSERT_EQ(query<IPersistPropertyBag>(tab_->control())->Save(bag.get(), TRUE, TRUE), S_OK);
  const std::wstring name = one->name();
  form_.remove(*tab_);
  tab_ = place(L"USTab", RECT{10, 10, 410, 210}, bag.get());
  EXPECT_EQ(active(), 19);
  ControlState state;
  const auto again =
      form_.add_control(L"Kestrelon2012.USButton", name, RECT{20, 60, 100, 85}, tab_->box(), state);
  put_property(again->dispatch(), L"Left", Variant(parked));
  activate(0);
  EXPECT_EQ(left_of(*again), home);
}

TEST_F(TabTest, AddControlBringsControlsAndWindowsAndGivesThemBack) {
  const auto other = place(L"USButton", RECT{10, 230, 90, 255});
  bring_up(form_);
  const HWND window = other->window();
  const HWND bare = CreateWindowExW(0, L"Static", L"x", WS_CHILD, 0, 0, 30, 20, form_.hwnd(),
                                    nullptr, nullptr, nullptr);
  call(L"AddControl", {Variant(other->dispatch()), Variant(-1L), Variant(300L), Variant(900L),
                       Variant(-1L), Variant(-1L), Variant(1L)});
  EXPECT_EQ(active(), 1);
  EXPECT_EQ(GetParent(window), tab_->window());
  EXPECT_EQ(left_of(*other), 300);
  Variant missing;
  V_VT(&missing) = VT_ERROR;
  V_ERROR(&missing) = DISP_E_PARAMNOTFOUND;
  call(L"AddControl", {missing, Variant(static_cast<long>(reinterpret_cast<LONG_PTR>(bare))),
                       Variant(15L), Variant(70L)});
  EXPECT_EQ(GetParent(bare), tab_->window());
  activate(0);
  EXPECT_EQ(left_of(*other), 300 - 75000);
  RECT place{};
  GetWindowRect(bare, &place);
  MapWindowPoints(nullptr, tab_->window(), reinterpret_cast<POINT*>(&place), 2);
  EXPECT_EQ(place.left, 15 - 5000);
  form_.remove(*tab_);
  EXPECT_TRUE(IsWindow(bare));
  EXPECT_EQ(GetParent(bare), form_.hwnd());
  EXPECT_FALSE(IsWindowVisible(bare));
}

}  // namespace
}  // namespace kestrelon::host
