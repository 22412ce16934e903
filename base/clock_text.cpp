#include "base/clock_text.h"

#include "base/decimal.h"

namespace kestrelon {
namespace {

std::wstring two_digits(int64_t number) {
  const std::wstring digits = decimal_text(number);
  return digits.size() < 2 ? L"0" + digits : digits;
}

}  // namespace

std::wstring duration_text(int64_t seconds) {
  if (seconds < 0) return L"--:--";
  const int64_t minutes = seconds / 60, hours = minutes / 60;
  const std::wstring end = L":" + two_digits(seconds % 60);
  if (hours == 0) return decimal_text(minutes) + end;
  return decimal_text(hours) + L":" + two_digits(minutes % 60) + end;
}

std::wstring moment_text(const DateTime& moment, std::wstring_view format) {
  std::wstring out;
  bool behind_hours = false;
  for (size_t i = 0; i < format.size();) {
    const auto small = [&](size_t at) {
      const wchar_t c = format[at];
      return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 32) : c;
    };
    const wchar_t letter = small(i);
    size_t count = 1;
    const size_t most = letter == L'y' ? 4 : 2;
    while (count < most && i + count < format.size() && small(i + count) == letter) ++count;
    const auto number = [&](int value) {
      out += count == 1 ? decimal_text(value) : two_digits(value);
    };
    switch (letter) {
      case L'd':
        number(moment.date.day);
        break;
      case L'm':
        number(behind_hours ? moment.minute : moment.date.month);
        break;
      case L'y':
        out += count > 2 ? decimal_text(moment.date.year) : two_digits(moment.date.year % 100);
        break;
      case L'h':
        number(moment.hour);
        break;
      case L'n':
        number(moment.minute);
        break;
      case L's':
        number(moment.second);
        break;
      default:
        out.append(format.substr(i, count));
        break;
    }
    // "hh:mm" is a time, "hh dd/mm" is not: any other part ends the hours' reach.
    if (letter >= L'a' && letter <= L'z') behind_hours = letter == L'h';
    i += count;
  }
  return out;
}

}  // namespace kestrelon
