#include <gtest/gtest.h>

#include <random>

#include "grid/layout/columns.h"

namespace kestrelon {
namespace {

using namespace grid_layout;

std::vector<Column> random_columns(std::mt19937& random) {
  std::vector<Column> columns(random() % 9);
  for (size_t i = 0; i < columns.size(); ++i)
    columns[i] = {static_cast<int32_t>(columns.size() - i), static_cast<int32_t>(random() % 120),
                  random() % 4 != 0, random() % 4 == 0};
  return columns;
}

const PlacedColumn* find(const std::vector<PlacedColumn>& placed, int32_t position) {
  for (const PlacedColumn& column : placed)
    if (column.position == position) return &column;
  return nullptr;
}

TEST(GridColumns, EveryVisibleColumnCanBeShown) {
  std::mt19937 random(3);
  for (int round = 0; round < 5000; ++round) {
    const std::vector<Column> columns = random_columns(random);
    const ColumnStrip strip = {columns, static_cast<int32_t>(random() % 6) - 2, 19,
                               100 + static_cast<int>(random() % 300)};
    const int32_t first = first_column(strip, static_cast<int32_t>(random() % 12) - 2);
    const int32_t target = static_cast<int32_t>(random() % 11) - 1;
    const int32_t scrolled = column_to_show(strip, first, target);
    if (target < 0 || target >= strip.count() || !columns[static_cast<size_t>(target)].visible) {
      EXPECT_EQ(scrolled, first);
      continue;
    }
    const std::vector<PlacedColumn> placed = place_columns(strip, scrolled);
    const PlacedColumn* const shown = find(placed, target);
    ASSERT_NE(shown, nullptr) << "round " << round;
    EXPECT_GE(shown->left, strip.left);
    const bool first_scrolled = shown->position == scrolled;
    if (target > freeze_in_force(strip) && !first_scrolled) {
      EXPECT_LE(shown->right(), strip.right);
    }
  }
}

TEST(GridColumns, BarEndsWhereTheLastColumnIsWhole) {
  const std::vector<Column> columns = {{0, 100}, {1, 100}, {2, 50}, {3, 60}, {4, 70}};
  ColumnStrip strip = {columns, -1, 0, 200};
  EXPECT_EQ(horizontal_range(strip).max, 2);  // 50 + 60 + 70 fit, 280 don't
  strip.right = 380;
  EXPECT_EQ(horizontal_range(strip).span(), 0);
  strip.right = 379;
  EXPECT_EQ(horizontal_range(strip).max, 1);
  strip.right = 30;
  EXPECT_EQ(horizontal_range(strip).max, 4);  // wider than the view: its left edge
  strip = {columns, 0, 0, 200};
  EXPECT_EQ(horizontal_range(strip).min, 1);
  EXPECT_EQ(horizontal_range(strip).max, 4);
  EXPECT_EQ(first_column(strip, 0), 1);
}

TEST(GridColumns, FrozenColumnsStayInFrontAndGiveWayWhenTheyLeaveNoRoom) {
  const std::vector<Column> columns = {{7, 80}, {8, 30, false}, {9, 40}, {10, 50}, {11, 60}};
  ColumnStrip strip = {columns, 1, 10, 200};
  const std::vector<PlacedColumn> placed = place_columns(strip, 3);
  ASSERT_EQ(placed.size(), 3u);
  EXPECT_EQ(placed[0], (PlacedColumn{0, 7, 10, 80}));
  EXPECT_EQ(placed[1], (PlacedColumn{3, 10, 90, 50}));
  EXPECT_EQ(placed[2], (PlacedColumn{4, 11, 140, 60}));
  EXPECT_EQ(ColumnAtX(placed, 9), -1);
  EXPECT_EQ(ColumnAtX(placed, 89), 0);
  EXPECT_EQ(ColumnAtX(placed, 90), 3);
  EXPECT_EQ(ColumnAtX(placed, 200), -1);
  strip.right = 90;
  EXPECT_EQ(freeze_in_force(strip), -1);
  EXPECT_EQ(place_columns(strip, 0).front().position, 0);
  strip = {columns, 100, 10, 2000};
  EXPECT_EQ(freeze_in_force(strip), 4);
  EXPECT_EQ(horizontal_range(strip).span(), 0);
  EXPECT_EQ(place_columns(strip, first_column(strip, 0)).size(), 4u);
}

TEST(GridColumns, HiddenAndLockedColumnsArePassedOver) {
  const std::vector<Column> columns = {
      {0, 90, false}, {1, 90}, {2, 90, true, true}, {3, 90, false}, {4, 90}, {5, 90}, {6, 90}};
  const ColumnStrip strip = {columns, -1, 0, 180};
  EXPECT_EQ(first_column(strip, 0), 1);
  EXPECT_EQ(stepped_column(strip, 1, 1), 4);
  EXPECT_EQ(stepped_column(strip, 4, -1), 1);
  EXPECT_EQ(stepped_column(strip, 1, -1), 1);
  EXPECT_EQ(stepped_column(strip, 5, 1), 5);
  const std::vector<Column> none = {{0, 90, false}, {1, 90, false}};
  const ColumnStrip empty = {none, 0, 0, 180};
  EXPECT_EQ(horizontal_range(empty).span(), 0);
  EXPECT_TRUE(place_columns(empty, first_column(empty, 1)).empty());
}

TEST(GridColumns, NarrowColumnsCanBeGrabbedAgain) {
  const std::vector<PlacedColumn> placed = {{0, 0, 0, 50}, {1, 1, 50, 0}, {2, 2, 50, 90}};
  EXPECT_EQ(column_edge_at(placed, 50, 4), 1);
  EXPECT_EQ(column_edge_at(placed, 54, 4), 1);
  EXPECT_EQ(column_edge_at(placed, 55, 4), -1);
  EXPECT_EQ(column_edge_at(placed, 136, 4), 2);
}

TEST(GridColumns, HugeWidthsDoNotOverflow) {
  const std::vector<Column> columns(8, Column{0, INT32_MAX, true, false});
  const ColumnStrip strip = {columns, -1, 0, 500};
  EXPECT_EQ(horizontal_range(strip).max, 7);
  EXPECT_EQ(place_columns(strip, 0).size(), 1u);
  EXPECT_EQ(column_to_show(strip, 0, 5), 5);
}

}  // namespace
}  // namespace kestrelon
