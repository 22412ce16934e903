#include "services/typing/number_line.h"

#include <algorithm>

#include "base/text.h"

namespace kestrelon {
namespace {

// Splits digits and marks at the decimal mark of a number field.
size_t mark_position(std::wstring_view text, const EntrySettings& settings) {
  const AmountMarks& marks = settings.marks;
  if (marks.group != marks.decimal) return text.find(marks.decimal);
  const size_t last = text.rfind(marks.decimal);
  const bool group = last != std::wstring_view::npos && text.size() - last - 1 == 3;
  return group ? std::wstring_view::npos : last;
}

void append_digits(std::wstring& digits, std::wstring_view text) {
  std::copy_if(text.begin(), text.end(), std::back_inserter(digits), is_digit);
}

std::wstring_view without_prefix(std::wstring_view text, const EntrySettings& settings) {
  if (text.starts_with(L'-')) text.remove_prefix(1);
  if (settings.kind == EntryKind::kCurrency && text.starts_with(settings.currency))
    text.remove_prefix(settings.currency.size());
  return text;
}

}  // namespace

bool NumberLine::is_zero() const {
  return (whole + places).find_first_not_of(L'0') == std::wstring::npos;
}

Amount NumberLine::amount() const {
  Amount amount{negative && !is_zero(), whole, places};
  if (amount.whole == L"0") amount.whole.clear();
  return amount;
}

size_t most_places(const EntrySettings& settings) {
  constexpr size_t kWithEqualMarks = 2;
  const bool limited =
      settings.kind == EntryKind::kNumber && settings.marks.group == settings.marks.decimal;
  return limited ? std::min(settings.decimals, kWithEqualMarks) : settings.decimals;
}

NumberLine line_of(std::wstring_view text, const EntrySettings& settings) {
  NumberLine line;
  line.negative = text.starts_with(L'-');
  text = without_prefix(text, settings);
  if (settings.kind == EntryKind::kCurrency) {
    append_digits(line.whole, text);
    const size_t places = std::min(line.whole.size(), settings.decimals);
    line.places = line.whole.substr(line.whole.size() - places);
    line.whole.resize(line.whole.size() - places);
  } else {
    const size_t mark = mark_position(text, settings);
    line.mark = mark != std::wstring_view::npos;
    append_digits(line.whole, text.substr(0, mark));
    if (line.mark) append_digits(line.places, text.substr(mark + 1));
  }
  tidy(line, settings);
  return line;
}

void tidy(NumberLine& line, const EntrySettings& settings) {
  line.whole.erase(0, std::min(line.whole.find_first_not_of(L'0'), line.whole.size()));
  if (line.whole.empty()) line.whole = L"0";
  if (settings.kind == EntryKind::kCurrency) {
    line.places.resize(settings.decimals, L'0');
    line.mark = settings.decimals > 0;
  }
}

size_t prefix_length(const NumberLine& line, const EntrySettings& settings) {
  const size_t sign = line.negative ? 1 : 0;
  const bool worded = settings.kind == EntryKind::kCurrency && !settings.currency.empty();
  return sign + (worded ? settings.currency.size() + 1 : 0);
}

std::wstring text_of(const NumberLine& line, const EntrySettings& settings) {
  std::wstring text = line.negative ? L"-" : L"";
  if (settings.kind == EntryKind::kCurrency && !settings.currency.empty())
    text += settings.currency + L' ';
  text += group_digits(line.whole, settings.marks.group);
  if (line.mark) text += settings.marks.decimal + line.places;
  return text;
}

size_t position_of(const std::wstring& text, const NumberLine& line, size_t right, bool before_mark,
                   const EntrySettings& settings) {
  const size_t behind_whole = line.places.size() + (line.mark ? 1 : 0);
  if (right <= behind_whole) return text.size() - right;
  const size_t digits = std::min(right - behind_whole, line.whole.size());
  const bool grouped = settings.marks.group != 0;
  const size_t groups = grouped ? (digits - 1) / 3 : 0;
  const size_t position = text.size() - behind_whole - digits - groups;
  const bool at_mark = grouped && digits % 3 == 0 && digits < line.whole.size();
  return at_mark && before_mark ? position - 1 : position;
}

size_t right_of(const std::wstring& text, const NumberLine& line, size_t position) {
  const size_t behind_whole = line.places.size() + (line.mark ? 1 : 0);
  const size_t from_end = text.size() - position;
  if (from_end <= behind_whole) return from_end;
  const auto first = text.begin() + static_cast<std::ptrdiff_t>(position);
  const auto last = text.end() - static_cast<std::ptrdiff_t>(behind_whole);
  return behind_whole + static_cast<size_t>(std::count_if(first, last, is_digit));
}

}  // namespace kestrelon
