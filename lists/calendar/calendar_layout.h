// Where the parts of a calendar and of its date field lie: rectangles from numbers.
#pragma once

#include <vector>

#include "frame/kit/pixel_view.h"
#include "lists/calendar/day_rules.h"

namespace kestrelon {

/// What the layout depends on; pixels of the screen.
struct CalendarShape {
  int width = 0;
  int height = 0;
  int dpi = 96;
  int text_height = 13;  ///< one line of the font
  int digit_width = 7;   ///< the widest digit
  int across = 1;        ///< months side by side, 1 to 12
  int down = 1;
  bool week_numbers = false;
  bool today_line = true;
  bool operator==(const CalendarShape&) const = default;
};

struct MonthPlaces {
  PixelRect title;     ///< with the month's name, arrows included
  PixelRect weekdays;  ///< the heads of the columns
  PixelRect weeks;     ///< numbers of weeks; empty without them
  PixelRect days;      ///< seven columns, six rows
};

struct CalendarPlaces {
  PixelRect bounds;
  PixelRect previous, next;  ///< arrows at both ends of the first row's titles
  PixelRect today;           ///< empty without the line
  PixelRect chooser;         ///< where months or years are chosen, below the one title
  PixelRect chooser_title;
  std::vector<MonthPlaces> months;  ///< row by row
};

enum class CalendarPart {
  kNone,
  kPrevious,
  kNext,
  kTitle,   ///< index: the month's place
  kDay,     ///< index: the month's place, cell: 7 * row + column
  kWeek,    ///< cell: the row
  kChoice,  ///< cell: 0 to 11 of months or years
  kToday,
};

struct CalendarHit {
  CalendarPart part = CalendarPart::kNone;
  int index = 0;
  int cell = 0;
  bool operator==(const CalendarHit&) const = default;
};

/// The size at which nothing is cramped; what an opened calendar takes.
struct CalendarSize {
  int width = 0;
  int height = 0;
};
CalendarSize natural_size(const CalendarShape& shape);

CalendarPlaces layout_calendar(const CalendarShape& shape);
/// One cell of a month's grid.
PixelRect day_cell(const MonthPlaces& month, int cell);
/// One head of a month's columns, one number of its weeks.
PixelRect weekday_cell(const MonthPlaces& month, int column);
PixelRect week_cell(const MonthPlaces& month, int row);
PixelRect choice_cell(const CalendarPlaces& places, int cell);

CalendarHit hit_calendar(const CalendarPlaces& places, CalendarView view, int x, int y);

/// The closed date field.
struct DateFieldPlaces {
  PixelRect frame;
  PixelRect text;
  PixelRect button;
};
DateFieldPlaces layout_date_field(int width, int height, int dpi);

}  // namespace kestrelon
