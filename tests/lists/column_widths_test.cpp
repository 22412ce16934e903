#include "lists/column_widths.h"

#include <gtest/gtest.h>

namespace kestrelon {
namespace {

using Widths = std::vector<int>;

TEST(ColumnWidths, WhatIsNoNumberHidesItsColumn) {
  EXPECT_EQ(parse_column_widths(L"", 96), Widths{});
  EXPECT_EQ(parse_column_widths(L"  ", 96), Widths{});
  EXPECT_EQ(parse_column_widths(L"120; 80 ", 96), (Widths{120, 80}));
  EXPECT_EQ(parse_column_widths(L"120;80", 144), (Widths{180, 120}));
  EXPECT_EQ(parse_column_widths(L";-5;x;99999999999", 96), (Widths{0, 0, 0, 32767}));
}

TEST(ColumnWidths, TheLastColumnTakesWhatIsLeft) {
  const PixelRect area{10, 0, 210, 20};
  const auto pieces = split_columns(L"a\tb\tc\td", {50, 0, 60}, area, false);
  ASSERT_EQ(pieces.size(), 2u);  // the hidden b and the surplus d are not shown
  EXPECT_EQ(pieces[0].text, L"a");
  EXPECT_EQ(pieces[0].area, (PixelRect{10, 0, 60, 20}));
  EXPECT_EQ(pieces[1].text, L"c");
  EXPECT_EQ(pieces[1].area, (PixelRect{60, 0, 210, 20}));
  const auto mirrored = split_columns(L"a\tb\tc", {50, 0, 60}, area, true);
  EXPECT_EQ(mirrored[0].area, (PixelRect{160, 0, 210, 20}));
  EXPECT_EQ(mirrored[1].area, (PixelRect{10, 0, 160, 20}));
}

TEST(ColumnWidths, ColumnsWiderThanTheListAreClipped) {
  const PixelRect area{0, 0, 100, 20};
  const auto pieces = split_columns(L"a\tb\tc", {80, 80, 80}, area, false);
  ASSERT_EQ(pieces.size(), 2u);
  EXPECT_EQ(pieces[1].area, (PixelRect{80, 0, 100, 20}));
  EXPECT_EQ(split_columns(L"a\tb", {}, area, false)[0].text, L"a\tb");
}

TEST(ColumnWidths, AMissingColumnIsEmpty) {
  EXPECT_EQ(column_text(L"a\t\tc", 1), L"");
  EXPECT_EQ(column_text(L"a\t\tc", 2), L"c");
  EXPECT_EQ(column_text(L"a\t\tc", 3), L"");
  EXPECT_EQ(column_text(L"abc", 0), L"abc");
}

}  // namespace
}  // namespace kestrelon
