#include "services/typing/amount.h"

#include "base/decimal.h"
#include "base/exact_digits.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"

namespace kestrelon {
namespace {

// Adds 1 to a row of digits; true when it runs over and all are zero.
bool increment(std::wstring& digits) {
  for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
    if (*digit != L'9') {
      ++*digit;
      return false;
    }
    *digit = L'0';
  }
  return true;
}

void strip_leading_zeros(std::wstring& digits) {
  digits.erase(0, std::min(digits.find_first_not_of(L'0'), digits.size()));
}

std::wstring padded_left(std::wstring_view digits, size_t length) {
  std::wstring padded(length - std::min(length, digits.size()), L'0');
  return padded.append(digits);
}

// a and b have the same length; the sum has one digit more.
std::wstring sum_of(std::wstring_view a, std::wstring_view b) {
  std::wstring sum(a.size() + 1, L'0');
  int carry = 0;
  for (size_t i = a.size(); i-- > 0;) {
    const int digit = (a[i] - L'0') + (b[i] - L'0') + carry;
    sum[i + 1] = static_cast<wchar_t>(L'0' + digit % 10);
    carry = digit / 10;
  }
  sum[0] = static_cast<wchar_t>(L'0' + carry);
  return sum;
}

// a is not below b, both of one length.
std::wstring difference_of(std::wstring_view a, std::wstring_view b) {
  std::wstring rest(a.size(), L'0');
  int borrow = 0;
  for (size_t i = a.size(); i-- > 0;) {
    const int digit = (a[i] - L'0') - (b[i] - L'0') - borrow;
    borrow = digit < 0 ? 1 : 0;
    rest[i] = static_cast<wchar_t>(L'0' + digit + borrow * 10);
  }
  return rest;
}

std::wstring without_trailing_zeros(std::wstring_view digits) {
  return std::wstring(digits.substr(0, digits.find_last_not_of(L'0') + 1));
}

std::strong_ordering compare_sizes(const Amount& a, const Amount& b) {
  if (a.whole.size() != b.whole.size()) return a.whole.size() <=> b.whole.size();
  if (const int order = a.whole.compare(b.whole); order != 0) return order <=> 0;
  return without_trailing_zeros(a.places).compare(without_trailing_zeros(b.places)) <=> 0;
}

}  // namespace

bool Amount::is_zero() const {
  return whole.empty() && places.find_first_not_of(L'0') == std::wstring::npos;
}

void round_places(Amount& amount, size_t count) {
  const bool up = amount.places.size() > count && amount.places[count] >= L'5';
  amount.places.resize(count, L'0');
  if (!up || !increment(amount.places)) return;
  if (increment(amount.whole)) amount.whole.insert(amount.whole.begin(), L'1');
}

std::wstring group_digits(std::wstring_view digits, wchar_t mark) {
  std::wstring text;
  text.reserve(digits.size() + digits.size() / 3);
  for (size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && mark != 0 && (digits.size() - i) % 3 == 0) text += mark;
    text += digits[i];
  }
  return text;
}

std::wstring format_amount(Amount amount, size_t count, const AmountMarks& marks,
                           std::wstring_view prefix) {
  round_places(amount, count);
  std::wstring text = amount.negative && !amount.is_zero() ? L"-" : L"";
  text += prefix;
  text += amount.whole.empty() ? L"0" : group_digits(amount.whole, marks.group);
  if (count > 0) text += marks.decimal + amount.places;
  return text;
}

std::strong_ordering operator<=>(const Amount& a, const Amount& b) {
  const bool a_below = a.negative && !a.is_zero(), b_below = b.negative && !b.is_zero();
  if (a_below != b_below)
    return a_below ? std::strong_ordering::less : std::strong_ordering::greater;
  return a_below ? compare_sizes(b, a) : compare_sizes(a, b);
}

Amount plus(const Amount& amount, int addend) {
  const size_t places = amount.places.size();
  const std::wstring step =
      std::to_wstring(std::abs(static_cast<long long>(addend))) + std::wstring(places, L'0');
  const std::wstring digits = amount.whole + amount.places;
  const size_t length = std::max(step.size(), digits.size());
  const std::wstring a = padded_left(digits, length), b = padded_left(step, length);
  const bool opposed = amount.negative != (addend < 0);
  std::wstring result = !opposed ? sum_of(a, b)
                        : a >= b ? difference_of(a, b)
                                 : difference_of(b, a);
  Amount total;
  total.negative = opposed && a < b ? !amount.negative : amount.negative;
  total.places = result.substr(result.size() - places);
  total.whole = result.substr(0, result.size() - places);
  strip_leading_zeros(total.whole);
  if (total.is_zero()) total.negative = false;
  return total;
}

double to_double(const Amount& amount) {
  std::string text = amount.negative ? "-0" : "0";
  for (const wchar_t c : amount.whole) text += static_cast<char>(c);
  text += '.';
  for (const wchar_t c : amount.places) text += static_cast<char>(c);
  const double value = parse_fixed(text).value_or(0);
  return value == 0 ? 0 : value;
}

Amount amount_of(double value) {
  Amount amount;
  if (!std::isfinite(value)) return amount;
  // Fifteen digits are sure; what is behind them is the binary number's, not the amount's.
  constexpr size_t kSureDigits = 15;
  DecimalDigits sure = exact_digits(value);
  sure.round_to_even(kSureDigits);
  amount.negative = value < 0;
  std::wstring* digits = &amount.whole;
  for (const char c : plain_text(sure)) {
    if (c == '.') digits = &amount.places;
    if (c != '.') *digits += static_cast<wchar_t>(c);
  }
  strip_leading_zeros(amount.whole);
  if (amount.is_zero()) amount.negative = false;
  return amount;
}

}  // namespace kestrelon
