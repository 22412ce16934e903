#include <gtest/gtest.h>

#include <random>

#include "tests/grid/layout_rows.h"

namespace kestrelon {
namespace {

using namespace grid_layout;

TestRows random_rows(std::mt19937& random) {
  TestRows rows(static_cast<int32_t>(random() % 40));
  for (int32_t i = 0; i < rows.rows; ++i)
    rows.heights.push_back(static_cast<int32_t>(random() % 5 == 0 ? 150 : 5 + random() % 40));
  if (random() % 2 == 0) {
    std::set<int32_t> some;
    for (int32_t i = 0; i < rows.rows; ++i)
      if (random() % 3 == 0) some.insert(i);
    rows.show_only(some);
  }
  return rows;
}

int32_t last_of(const TestRows& rows) {
  return rows.rows == 0 ? -1 : rows.previous_visible(rows.rows - 1);
}

TEST(GridRows, LastRowCanBeBroughtWhollyIntoViewAndNoFurther) {
  std::mt19937 random(7);
  for (int round = 0; round < 2000; ++round) {
    const TestRows rows = random_rows(random);
    const int room = 40 + static_cast<int>(random() % 160);
    const ScrollRange range = vertical_range(rows, room);
    const int32_t last = last_of(rows);
    if (last < 0) {
      EXPECT_EQ(range.span(), 0);
      continue;
    }
    EXPECT_TRUE(rows.shows(range.max));
    if (rows.between(range.max, last) > room) {
      EXPECT_EQ(range.max, last);
    }
    if (range.max > range.min) {
      const int32_t before = rows.previous_visible(range.max - 1);
      EXPECT_GT(rows.between(before, last), room) << "one row too many is scrolled away";
    }
  }
}

TEST(GridRows, AnyRowIsShownWhollyFromAnywhereByTheShortestWay) {
  std::mt19937 random(8);
  for (int round = 0; round < 3000; ++round) {
    const TestRows rows = random_rows(random);
    if (last_of(rows) < 0) continue;
    const int room = 30 + static_cast<int>(random() % 200);
    const int32_t first = first_row(rows, room, static_cast<int32_t>(random() % 50) - 5);
    const int32_t target = static_cast<int32_t>(random() % 44) - 2;
    const int32_t shown = row_to_show(rows, room, first, target);
    ASSERT_TRUE(rows.shows(shown));
    if (target < 0 || target >= rows.rows || !rows.shows(target)) {
      EXPECT_EQ(shown, first);
      continue;
    }
    EXPECT_LE(shown, target);
    if (shown < target) {
      EXPECT_LE(rows.between(shown, target), room);
    }
    if (first <= target && rows.between(first, target) <= room) {
      EXPECT_EQ(shown, first);
    }
  }
}

TEST(GridRows, MillionRowsAndMillionHiddenRowsCostOnePage) {
  for (const bool filtered : {false, true}) {
    TestRows rows(1'000'000);
    if (filtered) {
      std::set<int32_t> some;
      for (int i = 0; i < 10; ++i) some.insert(i * 99'999);
      rows.show_only(some);
    }
    const int room = filtered ? 60 : 400;
    rows.questions = 0;
    EXPECT_EQ(vertical_range(rows, room).max, filtered ? 7 * 99'999 : 999'980);
    EXPECT_EQ(row_to_show(rows, room, 0, filtered ? 899'991 : 999'999),
              filtered ? 699'993 : 999'980);
    EXPECT_EQ(stepped_row(rows, 99'999, 3), filtered ? 399'996 : 100'002);
    EXPECT_EQ(RowTopPixels(rows, 999'999, 0, 30, 30 + room) >= 30 + room, true);
    EXPECT_EQ(place_rows(rows, 500'000, 30, 30 + room).size(), filtered ? 3u : 20u);
    EXPECT_LT(rows.questions, 400);
  }
}

TEST(GridRows, PlacesAndHitsAgree) {
  std::mt19937 random(9);
  for (int round = 0; round < 300; ++round) {
    const TestRows rows = random_rows(random);
    const std::vector<PlacedRow> placed = place_rows(rows, 3, 25, 225);
    for (size_t i = 0; i < placed.size(); ++i) {
      EXPECT_EQ(placed[i].top, i == 0 ? 25 : placed[i - 1].bottom());
      EXPECT_LT(placed[i].top, 225);
      EXPECT_EQ(RowAtY(placed, placed[i].top), placed[i].position);
      EXPECT_EQ(RowAtY(placed, placed[i].bottom() - 1), placed[i].position);
      EXPECT_EQ(RowTopPixels(rows, placed[i].position, 3, 25, 225), placed[i].top);
      EXPECT_EQ(row_edge_at(placed, placed[i].bottom(), 4), placed[i].position);
    }
    EXPECT_EQ(RowAtY(placed, 24), -1);
    if (!placed.empty()) {
      EXPECT_EQ(RowAtY(placed, placed.back().bottom()), -1);
    }
  }
  EXPECT_EQ(RowTopPixels(TestRows(5), 1, 2, 25, 225), -1);
}

TEST(GridRows, StepsStopAtTheEndsAndPagesAreNeverEmpty) {
  TestRows rows(100);
  rows.show_only({4, 50, 51});
  EXPECT_EQ(stepped_row(rows, 0, -3), 4);
  EXPECT_EQ(stepped_row(rows, 50, -3), 4);
  EXPECT_EQ(stepped_row(rows, 4, 1), 50);
  EXPECT_EQ(stepped_row(rows, 99, 5), 51);
  rows.show_only({});
  EXPECT_EQ(stepped_row(rows, 3, 1), -1);
  EXPECT_EQ(RowsPerPage(10, 20), 1);
  EXPECT_EQ(RowsPerPage(-5, 0), 1);
  EXPECT_EQ(RowsPerPage(59, 20), 2);
}

TEST(GridRows, RowsWithoutHeightStillEndThePage) {
  TestRows rows(1'000'000);
  rows.other_height = 0;
  EXPECT_LE(place_rows(rows, 0, 0, 100).size(), 100u);
  rows.other_height = INT32_MAX;
  EXPECT_EQ(place_rows(rows, 0, 0, 100).size(), 1u);
  EXPECT_EQ(vertical_range(rows, 100).max, 999'999);
}

}  // namespace
}  // namespace kestrelon
