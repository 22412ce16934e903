// The list's window: opening, closing, its size, scrolling.
#include <windowsx.h>

#include <algorithm>

#include "controls/us_combo_box/us_combo_box.h"
#include "frame/screen.h"
#include "frame/translate_color.h"

namespace kestrelon {
namespace {

constexpr int kGripStrip = 9;   // height of the strip that holds the grip
constexpr int kGripWidth = 16;  // the part of it that can be taken
constexpr LONG kLeastSide = 60;

}  // namespace

// --- opening and closing -------------------------------------------------------------------------

void USComboBox::show_drop_down() {
  if (dropped_down() || !runs() || !Enabled.get() || Locked.get() || window() == nullptr) return;
  const Hold hold(*this);
  end_suggestions();
  raise_drop_down();  // a handler may fill the list, or be rid of the control
  if (window() == nullptr || dropped_down()) return;
  find_current();
  if (open_list()) show_row_of(model_.current());
}

bool USComboBox::open_list() {
  if (Locked.get() || window() == nullptr) return false;
  ensure_layout();
  index_at_opening_ = model_.current();
  text_at_opening_ = Value.get();
  top_ = 0;
  hot_ = -1;
  const PopupPlace place = popup_place();
  if (!popup_.open(window(), *this, *this, place)) return false;
  RECT shown{};
  GetWindowRect(popup_.hwnd(), &shown);
  opens_up_ = shown.bottom <= place.anchor.top;
  try {
    bars_.Create(popup_.hwnd());
  } catch (const ComError&) {  // a list without a bar can still be walked by keys
  }
  draw_list();
  key_wishes_changed();
  tell_readers(EVENT_OBJECT_STATECHANGE);
  redraw();
  return dropped_down();
}

void USComboBox::close_list(bool accepted) {
  if (!dropped_down()) return;
  bars_.Create(nullptr);
  popup_.close();
  list_closed(accepted);
}

void USComboBox::popup_closed(PopupEnd) {
  bars_.Create(nullptr);
  list_closed(false);
}

void USComboBox::list_closed(bool accepted) {
  const Hold hold(*this);
  gripped_ = false;
  list_access_.detach();
  end_suggestions();
  redraw();
  key_wishes_changed();
  tell_readers(EVENT_OBJECT_STATECHANGE);
  VARIANT_BOOL taken = accepted ? VARIANT_TRUE : VARIANT_FALSE;
  raise_close_up(taken);
}

PopupPlace USComboBox::popup_place() const {
  PopupPlace place;
  GetWindowRect(window(), &place.anchor);
  const int rows = std::clamp<int>(model_.row_count(), 1, std::max<int>(DropDownRows.get(), 1));
  const int wanted = static_cast<int>(std::clamp(DropDownWidth.get(), 0L, 10'000L));
  const LONG wide = wanted > 0 ? scale()(wanted) : place.anchor.right - place.anchor.left;
  const LONG high = rows * row_height_ + scale()(kGripStrip) + 2 * scale().line();
  place.size = {std::max(wide, list_size_.cx), std::max(high, list_size_.cy)};
  place.align_right = right_to_left();
  return place;
}

// --- layout --------------------------------------------------------------------------------------

int USComboBox::list_height() const {
  RECT client{};
  if (popup_.hwnd() == nullptr) return std::max<int>(DropDownRows.get(), 1) * row_height_;
  GetClientRect(popup_.hwnd(), &client);
  return std::max(static_cast<int>(client.bottom) - scale()(kGripStrip), row_height_);
}

void USComboBox::lay_out_list() {
  if (popup_.hwnd() == nullptr) return;
  const PopupPlace place = popup_place();
  RECT now{};
  GetWindowRect(popup_.hwnd(), &now);
  if (now.right - now.left != place.size.cx || now.bottom - now.top != place.size.cy)
    popup_.move(place);
  const RowWindow rows = list_rows();
  top_ = rows.limit_top(top_);
  if (bars_.hWnd() == nullptr) return;
  laying_out_ = true;
  bars_.set_LargeChange(SB_VERT, rows.whole_rows(top_));
  bars_.set_Max(SB_VERT, rows.last_top());
  bars_.set_Value(SB_VERT, top_);
  laying_out_ = false;
}

void USComboBox::draw_list() {
  list_dirty_ = false;
  lay_out_list();
  popup_.redraw();
}

void USComboBox::redraw_list() {
  if (!dropped_down() || std::exchange(list_dirty_, true)) return;
  InvalidateRect(popup_.hwnd(), nullptr, FALSE);
}

void USComboBox::show_row_of(int index) {
  if (!dropped_down() || !model_.shows(index)) return;
  scroll_list(list_rows().top_showing(model_.row_of_index(index), top_));
}

void USComboBox::scroll_list(int64_t top) {
  if (!dropped_down()) return;
  top_ = list_rows().limit_top(top);
  redraw_list();
}

void USComboBox::BarChange(int) {
  if (!laying_out_) scroll_list(bars_.Value(SB_VERT));
}

PixelRect USComboBox::list_row(int row) const {
  RECT client{};
  GetClientRect(popup_.hwnd(), &client);
  const int first = opens_up_ ? scale()(kGripStrip) : 0;
  const int y = first + (row - top_) * row_height_;
  return {0, y, static_cast<int>(client.right), y + row_height_};
}

// --- messages ------------------------------------------------------------------------------------

bool USComboBox::popup_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
  const int x = GET_X_LPARAM(lparam), y = GET_Y_LPARAM(lparam);
  const DrawnBorder border{scale().line(),
                           shown_color(SelectListBorderColor.get(), COLOR_WINDOWTEXT)};
  if (border.handle(popup_.hwnd(), message, wparam, lparam, result)) return true;
  result = 0;
  switch (message) {
    case WM_PAINT:
      if (list_dirty_) draw_list();
      return false;
    case WM_GETOBJECT:
      result = list_access_.answer(wparam, lparam);
      return result != 0;
    case WM_SETCURSOR: {
      POINT point{};
      GetCursorPos(&point);
      ScreenToClient(popup_.hwnd(), &point);
      if (LOWORD(lparam) != HTCLIENT || !on_grip(point.x, point.y)) return false;
      SetCursor(LoadCursorW(nullptr, opens_up_ ? IDC_SIZENESW : IDC_SIZENWSE));
      result = TRUE;
      return true;
    }
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      gripped_ = on_grip(x, y);
      if (gripped_) {
        RECT place{};
        GetWindowRect(popup_.hwnd(), &place);
        POINT pointer{x, y};
        ClientToScreen(popup_.hwnd(), &pointer);
        grip_offset_ = {place.right - pointer.x,
                        opens_up_ ? pointer.y - place.top : place.bottom - pointer.y};
        SetCapture(popup_.hwnd());
      }
      return true;
    case WM_MOUSEMOVE:
      gripped_ ? drag_grip() : list_moved(x, y);
      return true;
    case WM_LBUTTONUP:
      if (!std::exchange(gripped_, false)) {
        list_clicked(x, y);
      } else {
        ReleaseCapture();
      }
      return true;
    case WM_CAPTURECHANGED:
      gripped_ = false;
      return false;
    default:
      return false;
  }
}

// --- the grip ------------------------------------------------------------------------------------

PixelRect USComboBox::grip_area() const {
  RECT client{};
  GetClientRect(popup_.hwnd(), &client);
  const int strip = scale()(kGripStrip), bottom = static_cast<int>(client.bottom);
  return {0, opens_up_ ? 0 : bottom - strip, static_cast<int>(client.right),
          opens_up_ ? strip : bottom};
}

bool USComboBox::on_grip(int x, int y) const {
  const PixelRect strip = grip_area();
  return y >= strip.top && y < strip.bottom && x >= strip.right - scale()(kGripWidth) &&
         x < strip.right + GetSystemMetrics(SM_CXVSCROLL);
}

void USComboBox::drag_grip() {
  POINT pointer{};
  RECT place{};
  GetCursorPos(&pointer);
  GetWindowRect(popup_.hwnd(), &place);
  const LONG least = scale()(static_cast<int>(kLeastSide));
  const LONG high = opens_up_ ? place.bottom - pointer.y + grip_offset_.y
                              : pointer.y + grip_offset_.y - place.top;
  list_size_ = {std::max(pointer.x + grip_offset_.x - place.left, least), std::max(high, least)};
  draw_list();
}

}  // namespace kestrelon
