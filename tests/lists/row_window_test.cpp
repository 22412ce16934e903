#include "lists/row_window.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace kestrelon {
namespace {

class MixedHeights final : public RowHeights {
 public:
  explicit MixedHeights(std::vector<int> heights) : heights_(std::move(heights)) {}
  int height(int row) const override { return heights_.at(static_cast<size_t>(row)); }

 private:
  std::vector<int> heights_;
};

TEST(RowWindow, TheEndIsReachedAndNothingBeyondIt) {
  std::mt19937 random(3);
  for (int round = 0; round < 500; ++round) {
    std::vector<int> heights(random() % 40);
    int total = 0;
    for (int& height : heights) total += height = 1 + static_cast<int>(random() % 60);
    const int rows = static_cast<int>(heights.size());
    const int view = 1 + static_cast<int>(random() % 200);
    const MixedHeights mixed(heights);
    const RowWindow window(mixed, rows, view);
    const int top = window.last_top();
    EXPECT_TRUE(total > view || top == 0);
    const bool has_room = rows > 0 && heights.back() <= view;
    EXPECT_TRUE(!has_room || window.y_of(rows, top) <= view) << "the last row shows whole";
    EXPECT_TRUE(top == 0 || window.y_of(rows, top - 1) > view) << "and no earlier top would do";
    EXPECT_EQ(window.limit_top(1'000'000'000'000), top);
    for (int row = 0; row < rows; ++row) {
      const int from = static_cast<int>(random() % static_cast<unsigned>(rows));
      const int shown = window.top_showing(row, from);
      EXPECT_LE(shown, row);
      EXPECT_TRUE(window.y_of(row, shown) + mixed.height(row) <= view || shown == row);
      EXPECT_EQ(window.row_at(window.y_of(row, shown), shown), row);
    }
    EXPECT_EQ(window.row_at(-1, top), -1);
    EXPECT_EQ(window.row_at(window.y_of(rows, top), top), -1);
  }
}

TEST(RowWindow, TenMillionRowsNeedNoWalk) {
  const FixedRowHeights heights(20);
  const RowWindow window(heights, 10'000'000, 205);
  EXPECT_EQ(window.last_top(), 9'999'990);
  EXPECT_EQ(window.limit_top(9'999'995), 9'999'990);
  EXPECT_EQ(window.limit_top(5'000'000), 5'000'000);
  EXPECT_EQ(window.top_showing(9'999'999, 0), 9'999'990);
  EXPECT_EQ(window.touched_rows(0), 11);
  EXPECT_EQ(window.whole_rows(0), 10);
}

TEST(RowWindow, PagesGoToTheEdgeFirst) {
  const FixedRowHeights heights(20);
  const RowWindow window(heights, 100, 100);
  EXPECT_EQ(window.page_target(1, 0, true), 4);
  EXPECT_EQ(window.page_target(4, 0, true), 8);
  EXPECT_EQ(window.page_target(98, 95, true), 99);
  EXPECT_EQ(window.page_target(99, 95, true), 99);
  EXPECT_EQ(window.page_target(53, 50, false), 50);
  EXPECT_EQ(window.page_target(50, 50, false), 46);
  EXPECT_EQ(window.page_target(0, 0, false), 0);
  const FixedRowHeights tall(500);  // no row shows whole: pages go row by row
  EXPECT_EQ(RowWindow(tall, 100, 100).page_target(5, 5, true), 6);
  EXPECT_EQ(RowWindow(tall, 100, 100).page_target(5, 5, false), 4);
}

TEST(EdgeScroll, TheFurtherTheFaster) {
  int last = 0;
  for (int beyond = 1; beyond < 2000; beyond += 10) {
    EXPECT_GE(edge_scroll_rows(beyond, 20), last);
    last = edge_scroll_rows(beyond, 20);
    EXPECT_EQ(edge_scroll_rows(-beyond, 20), -last);
  }
  EXPECT_EQ(edge_scroll_rows(1, 20), 1);
  EXPECT_GT(last, 100);
}

}  // namespace
}  // namespace kestrelon
