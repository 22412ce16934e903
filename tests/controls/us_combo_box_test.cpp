// The combo box as a user meets it: keys, mouse, completion, and the ways out of an open list.
#include <algorithm>
#include <functional>

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
  void leave() {
    other_->take_focus();
    pump_for(30);
  }
  HWND list() {
    HWND found = nullptr;
    while ((found = FindWindowExW(nullptr, found, L"KestrelonPopup2012", nullptr)) != nullptr)
      if (IsWindowVisible(found)) return found;
    return nullptr;
  }
  int row_height() {
    RECT client{};
    GetClientRect(list(), &client);
    return static_cast<int>(client.bottom) / 6;  // the strip below the rows is less than a row
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
  leave();
  focus();
  type_text(L"xyz");
  leave();
  EXPECT_EQ(count(take_names(*site_), L"NotInList"), 1);
  EXPECT_EQ(text(), L"Broca");
  EXPECT_EQ(index(), 2);
  focus();
  type_text(L"agua");
  leave();
  EXPECT_EQ(text(), L"\u00c1gua") << "a known text takes the letters of its item";
  EXPECT_EQ(count(take_names(*site_), L"NotInList"), 0);
  site_->on_event([&](const std::wstring& name, DISPPARAMS& arguments) {
    if (name != L"NotInList") return;
    call(L"AddItem", {Variant(L"Rebite")});
    BSTR& offered = *V_BSTRREF(&arguments.rgvarg[1]);
    SysReAllocString(&offered, L"rebite");
  });
  focus();
  type_text(L"novo");
  leave();
  EXPECT_EQ(text(), L"Rebite");
  site_->on_event([&](const std::wstring& name, DISPPARAMS& arguments) {
    if (name == L"NotInList") *V_BOOLREF(&arguments.rgvarg[0]) = VARIANT_TRUE;
  });
  focus();
  type_text(L"fica");
  leave();
  EXPECT_EQ(text(), L"fica");
}

TEST_F(ComboBoxTest, AHandlerFillsTheListForWhatIsTyped) {
  put(L"AutoComplete", Variant(3L));
  call(L"Clear");
  site_->on_event([&](const std::wstring& name, DISPPARAMS&) {
    if (name != L"RequestSuggestions") return;
    call(L"Clear");
    call(L"AddItems", {Variant(L"Loja do Sul\nMercado do Sul\nOficina")});
  });
  type_text(L"sul");
  EXPECT_TRUE(pump_until([&] { return open(); }, 2000));
  EXPECT_EQ(text(), L"sul") << "filling the list takes nothing of what is typed";
  key_press(VK_DOWN);
  key_press(VK_DOWN);
  key_press(VK_RETURN);
  EXPECT_EQ(text(), L"Mercado do Sul");
  const Names log = take_log(*site_);
  EXPECT_EQ(count(log, L"RequestSuggestions(\"sul\")") + count(log, L"RequestSuggestions(sul)"), 1);
}

TEST_F(ComboBoxTest, TheTextOutlivesTheListInAFieldThatIsTyped) {
  put(L"Text", Variant(L"bucha"));
  EXPECT_EQ(index(), 3);
  call(L"Clear");
  EXPECT_EQ(text(), L"bucha");
  EXPECT_EQ(index(), -1);
  call(L"AddItems", {Variant(L"Arruela\nBucha")});
  EXPECT_EQ(index(), 1) << "its item has come";
  call(L"RemoveItem", {Variant(1L)});
  EXPECT_EQ(index(), -1) << "no neighbour takes its place";
  EXPECT_EQ(text(), L"bucha");
}

TEST_F(ComboBoxTest, ListStyleChoosesByLettersAndIsEmptiedByDelete) {
  put(L"Style", Variant(1L));
  focus();
  type_text(L"pa");
  EXPECT_EQ(text(), L"Parafuso");
  EXPECT_FALSE(open());
  key_press(VK_DELETE);
  EXPECT_EQ(text(), L"");
  EXPECT_EQ(index(), -1);
  put(L"Required", Variant(true));
  key_press(VK_END);
  EXPECT_EQ(text(), L"Porca");
  key_press(VK_DELETE);
  EXPECT_EQ(text(), L"Porca");
  put(L"Locked", Variant(true));
  key_press(VK_HOME);
  EXPECT_EQ(text(), L"Porca");
  key_press(VK_F4);
  EXPECT_FALSE(open());
}

