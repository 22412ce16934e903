// Mouse and keys.
#include "controls/us_calendar/today.h"
#include "controls/us_calendar/us_calendar.h"
#include "frame/input_state.h"
#include "lists/calendar/date_entry.h"

namespace kestrelon {
namespace {

bool inside(const PixelRect& area, int x, int y) {
  return x >= area.left && x < area.right && y >= area.top && y < area.bottom;
}

}  // namespace

// --- mouse -----------------------------------------------------------------------------------

void USCalendar::mouse_down(short button, short shift, float x, float y) {
  const DWORD pressed_at = static_cast<DWORD>(GetMessageTime());
  raise_mouse_down(button, shift, x, y);
  if (button != kLeftButton || !Enabled.get()) return;
  ensure_layout();
  if (!is_field()) return press_panel(static_cast<int>(x), static_cast<int>(y), shift);
  if (!inside(field_.button, static_cast<int>(x), static_cast<int>(y))) return;
  button_down_ = true;
  redraw();
  // The press that closed the calendar is not to open it again.
  if (closed_at_ != pressed_at) show_drop_down();
}

void USCalendar::mouse_up(short button, short shift, float x, float y) {
  raise_mouse_up(button, shift, x, y);
  if (std::exchange(button_down_, false)) redraw();
  if (!is_field()) release_panel(static_cast<int>(x), static_cast<int>(y));
}

void USCalendar::pointer_moved(short button, short, float x, float y) {
  const int column = static_cast<int>(x), row = static_cast<int>(y);
  if (!is_field()) return drag_panel(column, row, (button & kLeftButton) != 0);
  const bool hot = inside(field_.button, column, row);
  if (std::exchange(button_hot_, hot) != hot) redraw();
}

void USCalendar::hover_changed() {
  if (pointer_over()) return;
  if (std::exchange(button_hot_, false)) redraw();
  if (!is_field()) set_hot({});
}

bool USCalendar::mouse_wheel(bool horizontal, int delta, short) {
  if (horizontal || !panel_shows() || !Enabled.get()) return false;
  if (panel_.turn(delta > 0 ? -1 : 1)) months_turned();
  return true;
}

void USCalendar::set_hot(const CalendarHit& hit) {
  if (!panel_.set_hot(hit)) return;
  redraw_panel();
  show_day_tip();
}

void USCalendar::press_panel(int x, int y, short shift) {
  const CalendarHit hit = panel_.hit(x, y);
  switch (hit.part) {
    case CalendarPart::kPrevious:
    case CalendarPart::kNext:
      if (panel_.turn(hit.part == CalendarPart::kPrevious ? -1 : 1)) months_turned();
      return;
    case CalendarPart::kTitle:
      panel_.widen();
      return redraw_panel();
    case CalendarPart::kChoice: {
      const bool turned = panel_.choose(hit.cell);
      redraw_panel();
      if (turned) months_turned();
      return;
    }
    case CalendarPart::kDay: {
      const auto day = panel_.day_at(hit.index, hit.cell);
      if (!day) return;
      pressed_ = true;
      const bool many = selection_.mode() == DaySelectMode::kManyDays;
      const Pick pick = (shift & kShiftKey) != 0 ? Pick::kExtend : many ? Pick::kFlip : Pick::kTake;
      pick_day(*day, pick);
      return;
    }
    case CalendarPart::kToday:
      panel_.show_days();
      pick_day(today(), Pick::kTake);
      if (popup_.is_open()) close_popup(true);
      return;
    default:
      return;
  }
}

// A press that is drawn over days extends a range.
void USCalendar::drag_panel(int x, int y, bool held) {
  const CalendarHit hit = panel_.hit(x, y);
  set_hot(hit);
  if (!held || !pressed_ || selection_.mode() != DaySelectMode::kRange) return;
  const auto day =
      hit.part == CalendarPart::kDay ? panel_.day_at(hit.index, hit.cell) : std::nullopt;
  if (day && *day != panel_.mark()) pick_day(*day, Pick::kExtend);
}

void USCalendar::release_panel(int, int) {
  const bool was_pressed = std::exchange(pressed_, false);
  if (!was_pressed || !popup_.is_open() || selection_.mode() == DaySelectMode::kManyDays) return;
  // In the popup one day is enough; a range closes once it has two ends.
  if (selection_.mode() == DaySelectMode::kOneDay || selection_.count() > 1) close_popup(true);
}

// --- keys ------------------------------------------------------------------------------------

bool USCalendar::wants_key(int key, short shift) const {
  if (!panel_shows()) return key == VK_F4;
  const bool chooser = panel_.view() != CalendarView::kDays;
  switch (key) {
    case VK_LEFT:
    case VK_RIGHT:
    case VK_UP:
    case VK_DOWN:
    case VK_HOME:
    case VK_END:
    case VK_PRIOR:
    case VK_NEXT:
      return true;
    case VK_RETURN:
    case VK_ESCAPE:
      return popup_.is_open() || chooser;
    default:
      return key == VK_F4 && (shift & kAltKey) == 0;
  }
}

void USCalendar::key_down(short& key, short& shift) {
  skip_character_ = false;
  raise_key_down(key, shift);
  if (key == 0 || !Enabled.get()) return;
  ensure_layout();
  const bool used =
      (is_field() && field_key(key, shift)) || (panel_shows() && panel_key(key, shift));
  // What the calendar has used, the edit box must not use again.
  skip_character_ = used;
  if (used && is_field()) key = 0;
}

void USCalendar::key_press(short& character) {
  raise_key_press(character);
  if (!is_field() || character < L' ') return;
  if (std::exchange(skip_character_, false)) {
    character = 0;
    return;
  }
  const auto typed = static_cast<wchar_t>(character);
  if (!is_date_character(typed)) {
    character = 0;
    return;
  }
  digit_typed_ = typed >= L'0' && typed <= L'9';
}

bool USCalendar::panel_key(int key, short shift) {
  const CalendarKey pressed{key, (shift & kShiftKey) != 0, (shift & kControlKey) != 0};
  const CalendarAction action =
      calendar_key(pressed, panel_.mark(), today(), panel_.view(), rules());
  switch (action.kind) {
    case CalendarAction::kNone:
      return false;
    case CalendarAction::kStay:
      return true;
    case CalendarAction::kEnter: {
      const YearMonth at = month_of(panel_.mark());
      const int cell = panel_.view() == CalendarView::kMonths ? at.month - 1
                                                              : at.year - first_year_shown(at.year);
      panel_.choose(cell);
      redraw_panel();
      return true;
    }
    case CalendarAction::kClose:
      if (panel_.view() != CalendarView::kDays) {
        panel_.show_days();
        redraw_panel();
        return true;
      }
      if (!popup_.is_open()) return false;
      close_popup(false);
      return true;
    case CalendarAction::kTake:
      if (!popup_.is_open()) return false;
      if (selection_.mode() == DaySelectMode::kOneDay && !pick_day(panel_.mark(), Pick::kTake))
        return true;
      close_popup(true);
      return true;
    case CalendarAction::kFlip:
      pick_day(panel_.mark(),
               selection_.mode() == DaySelectMode::kManyDays ? Pick::kFlip : Pick::kTake);
      return true;
    case CalendarAction::kMark:
      break;
  }
  // Months at sight choose with the mark; an open calendar waits for Enter, many days for Space.
  const bool follows = selection_.mode() == DaySelectMode::kRange ||
                       (selection_.mode() == DaySelectMode::kOneDay && !popup_.is_open());
  if (panel_.view() == CalendarView::kDays && (follows || action.extend)) {
    pick_day(action.day, action.extend ? Pick::kExtend : Pick::kTake);
  } else {
    const bool turned = panel_.set_mark(action.day);
    redraw_panel();
    if (turned) months_turned();
  }
  if (const auto hit = panel_.find_day(panel_.mark()))
    tell_readers(EVENT_OBJECT_FOCUS, child_of(*hit));
  return true;
}

bool USCalendar::field_key(int key, short shift) {
  const bool alt = (shift & kAltKey) != 0;
  if ((key == VK_F4 && !alt) || (alt && (key == VK_DOWN || key == VK_UP))) {
    if (popup_.is_open())
      close_popup(false);
    else
      show_drop_down();
    return true;
  }
  if (popup_.is_open()) return false;
  if (key == VK_RETURN) take_text();
  // "-" types a separator where the format has one.
  const bool dashes =
      date_field_text({2000, 10, 10}, DateFormat.get()).find(L'-') != std::wstring::npos;
  const bool step = key == VK_ADD || key == VK_OEM_PLUS ||
                    (!dashes && (key == VK_SUBTRACT || key == VK_OEM_MINUS));
  if (!step && key != 'H' && !(key == VK_HOME && (shift & kControlKey) != 0)) return false;
  if ((shift & kControlKey) != 0 && key != VK_HOME) return false;
  if (text_typed_) take_text();
  const CalendarAction action = calendar_key({key, false, key == VK_HOME}, panel_.mark(), today(),
                                             CalendarView::kDays, rules());
  if (action.kind == CalendarAction::kMark) pick_day(action.day, Pick::kTake);
  edit_.select_all();
  return true;
}

}  // namespace kestrelon
