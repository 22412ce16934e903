#include "services/mysql/numeric_text.h"

#include "base/text.h"

namespace kestrelon {
namespace {

constexpr bool is_blank(wchar_t c) {
  return c == L' ' || (c >= L'\t' && c <= L'\r');
}
constexpr bool is_sign(wchar_t c) {
  return c == L'+' || c == L'-';
}

void trim(std::wstring_view& text) {
  while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && is_blank(text.back())) text.remove_suffix(1);
}

// Takes away signs, parentheses and currency marks at both ends, each at most once.
bool strip_marks(std::wstring_view& text, const std::wstring& currency) {
  bool has_sign = false;
  bool has_currency = currency.empty();
  for (trim(text); !text.empty(); trim(text)) {
    if (!has_sign && text.front() == L'(' && text.back() == L')' && text.size() > 2) {
      text = text.substr(1, text.size() - 2);
      has_sign = true;
    } else if (!has_sign && is_sign(text.front())) {
      text.remove_prefix(1);
      has_sign = true;
    } else if (!has_sign && is_sign(text.back())) {
      text.remove_suffix(1);
      has_sign = true;
    } else if (!has_currency && text.starts_with(currency)) {
      text.remove_prefix(currency.size());
      has_currency = true;
    } else if (!has_currency && text.ends_with(currency)) {
      text.remove_suffix(currency.size());
      has_currency = true;
    } else {
      return true;
    }
  }
  return false;
}

size_t skip_digits(std::wstring_view text, size_t at) {
  while (at < text.size() && is_digit(text[at])) ++at;
  return at;
}

}  // namespace

bool is_numeric(std::wstring_view text, const NumberMarks& marks) {
  if (!strip_marks(text, marks.currency)) return false;
  size_t at = skip_digits(text, 0);
  bool has_digits = at > 0;
  while (has_digits && at < text.size() && text[at] == marks.thousands && marks.thousands != 0)
    at = skip_digits(text, at + 1);
  if (at < text.size() && text[at] == marks.decimal) {
    const size_t end = skip_digits(text, at + 1);
    has_digits = has_digits || end > at + 1;
    at = end;
  }
  if (!has_digits) return false;
  if (at < text.size() && (fold_case(text[at]) == L'e' || fold_case(text[at]) == L'd')) {
    ++at;
    if (at < text.size() && is_sign(text[at])) ++at;
    const size_t end = skip_digits(text, at);
    if (end == at) return false;
    at = end;
  }
  return at == text.size();
}

}  // namespace kestrelon
