#include "grid/paint/source_contents.h"

namespace kestrelon::grid_paint {
namespace {

CellKind kind_of(GridDataType type) {
  switch (type) {
    case GridDataType::Boolean:
      return CellKind::kCheckBox;
    case GridDataType::Button:
      return CellKind::kButton;
    case GridDataType::ProgressBar:
      return CellKind::kProgress;
    default:
      return CellKind::kText;
  }
}

}  // namespace

RowFacts SourceContents::row(int32_t row) const {
  const GridRowInfo info = source_.row_info(source_.row_at(row));
  return {state_.selection_shows && info.has(kGridSelected), info.has(kGridChecked),
          info.group_header, info.image};
}

void SourceContents::cell(int32_t row, int32_t column, CellFacts& facts) const {
  const int record = source_.row_at(row);
  const GridCellInfo cell = source_.cell(record, column);
  const GridColumn& definition = source_.column(column);
  facts.kind = kind_of(definition.type);
  facts.alignment = static_cast<int>(cell.alignment);
  facts.image_alignment = static_cast<int>(definition.image_alignment);
  facts.picture = source_.picture(record, column).get();
  if (cell.style >= 0) take_look(source_.look(cell.style), facts);
  take_text(definition, cell, facts);
  const int16_t fonts = grid_font_bits(definition.type, cell.flags);
  facts.bold = (fonts & kGridBold) != 0;
  facts.italic = (fonts & kGridItalic) != 0;
  facts.underline = (fonts & kGridUnderline) != 0;
  facts.strikethrough = (fonts & kGridStrikethrough) != 0;
  facts.pressed = row == state_.pressed_row && column == state_.pressed_button;
}

void SourceContents::take_look(const GridLook& look, CellFacts& facts) const {
  facts.own_back = look.back_color != state_.back_color;
  facts.own_fore = look.fore_color != state_.fore_color;
  if (facts.own_back) facts.back = state_.translate(look.back_color);
  if (facts.own_fore) facts.fore = state_.translate(look.fore_color);
  if (look.font_name != state_.font_name) facts.font_name = look.font_name;
  facts.image = look.image;
}

void SourceContents::take_text(const GridColumn& column, const GridCellInfo& cell,
                               CellFacts& facts) const {
  facts.text = cell.text;
  if (column.type == GridDataType::ProgressBar) {
    const GridProgress progress = cell_progress(cell.text, cell.flags, rules_.facts());
    facts.progress = progress.percent;
    facts.text = progress.caption;
    if (!facts.text.empty() || progress.percent < 0) return;
    facts.scratch = std::to_wstring(progress.percent) + L'%';
    facts.text = facts.scratch;
    return;
  }
  facts.checked = (cell.flags & kGridChecked) != 0;
  facts.wrap = (cell.flags & kGridWordWrap) != 0;
  if (cell.text.empty() || !is_formatted(column.type, column.format)) return;
  facts.scratch = display_text(cell.text, column.type, column.format, rules_);
  facts.text = facts.scratch;
}

void SourceContents::group_cell(int32_t row, CellFacts& facts) const {
  for (int i = 0; i < source_.column_count(); ++i) {
    const int column = source_.column_at(i);
    if (source_.column(column).visible) return cell(row, column, facts);
  }
}

HeadingFacts SourceContents::heading(int32_t column) const {
  const GridColumn& definition = source_.column(column);
  const bool sorted = column == state_.sort_columns[0] || column == state_.sort_columns[1];
  const int state = column == state_.pressed_column ? 3 : column == state_.hovered_column ? 2 : 1;
  return {definition.heading, static_cast<int>(definition.alignment), state,
          sorted ? static_cast<int>(definition.sort_state) : 0};
}

void SourceContents::total(int32_t column, TotalFacts& facts) const {
  const GridTotalLine& line = source_.total_line(column);
  facts.alignment = line.alignment;
  facts.fore = state_.translate(line.fore_color);
  facts.scratch =
      total_cell(source_, column, state_.totals, source_.column(column).format, rules_.facts());
  facts.text = facts.scratch;
}

}  // namespace kestrelon::grid_paint
