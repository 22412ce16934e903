// What an edit happens in: a box of the system that goes from cell to cell, or the control that the
// program has bound to a column.
#include "base/text.h"
#include "controls/us_flex_grid/us_flex_grid.h"
#include "frame/translate_color.h"

namespace kestrelon {
namespace {

constexpr DWORD kBoxStyle = WS_CHILD | ES_AUTOHSCROLL;
constexpr DWORD kTallStyle = WS_CHILD | ES_MULTILINE | ES_AUTOVSCROLL;
constexpr WPARAM kTakeFocusBack = 0;  // of the editor's message; other values are keys

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

UINT editor_message() {
  static const UINT message = RegisterWindowMessageW(L"Kestrelon2012.GridEditor");
  return message;
}

}  // namespace

HWND USFlexGrid::focus_target() {
  if (!edit_pending_) return nullptr;
  return bound_.active() ? bound_.window() : box_.hwnd();
}

IDispatch* USFlexGrid::bound_to(GridPlace place) const {
  return static_cast<IDispatch*>(store_.column(store_.column_at(place.column)).bound_control.get());
}

bool USFlexGrid::open_editor() {
  if (window() == nullptr) return false;
  show_cell(store_.mark(GridMark::Edit));  // tells of scrolling, and a handler may do anything
  const GridPlace at = store_.mark(GridMark::Edit);
  if (at.row < 0 || at.column < 0 || edit_pending_ || window() == nullptr) return false;
  edit_pending_ = true;
  caret_keys_ = true;
  gave_focus_back_ = false;
  hide_cell_tip();
  if (bound_to(at) != bound_.control()) take_bound(at);
  bound_.control() != nullptr ? open_bound(at) : open_box(at);
  key_wishes_changed();
  return edit_pending_;
}

void USFlexGrid::take_bound(GridPlace place) {
  IDispatch* const control = bound_to(place);
  if (control == nullptr) return bound_.drop();
  bound_.take(control,
              std::wstring(store_.text(store_.row_at(place.row), store_.column_at(place.column))));
}

void USFlexGrid::open_bound(GridPlace place) {
  const int record = store_.row_at(place.row), column = store_.column_at(place.column);
  const int16_t fonts =
      grid_font_bits(store_.column(column).type, store_.cell(record, column).flags);
  BoundLook look;
  look.fore_color = ForeColorEdit.get();
  look.back_color = BackColorEdit.get();
  look.bold = (fonts & kGridBold) != 0;
  look.italic = (fonts & kGridItalic) != 0;
  look.underline = (fonts & kGridUnderline) != 0;
  look.strikethrough = (fonts & kGridStrikethrough) != 0;
  look.font_name = font_name_;
  look.font_size = font_size();
  bound_.open(window(), look);
  if (!edit_pending_) return;
  place_editor();
  if (edit_pending_) bound_.show();
}

// Several lines need a box that shows them; a text of one line is typed in one line.
bool USFlexGrid::needs_tall_box(std::wstring_view text, int16_t flags) const {
  return text.find_first_of(L"\r\n") != std::wstring_view::npos ||
         (AllowWordWrap.get() && (flags & kGridWordWrap) != 0);
}

void USFlexGrid::open_box(GridPlace place) {
  const int record = store_.row_at(place.row), column = store_.column_at(place.column);
  const GridCellInfo cell = store_.cell(record, column);
  const GridColumn& spec = store_.column(column);
  const bool progress = spec.type == GridDataType::ProgressBar;
  const bool tall = !progress && needs_tall_box(cell.text, cell.flags);
  if (tall != tall_box_) box_.destroy();
  tall_box_ = tall;
  if (box_.hwnd() == nullptr && !box_.create(tall ? kTallStyle : kBoxStyle, {0, 0, 1, 1})) {
    edit_pending_ = false;
    return;
  }
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
  box_text_ = box_.text();  // the system may keep it differently
  box_.select_all();
  place_editor();
  box_.show(true);
  SetFocus(box_.hwnd());
}

void USFlexGrid::place_editor() {
  const GridPlace at = store_.mark(GridMark::Edit);
  const grid_layout::GridPage& now = page();
  const grid_layout::PlacedRow* const row = now.row(at.row);
  const grid_layout::PlacedColumn* const column = now.column(at.column);
  if (row == nullptr || column == nullptr) return box_.show(false);
  const PixelRect cell =
      grid_layout::editor_rect(now.metrics, grid_layout::cell_rect(*column, *row));
  const PixelRect area = intersect(now.rows_area, now.inner);
  if (bound_.active())
    return bound_.place({cell.left, cell.top, cell.right, cell.bottom},
                        store_.column(column->store).move_control);
  const PixelRect seen = intersect(cell, area);
  tall_box_ ? place_tall_box(seen, area) : place_box(seen);
}

// A single line stands in the middle of its cell; the box has no way to say so itself.
void USFlexGrid::place_box(const PixelRect& seen) {
  const int line = std::min(box_.line_height(), seen.bottom - seen.top);
  const int top = seen.top + (seen.bottom - seen.top - line) / 2;
  box_.move({seen.left, top, seen.right, top + line});
}

// As high as its lines, within the rows that show.
void USFlexGrid::place_tall_box(const PixelRect& seen, const PixelRect& area) {
  constexpr int kMostLines = 8;
  box_.move({seen.left, seen.top, seen.right, seen.bottom});
  const int lines = static_cast<int>(SendMessageW(box_.hwnd(), EM_GETLINECOUNT, 0, 0));
  const int wanted = box_.line_height() * std::clamp(lines, 1, kMostLines);
  const int height = std::min(std::max(wanted, seen.bottom - seen.top), area.bottom - area.top);
  const int top = std::max(std::min(seen.top, area.bottom - height), area.top);
  box_.move({seen.left, top, seen.right, top + height});
}

void USFlexGrid::edit_changed(ChildEdit&) {
  if (edit_pending_ && tall_box_) place_editor();
}

bool USFlexGrid::in_editor(int x, int y) const {
  if (!edit_pending_ || bound_.active() || box_.hwnd() == nullptr) return false;
  RECT place{};
  GetWindowRect(box_.hwnd(), &place);
  MapWindowPoints(nullptr, window(), reinterpret_cast<POINT*>(&place), 2);
  const POINT point{x, y};
  return PtInRect(&place, point) != FALSE;
}

// Up and Down stay in the box as long as it has a line there.
bool USFlexGrid::line_key(short key) const {
  if (!tall_box_ || bound_.active()) return false;
  const LRESULT line = SendMessageW(box_.hwnd(), EM_LINEFROMCHAR, static_cast<WPARAM>(-1), 0);
  const LRESULT last = SendMessageW(box_.hwnd(), EM_GETLINECOUNT, 0, 0) - 1;
  return key == VK_UP ? line > 0 : line < last;
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

void USFlexGrid::close_editor(bool keep_focus) {
  if (!edit_pending_) return;
  edit_pending_ = false;
  store_.set_mark(GridMark::Edit, {});
  if (bound_.active()) {
    bound_.close(keep_focus);
  } else {
    bound_.drop();
    if (keep_focus && box_.has_focus() && window() != nullptr) SetFocus(window());
    box_.show(false);
  }
  key_wishes_changed();
}

// A character that began the edit goes where the editor types.
void USFlexGrid::type_into_editor(wchar_t character) {
  if (!bound_.active()) {
    box_.select_all();
    return box_.replace_selection({&character, 1});
  }
  if (!bound_.has_focus()) return;
  const HWND focus = GetFocus();
  SendMessageW(focus, EM_SETSEL, 0, -1);
  SendMessageW(focus, WM_CHAR, character, 1);
}

UINT USFlexGrid::bound_key_message() const {
  return editor_message();
}

void USFlexGrid::bound_left(HWND to) {
  const Hold hold(*this);
  const bool known = focus_within();
  static_cast<InnerWindowHost&>(*this).inner_focus(false, to);
  if (!known) lost_focus();  // the control was given the focus past the grid
}

void USFlexGrid::bound_gone() {
  const Hold hold(*this);
  edit_pending_ = false;
  store_.set_mark(GridMark::Edit, {});
  bound_.drop();
  key_wishes_changed();
}

// The box takes the focus back once an edit, so that two refusals cannot hold the user captive;
// what was typed stays in it. Later, for the system is still about to move the focus.
void USFlexGrid::want_focus_back() {
  if (gave_focus_back_ || window() == nullptr) return;
  gave_focus_back_ = true;
  PostMessageW(window(), editor_message(), kTakeFocusBack, 0);
}

bool USFlexGrid::take_editor_message(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message != editor_message()) return false;
  if (!edit_pending_) return true;
  if (wparam != kTakeFocusBack) {
    edit_key(static_cast<short>(wparam), static_cast<short>(lparam));
    return true;
  }
  const HWND target = focus_target();
  // Another program that was brought to the front meanwhile stays there.
  if (target != nullptr && GetFocus() != nullptr && !holds(GetFocus())) SetFocus(target);
  return true;
}

// An input method begins where there is no box yet: it goes on in the box.
bool USFlexGrid::forward_composition(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
  const bool begins = message == WM_IME_STARTCOMPOSITION;
  if (!begins && message != WM_IME_COMPOSITION && message != WM_IME_ENDCOMPOSITION) return false;
  if (begins && !edit_pending_ && (EditTrigger.get() & OnAnyKey) != 0) start_edit(caret());
  if (!edit_pending_ || bound_.active() || box_.hwnd() == nullptr) return false;
  result = SendMessageW(box_.hwnd(), message, wparam, lparam);
  return true;
}

}  // namespace kestrelon
