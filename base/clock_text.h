// Moments and durations as the displays of the library write them, the same on every machine.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/calendar.h"

namespace kestrelon {

/// Hours, minutes and seconds: "1:02:03", "2:03"; "--:--" for less than 0.
std::wstring duration_text(int64_t seconds);

/// A moment by a format of d, dd, m, mm, yy, yyyy, h, hh, n, nn, s and ss in any case; m behind
/// hours means minutes. Other characters stay as they are.
std::wstring moment_text(const DateTime& moment, std::wstring_view format);

}  // namespace kestrelon
