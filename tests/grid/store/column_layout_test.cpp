#include "grid/store/column_layout.h"

#include <gtest/gtest.h>

#include "tests/grid/store/test_numbers.h"

namespace kestrelon {
namespace {

GridStore three_columns() {
  GridStore store(test_number);
  for (const wchar_t* heading : {L"a", L"b", L"c"}) store.add_column({.heading = heading});
  return store;
}

TEST(ColumnLayout, ComesBackAsItWasWritten) {
  GridStore store = three_columns();
  store.set_column_width(1, 0.1);
  store.set_column_width(2, 123456.789);
  ASSERT_TRUE(store.move_column(2, 0));
  for (const wchar_t mark : {L'.', L','}) {
    GridStore other = three_columns();
    EXPECT_EQ(take_column_widths(other, column_widths_text(store, mark)), L"");
    EXPECT_EQ(take_column_order(other, column_order_text(store)), L"");
    for (int i = 0; i < 3; ++i) EXPECT_EQ(other.column(i).width, store.column(i).width);
    EXPECT_EQ(other.column_order(), (std::vector<int>{2, 0, 1}));
  }
  EXPECT_EQ(column_widths_text(store), L"0\t501\r\n1\t0.1\r\n2\t123456.79\r\n");
}

TEST(ColumnLayout, TakesAnOrderWholeOrNotAtAll) {
  for (const wchar_t* bad :
       {L"", L"0\t0\r\n1\t1\r\n", L"0\t0\n1\t1\n2\t1", L"0\t0\n0\t1\n2\t2", L"0\t0\n1\t1\n3\t2",
        L"0\t0\n1\t1\n2\t3", L"0\t2\n1\t1\n2\t-0.5", L"0\t2\n1\t1\nlixo", L"0 2\n1 1\n2 0",
        L"0\t2\n1\t1\n2\t0\n3\t0", L"99999999999\t0", L"0\t2\n1\t1\n2\t"}) {
    GridStore store = three_columns();
    EXPECT_NE(take_column_order(store, bad), L"") << bad;
    EXPECT_EQ(store.column_order(), (std::vector<int>{0, 1, 2})) << bad;
  }
  GridStore store = three_columns();
  EXPECT_EQ(take_column_order(store, L"2\t0\r\n\r\n1\t1\r\n0\t2"), L"");
  EXPECT_EQ(store.column_order(), (std::vector<int>{2, 1, 0}));
}

TEST(ColumnLayout, TakesWidthsUpToTheFirstBadLine) {
  GridStore store = three_columns();
  EXPECT_EQ(take_column_widths(store, L"7\t100\r\n1\t50\r\n"), L"") << "a column of old times";
  EXPECT_EQ(store.column(1).width, 50);
  EXPECT_NE(take_column_widths(store, L"0\t10\n1\tlarga\n2\t10"), L"");
  EXPECT_EQ(store.column(0).width, 10);
  EXPECT_EQ(store.column(1).width, 50);
  EXPECT_EQ(store.column(2).width, 501);
  for (const wchar_t* bad : {L"2\t-1", L"2\tinf", L"2\t", L"2", L"\t2", L"-1\t5", L"2\t1e400"}) {
    EXPECT_NE(take_column_widths(store, bad), L"") << bad;
    EXPECT_EQ(store.column(2).width, 501) << bad;
  }
  EXPECT_EQ(take_column_widths(store, L"2\t1e30"), L"");
  EXPECT_GT(store.column(2).width_pixels, 0) << "cut to what layout can add up";
}

TEST(ColumnLayout, TellsOfFilesThatCannotBeReadOrWritten) {
  GridStore store = three_columns();
  const std::wstring nowhere = L"/no/such/folder/colunas.txt";
  EXPECT_NE(save_layout_file(nowhere, column_widths_text(store)), L"");
  EXPECT_NE(load_column_widths_file(store, nowhere), L"");
  EXPECT_NE(load_column_order_file(store, nowhere), L"");
}

}  // namespace
}  // namespace kestrelon
