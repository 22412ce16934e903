#include "grid/paint/source_contents.h"

#include <gtest/gtest.h>

#include "grid/fixed_locale_rules.h"
#include "grid/layout/source_rows.h"
#include "grid/store/grid_store.h"
#include "grid/values/cell_number.h"

namespace kestrelon {
namespace {

using namespace grid_paint;

struct SourceContentsTest : testing::Test {
  SourceContentsTest()
      : store([this](std::wstring_view text) { return cell_number(text, rules.facts()); }) {
    GridNewColumn column;
    column.heading = L"Produto";
    store.add_column(column);
    column.type = GridDataType::Numeric;
    column.format = L"#,##0.00";
    column.alignment = GridAlignment::RightCenter;
    store.add_column(column);
    column.type = GridDataType::ProgressBar;
    store.add_column(column);
    column.type = GridDataType::Boolean;
    store.add_column(column);
    store.add_item(L"Caf\u00E9\t1234,5\t40\tTrue");
    store.add_item(L"P\u00E3o\tsem pre\u00E7o\tem falta\tFalse");
    store.add_item(L"\t\t-1\t");
  }
  CellFacts cell(int row, int column) {
    CellFacts facts;
    contents.cell(row, column, facts);
    return facts;
  }
  FixedLocaleRules rules = brazilian_locale_rules();
  GridStore store;
  ContentsState state;
  SourceContents contents{store, rules, state};
};

TEST_F(SourceContentsTest, TextsAreShownByTheirColumn) {
  EXPECT_EQ(cell(0, 1).text, L"1.234,50");
  EXPECT_EQ(cell(1, 1).text, L"sem pre\u00E7o");
  EXPECT_EQ(cell(2, 1).text, L"");
  EXPECT_EQ(cell(0, 1).alignment, 6);
  EXPECT_EQ(cell(0, 2).progress, 40);
  EXPECT_EQ(cell(0, 2).text, L"40%");
  EXPECT_EQ(cell(1, 2).text, L"em falta");
  EXPECT_TRUE(cell(0, 3).checked);
  EXPECT_FALSE(cell(1, 3).checked);
  EXPECT_EQ(cell(0, 3).kind, CellKind::kCheckBox);
}

TEST_F(SourceContentsTest, FactsOfOneCellDoNotReachTheNext) {
  CellFacts facts;
  contents.cell(0, 2, facts);
  facts.clear();
  contents.cell(2, 0, facts);
  EXPECT_EQ(facts.text, L"");
  EXPECT_EQ(facts.progress, -1);
  EXPECT_EQ(facts.kind, CellKind::kText);
}

TEST_F(SourceContentsTest, StateReachesRowsAndHeadings) {
  store.set_row_bit(store.row_at(1), kGridSelected, true);
  state.pressed_column = 1;
  state.hovered_column = 0;
  state.pressed_row = 1;
  state.pressed_button = 0;
  EXPECT_TRUE(contents.row(1).selected);
  EXPECT_FALSE(contents.row(0).selected);
  EXPECT_EQ(contents.heading(1).state, 3);
  EXPECT_EQ(contents.heading(0).state, 2);
  EXPECT_TRUE(cell(1, 0).pressed);
  EXPECT_FALSE(cell(0, 0).pressed);
  state.selection_shows = false;
  EXPECT_FALSE(contents.row(1).selected);
  store.edit_column(1).sort_state = GridSortState::Descending;
  EXPECT_EQ(contents.heading(1).sort, 0) << "not one of the sorted columns";
  state.sort_columns[1] = 1;
  EXPECT_EQ(contents.heading(1).sort, 1);
}

TEST_F(SourceContentsTest, GroupsShowTheFirstVisibleColumn) {
  store.edit_column(0).visible = false;
  CellFacts facts;
  contents.group_cell(0, facts);
  EXPECT_EQ(facts.text, L"1.234,50");
}

TEST_F(SourceContentsTest, LayoutFollowsHiddenRowsAndColumnOrder) {
  store.set_row_visible(1, false);
  const grid_layout::SourceRows rows(store);
  EXPECT_EQ(rows.next_visible(1), 2);
  EXPECT_EQ(rows.next_visible(3), 3);
  EXPECT_EQ(rows.previous_visible(1), 0);
  store.set_row_visible(2, false);
  EXPECT_EQ(rows.next_visible(1), 3);
  EXPECT_TRUE(store.move_column(0, 2));
  const std::vector<grid_layout::Column> columns = grid_layout::source_columns(store);
  EXPECT_EQ(columns[2].store, 0);
  EXPECT_EQ(columns[0].store, 1);
}

}  // namespace
}  // namespace kestrelon
