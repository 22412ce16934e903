// Items, order, search and the selection by code.
#include "tests/controls/us_list_box_fixture.h"

namespace kestrelon::host {
namespace {

using Names = std::vector<std::wstring>;
using Items = std::vector<long>;

TEST_F(ListBoxTest, SortedListsIgnoreTheIndexAndKnowTheLanguage) {
  put(L"Sorted", Variant(true));
  for (const wchar_t* text : {L"\u00e9gua", L"zebra", L"\u00c1gua", L"agulha", L"Ema"})
    call(L"AddItem", {Variant(std::wstring_view(text)), Variant(0L)});
  EXPECT_EQ(texts(), (Names{L"\u00c1gua", L"agulha", L"\u00e9gua", L"Ema", L"zebra"}));
  EXPECT_EQ(number(L"NewIndex"), 3);
  call(L"Sort", {Variant(2L)});
  EXPECT_EQ(text(0), L"zebra");
}

TEST_F(ListBoxTest, IndexesOutOfRangeDoNothingAndReadEmpty) {
  fill(L"a\r\nb\rc\nd");
  EXPECT_EQ(texts(), (Names{L"a", L"b", L"c", L"d"}));
  for (const long bad : {-1L, 4L, 0x7FFFFFFFL, -0x7FFFFFFFL}) {
    EXPECT_EQ(text(bad), L"");
    EXPECT_FALSE(to_bool(item(L"Selected", bad)));
    put_item(L"List", bad, Variant(L"x"));
    put_item(L"ItemChecked", bad, Variant(true));
    put_item(L"ItemTag", bad, Variant(L"x"));
    call(L"RemoveItem", {Variant(bad)});
    call(L"MoveItem", {Variant(bad), Variant(0L)});
    call(L"EnsureVisible", {Variant(bad)});
    call(L"StartEdit", {Variant(bad)});
    put(L"TopIndex", Variant(bad));
  }
  EXPECT_EQ(texts(), (Names{L"a", L"b", L"c", L"d"}));
  EXPECT_EQ(number(L"CheckedCount"), 0);
  put(L"ListIndex", Variant(99L));
  EXPECT_EQ(number(L"ListIndex"), -1);
}

TEST_F(ListBoxTest, SelectionChangedFollowsListIndexOnce) {
  fill(L"a\nb\nc");
  take_log(*site_);
  put(L"ListIndex", Variant(1L));
  put(L"ListIndex", Variant(1L));
  EXPECT_EQ(take_names(*site_), Names{L"SelectionChanged"});
  EXPECT_EQ(to_text(get(*site_, L"Text")), L"b");
  put(L"Text", Variant(L"C"));
  EXPECT_EQ(number(L"ListIndex"), 2);
  call(L"RemoveItem", {Variant(2L)});
  EXPECT_EQ(number(L"ListIndex"), 1);
  call(L"Clear");
  EXPECT_EQ(number(L"ListIndex"), -1);
  EXPECT_EQ(take_names(*site_).size(), 3u);
}

TEST_F(ListBoxTest, FiltersNarrowAndChangeNoIndex) {
  fill(L"parafuso sextavado\nporca sextavada\narruela\nporca borboleta");
  put(L"ListIndex", Variant(3L));
  call(L"FilterOn", {Variant(L"SEXTAVAD")});
  EXPECT_EQ(item_at(1), 0);
  EXPECT_EQ(item_at(row_height() + 1), 1);
  call(L"FilterOn", {Variant(L"porca"), Variant(5L)});
  EXPECT_EQ(item_at(1), 1);
  EXPECT_FALSE(to_bool(item(L"ItemVisible", 0)));
  EXPECT_EQ(number(L"ListIndex"), 3);
  EXPECT_EQ(text(2), L"arruela");
  call(L"FilterOff");
  EXPECT_EQ(item_at(1), 0);
  EXPECT_EQ(
      to_long(call(L"FindItem", {Variant(L"porca"), Variant(5L), Variant(false), Variant(2L)})), 3);
}

TEST_F(ListBoxTest, FillingDrawsOnce) {
  const LRESULT before = repaints();
  for (int i = 0; i < 500; ++i) call(L"AddItem", {Variant(L"text")});
  EXPECT_LE(repaints(), before + 2) << "once for the items, once more for a bar that comes";
  const LRESULT filled = repaints();
  put(L"ListIndex", Variant(-1L));
  EXPECT_EQ(repaints(), filled) << "nothing has changed";
  call(L"DisableRefresh");
  call(L"AddItem", {Variant(L"text")});
  EXPECT_EQ(repaints(), filled);
  call(L"Refresh");
  EXPECT_EQ(repaints(), filled + 1);
}

TEST_F(ListBoxTest, VirtualItemsAreAskedForOnlyWhenTheyShow) {
  std::vector<long> asked;
  site_->on_event([&](const std::wstring& name, DISPPARAMS& params) {
    if (name != L"RequestItem") return;
    const long index = to_long(event_value(params, 0));
    asked.push_back(index);
    set_event_argument(params, 1, Variant(std::wstring_view(L"Linha " + std::to_wstring(index))));
  });
  put(L"VirtualCount", Variant(10'000'000L));
  pump_for(30);
  EXPECT_LT(asked.size(), 20u);
  asked.clear();
  put(L"TopIndex", Variant(9'999'999L));
  pump_for(30);
  ASSERT_FALSE(asked.empty());
  EXPECT_EQ(asked.back(), 9'999'999);
  EXPECT_EQ(text(9'999'999), L"Linha 9999999");
  const size_t shown = asked.size();
  put(L"ListIndex", Variant(9'999'998L));
  pump_for(30);
  EXPECT_EQ(asked.size(), shown) << "what shows is kept";
  EXPECT_EQ(item_at(1), number(L"TopIndex"));
  put(L"VirtualCount", Variant(0L));
  EXPECT_EQ(number(L"ListCount"), 0);
}

TEST_F(ListBoxTest, ItemsKeepWhatBelongsToThem) {
  put(L"MultiSelect", Variant(1L));
  fill(L"c\nb\na");
  put_item(L"ItemData", 0, Variant(7L));
  put_item(L"ItemTag", 0, Variant(L"chave"));
  put_item(L"ItemImage", 0, Variant(L"disco"));
  put_item(L"ItemChecked", 0, Variant(true));
  put_item(L"Selected", 0, Variant(true));
  call(L"Sort");
  EXPECT_EQ(to_long(item(L"ItemData", 2)), 7);
  EXPECT_EQ(to_text(item(L"ItemTag", 2)), L"chave");
  EXPECT_EQ(to_text(item(L"ItemImage", 2)), L"disco");
  EXPECT_TRUE(to_bool(item(L"ItemChecked", 2)));
  EXPECT_EQ(selection(), Items{2});
  EXPECT_EQ(number(L"CheckedCount"), 1);
  call(L"MoveItem", {Variant(2L), Variant(0L)});
  EXPECT_EQ(texts(), (Names{L"c", L"a", L"b"}));
  EXPECT_EQ(selection(), Items{0});
}

TEST_F(ListBoxTest, ListItemsOfTheDesignerFillTheList) {
  const auto bag = make_com<PropertyBag>();
  const Variant lines(L"um\r\ndois\r\ntr\u00eas");
  bag->Write(L"ListItems", const_cast<Variant*>(&lines));
  const auto other = place(L"USListBox", RECT{200, 20, 300, 120}, bag.get());
  EXPECT_EQ(ControlTest::number(*other, L"ListCount"), 3);
  EXPECT_TRUE(take_names(*other).empty());
}

}  // namespace
}  // namespace kestrelon::host
