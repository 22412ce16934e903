// The edit cycle: one box of the system that goes from cell to cell.
#include "controls/us_flex_grid/us_flex_grid.h"

#include "base/text.h"
#include "frame/translate_color.h"

namespace kestrelon {
namespace {

constexpr DWORD kBoxStyle = WS_CHILD | ES_AUTOHSCROLL;

DWORD alignment_style(GridAlignment alignment) {
  switch (grid_layout::across(static_cast<int>(alignment))) {
    case 1:
      return ES_CENTER;
    case 2:
      return ES_RIGHT;
    default:
      return ES_LEFT;
  }
}

DWORD case_style(const std::wstring& filter) {
  return filter == L"<" ? ES_LOWERCASE : filter == L">" ? ES_UPPERCASE : 0;
}

bool plain_filter(const std::wstring& filter) {
  return !filter.empty() && filter != L"<" && filter != L">";
}

std::wstring clipboard_text(HWND window) {
  std::wstring out;
  if (!OpenClipboard(window)) return out;
  if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
    if (const auto* const text = static_cast<const wchar_t*>(GlobalLock(data))) {
      out.assign(text, wcsnlen(text, GlobalSize(data) / sizeof(wchar_t)));
      GlobalUnlock(data);
    }
  }
  CloseClipboard();
  return out;
}

}  // namespace

HWND USFlexGrid::focus_target() {
  return edit_pending_ ? box_.hwnd() : nullptr;
}

void USFlexGrid::force_cell_edit(long row, long column, bool blank) {
  if (row >= 0 || column >= 0) row_col_set(row, column);
  if (start_edit(caret()) && blank) box_.set_text(L"");
}

// The edited cell is kept as a place that goes with its row and column, whatever handlers do.
bool USFlexGrid::ask_before_edit(GridPlace place) {
  if (in_event_edit_) return false;
  store_.set_mark(GridMark::Edit, place);
  long row = place.row, column = store_.column_at(place.column);
  VARIANT_BOOL cancel = VARIANT_FALSE;
  in_event_edit_ = true;
  raise_before_edit(row, column, cancel);
  in_event_edit_ = false;
  const GridPlace now = store_.mark(GridMark::Edit);
  return cancel == VARIANT_FALSE && !edit_pending_ && now.row >= 0 && now.column >= 0;
}

bool USFlexGrid::start_edit(GridPlace place) {
  if (!AllowEdit.get() || !Enabled.get() || store_.row_count() == 0) return false;
  if (edit_pending_ && !update_cell(false)) return false;
  if (!can_stand(place.row) || !can_stand_column(place.column)) return false;
  if (store_.column(store_.column_at(place.column)).type == GridDataType::Boolean) return false;
  if (!ask_before_edit(place)) return false;
  return open_box(store_.mark(GridMark::Edit));
}

bool USFlexGrid::open_box(GridPlace place) {
  if (window() == nullptr) return false;
  show_cell(place);
  if (box_.hwnd() == nullptr && !box_.create(kBoxStyle, {0, 0, 1, 1})) return false;
  const int record = store_.row_at(place.row), column = store_.column_at(place.column);
  const GridCellInfo cell = store_.cell(record, column);
  const GridColumn& spec = store_.column(column);
  const LONG style = GetWindowLongW(box_.hwnd(), GWL_STYLE) &
                     ~static_cast<LONG>(ES_CENTER | ES_RIGHT | ES_LOWERCASE | ES_UPPERCASE);
  SetWindowLongW(
      box_.hwnd(), GWL_STYLE,
      style | static_cast<LONG>(alignment_style(cell.alignment) | case_style(spec.input_filter)));
  const int16_t fonts = grid_font_bits(spec.type, cell.flags);
  const GridLook& look = store_.look(cell.style);
  const std::wstring name = look.font_name == font_name_ ? std::wstring() : look.font_name;
  box_.set_font(fonts_
                    .cell(name, {(fonts & kGridBold) != 0, (fonts & kGridItalic) != 0,
                                 (fonts & kGridUnderline) != 0, (fonts & kGridStrikethrough) != 0})
                    .handle);
  box_.set_colors(TranslateColor(ForeColorEdit.get()), TranslateColor(BackColorEdit.get()));
  box_.set_text(store_.text(record, column));
  box_.select_all();
  edit_pending_ = true;
  caret_keys_ = true;
  place_editor();
  box_.show(true);
  SetFocus(box_.hwnd());
  key_wishes_changed();
  return edit_pending_;
}

