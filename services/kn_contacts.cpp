#include "services/kn_contacts.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "base/text.h"
#include "services/kn_documents.h"
#include "services/kn_text.h"

namespace kestrelon {
namespace {

constexpr std::wstring_view kCountryCode = L"+55";

// Area codes by tens digit: a bit for each units digit in use.
constexpr uint16_t bits(std::string_view digits) {
  uint16_t set = 0;
  for (const char c : digits) set = static_cast<uint16_t>(set | 1u << (c - '0'));
  return set;
}
constexpr uint16_t kAreaCodes[10] = {0,
                                     bits("123456789"),
                                     bits("12478"),
                                     bits("1234578"),
                                     bits("123456789"),
                                     bits("1345"),
                                     bits("123456789"),
                                     bits("134579"),
                                     bits("123456789"),
                                     bits("123456789")};

// Area code and number without anything between.
bool is_national_number(std::wstring_view digits) {
  if (!is_all_digits(digits) || (digits.size() != 10 && digits.size() != 11)) return false;
  const unsigned units = static_cast<unsigned>(digits[1] - L'0');
  if ((kAreaCodes[digits[0] - L'0'] >> units & 1) == 0) return false;
  const wchar_t first = digits[2];
  return digits.size() == 11 ? first == L'9' : first >= L'2' && first <= L'5';
}

// True when single separators, and nothing else, stand between digits.
bool is_digits_with_separators(std::wstring_view text) {
  if (text.empty() || !is_digit(text.front()) || !is_digit(text.back())) return false;
  bool after_digit = false;
  for (const wchar_t c : text) {
    const bool digit = is_digit(c);
    if (!digit && (!after_digit || std::wstring_view(L" -.").find(c) == std::wstring_view::npos))
      return false;
    after_digit = digit;
  }
  return true;
}

bool is_postal_form(std::wstring_view text) {
  constexpr std::wstring_view kForms[] = {L"@@@@@@@@", L"@@@@@-@@@", L"@@.@@@-@@@"};
  const std::wstring digits = keep_digits(text);
  return std::any_of(std::begin(kForms), std::end(kForms), [&](std::wstring_view form) {
    return digits.size() == 8 && fill_mask(digits, form) == text;
  });
}

bool is_label_char(wchar_t c) {
  return is_digit(c) || (fold_case(c) >= L'a' && fold_case(c) <= L'z');
}

bool is_mailbox(std::wstring_view name) {
  constexpr std::wstring_view kOthers = L"!#$%&'*+/=?^_`{|}~-.";
  if (name.empty() || name.size() > 64 || name.front() == L'.' || name.back() == L'.') return false;
  return name.find(L"..") == std::wstring_view::npos &&
         std::all_of(name.begin(), name.end(), [&](wchar_t c) {
           return is_label_char(c) || kOthers.find(c) != std::wstring_view::npos;
         });
}

bool is_domain(std::wstring_view domain) {
  const auto labels = split(domain, L".");
  return labels.size() >= 2 &&
         std::all_of(labels.begin(), labels.end(), [](std::wstring_view label) {
           return !label.empty() && label.size() <= 63 && is_label_char(label.front()) &&
                  is_label_char(label.back()) &&
                  std::all_of(label.begin(), label.end(),
                              [](wchar_t c) { return c == L'-' || is_label_char(c); });
         });
}

bool is_email(std::wstring_view text) {
  constexpr size_t kLongest = 77;
  const size_t at = text.find(L'@');
  if (text.size() > kLongest || at == std::wstring_view::npos) return false;
  return is_mailbox(text.substr(0, at)) && is_domain(text.substr(at + 1));
}

bool is_random_key(std::wstring_view text) {
  constexpr std::wstring_view kForm = L"xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
  return std::equal(
      text.begin(), text.end(), kForm.begin(), kForm.end(),
      [](wchar_t c, wchar_t form) { return form == L'-' ? c == L'-' : hex_digit_value(c) >= 0; });
}

}  // namespace

bool is_valid_postal_code(std::wstring_view text) {
  constexpr std::wstring_view kLowest = L"01000000";
  text = trim_blanks(text);
  return is_postal_form(text) && keep_digits(text) >= kLowest;
}

std::wstring format_postal_code(std::wstring_view text) {
  text = trim_blanks(text);
  return is_postal_form(text) ? fill_mask(keep_digits(text), L"@@@@@-@@@") : std::wstring();
}

bool is_valid_phone(std::wstring_view text) {
  text = trim_blanks(text);
  if (text.starts_with(kCountryCode)) text = trim_blanks(text.substr(kCountryCode.size()));
  std::wstring number(text);
  if (number.size() > 4 && number[0] == L'(' && number[3] == L')' &&
      is_all_digits(text.substr(1, 2))) {
    const std::wstring_view rest = trim_blanks(text.substr(4));
    number = number.substr(1, 2) + std::wstring(rest);
  }
  return is_digits_with_separators(number) && is_national_number(keep_digits(number));
}

bool is_valid_pix_key(std::wstring_view text) {
  text = trim_blanks(text);
  if (text.starts_with(kCountryCode)) return is_national_number(text.substr(kCountryCode.size()));
  return is_valid_cpf(text) || is_valid_cnpj(text) || is_random_key(text) || is_email(text);
}

}  // namespace kestrelon
