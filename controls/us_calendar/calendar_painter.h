// Draws a calendar's panel and its closed field. Reads no window and no control: the same look
// always gives the same pixels.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "frame/kit/scale.h"
#include "frame/surface.h"
#include "lists/calendar/calendar_panel.h"

namespace kestrelon {

/// Plain colours, 0x00BBGGRR, system colours resolved.
struct CalendarColors {
  ColorRef back = 0xFFFFFF, text = 0, faint = 0x808080;
  ColorRef header1 = 0, header2 = 0, header_text = 0;
  ColorRef weekend = 0;
  ColorRef selected1 = 0, selected2 = 0;
  ColorRef border = 0, focus = 0, today = 0, hot = 0;
  ColorRef field_border = 0;  ///< of the closed field; the required colour where it is missing
};

/// One cell of a month.
struct DayLook {
  std::wstring text;  ///< "" draws nothing
  ColorRef color = 0;
  ColorRef back = 0;
  bool has_back = false;
  bool bold = false;
  bool dot = false;  ///< a holiday, whatever its colour
  bool selected = false;
  bool today = false;
  bool marked = false;  ///< the focus stands on it
  bool hot = false;
};

inline constexpr int kCellsOfMonth = kWeekDays * kGridWeeks;

struct CalendarFonts {
  HFONT plain = nullptr, bold = nullptr;
};

/// `days` holds kCellsOfMonth looks for each month; of the choosers it is not looked at.
/// `today_text` is what the line at the bottom says.
void paint_calendar(Surface& surface, const CalendarPanel& panel, const std::vector<DayLook>& days,
                    const CalendarColors& colors, const CalendarFonts& fonts, Scale scale,
                    const std::wstring& today_text);

enum class FieldButton { kNormal, kHot, kDown, kDisabled };

/// The closed field; its text is drawn only where no edit box stands over it.
void paint_date_field(Surface& surface, const DateFieldPlaces& places, const std::wstring& text,
                      FieldButton button, const CalendarColors& colors, HFONT font, Scale scale);

}  // namespace kestrelon
