// What the panels that show date and time say, and for how long that holds.
#pragma once

#include <string>
#include <string_view>

#include "base/calendar.h"

namespace kestrelon::status_bar {

/// Numbered as the members of ENUM_PANEL_STYLE that show a clock.
enum class Clock { kDate = 1, kTime = 2, kDateTime = 3 };

/// `pattern` as in services/kn_format_ex.h; empty: "dd/mm/yyyy", "hh:mm" or both.
std::wstring clock_text(Clock clock, std::wstring_view pattern, const DateTime& now);

/// Seconds from `now` to the first full second, minute, hour, noon or midnight at which the text is
/// another; at most a day, 1 or more.
int seconds_to_change(Clock clock, std::wstring_view pattern, const DateTime& now);

}  // namespace kestrelon::status_bar
