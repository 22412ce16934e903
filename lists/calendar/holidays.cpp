#include "lists/calendar/holidays.h"

#include <algorithm>

#include "base/text.h"

namespace kestrelon {
namespace {

struct FixedDay {
  int month, day, from_year;
  bool optional;
  const wchar_t* name;
};

constexpr FixedDay kFixed[] = {
    {1, 1, kFirstYear, false, L"Confraternização Universal"},
    {4, 21, kFirstYear, false, L"Tiradentes"},
    {5, 1, kFirstYear, false, L"Dia do Trabalho"},
    {9, 7, kFirstYear, false, L"Independência do Brasil"},
    {10, 12, 1980, false, L"Nossa Senhora Aparecida"},
    {10, 28, kFirstYear, true, L"Dia do Servidor Público"},
    {11, 2, kFirstYear, false, L"Finados"},
    {11, 15, kFirstYear, false, L"Proclamação da República"},
    {11, 20, 2024, false, L"Dia Nacional de Zumbi e da Consciência Negra"},
    {12, 25, kFirstYear, false, L"Natal"},
};

struct MovableDay {
  int from_easter;  // days
  bool holiday, banks_closed;
  const wchar_t* name;
};

constexpr MovableDay kMovable[] = {
    {-48, false, true, L"Carnaval"},
    {-47, false, true, L"Carnaval"},
    {-46, false, false, L"Quarta-feira de Cinzas"},
    {-2, true, false, L"Paixão de Cristo"},
    {60, false, true, L"Corpus Christi"},
};

constexpr uint32_t key_of(int year, int month, int day) {
  return static_cast<uint32_t>(year) << 9 | static_cast<uint32_t>(month) << 5 |
         static_cast<uint32_t>(day);
}

// A holiday of every year is checked in a leap year, so that 29/02 is one.
bool is_holiday_date(int day, int month, int year) {
  return is_real_date({year == 0 ? 2000 : year, month, day});
}

void join(DayNote& note, std::wstring_view name, bool holiday, bool banks_closed) {
  note.holiday |= holiday;
  note.optional |= !holiday;
  note.banks_closed |= banks_closed;
  if (name.empty() || note.name == name) return;
  if (!note.name.empty()) note.name += L"; ";
  note.name += name;
}

std::wstring two_digits(int number) {
  return {static_cast<wchar_t>(L'0' + number / 10 % 10), static_cast<wchar_t>(L'0' + number % 10)};
}

int number_of(std::wstring_view digits) {
  if (!is_all_digits(digits) || digits.size() > 4) return -1;
  int number = 0;
  for (const wchar_t c : digits) number = number * 10 + (c - L'0');
  return number;
}

void add_line(Holidays& holidays, std::wstring_view line) {
  line = trim_blanks(line);
  const size_t blank = std::min(line.find(L' '), line.size());
  std::wstring_view date = line.substr(0, blank);
  const bool optional = !date.empty() && date.back() == L'*';
  if (optional) date.remove_suffix(1);
  const auto parts = split(date, L"/");
  if (parts.size() < 2 || parts.size() > 3) return;
  const int year = parts.size() == 3 ? number_of(parts[2]) : 0;
  if (parts.size() == 3 && year <= 0) return;
  holidays.add(number_of(parts[0]), number_of(parts[1]), trim_blanks(line.substr(blank)), year,
               optional);
}

}  // namespace

// The anonymous Gregorian rule, in whole numbers throughout.
int32_t easter_day(int year) {
  if (year < kFirstYear || year > kLastYear) return 0;
  const int golden = year % 19, century = year / 100, in_century = year % 100;
  const int correction = (century - (century + 8) / 25 + 1) / 3;
  const int epact = (19 * golden + century - century / 4 - correction + 15) % 30;
  const int to_sunday =
      (32 + 2 * (century % 4) + 2 * (in_century / 4) - epact - in_century % 4) % 7;
  const int late = (golden + 11 * epact + 22 * to_sunday) / 451;
  const int march = epact + to_sunday - 7 * late + 114;
  return day_number({year, march / 31, march % 31 + 1});
}

bool Holidays::add(int day, int month, std::wstring_view name, int year, bool optional) {
  if (!is_holiday_date(day, month, year)) return false;
  const auto [place, added] =
      own_.try_emplace(key_of(year, month, day), Own{std::wstring(name), optional});
  if (added) ++version_;
  return added;
}

bool Holidays::remove(int day, int month, int year) {
  if (!is_holiday_date(day, month, year) || own_.erase(key_of(year, month, day)) == 0) return false;
  ++version_;
  return true;
}

void Holidays::clear() {
  own_.clear();
  ++version_;
}

std::wstring Holidays::text() const {
  std::wstring lines;
  for (const auto& [key, own] : own_) {
    if (!lines.empty()) lines += L"\r\n";
    const int year = static_cast<int>(key >> 9);
    lines +=
        two_digits(static_cast<int>(key & 31)) + L"/" + two_digits(static_cast<int>(key >> 5 & 15));
    if (year != 0) lines += L"/" + two_digits(year / 100) + two_digits(year % 100);
    if (own.optional) lines += L'*';
    if (!own.name.empty()) lines += L" " + own.name;
  }
  return lines;
}

void Holidays::set_text(std::wstring_view lines) {
  clear();
  for (std::wstring_view line : split(lines, L"\n")) {
    if (!line.empty() && line.back() == L'\r') line.remove_suffix(1);
    add_line(*this, line);
  }
}

DayNote Holidays::note(int32_t day) const {
  DayNote note;
  const auto date = date_of_day_number(day);
  if (!date) return note;
  for (const FixedDay& fixed : kFixed)
    if (fixed.month == date->month && fixed.day == date->day && date->year >= fixed.from_year)
      join(note, fixed.name, !fixed.optional, false);
  const int32_t easter = easter_day(date->year);
  for (const MovableDay& movable : kMovable)
    if (easter + movable.from_easter == day)
      join(note, movable.name, movable.holiday, movable.banks_closed);
  for (const int year : {0, date->year}) {
    const auto own = own_.find(key_of(year, date->month, date->day));
    if (own != own_.end()) join(note, own->second.name, !own->second.optional, false);
  }
  return note;
}

void Holidays::own_days_off(int year, int filed_under, std::vector<int32_t>& days) const {
  const auto end = own_.lower_bound(key_of(filed_under + 1, 0, 0));
  for (auto own = own_.lower_bound(key_of(filed_under, 0, 0)); own != end; ++own) {
    const CalendarDate date{year, static_cast<int>(own->first >> 5 & 15),
                            static_cast<int>(own->first & 31)};
    if (!own->second.optional && is_real_date(date)) days.push_back(day_number(date));
  }
}

std::vector<int32_t> Holidays::days_off(int year, bool bank) const {
  std::vector<int32_t> days;
  for (const FixedDay& fixed : kFixed)
    if (!fixed.optional && year >= fixed.from_year)
      days.push_back(day_number({year, fixed.month, fixed.day}));
  const int32_t easter = easter_day(year);
  for (const MovableDay& movable : kMovable)
    if (movable.holiday || (bank && movable.banks_closed))
      days.push_back(easter + movable.from_easter);
  own_days_off(year, 0, days);
  own_days_off(year, year, days);
  std::sort(days.begin(), days.end());
  days.erase(std::unique(days.begin(), days.end()), days.end());
  return days;
}

}  // namespace kestrelon
