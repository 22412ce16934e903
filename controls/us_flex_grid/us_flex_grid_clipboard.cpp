// Rows to the clipboard and cells from it, for grids that allow it.
#include "base/text.h"
#include "controls/us_flex_grid/us_flex_grid.h"

namespace kestrelon {

bool USFlexGrid::clipboard_key(short key) {
  if (!AllowClipboard.get() || store_.row_count() == 0) return false;
  if (key == 'C') copy_selection();
  if (key == 'V') paste_cells();
  return key == 'C' || key == 'V';
}

// The selected rows as they show, fields by tabs, so that spreadsheets take them for cells. Without
// a selection the current cell alone.
void USFlexGrid::copy_selection() {
  std::wstring out;
  const auto append_row = [&](int record) {
    bool first = true;
    for (int i = 0; i < store_.column_count(); ++i) {
      const int column = store_.column_at(i);
      if (!store_.column(column).visible) continue;
      if (!first) out += L'\t';
      first = false;
      for (const wchar_t c : store_.text(record, column))
        out += c == L'\t' || c == L'\r' || c == L'\n' ? L' ' : c;
    }
    out += L"\r\n";
  };
  if (FocusRectMode.get() == Focus_Col && store_.selected_count() <= 1) {
    out = cell_text(-1, -1);
  } else {
    for (int i = store_.next_visible(0); i >= 0;) {
      if (store_.row_info(store_.row_at(i)).has(kGridSelected)) append_row(store_.row_at(i));
      i = i + 1 < store_.row_count() ? store_.next_visible(i + 1) : -1;
    }
  }
  if (!out.empty()) put_clipboard_text(window(), out);
}

// Cell by cell as if each had been typed: the program hears of every one and may refuse it. The
// first field goes to the current cell; what lies beyond the last row or column is left out.
void USFlexGrid::paste_cells() {
  if (!AllowEdit.get() || caret().row < 0 || caret().column < 0) return;
  const std::wstring text = clipboard_text(window());
  const Pause pause(*this);
  const int first_column = caret().column;
  int row = caret().row;
  for (std::wstring_view line : split(text, L"\n")) {
    if (!line.empty() && line.back() == L'\r') line.remove_suffix(1);
    if (line.empty()) continue;
    int column = first_column;
    for (const std::wstring_view field : split(line, L"\t")) {
      while (column < store_.column_count() && !store_.column(store_.column_at(column)).visible)
        ++column;
      if (row >= store_.row_count() || column >= store_.column_count()) break;
      const uint32_t before = store_.structure_version();
      if (!paste_cell({row, column}, field)) return;
      if (before != store_.structure_version()) return;  // a handler has moved the ground
      ++column;
    }
    row = row + 1 < store_.row_count() ? store_.next_visible(row + 1) : -1;
    if (row < 0) return;
  }
}

/// False when the program refused it, which ends the pasting.
bool USFlexGrid::paste_cell(GridPlace place, std::wstring_view text) {
  if (!can_stand(place.row) || !can_stand_column(place.column)) return true;
  if (!ask_before_edit(place)) return false;
  const GridPlace at = store_.mark(GridMark::Edit);
  std::wstring kept(text);
  std::erase_if(kept, [this](wchar_t c) { return !filter_passes(c); });
  const GridColumn& column = store_.column(store_.column_at(at.column));
  if (column.input_filter == L"<") CharLowerBuffW(kept.data(), static_cast<DWORD>(kept.size()));
  if (column.input_filter == L">") CharUpperBuffW(kept.data(), static_cast<DWORD>(kept.size()));
  return store_edit(std::move(kept));
}

}  // namespace kestrelon
