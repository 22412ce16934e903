#include "lists/tree/tree_fill.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace kestrelon {
namespace {

std::wstring parent_key(const TreeStore& tree, std::wstring_view key) {
  return std::wstring(tree.key(tree.parent(tree.find_key(key))));
}

std::wstring order(const TreeStore& tree) {
  std::wstring all;
  for (NodeId id = tree.next(); id != kNoNode; id = tree.next(id)) {
    all += std::wstring(static_cast<size_t>(tree.node(id).level), L'.');
    all += tree.text(id);
  }
  return all;
}

TEST(FillByParents, TakesRowsInAnyOrderAndKeepsSiblingsInTheirs) {
  TreeStore tree;
  const std::vector<TreeRow> rows{{L"c", L"a", L"C", 3},    {L"b", L"a", L"B", 0},
                                  {L"a", L"", L"A", 0},     {L"d", L"c", L"D", 0},
                                  {L"c", L"", L"twice", 0}, {L"", L"a", L"E", 0}};
  EXPECT_EQ(fill_by_parents(tree, rows), 5);
  EXPECT_EQ(order(tree), L"A.C..D.B.E");
  EXPECT_EQ(tree.node(tree.find_key(L"c")).image, 3);
  EXPECT_EQ(fill_by_parents(tree, {}), 0);
  EXPECT_EQ(tree.count(), 0u);
}

TEST(FillByParents, PutsOrphansAndCyclesAtTheRootWhateverTheirOrder) {
  std::vector<TreeRow> rows{{L"self", L"self", L"S", 0},  {L"a", L"b", L"A", 0},
                            {L"b", L"c", L"B", 0},        {L"c", L"a", L"C", 0},
                            {L"tail", L"a", L"T", 0},     {L"end", L"tail", L"E", 0},
                            {L"orphan", L"none", L"O", 0}};
  std::mt19937 random(3);
  for (int round = 0; round < 50; ++round) {
    std::shuffle(rows.begin(), rows.end(), random);
    TreeStore tree;
    ASSERT_EQ(fill_by_parents(tree, rows), 7);
    for (const wchar_t* key : {L"self", L"a", L"b", L"c", L"orphan"})
      ASSERT_EQ(parent_key(tree, key), L"");
    ASSERT_EQ(parent_key(tree, L"tail"), L"a");
    ASSERT_EQ(parent_key(tree, L"end"), L"tail");
    ASSERT_EQ(tree.node(tree.find_key(L"end")).level, 2);
    ASSERT_EQ(tree.row_count(), 5);
  }
}

TEST(FillByParents, HoldsAHundredThousandOrphansAndALongChain) {
  std::vector<TreeRow> rows;
  for (int i = 0; i < 100000; ++i)
    rows.push_back({std::to_wstring(i), i < 20000 ? std::to_wstring(i + 1) : L"none", L"x", 0});
  TreeStore tree;
  EXPECT_EQ(fill_by_parents(tree, rows), 100000);
  EXPECT_EQ(tree.row_count(), 80000);
  EXPECT_EQ(tree.node(tree.find_key(L"0")).level, 20000);
}

TEST(FillByCodes, HangsAccountsUnderTheNearestAncestor) {
  const auto row = [](const wchar_t* code) { return TreeRow{code, L"", code, 0}; };
  std::vector<TreeRow> rows{row(L"1"),          row(L"1.01"),         row(L"1.01.02"),
                            row(L"1.02.03.04"), row(L"10"),           row(L"10.1"),
                            row(L"2.5"),        row(L"1.01.02.0001"), row(L"1.01.020")};
  std::mt19937 random(5);
  for (int round = 0; round < 30; ++round) {
    TreeStore tree;
    ASSERT_EQ(fill_by_codes(tree, rows, L"."), 9);
    ASSERT_EQ(parent_key(tree, L"1.01.02"), L"1.01");
    ASSERT_EQ(parent_key(tree, L"1.01.02.0001"), L"1.01.02");
    ASSERT_EQ(parent_key(tree, L"1.01.020"), L"1.01");
    ASSERT_EQ(parent_key(tree, L"1.02.03.04"), L"1");
    ASSERT_EQ(parent_key(tree, L"10"), L"");
    ASSERT_EQ(parent_key(tree, L"10.1"), L"10");
    ASSERT_EQ(parent_key(tree, L"2.5"), L"");
    std::shuffle(rows.begin(), rows.end(), random);
  }
  // Codes without a separator: any shorter beginning.
  TreeStore tree;
  rows = {row(L"11"), row(L"1101"), row(L"110102"), row(L"12"), row(L"")};
  EXPECT_EQ(fill_by_codes(tree, rows, L""), 5);
  EXPECT_EQ(parent_key(tree, L"110102"), L"1101");
  EXPECT_EQ(parent_key(tree, L"12"), L"");
}

}  // namespace
}  // namespace kestrelon
