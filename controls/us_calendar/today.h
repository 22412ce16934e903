// The day it is.
#pragma once

#include <windows.h>

#include "base/calendar.h"

namespace kestrelon {

inline CalendarDate today_date() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  return {now.wYear, now.wMonth, now.wDay};
}

inline int32_t today() {
  return day_number(today_date());
}

}  // namespace kestrelon
