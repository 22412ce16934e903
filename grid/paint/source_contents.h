// What a source's rows look like: records turned into what painters ask for.
#pragma once

#include "grid/grid_source.h"
#include "grid/paint/grid_contents.h"
#include "grid/values/cell_value.h"
#include "grid/values/total_line.h"

namespace kestrelon::grid_paint {

/// The grid's state and properties beside its rows.
struct ContentsState {
  uint32_t back_color = 0, fore_color = 0;  ///< the grid's own, as its cells hold them
  std::wstring_view font_name;
  std::wstring_view caption;
  /// Turns a color of the records, which may be one of the system's, into a plain one.
  ColorRef (*translate)(uint32_t color) = [](uint32_t color) { return color & 0xFFFFFF; };
  bool selection_shows = true;
  int hovered_column = -1, pressed_column = -1;  ///< records
  int pressed_row = -1, pressed_button = -1;     ///< position and record of a held button
  int sort_columns[2] = {-1, -1};                ///< records
  int32_t expand_image = 0;
  TotalRules totals;
};

/// Refers to all that it is given.
class SourceContents final : public GridContents {
 public:
  SourceContents(const GridSource& source, const LocaleRules& rules, const ContentsState& state)
      : source_(source), rules_(rules), state_(state) {}

  RowFacts row(int32_t row) const override;
  void cell(int32_t row, int32_t column, CellFacts& facts) const override;
  void group_cell(int32_t row, CellFacts& facts) const override;
  HeadingFacts heading(int32_t column) const override;
  void total(int32_t column, TotalFacts& facts) const override;
  std::wstring_view caption() const override { return state_.caption; }
  int32_t expand_image() const override { return state_.expand_image; }

 private:
  void take_look(const GridLook& look, CellFacts& facts) const;
  void take_text(const GridColumn& column, const GridCellInfo& cell, CellFacts& facts) const;

  const GridSource& source_;
  const LocaleRules& rules_;
  const ContentsState& state_;
};

}  // namespace kestrelon::grid_paint