TEST_F(ComboBoxTest, ChecksByKeyAndMouseAndNamesThemInTheField) {
  put(L"Style", Variant(1L));
  put(L"CheckBoxes", Variant(true));
  focus();
  key_press(VK_F4);
  ASSERT_TRUE(open());
  key_press(VK_HOME);
  key_press(VK_SPACE);
  mouse_click(list(), 8, row_height() * 2 + row_height() / 2);
  EXPECT_TRUE(open()) << "a check does not choose";
  EXPECT_EQ(to_text(get(*site_, L"CheckedText")), L"A\u00e7o inox; Broca");
  EXPECT_EQ(count(take_names(*site_), L"ItemChecked"), 2);
}

TEST_F(ComboBoxTest, ColumnsAreTypedByTheirOwnTexts) {
  put(L"ColumnWidths", Variant(L"40;100"));
  put(L"TextColumn", Variant(1L));
  put(L"AutoComplete", Variant(1L));
  call(L"Clear");
  call(L"AddItems", {Variant(L"10\tParafuso\n20\tPorca")});
  type_text(L"por");
  EXPECT_EQ(text(), L"porca");
  EXPECT_EQ(index(), 1);
  put(L"AutoComplete", Variant(3L));
  put(L"Text", Variant(L""));
  type_text(L"10");
  EXPECT_TRUE(open()) << "suggestions look at every column";
  key_press(VK_DOWN);
  EXPECT_EQ(text(), L"Parafuso");
}

TEST_F(ComboBoxTest, TheMouseOpensChoosesAndCloses) {
  RECT client{};
  GetClientRect(window(), &client);
  mouse_click(window(), client.right - 8, client.bottom / 2);
  ASSERT_TRUE(open());
  RECT field{}, where{};
  GetWindowRect(window(), &field);
  GetWindowRect(list(), &where);
  EXPECT_EQ(where.top, field.bottom);
  EXPECT_EQ(where.right - where.left, field.right - field.left);
  mouse_click(list(), 20, row_height() * 3 + row_height() / 2);
  EXPECT_FALSE(open());
  EXPECT_EQ(text(), L"Bucha");
  EXPECT_EQ(count(take_log(*site_), L"CloseUp(True)"), 1);
  part_clicks();
  mouse_click(window(), client.right - 8, client.bottom / 2);
  EXPECT_TRUE(open());
  part_clicks();
  mouse_click(window(), client.right - 8, client.bottom / 2);
  EXPECT_FALSE(open()) << "the second press on the button";
}

