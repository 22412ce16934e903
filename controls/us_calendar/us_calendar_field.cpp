// The date field: its edit box, and the calendar that drops out of it.
#include "controls/us_calendar/today.h"
#include "controls/us_calendar/us_calendar.h"
#include "frame/input_state.h"
#include "lists/calendar/date_entry.h"

namespace kestrelon {

// --- the edit box ----------------------------------------------------------------------------

void USCalendar::make_edit() {
  if (!is_field()) {
    edit_.destroy();
    return;
  }
  if (edit_.hwnd() != nullptr || window() == nullptr || !runs()) return;
  constexpr int kLongestText = 12;
  if (!edit_.create(ES_AUTOHSCROLL, {})) return;
  edit_.set_font(plain_font());
  edit_.set_limit(kLongestText);
  show_text();
  edit_.show(true);
  relayout();
}

void USCalendar::show_text() {
  if (edit_.hwnd() == nullptr) return;
  text_typed_ = false;
  setting_text_ = true;
  edit_.set_text(text());
  setting_text_ = false;
}

void USCalendar::edit_changed(ChildEdit&) {
  if (setting_text_) return;
  text_typed_ = true;
  const std::wstring typed = edit_.text();
  const TextRange caret = edit_.selection();
  if (!std::exchange(digit_typed_, false) || caret.end != static_cast<int>(typed.size())) return;
  const std::wstring wanted = with_separator(typed, DateFormat.get());
  if (wanted.size() == typed.size()) return;
  setting_text_ = true;
  edit_.replace_selection(std::wstring_view(wanted).substr(typed.size()));
  setting_text_ = false;
}

void USCalendar::take_text() {
  if (edit_.hwnd() == nullptr || !std::exchange(text_typed_, false)) return;
  const std::wstring typed = edit_.text();
  if (typed.empty() && AllowNull.get()) {
    DaySelection none = selection_;
    none.clear();
    propose(std::move(none));
    return show_text();
  }
  const auto date = read_typed_date(typed, DateFormat.get(), today_date());
  if (date && pick_day(day_number(*date), Pick::kTake)) return show_text();
  VARIANT_BOOL cancel = VARIANT_FALSE;
  if (!date || !rules().can_choose(day_number(*date))) {
    BSTR text = Bstr(typed).detach();
    raise_invalid_date(text, cancel);
    SysFreeString(text);
  }
  if (cancel == VARIANT_FALSE) return show_text();
  text_typed_ = true;  // what stands there is asked about again when the field is left
}

void USCalendar::got_focus() {
  ItemControl::got_focus();
  if (edit_.hwnd() != nullptr) edit_.select_all();
  if (popup_.is_open()) popup_.redraw();
}

void USCalendar::lost_focus() {
  close_popup(false);
  take_text();
  ItemControl::lost_focus();
}

// --- the calendar that drops ------------------------------------------------------------------

void USCalendar::show_drop_down() {
  if (!is_field() || popup_.is_open() || window() == nullptr || !runs() || !Enabled.get()) return;
  take_text();
  raise_drop_down();
  if (!is_field() || popup_.is_open() || window() == nullptr) return;
  ensure_layout();
  panel_.show_days();
  panel_.set_hot({});
  CalendarShape shape = shape_of(0, 0);
  const CalendarSize size = natural_size(shape);
  shape.width = size.width;
  shape.height = size.height;
  panel_.set_shape(shape);
  panel_.set_mark(shown_day().value_or(today()));
  PopupPlace place;
  GetWindowRect(window(), &place.anchor);
  place.size = {size.width, size.height};
  popup_.open(window(), *this, *this, place);
  key_wishes_changed();
  redraw();
  tell_readers(EVENT_OBJECT_STATECHANGE);
}

void USCalendar::hide_drop_down() {
  close_popup(false);
}

void USCalendar::close_popup(bool accepted) {
  if (!popup_.is_open()) return;
  popup_.close();
  pressed_ = false;
  day_tip_.Destroy();
  panel_.show_days();
  panel_.set_mark(shown_day().value_or(today()));
  key_wishes_changed();
  redraw();
  if (edit_.hwnd() != nullptr) edit_.select_all();
  tell_readers(EVENT_OBJECT_STATECHANGE);
  VARIANT_BOOL taken = accepted ? VARIANT_TRUE : VARIANT_FALSE;
  raise_close_up(taken);
}

void USCalendar::popup_closed(PopupEnd why) {
  if (why == PopupEnd::kPressOutside) closed_at_ = static_cast<DWORD>(GetMessageTime());
  pressed_ = false;
  day_tip_.Destroy();
  panel_.set_mark(shown_day().value_or(today()));
  key_wishes_changed();
  redraw();
  VARIANT_BOOL taken = VARIANT_FALSE;
  raise_close_up(taken);
}

bool USCalendar::popup_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
  const int x = static_cast<short>(LOWORD(lparam)), y = static_cast<short>(HIWORD(lparam));
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      press_panel(x, y, shift_state());
      break;
    case WM_MOUSEMOVE:
      drag_panel(x, y, (wparam & MK_LBUTTON) != 0);
      break;
    case WM_LBUTTONUP:
      release_panel(x, y);
      break;
    case WM_MOUSEWHEEL:
      mouse_wheel(false, static_cast<short>(HIWORD(wparam)), 0);
      break;
    default:
      return false;
  }
  result = 0;
  return true;
}

// --- tips of days ----------------------------------------------------------------------------

void USCalendar::show_day_tip() {
  const CalendarHit hit = panel_.hot();
  const auto cell = static_cast<size_t>(hit.index * kCellsOfMonth + hit.cell);
  const std::wstring tip =
      hit.part == CalendarPart::kDay && cell < tips_.size() ? tips_[cell] : std::wstring();
  if (tip.empty()) {
    if (day_tip_.hWnd() != nullptr && !popup_.is_open()) create_tool_tip();
    return day_tip_.Destroy();
  }
  const HWND over = popup_.is_open() ? popup_.hwnd() : window();
  if (over == nullptr || !runs()) return;
  day_tip_.Destroy();
  destroy_tool_tip();  // one tip at a time
  day_tip_.Style = ToolTipStyle.get();
  day_tip_.BackColor = ToolTipBackColor.get();
  day_tip_.ForeColor = ToolTipForeColor.get();
  day_tip_.VisibleTime = ToolTipVisibleTime.get();
  day_tip_.DelayTime = ToolDelayTime.get();
  day_tip_.set_TipText(tip);
  day_tip_.Create(over);
}

}  // namespace kestrelon
