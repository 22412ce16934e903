#include "grid/fixed_locale_rules.h"

#include "base/fold.h"
#include "base/text.h"

namespace kestrelon {
namespace {

constexpr char kLevelEnd = 1;

bool is_letter_or_digit(uint32_t code) {
  return (code >= '0' && code <= '9') || (code >= 'a' && code <= 'z') || code >= 0x80;
}

// One byte for ASCII, marks below digits below letters; a lead byte and three of six bits each for
// the rest. No byte is 0 or kLevelEnd.
void append_weight(uint32_t code, std::string& keys) {
  if (code < 0x80) {
    keys.push_back(static_cast<char>((is_letter_or_digit(code) ? 0x80 : 2) + (code & 0x7F)));
    return;
  }
  keys.push_back('\xFF');
  for (int shift = 18; shift >= 0; shift -= 6)
    keys.push_back(static_cast<char>(0x40 | (code >> shift & 0x3F)));
}

}  // namespace

void FixedLocaleRules::append_sort_key(std::wstring_view text, std::string& keys) const {
  const size_t start = keys.size();
  bool accents = false;
  for (const wchar_t c : text) {
    const wchar_t letter = folded_letter(c);
    if (letter != 0) append_weight(code_unit(letter), keys);
    accents |= code_unit(c) >= 0x80;
  }
  if (accents) {  // the second level: what folding took away, each with its place
    keys.push_back(kLevelEnd);
    for (const wchar_t c : text) append_weight(code_unit(upper_letter(c)), keys);
  }
  if (keys.size() == start && !text.empty()) keys.push_back(kLevelEnd);
  keys.push_back('\0');
}

std::optional<std::string> FixedLocaleRules::code_page_bytes(std::wstring_view text) const {
  std::string bytes = to_ansi(text);
  if (from_ansi(bytes) != text) return std::nullopt;
  return bytes;
}

FixedLocaleRules brazilian_locale_rules() {
  return FixedLocaleRules(LocaleFacts{});
}

FixedLocaleRules american_locale_rules() {
  LocaleFacts facts;
  facts.decimal_mark = L'.';
  facts.group_mark = L',';
  facts.currency = L"$";
  facts.currency_pattern = L"$n";
  facts.negative_currency_pattern = L"($n)";
  facts.date_order = DateOrder::kMonthDayYear;
  facts.true_word = L"True";
  facts.false_word = L"False";
  facts.yes_word = L"Yes";
  facts.no_word = L"No";
  return FixedLocaleRules(std::move(facts));
}

}  // namespace kestrelon
