#include "chrome/us_menu/menu_model.h"

#include <gtest/gtest.h>

#include <numeric>

namespace kestrelon {
namespace {

using namespace menu_model;

std::vector<MenuItem> list(std::initializer_list<std::pair<const wchar_t*, int>> entries) {
  std::vector<MenuItem> out;
  for (const auto& [key, level] : entries) {
    MenuItem item;
    item.caption = item.key = key;
    item.level = static_cast<short>(level);
    out.push_back(item);
  }
  return out;
}

TEST(MenuModel, TakesALevelThatJumpsAsOneDeeper) {
  const auto items = list({{L"a", 3}, {L"b", 5}, {L"c", 5}, {L"d", -2}, {L"e", 1}, {L"f", 300}});
  EXPECT_EQ(levels(items), (std::vector<int>{0, 1, 2, 0, 1, 2}));
  EXPECT_EQ(children(items, kNone), (std::vector<int>{0, 3}));
  EXPECT_EQ(children(items, 1), std::vector<int>{2});
  EXPECT_EQ(subtree_end(items, 0), 3);
  EXPECT_EQ(parent_of(items, 5), 4);
  EXPECT_EQ(parent_of(items, 3), kNone);
}

TEST(MenuModel, AnswersBadIndexesWithNothing) {
  const auto items = list({{L"a", 0}});
  for (const int index : {-7, 1, 99}) {
    EXPECT_TRUE(children(items, index).empty()) << index;
    EXPECT_EQ(parent_of(items, index), kNone) << index;
  }
  EXPECT_EQ(subtree_end({}, 0), 0);
  EXPECT_EQ(find(items, L""), kNone);
  EXPECT_TRUE(children({}, kNone).empty());
}

TEST(MenuModel, ReadsShortCutsAndRefusesWhatWouldEatText) {
  EXPECT_EQ(parse_short_cut(L"Ctrl+Shift+F5"), (ShortCut{kControl | kShift, 116}));
  EXPECT_EQ(parse_short_cut(L" ctrl + s "), (ShortCut{kControl, 'S'}));
  EXPECT_EQ(parse_short_cut(L"Alt+In\u00edcio"), (ShortCut{kAlt, 36}));
  EXPECT_EQ(parse_short_cut(L"F24"), (ShortCut{0, 135}));
  EXPECT_EQ(parse_short_cut(L"Del"), (ShortCut{0, 46}));
  for (const wchar_t* text : {L"", L"+", L"S", L"Shift+7", L"F0", L"F25", L"F01", L"Ctrl+",
                              L"Foo+S", L"Ctrl+\u00e7", L"F9999999999", L"Shift+Space"})
    EXPECT_EQ(parse_short_cut(text), ShortCut{}) << std::string(text, text + wcslen(text));
}

TEST(MenuModel, FiresAShortCutOnlyThroughLiveParents) {
  auto items = list({{L"arquivo", 0}, {L"salvar", 1}, {L"editar", 0}});
  items[1].short_cut = L"Ctrl+S";
  const ShortCut pressed{kControl, 'S'};
  EXPECT_EQ(find_short_cut(items, pressed), 1);
  items[0].enabled = false;
  EXPECT_EQ(find_short_cut(items, pressed), kNone);
  items[0].enabled = true;
  items[1].visible = false;
  EXPECT_EQ(find_short_cut(items, pressed), kNone);
  items[1].short_cut = L"?";
  EXPECT_EQ(find_short_cut(items, ShortCut{}), kNone);
}

TEST(MenuModel, PutsWhatDoesNotFitBehindAMark) {
  const int widths[] = {40, 60, 50};  // 60, 80, 70 with their margins
  const Bar all = lay_out_bar(widths, 210, 24, Scale(), false);
  EXPECT_EQ(all.places.size(), 3u);
  EXPECT_TRUE(all.overflow.empty());
  const Bar cut = lay_out_bar(widths, 209, 24, Scale(), false);
  EXPECT_EQ(cut.places.size(), 2u);
  EXPECT_EQ(cut.overflow.right, 209);
  EXPECT_LE(cut.places.back().right, cut.overflow.left);
  const Bar tiny = lay_out_bar(widths, 5, 24, Scale(), true);
  EXPECT_TRUE(tiny.places.empty());
  EXPECT_FALSE(tiny.overflow.empty());
  const Bar turned = lay_out_bar(widths, 300, 24, Scale(), true);
  EXPECT_EQ(turned.places[0].right, 300);
  EXPECT_GT(turned.places[0].left, turned.places[1].left);
}

}  // namespace
}  // namespace kestrelon
