#include "grid/values/number_format.h"

#include <cmath>
#include <vector>

#include "base/exact_digits.h"
#include "base/text.h"
#include "grid/values/number_section.h"

namespace kestrelon {
namespace {

PlacedDigits placed(const CellNumber& number) {
  PlacedDigits placed{number.digits()};
  placed.whole = static_cast<int64_t>(placed.digits.size()) - number.scale();
  if (placed.digits.empty()) placed.whole = 0;
  return placed;
}

// The parts between semicolons that are not literal text.
std::vector<std::wstring_view> sections_of(std::wstring_view format) {
  std::vector<std::wstring_view> sections;
  bool quoted = false;
  size_t from = 0;
  for (size_t i = 0; i < format.size(); ++i) {
    if (format[i] == L'"') quoted = !quoted;
    if (quoted) continue;
    if (format[i] == L'\\')
      ++i;
    else if (format[i] == L';') {
      sections.push_back(format.substr(from, i - from));
      from = i + 1;
    }
  }
  sections.push_back(format.substr(from));
  return sections;
}

std::wstring by_sections(const CellNumber& number, std::wstring_view format,
                         const LocaleFacts& facts) {
  constexpr size_t kNegative = 1, kZero = 2;
  const auto sections = sections_of(format);
  const auto has = [&](size_t i) { return i < sections.size() && !sections[i].empty(); };
  PlacedDigits digits = placed(number);
  if (digits.is_zero() && has(kZero)) return NumberSection(sections[kZero]).write(digits, facts);
  if (number.negative() && has(kNegative)) {
    std::wstring text = NumberSection(sections[kNegative]).write(digits, facts);
    if (!digits.is_zero()) return text;
    digits = {};  // rounded to nothing: no longer negative
    return NumberSection(sections[has(kZero) ? kZero : 0]).write(digits, facts);
  }
  const std::wstring text = NumberSection(sections[0]).write(digits, facts);
  return number.negative() && !digits.is_zero() ? L"-" + text : text;
}

std::wstring currency_text(const CellNumber& number, const LocaleFacts& facts) {
  std::wstring format = L"#,##0";
  if (facts.currency_decimals > 0)
    format.append(1, L'.').append(static_cast<size_t>(facts.currency_decimals), L'0');
  PlacedDigits digits = placed(number);
  const std::wstring amount = NumberSection(format).write(digits, facts);
  const bool negative = number.negative() && !digits.is_zero();
  std::wstring text;
  for (const wchar_t c : negative ? facts.negative_currency_pattern : facts.currency_pattern) {
    if (c == L'$')
      text += facts.currency;
    else if (c == L'n')
      text += amount;
    else
      text += c;
  }
  return text;
}

struct NamedFormat {
  std::wstring_view name, format;
};

constexpr NamedFormat kNamedFormats[] = {{L"Fixed", L"0.00"},
                                         {L"Standard", L"#,##0.00"},
                                         {L"Percent", L"0.00%"},
                                         {L"Scientific", L"0.00E+00"}};

}  // namespace

std::wstring format_number(const CellNumber& number, std::wstring_view format,
                           const LocaleFacts& facts) {
  const auto is = [format](std::wstring_view name) { return equals_ignoring_case(format, name); };
  if (format.empty() || is(L"General Number")) return plain_number(number, facts);
  if (is(L"Currency")) return currency_text(number, facts);
  if (is(L"True/False")) return number.is_zero() ? facts.false_word : facts.true_word;
  if (is(L"Yes/No")) return number.is_zero() ? facts.no_word : facts.yes_word;
  if (is(L"On/Off")) return number.is_zero() ? L"Off" : L"On";
  for (const NamedFormat& named : kNamedFormats)
    if (is(named.name)) return by_sections(number, named.format, facts);
  return by_sections(number, format, facts);
}

std::wstring plain_number(const CellNumber& number, const LocaleFacts& facts) {
  const std::string digits = number.digits();
  const auto places = static_cast<size_t>(number.scale());
  std::wstring text(digits.begin(), digits.end());
  if (text.size() <= places) text.insert(0, places + 1 - text.size(), L'0');
  if (places > 0) {
    text.insert(text.size() - places, 1, facts.decimal_mark);
    text.erase(text.find_last_not_of(L'0') + 1);
    if (text.back() == facts.decimal_mark) text.pop_back();
  }
  return number.negative() && !number.is_zero() ? L"-" + text : text;
}

CellNumber number_of(double value) {
  if (!std::isfinite(value)) return {};
  const std::string plain = (value < 0 ? "-" : "") + plain_text(shortest_digits(value));
  static const LocaleFacts kPointed = [] {
    LocaleFacts facts;
    facts.decimal_mark = L'.';
    facts.group_mark = L'\0';
    return facts;
  }();
  return read_number(std::wstring(plain.begin(), plain.end()), kPointed);
}

std::wstring plain_number(double value, const LocaleFacts& facts) {
  return std::isfinite(value) ? plain_number(number_of(value), facts) : std::wstring();
}

}  // namespace kestrelon
