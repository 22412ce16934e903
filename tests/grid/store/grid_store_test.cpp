#include "grid/store/grid_store.h"

#include <gtest/gtest.h>

#include "grid/store/store_check.h"
#include "tests/grid/store/test_numbers.h"

namespace kestrelon {
namespace {

class GridStoreTest : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(GridStoreCheck::fault(store), ""); }

  void columns(std::initializer_list<GridDataType> types) {
    for (const GridDataType type : types) {
      GridNewColumn column;
      column.type = type;
      store.add_column(column);
    }
  }
  std::wstring shown(int column = 0) const {
    std::wstring all;
    for (int i = 0; i < store.row_count(); ++i) all += store.text(store.row_at(i), column);
    return all;
  }

  GridStore store{test_number};
};

TEST_F(GridStoreTest, AnEmptyGridAnswersAndTakesARowWithoutColumns) {
  EXPECT_FALSE(store.resolve(-1, -1));
  EXPECT_FALSE(store.remove_row(0));
  EXPECT_EQ(store.remove_selected(), 0);
  EXPECT_TRUE(store.reset_looks());
  EXPECT_EQ(store.add_item(L"a\tb\tc"), 0);
  EXPECT_EQ(store.column_count(), 1);
  EXPECT_EQ(store.column(0).width, 501);
  EXPECT_EQ(shown(), L"a");
}

TEST_F(GridStoreTest, PlacesColumnsAsTheirIndexSays) {
  for (const int position : {0, 0, 1, 3, 99, -5}) {
    GridNewColumn column;
    column.position = position;
    store.add_column(column);
  }
  // 3 is the end of three columns; only a place between columns moves others.
  EXPECT_EQ(store.column_order(), (std::vector<int>{0, 2, 1, 3, 4, 5}));
}

TEST_F(GridStoreTest, ResolvesWhatCallersPass) {
  columns({GridDataType::String, GridDataType::String, GridDataType::String});
  for (const wchar_t* item : {L"a", L"b", L"c"}) store.add_item(item);
  store.swap_columns(0, 2);
  const auto at = [&](int row, int column) {
    const auto id = store.resolve(row, column);
    return id ? std::make_pair(id->row, id->column) : std::make_pair(-1, -1);
  };
  EXPECT_EQ(at(-1, -1), std::make_pair(0, 0)) << "no current cell";
  store.set_mark(GridMark::Caret, {1, 0});
  EXPECT_EQ(at(-1, -1), std::make_pair(1, 2));
  EXPECT_EQ(at(99, 1), std::make_pair(2, 1));
  EXPECT_EQ(at(0, 3), std::make_pair(-1, -1));
  store.set_row_order({2, 1, 0});
  EXPECT_EQ(at(0, 0), std::make_pair(2, 0));
}

TEST_F(GridStoreTest, KeepsPlacesWithTheirRecords) {
  columns({GridDataType::String});
  for (const wchar_t* item : {L"a", L"b", L"c", L"d"}) store.add_item(item);
  store.set_mark(GridMark::Caret, {2, 0});
  store.set_mark(GridMark::Edit, {2, 0});
  store.add_item(L"x", {.position = 0});
  EXPECT_EQ(store.mark(GridMark::Edit).row, 3);
  store.set_row_order({2, 0, 1, 3, 4});
  EXPECT_EQ(store.mark(GridMark::Edit).row, 0) << "c is shown first now";
  EXPECT_EQ(shown(), L"cabdx");
  store.remove_row(0);
  EXPECT_EQ(store.mark(GridMark::Edit).row, -1) << "an edit ends with its row";
  EXPECT_EQ(store.mark(GridMark::Caret).row, 0);
  store.set_mark(GridMark::Caret, {3, 0});
  store.remove_row(3);
  EXPECT_EQ(store.mark(GridMark::Caret).row, 2) << "past the end it moves up";
}

TEST_F(GridStoreTest, RemovesTheSelectedRowsOnlyNotHiddenOnes) {
  columns({GridDataType::Numeric});
  for (int i = 0; i < 9; ++i) store.add_item(std::to_wstring(i));
  EXPECT_EQ(store.total(0, false), 36);
  EXPECT_TRUE(store.select_range(true, 2, 6));
  EXPECT_FALSE(store.select_range(true, 6, 2)) << "nothing new";
  EXPECT_TRUE(store.set_row_visible(3, false));
  EXPECT_EQ(store.selected_count(), 4);
  EXPECT_EQ(store.remove_selected(), 4);
  EXPECT_EQ(shown(), L"01378");
  EXPECT_EQ(store.visible_count(), 4);
  EXPECT_EQ(store.total(0, false), 19);
  EXPECT_EQ(store.total(0, true), 16);
  EXPECT_TRUE(store.select_range(true));
  EXPECT_EQ(store.remove_selected(), 5) << "selecting all takes hidden rows too";
  EXPECT_EQ(store.total(0, false), 0);
}

