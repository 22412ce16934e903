#include "services/kn_date_format.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "base/decimal.h"
#include "base/text.h"

namespace kestrelon {
namespace {

constexpr std::wstring_view kFormats[kDateFormatCount] = {
    L"yyyy/mm/dd", L"dd/mm/yyyy", L"mm/dd/yyyy", L"dd/mm/yy",   L"dd-mm-yyyy", L"dd.mm.yyyy",
    L"dd-mm-yy",   L"dd.mm.yy",   L"d/m/yyyy",   L"d-m-yyyy",   L"d.m.yyyy",   L"d/m/yy",
    L"d-m-yy",     L"d.m.yy",     L"mm-dd-yyyy", L"mm.dd.yyyy", L"mm/dd/yy",   L"mm-dd-yy",
    L"mm.dd.yy",   L"m/d/yyyy",   L"m-d-yyyy",   L"m.d.yyyy",   L"m/d/yy",     L"m-d-yy",
    L"m.d.yy",     L"yyyy-mm-dd", L"yyyy.mm.dd", L"yy/mm/dd",   L"yy-mm-dd",   L"yy.mm.dd",
    L"yyyy/m/d",   L"yyyy-m-d",   L"yyyy.m.d",   L"yy/m/d",     L"yy-m-d",     L"yy.m.d",
    L"dd/mm",      L"dd-mm",      L"dd.mm",      L"d/mm",       L"d-mm",       L"d.mm",
    L"d/m",        L"d.m",        L"d-m",        L"mm/dd",      L"mm-dd",      L"mm.dd",
    L"m/dd",       L"m-dd",       L"m.dd",       L"m/d",        L"m.d",        L"m-d",
    L"mm/yyyy",    L"mm-yyyy",    L"mm.yyyy",    L"m/yyyy",     L"m-yyyy",     L"m.yyyy",
    L"mm/yy",      L"mm-yy",      L"mm.yy",      L"m/yy",       L"m-yy",       L"m.yy",
    L"yyyy/mm",    L"yyyy-mm",    L"yyyy.mm",    L"yyyy/m",     L"yyyy-m",     L"yyyy.m",
    L"yy/mm",      L"yy-mm",      L"yy.mm",      L"yy/m",       L"yy-m",       L"yy.m"};

constexpr std::wstring_view kSeparators = L"/-.";
constexpr size_t kMaxFields = 3;
constexpr size_t kMaxDigits = 9;  // keeps every part within 32 bits
constexpr size_t kYearDigits = 4;

// Fields are named by the letter that a format writes them with.
struct Layout {
  wchar_t separator = 0;
  size_t count = 0;
  std::array<wchar_t, kMaxFields> field{};
  std::array<size_t, kMaxFields> width{};
};

struct Part {
  int number = 0;
  size_t digits = 0;  // as written, leading zeros included; 0 where the text has no such part
};

struct Fields {
  Part day, month, year;
  Part& operator[](wchar_t letter) { return letter == L'd' ? day : letter == L'm' ? month : year; }
};

using Parts = std::array<Part, kMaxFields>;

Layout layout_of(std::wstring_view format) {
  Layout layout;
  for (const wchar_t c : format) {
    if (kSeparators.find(c) != std::wstring_view::npos) {
      layout.separator = c;
      ++layout.count;
    } else {
      layout.field[layout.count] = c;
      ++layout.width[layout.count];
    }
  }
  ++layout.count;
  return layout;
}

std::optional<Part> read_part(std::wstring_view text) {
  if (text.size() > kMaxDigits || !is_all_digits(text)) return std::nullopt;
  Part part{0, text.size()};
  for (const wchar_t c : text) part.number = part.number * 10 + (c - L'0');
  return part;
}

// The parts of a text cut at its first blank; 0 for a part that is no number and for too many
// parts.
size_t read_parts(std::wstring_view text, Parts& parts) {
  text = trim_blanks(text);
  text = text.substr(0, text.find_first_of(L" Tt"));
  for (size_t count = 0; count < kMaxFields;) {
    const size_t end = text.find_first_of(kSeparators);
    const auto part = read_part(text.substr(0, end));
    if (!part) return 0;
    parts[count++] = *part;
    if (end == std::wstring_view::npos) return count;
    text.remove_prefix(end + 1);
  }
  return 0;
}

// The field that each part of the text stands for, given where the year was seen.
std::wstring_view order_around_year(const Layout& layout, size_t count, size_t year) {
  const bool month_first = layout.field[0] == L'm';
  if (count == 2) return year == 0 ? L"ym" : L"my";
  if (year == 0) return L"ymd";
  if (year == 2) return month_first ? L"mdy" : L"dmy";
  return layout.field[0] == L'd' ? L"dym" : L"myd";
}

std::optional<Fields> read_fields(std::wstring_view text, const Layout& layout) {
  Parts parts;
  const size_t count = read_parts(text, parts);
  if (count < layout.count) return std::nullopt;
  std::wstring_view order(layout.field.data(), layout.count);
  if (count > layout.count) order = parts[0].digits == kYearDigits ? L"ymd" : L"dmy";

  const size_t expected = order.find(L'y');
  const auto is_year = [](const Part& part) { return part.digits == kYearDigits; };
  if (expected == std::wstring_view::npos || !is_year(parts[expected])) {
    const auto end = parts.begin() + static_cast<std::ptrdiff_t>(count);
    const auto seen = std::find_if(parts.begin(), end, is_year);
    if (seen != end) {
      if (expected == std::wstring_view::npos) return std::nullopt;  // a day or month is missing
      order = order_around_year(layout, count, static_cast<size_t>(seen - parts.begin()));
    }
  }
  Fields fields;
  for (size_t i = 0; i < count; ++i) fields[order[i]] = parts[i];
  return fields;
}

// Years of one or two digits belong to 1930 to 2029; longer ones stay as they are.
int full_year(const Part& year) {
  if (year.digits > 2) return year.number;
  return year.number + (year.number < 30 ? 2000 : 1900);
}

std::wstring padded(int number, size_t width) {
  std::wstring text = decimal_text(number);
  if (text.size() < width) text.insert(0, width - text.size(), L'0');
  return text;
}

std::wstring write_year(const Part& year, size_t width) {
  const std::wstring text = padded(full_year(year), year.digits);
  return width == 2 ? text.substr(text.size() - 2) : text;
}

std::wstring write_fields(Fields& fields, const Layout& layout) {
  std::wstring text;
  for (size_t i = 0; i < layout.count; ++i) {
    if (i > 0) text += layout.separator;
    const wchar_t letter = layout.field[i];
    text += letter == L'y' ? write_year(fields.year, layout.width[i])
                           : padded(fields[letter].number, layout.width[i]);
  }
  return text;
}

bool is_real(const Fields& fields) {
  constexpr int kAnyLeapYear = 2000;
  const int year = fields.year.digits > 0 ? full_year(fields.year) : kAnyLeapYear;
  const int day = fields.day.digits > 0 ? fields.day.number : 1;
  return is_real_date({year, fields.month.number, day});
}

}  // namespace

std::wstring_view date_format_text(int format) {
  if (format < 0 || format >= kDateFormatCount) return {};
  return kFormats[format];
}

std::optional<int> find_date_format(std::wstring_view format) {
  const auto found = std::find_if(std::begin(kFormats), std::end(kFormats), [&](auto candidate) {
    return equals_ignoring_case(candidate, format);
  });
  if (found == std::end(kFormats)) return std::nullopt;
  return static_cast<int>(found - std::begin(kFormats));
}

std::wstring format_date(std::wstring_view text, std::wstring_view format) {
  const auto known = find_date_format(format);
  return known ? format_date(text, *known) : std::wstring(text);
}

std::wstring format_date(std::wstring_view text, int format) {
  const std::wstring_view format_text = date_format_text(format);
  if (format_text.empty()) return std::wstring(text);
  const Layout layout = layout_of(format_text);
  auto fields = read_fields(text, layout);
  return fields ? write_fields(*fields, layout) : std::wstring();
}

bool is_valid_date(std::wstring_view text, int format) {
  const std::wstring_view format_text = date_format_text(format);
  if (format_text.empty()) return false;
  const auto fields = read_fields(text, layout_of(format_text));
  return fields && is_real(*fields);
}

std::optional<CalendarDate> parse_date(std::wstring_view text, int format) {
  const std::wstring_view format_text = date_format_text(format);
  if (format_text.empty()) return std::nullopt;
  const auto fields = read_fields(text, layout_of(format_text));
  if (!fields || fields->day.digits == 0 || fields->year.digits == 0 || !is_real(*fields))
    return std::nullopt;
  return CalendarDate{full_year(fields->year), fields->month.number, fields->day.number};
}

}  // namespace kestrelon
