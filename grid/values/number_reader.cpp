#include "grid/values/number_reader.h"

#include "base/fold.h"
#include "base/text.h"

namespace kestrelon {
namespace {

constexpr int kHeadDigits = 19;
// More digits cannot change the nearest Double of any text a person writes; more whole digits lie
// beyond its range.
constexpr int kMostDigits = 1100;
constexpr int kMostWholeDigits = 309;

bool is_passed_over(wchar_t c) {
  constexpr wchar_t kPound = 0xA3, kNoBreak = 0xA0, kNarrowNoBreak = 0x202F;
  return c == L' ' || c == L'$' || c == kPound || c == kNoBreak || c == kNarrowNoBreak;
}

}  // namespace

void NumberReader::take_digit(wchar_t c) {
  ++digits_;
  const bool leading_zero = c == L'0' && significant_ == 0;
  if (significant_ == kMostDigits) {
    if (!marked_) broken_ = true;
    return;
  }
  if (marked_) ++number_.scale_;
  if (leading_zero) return;
  ++significant_;
  if (significant_ <= kHeadDigits) {
    number_.head_ = number_.head_ * 10 + static_cast<uint64_t>(c - L'0');
    return;
  }
  if (number_.long_digits_.empty()) number_.long_digits_ = std::to_string(number_.head_);
  number_.long_digits_.push_back(static_cast<char>(c));
}

void NumberReader::take_minus() {
  if (signed_ || opened_) broken_ = true;
  signed_ = true;
  if (digits_ > 0) behind_ = minus_behind_ = true;
  number_.negative_ = true;
}

// True where `c` is a mark of the locale or at least a kept one.
bool NumberReader::take_mark(wchar_t c) {
  if (c == facts_.decimal_mark) {
    if (marked_ || behind_) broken_ = true;
    marked_ = true;
    return true;
  }
  if (c == facts_.group_mark) {
    if (marked_ || behind_ || digits_ == 0) broken_ = true;
    return true;
  }
  if (c != L'.' && c != L',') return false;
  broken_ = true;
  return true;
}

bool NumberReader::take_parenthesis(wchar_t c) {
  if (c == L'(' && !opened_ && !kept_any()) {
    opened_ = number_.negative_ = true;
    return true;
  }
  if (c != L')' || !opened_ || digits_ == 0) return false;
  closed_ = true;
  return true;
}

size_t NumberReader::currency_mark_here() const {
  for (const std::wstring& mark : facts_.currency_marks) {
    if (mark.empty() || upper_letter(text_[at_]) != mark[0]) continue;
    if (upper_text(text_.substr(at_, mark.size())) == mark) return mark.size();
  }
  return 0;
}

bool NumberReader::rest_is_blank() const {
  for (size_t i = at_; i < text_.size(); ++i)
    if (!is_passed_over(text_[i])) return false;
  return true;
}

// Takes what stands at `at_`; false where the reading ends.
bool NumberReader::step() {
  const wchar_t c = text_[at_];
  if (is_digit(c)) {
    if (behind_) {
      broken_ = minus_behind_;
      return false;
    }
    take_digit(c);
  } else if (c == L'-') {
    take_minus();
  } else if (c == L'+') {
    if (signed_ || digits_ > 0 || opened_) return false;
    signed_ = true;
  } else if (!take_mark(c) && !is_passed_over(c) && !take_parenthesis(c)) {
    const size_t mark = currency_mark_here();
    if (mark == 0) return false;
    at_ += mark;
    behind_ = behind_ || digits_ > 0;
    return true;
  }
  ++at_;
  return !broken_ && !closed_;
}

bool NumberReader::read_decimal() {
  while (at_ < text_.size() && step()) {
  }
  while (closed_ && at_ < text_.size()) {
    const size_t mark = currency_mark_here();
    if (mark == 0) break;
    at_ += mark;
  }
  if (significant_ - number_.scale_ > kMostWholeDigits) broken_ = true;
  if (broken_ || digits_ == 0 || opened_ != closed_) return false;
  if (significant_ > kHeadDigits) number_.head_ = 0;
  number_.whole_text_ = rest_is_blank();
  return true;
}

bool NumberReader::read_based(unsigned base) {
  constexpr uint64_t kLast = ~uint64_t{0};
  for (; at_ < text_.size(); ++at_) {
    const wchar_t c = text_[at_];
    if (is_passed_over(c)) continue;
    if (c == L'-' || c == L'.' || c == L',') return !(broken_ = true);
    const int digit = hex_digit_value(c);
    if (digit < 0 || (base == 8 && digit > 9)) break;
    const auto value = static_cast<unsigned>(digit);
    ++digits_;
    if (value >= base || number_.head_ > (kLast - value) / base) return !(broken_ = true);
    number_.head_ = number_.head_ * base + value;
  }
  number_.whole_text_ = rest_is_blank();
  return digits_ > 0;
}

}  // namespace kestrelon
