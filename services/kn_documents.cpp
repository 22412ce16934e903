#include "services/kn_documents.h"

#include <algorithm>

#include "base/text.h"
#include "services/kn_text.h"

namespace kestrelon {
namespace {

constexpr size_t kCpfLength = 11;
constexpr size_t kCnpjLength = 14;
constexpr size_t kCheckDigits = 2;

std::wstring without_marks(std::wstring_view text) {
  std::wstring bare(trim_blanks(text));
  std::erase_if(bare, [](wchar_t c) { return c == L'.' || c == L'-' || c == L'/'; });
  return bare;
}

bool is_cpf_form(std::wstring_view bare) {
  return bare.size() == kCpfLength && is_all_digits(bare);
}

bool is_cnpj_form(std::wstring_view bare) {
  const auto in_body = [](wchar_t c) { return is_digit(c) || (c >= L'A' && c <= L'Z'); };
  if (bare.size() != kCnpjLength || !is_all_digits(bare.substr(kCnpjLength - kCheckDigits)))
    return false;
  return std::all_of(bare.begin(), bare.end() - kCheckDigits, in_body);
}

bool all_equal(std::wstring_view bare) {
  return bare.find_first_not_of(bare.front()) == std::wstring_view::npos;
}

// Weights rise from 2 at the right, to `top` and then from 2 again. A letter is worth its ASCII
// code less 48, which for a digit is the digit.
wchar_t check_digit(std::wstring_view body, int top) {
  int sum = 0;
  int weight = 2;
  for (auto c = body.rbegin(); c != body.rend(); ++c) {
    sum += (*c - L'0') * weight;
    weight = weight == top ? 2 : weight + 1;
  }
  const int rest = sum % 11;
  return static_cast<wchar_t>(L'0' + (rest < 2 ? 0 : 11 - rest));
}

bool check_digits_hold(std::wstring_view bare) {
  const int top = bare.size() == kCpfLength ? 11 : 9;
  const size_t body = bare.size() - kCheckDigits;
  return check_digit(bare.substr(0, body), top) == bare[body] &&
         check_digit(bare.substr(0, body + 1), top) == bare[body + 1];
}

}  // namespace

bool is_valid_cpf_or_cnpj(std::wstring_view text) {
  const std::wstring bare = without_marks(text);
  if (bare.size() != kCpfLength && bare.size() != kCnpjLength) return false;
  return is_all_digits(bare) && check_digits_hold(bare);
}

bool is_valid_cpf(std::wstring_view text) {
  const std::wstring bare = without_marks(text);
  return is_cpf_form(bare) && !all_equal(bare) && check_digits_hold(bare);
}

bool is_valid_cnpj(std::wstring_view text) {
  const std::wstring bare = without_marks(text);
  return is_cnpj_form(bare) && !all_equal(bare) && check_digits_hold(bare);
}

std::wstring format_cpf_or_cnpj(std::wstring_view text) {
  const std::wstring bare = without_marks(text);
  if (is_cpf_form(bare)) return fill_mask(bare, L"@@@.@@@.@@@-@@");
  if (is_cnpj_form(bare)) return fill_mask(bare, L"@@.@@@.@@@/@@@@-@@");
  return {};
}

}  // namespace kestrelon
