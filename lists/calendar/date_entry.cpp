#include "lists/calendar/date_entry.h"

#include <algorithm>
#include <vector>

#include "base/text.h"
#include "services/kn_date_format.h"

namespace kestrelon {
namespace {

constexpr std::wstring_view kSeparators = L"/-. ";
constexpr int kUsualFormat = 1;  // dd/mm/yyyy

std::wstring_view format_text(int format) {
  const auto text = date_format_text(format);
  return text.empty() ? date_format_text(kUsualFormat) : text;
}

constexpr bool is_field(wchar_t c) {
  return c == L'd' || c == L'm' || c == L'y';
}

// The letters of a format in order: "dmy", "my" and so on.
std::wstring fields_of(std::wstring_view format) {
  std::wstring fields;
  for (const wchar_t c : format)
    if (is_field(c) && (fields.empty() || fields.back() != c)) fields += c;
  return fields;
}

std::vector<std::wstring_view> parts_of(std::wstring_view text) {
  std::vector<std::wstring_view> parts;
  size_t start = 0;
  while ((start = text.find_first_not_of(kSeparators, start)) != std::wstring_view::npos) {
    const size_t end = std::min(text.find_first_of(kSeparators, start), text.size());
    parts.push_back(text.substr(start, end - start));
    start = end;
  }
  return parts;
}

std::wstring without_year(std::wstring fields) {
  std::erase(fields, L'y');
  return fields;
}

// The fields that a number of parts stands for; a year follows a format that has none.
std::wstring fields_for(size_t parts, std::wstring_view format) {
  std::wstring fields = fields_of(format);
  const std::wstring days = without_year(fields);
  if (parts == 3) return fields.size() == 3 ? fields : days.size() == 2 ? days + L'y' : L"dmy";
  if (parts == 2) return fields.size() == 3 ? days : fields;
  return days.find(L'd') != std::wstring::npos ? L"d" : L"m";
}

// Cuts digits without separators into parts; empty when their number fits no date.
std::vector<std::wstring_view> cut(std::wstring_view digits, std::wstring_view format) {
  const std::wstring all = fields_of(format);
  const bool by_month = all.find(L'd') == std::wstring::npos;
  const size_t count = digits.size() <= 2 ? 1 : digits.size() == 4 || by_month ? 2 : 3;
  const std::wstring fields = fields_for(count, format);
  size_t year_digits = 2;
  if (fields.find(L'y') != std::wstring::npos) year_digits = digits.size() - 2 * (count - 1);
  std::vector<std::wstring_view> parts;
  if (digits.size() > 2 && (digits.size() % 2 != 0 || (year_digits != 2 && year_digits != 4)))
    return parts;
  for (const wchar_t field : fields) {
    const size_t length = std::min(field == L'y' ? year_digits : 2, digits.size());
    parts.push_back(digits.substr(0, length));
    digits.remove_prefix(length);
  }
  return parts;
}

int number_of(std::wstring_view digits) {
  int number = 0;
  for (const wchar_t c : digits) number = number * 10 + (c - L'0');
  return number;
}

int full_year(std::wstring_view digits) {
  const int year = number_of(digits);
  return digits.size() > 2 ? year : year < 30 ? 2000 + year : 1900 + year;
}

std::wstring padded(int number, size_t width) {
  const std::wstring digits = std::to_wstring(number);
  return std::wstring(width > digits.size() ? width - digits.size() : 0, L'0') + digits;
}

std::wstring usual_text(const CalendarDate& date) {
  return padded(date.day, 2) + L"/" + padded(date.month, 2) + L"/" + padded(date.year, 4);
}

}  // namespace

std::optional<CalendarDate> read_typed_date(std::wstring_view text, int format,
                                            const CalendarDate& today) {
  const std::wstring_view wanted = format_text(format);
  auto parts = parts_of(text);
  if (parts.empty() || parts.size() > 3) return std::nullopt;
  for (const auto part : parts)
    if (!is_all_digits(part)) return std::nullopt;
  if (parts.size() == 1) parts = cut(parts.front(), wanted);
  std::wstring fields = fields_for(parts.size(), wanted);
  // Four digits in front are a year whatever the format says.
  if (parts.size() == 3 && parts[0].size() == 4) fields = L"ymd";
  const bool has_day = fields.find(L'd') != std::wstring::npos;
  CalendarDate date{today.year, today.month, has_day ? today.day : 1};
  for (size_t i = 0; i < parts.size(); ++i) {
    if (parts[i].size() > (fields[i] == L'y' ? 4u : 2u)) return std::nullopt;
    if (fields[i] == L'd') date.day = number_of(parts[i]);
    if (fields[i] == L'm') date.month = number_of(parts[i]);
    if (fields[i] == L'y') date.year = full_year(parts[i]);
  }
  if (parts.empty() || !is_valid_date(usual_text(date), kUsualFormat)) return std::nullopt;
  return date;
}

std::wstring with_separator(std::wstring_view text, int format) {
  const std::wstring_view wanted = format_text(format);
  std::wstring typed(text);
  if (typed.empty() || !is_digit(typed.back())) return typed;
  const auto parts = parts_of(typed);
  const std::wstring fields = fields_of(wanted);
  if (parts.size() >= fields.size()) return typed;
  const wchar_t field = fields[parts.size() - 1];
  const auto width =
      field == L'y' ? static_cast<size_t>(std::count(wanted.begin(), wanted.end(), L'y')) : 2;
  if (parts.back().size() == width) typed += wanted[wanted.find_first_of(kSeparators)];
  return typed;
}

bool is_date_character(wchar_t c) {
  return is_digit(c) || kSeparators.find(c) != std::wstring_view::npos;
}

std::wstring date_field_text(const CalendarDate& date, int format) {
  const std::wstring_view wanted = format_text(format);
  std::wstring text;
  for (size_t i = 0; i < wanted.size();) {
    const wchar_t field = wanted[i];
    const size_t width = std::min(wanted.find_first_not_of(field, i), wanted.size()) - i;
    if (field == L'd') text += padded(date.day, width);
    if (field == L'm') text += padded(date.month, width);
    if (field == L'y') text += padded(width == 2 ? date.year % 100 : date.year, width);
    if (!is_field(field)) text += field;
    i += width;
  }
  return text;
}

}  // namespace kestrelon