TEST_F(ComboBoxTest, TheListStaysOnTheScreenAndRemembersItsSize) {
  for (int i = 0; i < 40; ++i) call(L"AddItem", {Variant(L"Item")});
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  RECT field{};
  GetWindowRect(window(), &field);
  SetWindowPos(form_.hwnd(), nullptr, 100, static_cast<int>(work.bottom) - 120, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER);
  pump_for(30);
  focus();
  key_press(VK_F4);
  ASSERT_TRUE(open());
  RECT where{};
  GetWindowRect(window(), &field);
  GetWindowRect(list(), &where);
  EXPECT_EQ(where.bottom, field.top) << "above where there is more room";
  const LONG high = where.bottom - where.top;
  mouse_move(list(), static_cast<int>(where.right - where.left) - 22, 4);
  mouse_down();
  mouse_move(list(), static_cast<int>(where.right - where.left) + 8, -26);
  mouse_up();
  pump_for(30);
  RECT larger{};
  GetWindowRect(list(), &larger);
  EXPECT_EQ(larger.right - larger.left, where.right - where.left + 30);
  EXPECT_EQ(larger.bottom - larger.top, high + 30);
  EXPECT_EQ(larger.bottom, field.top);
  key_press(VK_ESCAPE);
  key_press(VK_F4);
  GetWindowRect(list(), &where);
  EXPECT_EQ(where.right - where.left, larger.right - larger.left);
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

TEST_F(ComboBoxTest, ThePressThatClosesReachesItsTarget) {
  call(L"ShowDropDown");
  ASSERT_TRUE(open());
  const long before = number(*other_, L"Value");
  part_clicks();
  mouse_click(other_->window(), 8, 15);
  EXPECT_FALSE(open());
  EXPECT_NE(number(*other_, L"Value"), before);
}

TEST_F(ComboBoxTest, OpensInAFormThatIsModal) {
  Form modal;
  modal.create_object = form_.create_object;
  const auto bag = make_com<PropertyBag>();
  ControlState state;
  state.bag = bag.get();
  const auto site =
      modal.add_control(L"Kestrelon2012.USComboBox", L"", RECT{10, 10, 150, 31}, nullptr, state);
  call_method(site->control_dispatch().get(), L"AddItems", {Variant(L"a\nb")});
  EnableWindow(form_.hwnd(), FALSE);
  bring_up(modal);
  site->take_focus();
  pump_for(30);
  key_press(VK_F4);
  EXPECT_NE(list(), nullptr);
  key_press(VK_DOWN);
  key_press(VK_RETURN);
  EXPECT_EQ(to_text(get(*site, L"Text")), L"a");
  EXPECT_EQ(list(), nullptr);
  key_press(VK_F4);
  EXPECT_NE(list(), nullptr);
  EnableWindow(form_.hwnd(), TRUE);
  modal.remove(*site);
  EXPECT_EQ(list(), nullptr);
}

TEST_F(ComboBoxTest, HandlersMayRemoveTheControl) {
  for (const wchar_t* event :
       {L"DropDown", L"CloseUp", L"SelectionChanged", L"Change", L"KeyDown", L"MouseDown"}) {
    auto site = place(L"USComboBox", RECT{20, 60, 180, 82});
    call_method(site->control_dispatch().get(), L"AddItems", {Variant(L"a\nb")});
    site->on_event([&](const std::wstring& name, DISPPARAMS&) {
      if (name == event && site) form_.remove(*std::exchange(site, nullptr));
    });
    site->take_focus();
    pump_for(30);
    part_clicks();
    mouse_click(site->window(), 150, 8);
    if (site) key_press(VK_DOWN);
    if (site) key_press(VK_RETURN);
    pump_for(50);
    EXPECT_FALSE(site) << std::string(event, event + wcslen(event));
  }
}

TEST_F(ComboBoxTest, IsRemovedWhileItsListIsOpen) {
  auto site = place(L"USComboBox", RECT{20, 60, 180, 82});
  call_method(site->control_dispatch().get(), L"AddItems", {Variant(L"a\nb")});
  site->take_focus();
  pump_for(30);
  key_press(VK_F4);
  ASSERT_NE(list(), nullptr);
  form_.remove(*std::exchange(site, nullptr));
  pump_for(50);
  EXPECT_EQ(list(), nullptr);
}

TEST_F(ComboBoxTest, BoundValuesFindTheirItem) {
  call(L"Clear");
  call(L"AddItem", {Variant(L"Ana"), Variant(-1L), Variant(0L), Variant(7L)});
  call(L"AddItem", {Variant(L"Beto"), Variant(-1L), Variant(0L), Variant(9L)});
  put(L"BoundValue", Variant(9L));
  EXPECT_EQ(text(), L"Beto");
  EXPECT_EQ(to_long(get(*site_, L"BoundValue")), 9);
  put(L"BoundValue", Variant(L"7"));
  EXPECT_EQ(text(), L"Ana");
  put(L"BoundValue", Variant(L"nada"));
  EXPECT_EQ(index(), -1);
  EXPECT_EQ(text(), L"");
}

}  // namespace
}  // namespace kestrelon::host