void USFlexGrid::place_editor() {
  const GridPlace at = store_.mark(GridMark::Edit);
  const grid_layout::GridPage& now = page();
  const grid_layout::PlacedRow* const row = now.row(at.row);
  const grid_layout::PlacedColumn* const column = now.column(at.column);
  if (row == nullptr || column == nullptr) return box_.show(false);
  const PixelRect cell =
      grid_layout::editor_rect(now.metrics, grid_layout::cell_rect(*column, *row));
  const PixelRect seen = intersect(cell, intersect(now.rows_area, now.inner));
  // A single line stands in the middle of its cell; the box has no way to say so itself.
  const int line = std::min(box_.line_height(), seen.bottom - seen.top);
  const int top = seen.top + (seen.bottom - seen.top - line) / 2;
  box_.move({seen.left, top, seen.right, top + line});
}

bool USFlexGrid::filter_passes(wchar_t character) const {
  const GridPlace at = store_.mark(GridMark::Edit);
  if (at.column < 0) return true;
  const std::wstring& filter = store_.column(store_.column_at(at.column)).input_filter;
  if (!plain_filter(filter) || character == L'.') return true;
  wchar_t both[2] = {character, character};
  CharLowerBuffW(both, 1);
  CharUpperBuffW(both + 1, 1);
  return filter.find(both[0]) != std::wstring::npos || filter.find(both[1]) != std::wstring::npos;
}

bool USFlexGrid::edit_message(ChildEdit&, UINT message, WPARAM, LPARAM, LRESULT& result) {
  if (message != WM_PASTE || !edit_pending_) return false;
  std::wstring text = clipboard_text(box_.hwnd());
  std::erase_if(text, [this](wchar_t c) { return !filter_passes(c); });
  if (!text.empty()) box_.replace_selection(text);
  result = 0;
  return true;
}

bool USFlexGrid::update_cell(bool allow_move) {
  if (!edit_pending_) return true;
  if (committing_) return false;
  committing_ = true;
  const bool stored = store_edit(box_.text());
  committing_ = false;
  if (!stored) return false;
  if (allow_move) after_edit_move();
  return true;
}

// Offers the text to the program and stores it; false when it was refused.
bool USFlexGrid::store_edit(std::wstring text) {
  GridPlace at = store_.mark(GridMark::Edit);
  const auto gone = [&] { return at.row < 0 || at.column < 0; };
  if (gone() || text == store_.text(store_.row_at(at.row), store_.column_at(at.column))) {
    close_editor(true);
    return true;
  }
  long row = at.row, column = store_.column_at(at.column);
  Bstr given(text);
  BSTR value = given.detach();
  VARIANT_BOOL cancel = VARIANT_FALSE;
  raise_after_edit(row, column, value, cancel);
  text = to_wstring(value);
  SysFreeString(value);
  if (cancel != VARIANT_FALSE) return false;
  at = store_.mark(GridMark::Edit);
  close_editor(true);
  if (gone()) return true;
  if (trim_blanks(text).empty()) text.clear();
  const int record = store_.row_at(at.row), index = store_.column_at(at.column);
  store_.set_text(record, index, text);
  store_.mark_changed(record, index);
  measure_row(at.row);
  touch();
  return true;
}

void USFlexGrid::close_editor(bool keep_focus) {
  if (!edit_pending_) return;
  edit_pending_ = false;
  store_.set_mark(GridMark::Edit, {});
  const bool had_focus = box_.has_focus();
  if (keep_focus && had_focus && window() != nullptr) SetFocus(window());
  box_.show(false);
  key_wishes_changed();
}

void USFlexGrid::after_edit_move() {
  if (EditMove.get() == DontMove || store_.row_count() == 0) return;
  GridPlace to = caret();
  if (EditMove.get() == MoveRight) {
    to.column = next_column(to.column, 1);
  } else {
    to.row = next_row(to.row, 1, 1);
  }
  if (!can_stand(to.row) || !can_stand_column(to.column)) return;
  store_.set_mark(GridMark::Caret, to);
  select_by_caret(0);
  show_cell(caret());
  show_change();
}

}  // namespace kestrelon
