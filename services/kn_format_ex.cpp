#include "services/kn_format_ex.h"

#include <utility>

#include "base/decimal.h"
#include "base/text.h"

namespace kestrelon {
namespace {

constexpr std::wstring_view kDayNames[7] = {L"domingo",      L"segunda-feira", L"terça-feira",
                                            L"quarta-feira", L"quinta-feira",  L"sexta-feira",
                                            L"sábado"};
constexpr std::wstring_view kMonthNames[12] = {L"janeiro",  L"fevereiro", L"março",    L"abril",
                                               L"maio",     L"junho",     L"julho",    L"agosto",
                                               L"setembro", L"outubro",   L"novembro", L"dezembro"};
constexpr size_t kShortName = 3;

constexpr std::wstring_view kShortDate = L"dd/mm/yyyy";
constexpr std::wstring_view kLongDate = L"dddd, d \"de\" mmmm \"de\" yyyy";
constexpr std::wstring_view kLongTime = L"hh:nn:ss";
constexpr std::wstring_view kNamedPatterns[][2] = {
    {L"General Date", L"c"},     {L"Long Date", kLongDate}, {L"Medium Date", L"dd-mmm-yy"},
    {L"Short Date", kShortDate}, {L"Long Time", kLongTime}, {L"Medium Time", L"hh:nn AM/PM"},
    {L"Short Time", L"hh:nn"}};

// Numbers between single delimiters, all of the text; nothing for any other text.
struct Numbers {
  int value[3] = {};
  size_t digits[3] = {};
  size_t count = 0;
};

std::optional<Numbers> read_numbers(std::wstring_view text, std::wstring_view delimiters) {
  constexpr size_t kMaxDigits = 4;
  Numbers numbers;
  while (numbers.count < 3) {
    const size_t end = text.find_first_of(delimiters);
    const std::wstring_view part = text.substr(0, end);
    if (part.size() > kMaxDigits || !is_all_digits(part)) return std::nullopt;
    for (const wchar_t c : part)
      numbers.value[numbers.count] = numbers.value[numbers.count] * 10 + (c - L'0');
    numbers.digits[numbers.count++] = part.size();
    if (end == std::wstring_view::npos) return numbers;
    text.remove_prefix(end + 1);
  }
  return std::nullopt;
}

std::optional<CalendarDate> read_calendar_date(std::wstring_view text, int current_year) {
  const auto numbers = read_numbers(text, L"/-.");
  if (!numbers || numbers->count < 2) return std::nullopt;
  const auto& value = numbers->value;
  if (numbers->count == 3 && numbers->digits[0] == 4) {
    const CalendarDate date{value[0], value[1], value[2]};
    return is_real_date(date) ? std::optional(date) : std::nullopt;
  }
  int year = current_year;
  if (numbers->count == 3)
    year = numbers->digits[2] > 2 ? value[2] : value[2] + (value[2] < 30 ? 2000 : 1900);
  CalendarDate date{year, value[1], value[0]};
  if (!is_real_date(date)) std::swap(date.day, date.month);
  return is_real_date(date) ? std::optional(date) : std::nullopt;
}

bool read_time(std::wstring_view text, DateTime& moment) {
  const auto numbers = read_numbers(text, L":");
  if (!numbers || numbers->count < 2) return false;
  const auto& value = numbers->value;
  if (value[0] > 23 || value[1] > 59 || value[2] > 59) return false;
  moment.hour = value[0];
  moment.minute = value[1];
  moment.second = value[2];
  return true;
}

std::optional<DateTime> read_date_value(std::wstring_view text) {
  std::string digits = to_ansi(text);
  for (char& c : digits)
    if (c == ',') c = '.';
  const auto value = parse_fixed(digits);
  return value ? date_time_of_value(*value) : std::nullopt;
}

std::wstring number(int value, int width = 1) {
  std::wstring text = decimal_text(value);
  while (static_cast<int>(text.size()) < width) text.insert(text.begin(), L'0');
  return text;
}

int day_of_year(const CalendarDate& date) {
  return day_number(date) - day_number({date.year, 1, 1}) + 1;
}

// Weeks begin on Sunday; the first one holds the first of January.
int week_of_year(const CalendarDate& date) {
  return (day_of_year(date) + weekday(day_number({date.year, 1, 1})) - 2) / 7 + 1;
}

std::wstring general_text(const DateTime& moment) {
  const bool has_date = day_number(moment.date) != 0;
  const bool has_time = moment.hour + moment.minute + moment.second > 0;
  if (!has_date) return format_moment(moment, kLongTime);
  const std::wstring date = format_moment(moment, kShortDate);
  return has_time ? date + L" " + format_moment(moment, kLongTime) : date;
}

// A walk over one pattern. Letters of a kind in a row make one token.
class PatternWriter {
 public:
  PatternWriter(const DateTime& moment, std::wstring_view pattern)
      : moment_(moment), pattern_(pattern), folded_(fold_case(pattern)) {
    twelve_hours_ =
        folded_.find(L"am/pm") != std::wstring::npos || folded_.find(L"a/p") != std::wstring::npos;
  }

