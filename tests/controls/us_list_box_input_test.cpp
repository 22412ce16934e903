// Mouse and keyboard as a user has them.
#include "tests/controls/us_list_box_fixture.h"

namespace kestrelon::host {
namespace {

using Names = std::vector<std::wstring>;
using Items = std::vector<long>;

TEST_F(ListBoxTest, AClickChoosesAndTellsOnce) {
  fill_numbers(5);
  click_item(2);
  EXPECT_EQ(take_names(*site_),
            (Names{L"MouseEnter", L"MouseDown", L"SelectionChanged", L"MouseUp", L"Click"}));
  EXPECT_EQ(number(L"ListIndex"), 2);
  click_item(2);
  EXPECT_EQ(take_names(*site_), (Names{L"MouseDown", L"MouseUp", L"Click"}));
}

TEST_F(ListBoxTest, DoubleClicksBelongToItems) {
  fill_numbers(2);
  part_clicks();
  mouse_double_click(window(), 60, middle_of(1));
  Names names = take_names(*site_);
  EXPECT_EQ(std::count(names.begin(), names.end(), L"DblClick"), 1);
  part_clicks();
  mouse_double_click(window(), 60, middle_of(1) + 3 * row_height());
  names = take_names(*site_);
  EXPECT_EQ(std::count(names.begin(), names.end(), L"DblClick"), 0);
}

TEST_F(ListBoxTest, ModifiersSelectAsInTheGrid) {
  put(L"MultiSelect", Variant(1L));
  fill_numbers(6);
  click_item(1);
  ::kestrelon::host::key_down(VK_SHIFT);
  click_item(3);
  key_up(VK_SHIFT);
  EXPECT_EQ(selection(), (Items{1, 2, 3}));
  ::kestrelon::host::key_down(VK_CONTROL);
  click_item(2);
  click_item(5);
  key_up(VK_CONTROL);
  EXPECT_EQ(selection(), (Items{1, 3, 5}));
  click_item(0);
  EXPECT_EQ(selection(), Items{0});
  put(L"MultiSelect", Variant(2L));
  click_item(2);
  click_item(4);
  click_item(2);
  EXPECT_EQ(selection(), (Items{0, 4}));
}

TEST_F(ListBoxTest, ABoxIsCheckedWithoutSelecting) {
  put(L"CheckBoxes", Variant(true));
  fill_numbers(3);
  part_clicks();
  mouse_click(window(), 8, middle_of(1));
  EXPECT_TRUE(to_bool(item(L"ItemChecked", 1)));
  EXPECT_EQ(number(L"ListIndex"), -1);
  const Names names = take_names(*site_);
  EXPECT_EQ(std::count(names.begin(), names.end(), L"ItemChecked"), 1);
  put_item(L"ItemChecked", 2, Variant(true));
  EXPECT_TRUE(take_names(*site_).empty()) << "a program's change is no event";
  put(L"ListIndex", Variant(2L));
  focus();
  key_press(VK_SPACE);
  EXPECT_FALSE(to_bool(item(L"ItemChecked", 2)));
}

TEST_F(ListBoxTest, KeysMoveTheMarkAndTheView) {
  fill_numbers(100);
  focus();
  key_press(VK_DOWN);
  EXPECT_EQ(number(L"ListIndex"), 0);
  key_press(VK_END);
  EXPECT_EQ(number(L"ListIndex"), 99);
  EXPECT_GT(number(L"TopIndex"), 80);
  key_press(VK_PRIOR);
  EXPECT_EQ(number(L"ListIndex"), number(L"TopIndex"));
  const long page = 99 - number(L"ListIndex");
  key_press(VK_PRIOR);
  EXPECT_EQ(number(L"ListIndex"), 99 - 2 * page);
  key_press(VK_HOME);
  key_press(VK_NEXT);
  EXPECT_EQ(number(L"ListIndex"), page);
  put(L"MultiSelect", Variant(1L));
  key_press(VK_HOME);
  key_chord(VK_SHIFT, VK_DOWN);
  key_chord(VK_SHIFT, VK_DOWN);
  key_chord(VK_CONTROL, VK_END);
  EXPECT_EQ(selection(), (Items{0, 1, 2}));
  EXPECT_EQ(number(L"ListIndex"), 99);
  key_chord(VK_CONTROL, 'A');
  EXPECT_EQ(number(L"SelCount"), 100);
}

TEST_F(ListBoxTest, AHandlerThatZeroesTheKeyKeepsIt) {
  fill_numbers(3);
  focus();
  site_->on_event([](const std::wstring& name, DISPPARAMS& params) {
    if (name == L"KeyDown") set_event_argument(params, 0, Variant(short{0}));
  });
  key_press(VK_DOWN);
  EXPECT_EQ(number(L"ListIndex"), -1);
}

TEST_F(ListBoxTest, TypingFindsByPrefixWithoutAccents) {
  fill(L"a\u00e7o\n\u00e1gua\nagulha\nbroca\nbucha grande\nbucha pequena");
  focus();
  type_text(L"ag");
  EXPECT_EQ(text(number(L"ListIndex")), L"\u00e1gua");
  type_text(L"ul");
  EXPECT_EQ(text(number(L"ListIndex")), L"agulha");
  pump_for(1100);
  type_text(L"b");
  EXPECT_EQ(text(number(L"ListIndex")), L"broca");
  type_text(L"bb");
  EXPECT_EQ(text(number(L"ListIndex")), L"bucha pequena");
  pump_for(1100);
  type_text(L"bucha p");
  EXPECT_EQ(text(number(L"ListIndex")), L"bucha pequena");
}

TEST_F(ListBoxTest, DraggingBeyondTheEdgeScrollsAndExtends) {
  put(L"MultiSelect", Variant(1L));
  fill_numbers(100);
  part_clicks();
  mouse_move(window(), 60, middle_of(1));
  mouse_down();
  mouse_move(window(), 60, 300);
  EXPECT_TRUE(pump_until([&] { return number(L"TopIndex") > 5; }, 2000));
  mouse_up();
  const long last = number(L"ListIndex");
  EXPECT_GT(last, 8);
  EXPECT_EQ(number(L"SelCount"), last);  // from item 1 on
  pump_for(150);
  EXPECT_EQ(number(L"ListIndex"), last) << "nothing scrolls after the release";
}

TEST_F(ListBoxTest, ItemsAreDraggedToAnotherPlace) {
  put(L"AllowDrag", Variant(true));
  fill_numbers(5);
  part_clicks();
  mouse_move(window(), 60, middle_of(0));
  mouse_down();
  mouse_move(window(), 60, middle_of(1));
  mouse_move(window(), 60, middle_of(3) + row_height() / 3);
  take_log(*site_);
  mouse_up();
  const Names names = take_log(*site_);
  EXPECT_EQ(std::count(names.begin(), names.end(), L"BeforeMove(0, 3, False)"), 1);
  EXPECT_EQ(std::count(names.begin(), names.end(), L"AfterMove(0, 3)"), 1);
  EXPECT_EQ(text(3), L"Item 0");
  EXPECT_EQ(number(L"ListIndex"), 3);
  focus();
  site_->on_event([](const std::wstring& name, DISPPARAMS& params) {
    if (name == L"BeforeMove") set_event_argument(params, 2, Variant(true));
  });
  key_chord(VK_MENU, VK_UP);
  EXPECT_EQ(text(3), L"Item 0");
  site_->on_event(nullptr);
  key_chord(VK_MENU, VK_UP);
  EXPECT_EQ(text(2), L"Item 0");
}

TEST_F(ListBoxTest, TheWheelScrollsAwayFromTheCurrentItemAndStaysThere) {
  fill_numbers(100);
  put(L"ListIndex", Variant(0L));
  mouse_move(window(), 60, 30);
  focus();
  mouse_wheel(-120);
  const long top = number(L"TopIndex");
  EXPECT_EQ(top, 3);
  EXPECT_EQ(take_names(*site_), Names{L"Scroll"});
  pump_for(50);
  EXPECT_EQ(number(L"TopIndex"), top);
  EXPECT_EQ(number(L"ListIndex"), 0);
}

TEST_F(ListBoxTest, HoverDrawsOnceAnItem) {
  fill_numbers(5);
  mouse_move(window(), 60, middle_of(1));
  const LRESULT before = repaints();
  mouse_move(window(), 61, middle_of(1) + 1);
  EXPECT_EQ(repaints(), before);
  mouse_move(window(), 61, middle_of(2));
  EXPECT_EQ(repaints(), before + 1);
}

}  // namespace
}  // namespace kestrelon::host