TEST_F(GridStoreTest, KeepsBooleanTextAndCheckTogether) {
  columns({GridDataType::Boolean, GridDataType::String});
  store.add_item(L"1\t1");
  EXPECT_TRUE(store.checked(0, 0));
  EXPECT_EQ(store.text(0, 0), L"True");
  EXPECT_FALSE(store.checked(0, 1)) << "a text is no check elsewhere";
  store.set_checked(0, 0, false);
  EXPECT_EQ(store.text(0, 0), L"False");
  store.set_text(0, 0, L"-1");
  EXPECT_TRUE(store.checked(0, 0));
  EXPECT_EQ(store.text(0, 0), L"True");
  store.set_text(0, 0, L"");
  EXPECT_FALSE(store.checked(0, 0));
  EXPECT_EQ(store.text(0, 0), L"");
  store.set_checked(0, 1, true);
  EXPECT_EQ(store.text(0, 1), L"1");
}

TEST_F(GridStoreTest, ChecksTheRowShownLastWhenOneIsInserted) {
  columns({GridDataType::Boolean});
  for (int i = 0; i < 3; ++i) store.add_item(L"0");
  store.add_item(L"1", {.position = 1});
  EXPECT_FALSE(store.checked(3, 0));
  EXPECT_TRUE(store.checked(2, 0));
  store.set_exact_rules(true);
  store.add_item(L"1", {.position = 1});
  EXPECT_TRUE(store.checked(4, 0));
}

TEST_F(GridStoreTest, ProgressSharesTheWordOfTheFlags) {
  columns({GridDataType::ProgressBar, GridDataType::String});
  store.add_item(L"\ta");
  store.set_cell_bit(0, 1, kGridBold, true);
  store.set_progress(0, 1, 0);
  EXPECT_EQ(store.cell(0, 1).flags, 0) << "bold went";
  EXPECT_EQ(store.text(0, 1), L"a");
  store.set_progress(0, 0, 55);
  EXPECT_EQ(store.text(0, 0), L"55");
  EXPECT_EQ(grid_font_bits(GridDataType::ProgressBar, store.cell(0, 0).flags), 0);
  store.set_progress(0, 0, -1);
  EXPECT_EQ(store.progress(0, 0), -1);
}

TEST_F(GridStoreTest, SumsEndAtZero) {
  columns({GridDataType::Numeric});
  EXPECT_EQ(store.total(0, false), 0);
  store.add_item(L"1,5");
  store.add_item(L"2,5");
  EXPECT_EQ(store.total(0, false), 4);
  for (int i = 0; i < 10'000; ++i) {
    const std::wstring text = std::to_wstring(i * 7919 % 1000) + L"," + std::to_wstring(i % 100);
    if (i < 500) store.add_item(text, {.visible = i % 3 != 0});
    store.set_text(i % store.row_count(), 0, text);
  }
  while (store.row_count() > 1) store.remove_row(store.row_count() / 2);
  store.set_text(0, 0, L"texto");
  EXPECT_EQ(store.total(0, false), 0);
  EXPECT_EQ(store.total(0, true), 0);
}

TEST_F(GridStoreTest, FormatsRangesAndSharesLooks) {
  columns({GridDataType::String, GridDataType::String});
  for (int i = 0; i < 4; ++i) store.add_item(L"a\tb");
  EXPECT_TRUE(store.format_cells({1, 2, 0, -1}, GridCellFormat::Image, L"5", {}));
  for (int row = 0; row < 4; ++row)
    EXPECT_EQ(store.look(store.cell(row, 1).style).image, row == 1 || row == 2 ? 5 : 0);
  EXPECT_EQ(store.cell(1, 0).style, store.cell(2, 1).style);
  EXPECT_TRUE(store.format_cells({}, GridCellFormat::FontName, L"  ", {}));
  EXPECT_EQ(store.look(store.cell(0, 0).style).font_name, L"");
  EXPECT_TRUE(store.format_cells({2, 1}, GridCellFormat::BackColor, L"9", {}));
  EXPECT_TRUE(store.format_cells({0, 99, 1, 99}, GridCellFormat::FontBold, L"-1", {}));
  EXPECT_EQ(store.cell(3, 1).flags, kGridBold);
  EXPECT_EQ(store.cell(3, 0).flags, 0);
  GridLook other = store.default_look();
  other.back_color = 0x123456;
  store.set_default_look(other);
  EXPECT_EQ(store.look(store.cell(0, 0).style).back_color, 0xFFFFFFu) << "cells keep their look";
  EXPECT_TRUE(store.reset_looks());
  EXPECT_EQ(store.look(store.cell(1, 0).style), other);
}

