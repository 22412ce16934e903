#include "lists/list_model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace kestrelon {
namespace {

ListModel list_of(int count, SelectMode mode = SelectMode::kSingle) {
  ListModel list;
  list.set_mode(mode);
  for (int i = 0; i < count; ++i) list.add(std::to_wstring(i));
  return list;
}

std::vector<int> selection(const ListModel& list) {
  std::vector<int> out;
  for (int i = 0; i < list.count(); ++i)
    if (list.selected(i)) out.push_back(i);
  EXPECT_EQ(static_cast<int>(out.size()), list.selected_count());
  return out;
}

using Items = std::vector<int>;

/// The selection as a set of names beside the order of the names.
struct PlainModel {
  std::vector<std::wstring> order;
  std::vector<std::wstring> chosen;
  std::wstring current;  // empty: none

  int find(const std::wstring& name) const {
    const auto at = std::find(order.begin(), order.end(), name);
    return at == order.end() ? -1 : static_cast<int>(at - order.begin());
  }
  bool has_chosen(const std::wstring& name) const {
    return std::find(chosen.begin(), chosen.end(), name) != chosen.end();
  }
  void drop(const std::wstring& name) {
    chosen.erase(std::remove(chosen.begin(), chosen.end(), name), chosen.end());
  }
};

void expect_same(const ListModel& list, const PlainModel& plain) {
  ASSERT_EQ(list.count(), static_cast<int>(plain.order.size()));
  ASSERT_EQ(list.current(), plain.current.empty() ? -1 : plain.find(plain.current));
  for (int i = 0; i < list.count(); ++i) {
    const std::wstring& name = plain.order[static_cast<size_t>(i)];
    ASSERT_EQ(list.store().text(i), name);
    ASSERT_EQ(list.selected(i), plain.has_chosen(name)) << i;
  }
  ASSERT_EQ(list.selected_count(), static_cast<int>(plain.chosen.size()));
}

TEST(ListModel, SelectionAndCurrentStayWithTheirItems) {
  std::mt19937 random(11);
  int names = 0;
  for (int round = 0; round < 30; ++round) {
    ListModel list;
    list.set_mode(SelectMode::kStandard);
    PlainModel plain;
    for (int step = 0; step < 300; ++step) {
      const auto size = static_cast<unsigned>(plain.order.size());
      const int at = static_cast<int>(random() % (size + 1));
      const bool has = at < static_cast<int>(size);
      const std::wstring name = has ? plain.order[static_cast<size_t>(at)] : L"";
      switch (random() % 8) {
        case 0:
        case 1: {
          const std::wstring added = std::to_wstring(++names * 7919 % 10007);
          if (plain.find(added) >= 0) break;
          EXPECT_EQ(list.add(added, at), at);
          plain.order.insert(plain.order.begin() + at, added);
          break;
        }
        case 2: {
          if (!has) break;
          list.remove(at);
          plain.order.erase(plain.order.begin() + at);
          plain.drop(name);
          if (plain.current != name) break;
          const size_t next = std::min<size_t>(static_cast<size_t>(at), plain.order.size() - 1);
          plain.current = plain.order.empty() ? L"" : plain.order[next];
          break;
        }
        case 3: {
          if (!has) break;
          const int to = static_cast<int>(random() % size);
          list.move(at, to);
          plain.order.erase(plain.order.begin() + at);
          plain.order.insert(plain.order.begin() + to, name);
          break;
        }
        case 4:
          list.sort(step % 2 != 0);
          std::sort(plain.order.begin(), plain.order.end());
          if (step % 2 != 0) std::reverse(plain.order.begin(), plain.order.end());
          break;
        case 5:
          EXPECT_EQ(list.set_current(at),
                    list.current() >= 0 || has ? plain.current != name : false);
          plain.current = name;
          break;
        case 6:
          EXPECT_EQ(
              list.choose(at, Choice::kPlain),
              has && (plain.current != name || plain.chosen != std::vector<std::wstring>{name}));
          if (has) plain.chosen = {name};
          if (has) plain.current = name;
          break;
        default:
          list.choose(at, Choice::kToggle);
          if (!has) break;
          if (plain.has_chosen(name))
            plain.drop(name);
          else
            plain.chosen.push_back(name);
          plain.current = name;
      }
      ASSERT_NO_FATAL_FAILURE(expect_same(list, plain)) << "round " << round << " step " << step;
    }
  }
}

TEST(ListModel, RangesGrowAndShrinkFromWhereTheyBegan) {
  ListModel list = list_of(10, SelectMode::kStandard);
  list.choose(5, Choice::kPlain);
  EXPECT_TRUE(list.choose(8, Choice::kExtend));
  EXPECT_EQ(selection(list), (Items{5, 6, 7, 8}));
  EXPECT_FALSE(list.choose(8, Choice::kExtend));
  EXPECT_TRUE(list.choose(3, Choice::kExtend));
  EXPECT_EQ(selection(list), (Items{3, 4, 5}));
  list.choose(9, Choice::kToggle);
  list.choose(7, Choice::kExtendKeep);
  EXPECT_EQ(selection(list), (Items{3, 4, 5, 7, 8, 9}));
  EXPECT_TRUE(list.choose(0, Choice::kMark));
  EXPECT_EQ(selection(list), (Items{3, 4, 5, 7, 8, 9}));
  EXPECT_EQ(list.current(), 0);
}

TEST(ListModel, HeadingsDisabledAndHiddenItemsAreNotChosen) {
  ListModel list = list_of(8, SelectMode::kStandard);
  list.items().set_flag(0, ItemFlag::kHeader, true);
  list.items().set_flag(3, ItemFlag::kDisabled, true);
  list.set_visible(5, false);
  EXPECT_FALSE(list.choose(0, Choice::kPlain));
  EXPECT_FALSE(list.set_selected(3, true));
  EXPECT_TRUE(list.select_all());
  EXPECT_EQ(selection(list), (Items{1, 2, 4, 6, 7}));
  EXPECT_EQ(list.step(1), 1);
  list.set_current(2);
  EXPECT_EQ(list.step(1), 4);
  EXPECT_EQ(list.step(-2), 1) << "the heading at the end turns the step back";
  EXPECT_EQ(list.step(3), 6);
  EXPECT_EQ(list.step(100), 7);
  list.set_current(5);  // hidden
  EXPECT_EQ(list.step(1), 6);
  EXPECT_EQ(list.step(-1), 4);
}

TEST(ListModel, AListOfHeadingsHasNothingToChoose) {
  ListModel list = list_of(3);
  for (int i = 0; i < 3; ++i) list.items().set_flag(i, ItemFlag::kHeader, true);
  EXPECT_EQ(list.step(1), -1);
  EXPECT_EQ(list.step(-1), -1);
  EXPECT_EQ(ListModel().step(1), -1);
}

TEST(ListModel, OneSelectionFollowsTheCurrentItem) {
  ListModel list = list_of(5);
  EXPECT_TRUE(list.set_current(4));
  EXPECT_FALSE(list.set_current(4));
  EXPECT_EQ(selection(list), Items{4});
  EXPECT_TRUE(list.remove(4));
  EXPECT_EQ(list.current(), 3) << "falls to the last";
  EXPECT_EQ(selection(list), Items{3});
  EXPECT_TRUE(list.remove(1)) << "the current item is another number now";
  EXPECT_EQ(list.current(), 2);
  EXPECT_EQ(list.store().text(2), L"3");
  list.set_current(0);
  EXPECT_TRUE(list.remove(0));
  EXPECT_EQ(list.current(), 0) << "keeps its number";
  EXPECT_TRUE(list.set_selected(0, false));
  EXPECT_EQ(list.current(), -1);
  EXPECT_TRUE(list.set_current(1));
  EXPECT_TRUE(list.set_current(77));
  EXPECT_EQ(list.current(), -1);
}

TEST(ListModel, AReusedRecordIsNotSelected) {
  ListModel list = list_of(3, SelectMode::kStandard);
  list.set_selected(1, true);
  list.remove(1);
  list.add(L"new", 0);
  EXPECT_EQ(selection(list), Items{});
}

TEST(ListModel, EveryClickTogglesInLatchModeAndDragsAdd) {
  ListModel list = list_of(6, SelectMode::kLatch);
  list.choose(1, Choice::kToggle);
  list.choose(4, Choice::kToggle);
  EXPECT_TRUE(list.drag_to(5));
  EXPECT_EQ(selection(list), (Items{1, 4, 5}));
  EXPECT_FALSE(list.drag_to(5));
  list.choose(1, Choice::kToggle);
  EXPECT_EQ(selection(list), (Items{4, 5}));
  list.set_mode(SelectMode::kSingle);
  EXPECT_EQ(selection(list), Items{1});
}

TEST(ListModel, TenMillionVirtualItemsAreSelectedByBits) {
  ListModel list;
  list.set_mode(SelectMode::kStandard);
  list.set_virtual_count(10'000'000);
  EXPECT_EQ(list.row_count(), 10'000'000);
  EXPECT_TRUE(list.select_all());
  EXPECT_EQ(list.selected_count(), 10'000'000);
  list.choose(9'999'999, Choice::kPlain);
  EXPECT_EQ(list.selected_count(), 1);
  EXPECT_EQ(list.step(1), 9'999'999);
  EXPECT_EQ(list.add(L"x"), -1);
  list.set_virtual_count(10);
  EXPECT_EQ(list.current(), -1);
  EXPECT_EQ(list.selected_count(), 0);
}

TEST(ListModel, SearchesForWhatCanBeChosenAndAroundTheEnd) {
  ListModel list;
  for (const wchar_t* text : {L"Ana", L"10\tAnt\u00f4nio", L"Beto", L"\u00c2ngela", L"ana"})
    list.add(text);
  const TextMatcher an(L"an", SearchMode::kBeginsWith, false);
  EXPECT_EQ(list.find_ahead(an, true), 0) << "none is current";
  list.set_current(0);
  EXPECT_EQ(list.find_ahead(an, false), 0);
  EXPECT_EQ(list.find_ahead(an, true), 3);
  list.items().set_flag(3, ItemFlag::kDisabled, true);
  EXPECT_EQ(list.find_ahead(an, true), 4);
  list.set_current(4);
  EXPECT_EQ(list.find_ahead(an, true), 0) << "from the end to the beginning";
  EXPECT_EQ(list.find_choice(an, 0, 1), 1) << "the second column";
  EXPECT_EQ(list.find_choice(an, 99), -1);
  list.filter(TextMatcher(L"beto", SearchMode::kLike, false));
  EXPECT_EQ(list.find_ahead(an, false), -1) << "what is hidden is not found";
  list.filter_off();
  list.filter(an, 1);
  EXPECT_EQ(list.row_count(), 1);
  EXPECT_EQ(list.index_of_row(0), 1);
}

}  // namespace
}  // namespace kestrelon
