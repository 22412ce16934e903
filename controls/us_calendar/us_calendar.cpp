// Life, and the setters that do more than draw again.
#include "controls/us_calendar/us_calendar.h"

#include "frame/screen.h"

namespace kestrelon {
namespace {

constexpr ThemeEntry kEntries[] = {
    {L"BorderColor", {0xF2CEB3, 0xBEBEBE, 0xDBC9BA}},
    {L"BackColorSelected1", {0xFDE6CF, 0xE0E0E0, 0xFDF4E2}},
    {L"BackColorSelected2", {0xFDE6CF, 0xE0E0E0, 0xFDF4E2}},
    {L"FocusRectColor", {0xE7A665, 0x404040, 0xE7A665}},
    {L"ForeColorHeader", {0xB75F31, 0x917069, 0xB75F31}},
    {L"GradientHeader1", {0xFEF9F4, 0xF8F4F1, 0xFEF9F4}},
    {L"GradientHeader2", {0xFFEADA, 0xE7DCD6, 0xF5E7DC}},
};

ControlTraits traits() {
  ControlTraits out;
  out.initial_pixels = {210, 190};
  return out;
}

int digit_width(HFONT font) {
  const HDC dc = GetDC(nullptr);
  const HGDIOBJ displaced = SelectObject(dc, font);
  SIZE size{};
  GetTextExtentPoint32W(dc, L"00", 2, &size);
  SelectObject(dc, displaced);
  ReleaseDC(nullptr, dc);
  return static_cast<int>(size.cx + 1) / 2;
}

}  // namespace

USCalendar::USCalendar() : USCalendarGlue(traits()) {}

ThemeTable USCalendar::theme_table() const {
  return kEntries;
}

void USCalendar::init_properties() {
  value_shown();
  ItemControl::init_properties();
}

void USCalendar::properties_read() {
  business_.set_count(count());
  selection_.set_mode(static_cast<DaySelectMode>(SelectMode.get()));
  if (Value.day()) selection_.select(*Value.day());
  value_shown();
  ItemControl::properties_read();
}

void USCalendar::window_created() {
  ItemControl::window_created();
  make_edit();
}

void USCalendar::hidden() {
  close_popup(false);
  ItemControl::hidden();
}

void USCalendar::terminate() {
  popup_.close();
  day_tip_.Destroy();
  edit_.destroy();
  ItemControl::terminate();
}

void USCalendar::font_changed() {
  ItemControl::font_changed();
  edit_.set_font(plain_font());
}

CalendarShape USCalendar::shape_of(int width, int height) {
  CalendarShape shape;
  shape.width = width;
  shape.height = height;
  shape.dpi = scale().dpi();
  shape.text_height = line_height();
  shape.digit_width = digit_width(bold_font());
  shape.across = MonthsAcross.get();
  shape.down = MonthsDown.get();
  shape.week_numbers = ShowWeekNumbers.get();
  shape.today_line = ShowToday.get();
  return shape;
}

void USCalendar::lay_out() {
  panel_.set_first_weekday(FirstDayOfWeek.get());
  if (!is_field()) {
    panel_.set_shape(shape_of(width(), height()));
    return;
  }
  field_ = layout_date_field(width(), height(), scale().dpi());
  const int line = line_height();
  const int top = field_.text.top + (field_.text.bottom - field_.text.top - line) / 2;
  edit_.move({field_.text.left, top, field_.text.right, top + line});
  edit_.set_colors(colors().text, colors().back);
  edit_.enable(Enabled.get());
}

void USCalendar::shape_changed() {
  close_popup(false);
  relayout();
}

void USCalendar::style_changed() {
  close_popup(false);
  make_edit();
  value_shown();
  relayout();
}

void USCalendar::mode_changed() {
  selection_.set_mode(static_cast<DaySelectMode>(SelectMode.get()));
  redraw_panel();
}

void USCalendar::count_changed() {
  business_.set_count(count());
  redraw_panel();
}

void USCalendar::redraw_panel() {
  if (requesting_) return;  // a handler of RequestDay would have every drawing cause another
  if (popup_.is_open()) popup_.redraw();
  redraw();
}

DayRules USCalendar::rules() const {
  return {{*MinDate.day(), *MaxDate.day()},
          BlockWeekends.get(),
          BlockHolidays.get(),
          count(),
          &Holidays.days()};
}

}  // namespace kestrelon