TEST_F(GridStoreTest, RefusesALookTooManyAndChangesNothing) {
  columns({GridDataType::String, GridDataType::String});
  const int rows = LookPool::kMost / 2 + 20;
  store.reserve_rows(rows);
  int row = 0;
  bool room = true;
  for (uint32_t color = 0; room && row < rows; ++row) {
    ASSERT_GE(store.add_item(L"a\tb"), 0);
    for (const int column : {0, 1})
      room = room && store.change_look({row, row, column, column},
                                       [&](GridLook& look) { look.back_color = color++; });
  }
  ASSERT_FALSE(room);
  --row;
  const int style = store.cell(0, 0).style;
  EXPECT_FALSE(store.format_cells({0, 1}, GridCellFormat::ForeColor, L"77", {}));
  EXPECT_EQ(store.cell(0, 0).style, style);
  EXPECT_EQ(store.look(store.cell(1, 0).style).fore_color, 0u);
  GridLook fresh;
  fresh.font_name = L"new";
  store.set_default_look(fresh);
  store.change_look({row, row}, [](GridLook& look) { look.back_color = 1; });
  const int count = store.row_count();
  int added = 0;
  while (store.add_item(L"x") >= 0 && ++added < 3) {
  }
  EXPECT_EQ(store.row_count(), count + added);
}

TEST_F(GridStoreTest, LetsGoOfMemoryAndSlotsAfterGreatRemovals) {
  columns({GridDataType::String, GridDataType::Numeric});
  constexpr int kRows = 20'000;
  for (int i = 0; i < kRows; ++i) {
    store.add_item(L"um texto de tamanho comum\t" + std::to_wstring(i), {.data = i});
    if (i % 1000 == 999) store.set_cell_tag(i, 1, L"marca");
  }
  const size_t full = store.text_units();
  store.select_range(true);
  for (int i = 999; i < kRows; i += 1000) store.set_row_bit(i, kGridSelected, false);
  EXPECT_EQ(store.remove_selected(), kRows - 20);
  EXPECT_LT(store.text_units(), full / 4);
  for (int i = 0; i < 20; ++i) {
    const int old = i * 1000 + 999;
    EXPECT_EQ(store.row_data(i), old);
    EXPECT_EQ(store.text(i, 1), std::to_wstring(old));
    EXPECT_EQ(store.cell_tag(i, 1), L"marca");
  }
  EXPECT_EQ(GridStoreCheck::fault(store), "");
  store.add_item(L"mais\t1");
  EXPECT_EQ(store.text(20, 0), L"mais");
}

TEST_F(GridStoreTest, DropsForeignObjectsOnlyWhenItIsWhole) {
  columns({GridDataType::String});
  int calls = 0;
  const auto picture = [&] {
    return GridObject(&calls, [this](void* count) {
      ++*static_cast<int*>(count);
      // A foreign object may call back into the grid as it goes.
      EXPECT_EQ(GridStoreCheck::fault(store), "");
      if (store.row_count() > 0) store.set_text(0, 0, L"changed");
    });
  };
  for (int i = 0; i < 6; ++i) {
    store.add_item(L"a");
    store.set_picture(i, 0, picture());
  }
  store.set_picture(0, 0, nullptr);
  store.set_picture(1, 0, picture());
  store.remove_row(1);
  store.set_row_bit(1, kGridSelected, true);
  store.remove_selected();
  EXPECT_EQ(calls, 4);
  store.edit_column(0).bound_control = picture();
  store.clear_all();
  EXPECT_EQ(calls, 8);
}

TEST_F(GridStoreTest, FitsColumnsToAWidth) {
  columns({GridDataType::String, GridDataType::String, GridDataType::String});
  store.fit_columns(0);
  for (const int column : {0, 1, 2}) store.set_column_width(column, 100.0 * (column + 1));
  store.edit_column(1).visible = false;
  store.fit_columns(800);
  EXPECT_EQ(store.column(0).width, 200);
  EXPECT_EQ(store.column(1).width, 200);
  EXPECT_EQ(store.column(2).width, 600);
}

}  // namespace
}  // namespace kestrelon
