#include "lists/calendar/day_text.h"

#include "services/kn_format_ex.h"

namespace kestrelon {
namespace {

const int32_t kAnySunday = day_number({2000, 1, 2});

std::wstring formatted(const CalendarDate& date, std::wstring_view pattern) {
  return format_moment({date, 0, 0, 0}, pattern);
}

// Every name begins with a letter of ASCII.
std::wstring with_capital(std::wstring name, bool capital) {
  if (!name.empty()) name[0] = static_cast<wchar_t>(capital ? name[0] & ~0x20 : name[0] | 0x20);
  return name;
}

std::wstring_view kind_of(const DayNote& note, BusinessCount count) {
  if (note.holiday) return L"feriado";
  return count == BusinessCount::kBank && note.banks_closed ? L"sem expediente bancário"
                                                            : L"ponto facultativo";
}

}  // namespace

std::wstring long_day(int32_t day) {
  const auto date = date_of_day_number(day);
  if (!date) return {};
  const std::wstring number = date->day == 1 ? L"1º" : std::to_wstring(date->day);
  return with_capital(formatted(*date, L"dddd, "), false) + number +
         formatted(*date, L" \\d\\e mmmm \\d\\e yyyy");
}

std::wstring day_description(int32_t day, const DayNote& note, BusinessCount count) {
  std::wstring text = long_day(day);
  if (text.empty() || (!note.holiday && !note.optional)) return text;
  text.append(L", ").append(kind_of(note, count));
  if (!note.name.empty()) text += L": " + note.name;
  return text;
}

std::wstring month_title(YearMonth month) {
  return with_capital(formatted({month.year, month.month, 1}, L"mmmm \\d\\e yyyy"), true);
}

std::wstring short_month(int month) {
  return month >= 1 && month <= 12 ? formatted({2000, month, 1}, L"mmm") : std::wstring();
}

std::wstring short_weekday(int weekday) {
  if (weekday < 1 || weekday > kWeekDays) return {};
  return with_capital(formatted(*date_of_day_number(kAnySunday + weekday - 1), L"ddd"), false);
}

}  // namespace kestrelon