  std::wstring write() {
    while (at_ < pattern_.size()) {
      if (!write_literal() && !write_half_of_day()) write_token();
    }
    return std::move(text_);
  }

 private:
  bool write_literal() {
    if (pattern_[at_] == L'\\') {
      if (at_ + 1 < pattern_.size()) text_ += pattern_[at_ + 1];
      at_ += 2;
      return true;
    }
    if (pattern_[at_] != L'"') return false;
    const size_t end = std::min(pattern_.find(L'"', at_ + 1), pattern_.size());
    text_ += pattern_.substr(at_ + 1, end - at_ - 1);
    at_ = end + 1;
    return true;
  }

  bool write_half_of_day() {
    for (const size_t letters : {size_t{2}, size_t{1}}) {
      const size_t size = 2 * letters + 1;
      if (folded_.compare(at_, size, letters == 2 ? L"am/pm" : L"a/p") != 0) continue;
      const size_t from = moment_.hour < 12 ? at_ : at_ + letters + 1;
      text_ += pattern_.substr(from, letters);
      at_ += size;
      return true;
    }
    return false;
  }

  void write_token() {
    const wchar_t letter = folded_[at_];
    const size_t end = std::min(folded_.find_first_not_of(letter, at_), folded_.size());
    const int length = static_cast<int>(end - at_);
    const bool after_hours = after_hours_;
    const bool is_letter = letter >= L'a' && letter <= L'z';
    if (is_letter) after_hours_ = letter == L'h';
    if (!write_date_token(letter, length) && !write_time_token(letter, length, after_hours))
      text_ += pattern_.substr(at_, end - at_);
    at_ = end;
  }

  bool write_date_token(wchar_t letter, int length) {
    const CalendarDate& date = moment_.date;
    if (letter == L'd') {
      const std::wstring_view name = kDayNames[static_cast<size_t>(weekday(day_number(date)) - 1)];
      if (length <= 2)
        text_ += number(date.day, length);
      else if (length == 3)
        text_ += name.substr(0, kShortName);
      else if (length == 4)
        text_ += name;
      else
        text_ += format_moment(moment_, length == 5 ? kShortDate : kLongDate);
    } else if (letter == L'y') {
      if (length == 1)
        text_ += number(day_of_year(date));
      else
        text_ += length == 2 ? number(date.year % 100, 2) : number(date.year, 4);
    } else if (letter == L'w') {
      text_ += number(length == 1 ? weekday(day_number(date)) : week_of_year(date));
    } else if (letter == L'q') {
      text_ += number((date.month + 2) / 3);
    } else if (letter == L'c') {
      text_ += general_text(moment_);
    } else {
      return false;
    }
    return true;
  }

  bool write_time_token(wchar_t letter, int length, bool after_hours) {
    const int width = length > 1 ? 2 : 1;
    if (letter == L'h') {
      const int hour = twelve_hours_ ? (moment_.hour + 11) % 12 + 1 : moment_.hour;
      text_ += number(hour, width);
    } else if (letter == L'n' || (letter == L'm' && after_hours && length <= 2)) {
      text_ += number(moment_.minute, width);
    } else if (letter == L'm') {
      const std::wstring_view name = kMonthNames[static_cast<size_t>(moment_.date.month - 1)];
      if (length <= 2)
        text_ += number(moment_.date.month, length);
      else
        text_ += length == 3 ? name.substr(0, kShortName) : name;
    } else if (letter == L's') {
      text_ += number(moment_.second, width);
    } else if (letter == L't' && length == 5) {
      text_ += format_moment(moment_, kLongTime);
    } else {
      return false;
    }
    return true;
  }

  const DateTime& moment_;
  std::wstring_view pattern_;
  std::wstring folded_;
  std::wstring text_;
  size_t at_ = 0;
  bool twelve_hours_ = false;
  bool after_hours_ = false;  // the last letters were hours: an m now means minutes
};

}  // namespace

std::optional<DateTime> read_moment(std::wstring_view text, int current_year) {
  text = trim_blanks(text);
  if (text.find_first_of(L"/-.:", 1) == std::wstring_view::npos || text.empty())
    return read_date_value(text);
  DateTime moment{{1899, 12, 30}};
  if (read_time(text, moment)) return moment;
  const size_t end = text.find_first_of(L" T");
  const auto date = read_calendar_date(text.substr(0, end), current_year);
  if (!date) return read_date_value(text);
  moment.date = *date;
  if (end != std::wstring_view::npos && !read_time(trim_blanks(text.substr(end + 1)), moment))
    return std::nullopt;
  return moment;
}

std::wstring format_moment(const DateTime& moment, std::wstring_view pattern) {
  for (const auto& [name, named] : kNamedPatterns)
    if (equals_ignoring_case(pattern, name)) pattern = named;
  return PatternWriter(moment, pattern).write();
}

std::wstring format_date_ex(std::wstring_view text, std::wstring_view pattern, int current_year) {
  const auto moment = read_moment(text, current_year);
  return moment ? format_moment(*moment, pattern) : std::wstring(text);
}

}  // namespace kestrelon
