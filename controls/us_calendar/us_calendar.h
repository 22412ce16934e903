// USCalendar: months at sight, or a date field that opens them; Brazilian holidays and business
// days.
#pragma once

#include "controls/items/item_control.h"
#include "controls/us_calendar/calendar_painter.h"
#include "controls/us_calendar/day_property.h"
#include "controls/us_calendar/holidays_property.h"
#include "frame/inner/child_edit.h"
#include "frame/popup/popup.h"
#include "lists/calendar/business_days.h"
#include "lists/calendar/day_selection.h"
#include "us_calendar_glue.h"

namespace kestrelon {

class USCalendar final : public USCalendarGlue<USCalendar, ItemControl>,
                         private PopupOwner,
                         private ChildEditOwner {
 public:
  USCalendar();

  // In the order of the property bag, after those of every item control.
  Property<std::wstring> AditionalTag1{*this, L"AditionalTag1", L""};
  Property<std::wstring> AditionalTag2{*this, L"AditionalTag2", L""};
  Property<std::wstring> AditionalTag3{*this, L"AditionalTag3", L""};
  Property<std::wstring> AditionalTag4{*this, L"AditionalTag4", L""};
  Property<bool> AllowNull{*this, L"AllowNull", false, &USCalendar::value_shown};
  Property<OLE_COLOR> BackColor{*this, L"BackColor", 0xFFFFFF, &USCalendar::look_changed};
  Property<OLE_COLOR> BackColorSelected1{*this, L"BackColorSelected1", 0xFDF4E2,
                                         &USCalendar::look_changed};
  Property<OLE_COLOR> BackColorSelected2{*this, L"BackColorSelected2", 0xFDF4E2,
                                         &USCalendar::look_changed};
  Property<bool> BlockHolidays{*this, L"BlockHolidays", false, &USCalendar::look_changed};
  Property<bool> BlockWeekends{*this, L"BlockWeekends", false, &USCalendar::look_changed};
  Property<OLE_COLOR> BorderColor{*this, L"BorderColor", 0xDBC9BA, &USCalendar::look_changed};
  Property<ENUM_BUSINESS_DAYS> BusinessDays{*this, L"BusinessDays", Business_National,
                                            &USCalendar::count_changed};
  Property<ENUM_DATE_FORMAT> DateFormat{*this, L"DateFormat", static_cast<ENUM_DATE_FORMAT>(1),
                                        &USCalendar::value_shown};
  Property<short> FirstDayOfWeek{*this, L"FirstDayOfWeek", 1, &USCalendar::shape_changed};
  Property<OLE_COLOR> FocusRectColor{*this, L"FocusRectColor", 0xE7A665, &USCalendar::look_changed};
  Property<OLE_COLOR> ForeColor{*this, L"ForeColor", 0, &USCalendar::look_changed};
  Property<OLE_COLOR> ForeColorHeader{*this, L"ForeColorHeader", 0xB75F31,
                                      &USCalendar::look_changed};
  Property<OLE_COLOR> ForeColorHoliday{*this, L"ForeColorHoliday", 0x0000C0,
                                       &USCalendar::look_changed};
  Property<OLE_COLOR> ForeColorOptional{*this, L"ForeColorOptional", 0x0060C0,
                                        &USCalendar::look_changed};
  Property<OLE_COLOR> ForeColorWeekend{*this, L"ForeColorWeekend", 0x0000C0,
                                       &USCalendar::look_changed};
  Property<OLE_COLOR> GradientHeader1{*this, L"GradientHeader1", 0xFEF9F4,
                                      &USCalendar::look_changed};
  Property<OLE_COLOR> GradientHeader2{*this, L"GradientHeader2", 0xF5E7DC,
                                      &USCalendar::look_changed};
  HolidaysProperty Holidays{*this, L"Holidays", &USCalendar::redraw_panel};
  DayProperty MaxDate{*this, L"MaxDate", day_number({9999, 12, 31}), &USCalendar::look_changed};
  DayProperty MinDate{*this, L"MinDate", day_number({1900, 1, 1}), &USCalendar::look_changed};
  Property<short> MonthsAcross{*this, L"MonthsAcross", 1, &USCalendar::shape_changed};
  Property<short> MonthsDown{*this, L"MonthsDown", 1, &USCalendar::shape_changed};
  Property<bool> Required{*this, L"Required", false, &USCalendar::look_changed};
  Property<OLE_COLOR> RequiredColor{*this, L"RequiredColor", 0x0061FF, &USCalendar::look_changed};
  Property<ENUM_CALENDAR_SELECT> SelectMode{*this, L"SelectMode", Calendar_OneDay,
                                            &USCalendar::mode_changed};
  Property<bool> ShowHolidays{*this, L"ShowHolidays", true, &USCalendar::look_changed};
  Property<bool> ShowToday{*this, L"ShowToday", true, &USCalendar::shape_changed};
  Property<bool> ShowWeekNumbers{*this, L"ShowWeekNumbers", false, &USCalendar::shape_changed};
  Property<ENUM_CALENDAR_STYLE> Style{*this, L"Style", Calendar_Month, &USCalendar::style_changed};
  Property<OLE_COLOR> TodayColor{*this, L"TodayColor", 0x0061FF, &USCalendar::look_changed};
  DayProperty Value{*this, L"Value", std::nullopt, &USCalendar::value_shown};

  // Values (us_calendar_value.cpp). Dates of the interface are date values; the time is left out.
  Variant value();
  void set_value(const VARIANT& value);
  std::wstring text();
  void set_text(const std::wstring& text);
  double range_start() const;
  void set_range_start(double day);
  double range_end() const;
  void set_range_end(double day);
  bool day_selected(double day) const;
  void set_day_selected(double day, bool selected);
  void clear_control();

  double visible_month() const;
  void set_visible_month(double day);
  bool dropped_down() const { return popup_.is_open(); }
  void set_dropped_down(bool open) { open ? show_drop_down() : hide_drop_down(); }
  void show_drop_down();
  void hide_drop_down();

  // Holidays and business days (us_calendar_days.cpp).
  void add_holiday(short day, short month, const std::wstring& name, short year, bool optional);
  void remove_holiday(short day, short month, short year);
  void clear_holidays();
  long fill_holidays_from_query(IDispatch* records, const std::wstring& date_field,
                                const std::wstring& name_field);
  bool is_holiday(double day) const;
  std::wstring holiday_name(double day) const;
  double easter_date(long year) const;
  bool is_business_day(double day) const;
  double add_business_days(double day, long count) const;
  double next_business_day(double day, bool backwards) const;
  long business_days_between(double from, double to) const;

 private:
  enum class Pick { kTake, kExtend, kFlip };

  // us_calendar.cpp
  ThemeTable theme_table() const override;
  void init_properties() override;
  void properties_read() override;
  void window_created() override;
  void hidden() override;
  void terminate() override;
  void font_changed() override;
  void lay_out() override;
  void look_changed() { redraw_panel(); }
  void shape_changed();
  void style_changed();
  void mode_changed();
  void count_changed();
  /// A control that is made while a program runs never reads properties, but is used all the same.
  bool runs() { return ambient().user_mode(); }
  bool is_field() const { return Style.get() == Calendar_DropDown; }
  CalendarShape shape_of(int width, int height);
  void redraw_panel();
  DayRules rules() const;
  BusinessCount count() const {
    return BusinessDays.get() == Business_Bank ? BusinessCount::kBank : BusinessCount::kNational;
  }

  // us_calendar_value.cpp
  std::optional<int32_t> shown_day() const;
  void value_shown();
  bool accepts(int32_t day) const;
  void commit(DaySelection selection);
  /// As the user does it: asks the program first.
  bool propose(DaySelection selection);
  bool pick_day(int32_t day, Pick pick);
  void months_turned();

  // us_calendar_paint.cpp
  void draw() override;
  CalendarColors colors() const;
  std::vector<DayLook> collect_days();
  DayLook look_of(int32_t day, bool neighbour, const CalendarColors& colors) const;
  void ask_program(int32_t day, DayLook& look, std::wstring& tip);
  void paint_panel(Surface& surface);
  std::wstring today_text() const;

  // us_calendar_input.cpp
  void mouse_down(short button, short shift, float x, float y) override;
  void mouse_up(short button, short shift, float x, float y) override;
  void pointer_moved(short button, short shift, float x, float y) override;
  void hover_changed() override;
  void click() override { raise_click(); }
  void double_click() override { raise_dbl_click(); }
  bool mouse_wheel(bool horizontal, int delta, short shift) override;
  void key_down(short& key, short& shift) override;
  void key_press(short& character) override;
  void key_up(short& key, short& shift) override { raise_key_up(key, shift); }
  bool wants_key(int key, short shift) const override;
  bool wants_characters() const override { return is_field(); }
  bool panel_key(int key, short shift);
  bool field_key(int key, short shift);
  void press_panel(int x, int y, short shift);
  void drag_panel(int x, int y, bool held);
  void release_panel(int x, int y);
  void set_hot(const CalendarHit& hit);
  void show_day_tip();

  // us_calendar_field.cpp
  HWND focus_target() override { return edit_.hwnd(); }
  void got_focus() override;
  void lost_focus() override;
  void make_edit();
  void show_text();
  /// Takes what was typed. False when it was refused.
  void take_text();
  void edit_changed(ChildEdit& edit) override;
  void popup_draw(Surface& surface) override { paint_panel(surface); }
  bool popup_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;
  void popup_closed(PopupEnd why) override;
  void close_popup(bool accepted);

  // us_calendar_accessible.cpp
  void describe(AccessibleItem& item) const override;
  long accessible_count() const override;
  bool accessible_item(long child, AccessibleItem& item) const override;
  long accessible_at(POINT point) const override;
  long accessible_focus() const override;
  std::vector<long> accessible_selection() const override;
  void accessible_default_action(long child) override;
  bool panel_shows() const { return !is_field() || popup_.is_open(); }
  long child_of(const CalendarHit& hit) const { return hit.index * kCellsOfMonth + hit.cell + 1; }
  std::optional<int32_t> day_of_child(long child) const;
  POINT panel_origin() const;

  kestrelon::BusinessDays business_{Holidays.days()};
  DaySelection selection_;
  CalendarPanel panel_;
  std::vector<std::wstring> tips_;  // of the cells, as the program gave them
  bool requesting_ = false;
  bool pressed_ = false;  // a press on a day holds the mouse
  CTooltip day_tip_;

  DateFieldPlaces field_;
  ChildEdit edit_{*this, *this};
  Popup popup_;
  bool button_down_ = false;
  bool button_hot_ = false;
  bool text_typed_ = false;  // the box holds what was not taken yet
  bool digit_typed_ = false;
  bool skip_character_ = false;  // of a key that was a command
  bool setting_text_ = false;
  DWORD closed_at_ = 0;  // time of the press that closed the popup
};

}  // namespace kestrelon
