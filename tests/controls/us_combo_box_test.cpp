// The combo box as a user meets it: keys, mouse, completion, and the ways out of an open list.
#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

using Names = std::vector<std::wstring>;

class ComboBoxTest : public ControlTest {
 protected:
  ComboBoxTest() : site_(place(L"USComboBox", RECT{20, 20, 180, 42})) {
    other_ = place(L"USCheckBox", RECT{20, 160, 180, 190});
    call(L"AddItems", {Variant(L"A\u00e7o inox\n\u00c1gua\nBroca\nBucha\nParafuso\nPorca")});
    bring_up(form_);
    mouse_away();
    focus();
  }
  Variant call(const wchar_t* name, std::vector<Variant> arguments = {}) {
    return call_method(site_->control_dispatch().get(), name, std::move(arguments));
  }
  std::wstring text() { return to_text(get(*site_, L"Text")); }
  long index() { return number(*site_, L"ListIndex"); }
  bool open() { return to_bool(get(*site_, L"DroppedDown")); }
  void put(const wchar_t* name, const Variant& value) { ControlTest::put(*site_, name, value); }
  void focus() {
    site_->take_focus();
    pump_for(30);
    take_log(*site_);
  }
  HWND window() { return site_->window(); }
  int count(const Names& names, const wchar_t* name) {
    return static_cast<int>(std::count(names.begin(), names.end(), name));
  }

  ComPtr<ControlSite> site_, other_;
};

TEST_F(ComboBoxTest, ArrowsChooseWhileClosedAndOpen) {
  key_press(VK_DOWN);
  EXPECT_EQ(text(), L"A\u00e7o inox");
  key_press(VK_F4);
  EXPECT_TRUE(open());
  key_press(VK_DOWN);
  key_press(VK_RETURN);
  EXPECT_FALSE(open());
  EXPECT_EQ(text(), L"\u00c1gua");
  const Names log = take_log(*site_);
  EXPECT_EQ(count(log, L"CloseUp(True)"), 1);
  EXPECT_EQ(count(log, L"SelectionChanged"), 2);
}

TEST_F(ComboBoxTest, EscapeRestores) {
  put(L"ListIndex", Variant(2L));
  key_chord(VK_MENU, VK_DOWN);
  key_press(VK_END);
  EXPECT_EQ(text(), L"Porca");
  key_press(VK_ESCAPE);
  EXPECT_FALSE(open());
  EXPECT_EQ(text(), L"Broca");
  EXPECT_EQ(index(), 2);
}

TEST_F(ComboBoxTest, AppendSelectsWhatIsAddedAndDeletingAddsNothing) {
  put(L"AutoComplete", Variant(1L));
  type_text(L"aco");
  EXPECT_EQ(text(), L"aco inox");
  EXPECT_EQ(number(*site_, L"SelStart"), 3);
  EXPECT_EQ(number(*site_, L"SelLength"), 5);
  key_press(VK_BACK);
  EXPECT_EQ(text(), L"aco");
}

TEST_F(ComboBoxTest, SuggestionsFollowWhatIsTyped) {
  put(L"AutoComplete", Variant(3L));
  type_text(L"uc");
  EXPECT_TRUE(open());
  key_press(VK_DOWN);
  key_press(VK_RETURN);
  EXPECT_EQ(text(), L"Bucha");
  type_text(L"zzz");
  EXPECT_FALSE(open());
}

TEST_F(ComboBoxTest, UnknownTextsAreTakenBackUnlessTheProgramKeepsThem) {
  put(L"LimitToList", Variant(true));
  put(L"AutoComplete", Variant(0L));
  put(L"Text", Variant(L"Broca"));
  other_->take_focus();
  pump_for(30);
  focus();
  put(L"SelStart", Variant(0L));
  type_text(L"x");
  other_->take_focus();
  pump_for(30);
  EXPECT_EQ(count(take_names(*site_), L"NotInList"), 1);
  EXPECT_EQ(text(), L"Broca");
}

TEST_F(ComboBoxTest, EveryWayOutClosesTheList) {
  const std::function<void()> ways[] = {
      [&] { mouse_click(other_->window(), 5, 5); }, [&] { key_press(VK_TAB); },
      [&] { call(L"HideDropDown"); }, [&] { put(L"Enabled", Variant(false)); },
      [&] { SetWindowPos(window(), nullptr, 40, 40, 0, 0, SWP_NOSIZE | SWP_NOZORDER); }};
  for (const auto& way : ways) {
    put(L"Enabled", Variant(true));
    focus();
    call(L"ShowDropDown");
    ASSERT_TRUE(open());
    part_clicks();
    way();
    EXPECT_TRUE(pump_until([&] { return !open(); }, 1000));
    EXPECT_EQ(count(take_names(*site_), L"CloseUp"), 1);
  }
}

TEST_F(ComboBoxTest, HandlersMayRemoveTheControl) {
  for (const wchar_t* event : {L"DropDown", L"CloseUp", L"SelectionChanged", L"Change"}) {
    auto site = place(L"USComboBox", RECT{20, 60, 180, 82});
    call_method(site->control_dispatch().get(), L"AddItems", {Variant(L"a\nb")});
    site->on_event([&](const std::wstring& name, DISPPARAMS&) {
      if (name == event && site) form_.remove(*std::exchange(site, nullptr));
    });
    site->take_focus();
    pump_for(30);
    key_press(VK_F4);
    if (site) key_press(VK_DOWN);
    if (site) key_press(VK_RETURN);
    pump_for(50);
    EXPECT_FALSE(site);
  }
}

TEST_F(ComboBoxTest, BoundValuesFindTheirItem) {
  put(L"BoundValue", Variant(L"nada"));
  EXPECT_EQ(index(), -1);
  EXPECT_EQ(text(), L"");
}

}  // namespace
}  // namespace kestrelon::host
