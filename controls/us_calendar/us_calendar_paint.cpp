// From the calendar's state to what its painter is told.
#include "base/decimal.h"
#include "controls/us_calendar/today.h"
#include "controls/us_calendar/us_calendar.h"
#include "frame/kit/color.h"
#include "frame/screen.h"
#include "frame/translate_color.h"
#include "lists/calendar/date_entry.h"

namespace kestrelon {
namespace {

constexpr ColorRef kDisabledText = 0x99A8AC;
constexpr ColorRef kDisabledBorder = 0xC8D0D4;
constexpr double kFaint = 0.55;  // how far a day that cannot be chosen fades into the ground

CalendarColors system_colors() {
  const auto system = [](int index) { return static_cast<ColorRef>(GetSysColor(index)); };
  CalendarColors out;
  out.back = system(COLOR_WINDOW);
  out.text = out.weekend = system(COLOR_WINDOWTEXT);
  out.faint = system(COLOR_GRAYTEXT);
  out.header1 = out.header2 = system(COLOR_BTNFACE);
  out.header_text = system(COLOR_BTNTEXT);
  out.selected1 = out.selected2 = system(COLOR_HIGHLIGHT);
  out.border = out.field_border = system(COLOR_WINDOWTEXT);
  out.focus = out.today = out.hot = system(COLOR_HOTLIGHT);
  return out;
}

}  // namespace

CalendarColors USCalendar::colors() const {
  if (high_contrast()) return system_colors();
  CalendarColors out;
  out.back = TranslateColor(BackColor.get());
  out.text = TranslateColor(ForeColor.get());
  out.faint = BlendColor(out.text, out.back, kFaint);
  out.header1 = TranslateColor(GradientHeader1.get());
  out.header2 = TranslateColor(GradientHeader2.get());
  out.header_text = TranslateColor(ForeColorHeader.get());
  out.weekend = TranslateColor(ForeColorWeekend.get());
  out.selected1 = TranslateColor(BackColorSelected1.get());
  out.selected2 = TranslateColor(BackColorSelected2.get());
  out.border = TranslateColor(BorderColor.get());
  out.focus = out.hot = TranslateColor(FocusRectColor.get());
  out.today = TranslateColor(TodayColor.get());
  const bool missing = Required.get() && !shown_day();
  out.field_border = missing ? TranslateColor(RequiredColor.get()) : out.border;
  if (!Enabled.get()) {
    out.text = out.weekend = out.header_text = out.today = out.faint = kDisabledText;
    out.border = out.field_border = out.focus = kDisabledBorder;
  }
  return out;
}

DayLook USCalendar::look_of(int32_t day, bool neighbour, const CalendarColors& colors) const {
  DayLook look;
  const DayNote note = ShowHolidays.get() ? Holidays.days().note(day) : DayNote();
  const bool off = is_day_off(note, count());
  look.text = decimal_text(date_of_day_number(day)->day);
  look.bold = off;
  look.dot = off || note.optional;
  look.color = is_weekend(weekday(day)) ? colors.weekend : colors.text;
  const bool plain_colors = Enabled.get() && !high_contrast();
  if (plain_colors && note.optional) look.color = TranslateColor(ForeColorOptional.get());
  if (plain_colors && off) look.color = TranslateColor(ForeColorHoliday.get());
  const bool chosen = selection_.empty() ? shown_day() == day : selection_.contains(day);
  look.selected = chosen && !neighbour;
  if (look.selected && high_contrast())
    look.color = static_cast<ColorRef>(GetSysColor(COLOR_HIGHLIGHTTEXT));
  if (neighbour || !rules().can_choose(day))
    look.color = plain_colors ? BlendColor(look.color, colors.back, kFaint) : colors.faint;
  look.today = !neighbour && ShowToday.get() && day == today();
  return look;
}

// The event is raised in mid-drawing, and its handler may do anything.
void USCalendar::ask_program(int32_t day, DayLook& look, std::wstring& tip) {
  double date = day;
  Bstr text(look.text), tool_tip(tip);
  auto fore = static_cast<OLE_COLOR>(look.color), back = static_cast<OLE_COLOR>(-1);
  VARIANT_BOOL bold = look.bold ? VARIANT_TRUE : VARIANT_FALSE;
  BSTR given_text = text.detach(), given_tip = tool_tip.detach();
  raise_request_day(date, given_text, fore, back, bold, given_tip);
  look.text = to_wstring(given_text);
  tip = to_wstring(given_tip);
  SysFreeString(given_text);
  SysFreeString(given_tip);
  look.bold = bold != VARIANT_FALSE;
  if (high_contrast() || !Enabled.get()) return;
  look.color = TranslateColor(fore);
  look.has_back = back != static_cast<OLE_COLOR>(-1);
  if (look.has_back) look.back = TranslateColor(back);
}

std::vector<DayLook> USCalendar::collect_days() {
  const CalendarColors colors = this->colors();
  const int months = panel_.view() == CalendarView::kDays ? panel_.month_count() : 0;
  const auto cells = static_cast<size_t>(months) * kCellsOfMonth;
  std::vector<DayLook> days(cells);
  std::vector<std::wstring> tips(cells);
  const bool asks = runs() && !requesting_;
  requesting_ = requesting_ || asks;
  for (size_t i = 0; i < cells; ++i) {
    const int index = static_cast<int>(i) / kCellsOfMonth,
              cell = static_cast<int>(i) % kCellsOfMonth;
    const auto day = panel_.day_at(index, cell);
    if (!day) continue;
    const bool neighbour = panel_.is_neighbour(index, *day);
    days[i] = look_of(*day, neighbour, colors);
    if (ShowHolidays.get()) tips[i] = Holidays.days().note(*day).name;
    if (asks) ask_program(*day, days[i], tips[i]);
    days[i].marked = focus_within() && ShowFocusRect.get() && *day == panel_.mark() && !neighbour;
    days[i].hot = panel_.hot() == CalendarHit{CalendarPart::kDay, index, cell};
  }
  if (asks) requesting_ = false;
  tips_ = std::move(tips);
  return days;
}

std::wstring USCalendar::today_text() const {
  return L"Hoje: " + date_field_text(today_date(), DateFormat.get());
}

void USCalendar::paint_panel(Surface& surface) {
  const std::vector<DayLook> days = collect_days();
  if (!surface) return;
  paint_calendar(surface, panel_, days, colors(), {plain_font(), bold_font()}, scale(),
                 today_text());
}

void USCalendar::draw() {
  if (!is_field()) return paint_panel(surface());
  const FieldButton button = !Enabled.get()                     ? FieldButton::kDisabled
                             : button_down_ || popup_.is_open() ? FieldButton::kDown
                             : button_hot_                      ? FieldButton::kHot
                                                                : FieldButton::kNormal;
  paint_date_field(surface(), field_, edit_.hwnd() == nullptr ? text() : std::wstring(), button,
                   colors(), plain_font(), scale());
}

}  // namespace kestrelon
