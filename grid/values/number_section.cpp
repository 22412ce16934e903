#include "grid/values/number_section.h"
#include "base/decimal.h"

#include <algorithm>

#include "base/text.h"

namespace kestrelon {
namespace {

constexpr int kGroup = 3;

void trim_zeros(PlacedDigits& number) {
  const size_t first = number.digits.find_first_not_of('0');
  if (first == std::string::npos) {
    number = {};
    return;
  }
  number.digits.erase(number.digits.find_last_not_of('0') + 1);
  number.digits.erase(0, first);
  number.whole -= static_cast<int64_t>(first);
}

}  // namespace

void PlacedDigits::round(int64_t places) {
  const int64_t keep = whole + places;
  if (keep >= static_cast<int64_t>(digits.size())) return trim_zeros(*this);
  if (keep < 0) {
    *this = {};
    return;
  }
  auto end = static_cast<size_t>(keep);
  bool carry = digits[end] >= '5';
  digits.resize(end);
  while (carry && end > 0) {
    char& digit = digits[--end];
    carry = digit == '9';
    digit = carry ? '0' : static_cast<char>(digit + 1);
  }
  if (carry) {
    digits.insert(digits.begin(), '1');
    ++whole;
  }
  trim_zeros(*this);
}

NumberSection::NumberSection(std::wstring_view section) {
  bool marked = false;
  for (size_t i = 0; i < section.size(); ++i) {
    const wchar_t c = section[i];
    if (c == L'"') {
      const size_t end = std::min(section.find(L'"', i + 1), section.size());
      for (++i; i < end; ++i) tokens_.push_back({Kind::kLiteral, section[i]});
    } else if (c == L'\\' && i + 1 < section.size()) {
      tokens_.push_back({Kind::kLiteral, section[++i]});
    } else if (c == L'0' || c == L'#') {
      ++(marked ? places_ : whole_places_);
      tokens_.push_back({c == L'0' ? Kind::kZero : Kind::kDigit});
    } else if (c == L'.' && !marked) {
      marked = true;
      mark_at_ = tokens_.size();
      tokens_.push_back({Kind::kMark});
    } else if (c == L',') {
      if (!marked) read_comma(section.substr(i + 1));
    } else if ((c == L'E' || c == L'e') && i + 2 < section.size() && exponent_digits_ == 0 &&
               (section[i + 1] == L'+' || section[i + 1] == L'-') && section[i + 2] == L'0') {
      if (!marked) mark_at_ = tokens_.size();
      marked = true;
      tokens_.push_back({Kind::kExponent, section[i + 1]});
      for (i += 2; i < section.size() && section[i] == L'0'; ++i) ++exponent_digits_;
      --i;
    } else {
      if (c == L'%') shift_ += 2;
      tokens_.push_back({Kind::kLiteral, c});
    }
  }
  if (!marked) mark_at_ = tokens_.size();
}

// Between digits a comma asks for groups; behind the last whole digit it divides by a thousand.
void NumberSection::read_comma(std::wstring_view rest) {
  if (whole_places_ == 0) return;
  const size_t next = rest.find_first_not_of(L',');
  const bool digit_follows =
      next != std::wstring_view::npos && (rest[next] == L'0' || rest[next] == L'#');
  if (digit_follows)
    grouped_ = true;
  else
    shift_ -= kGroup;
}

std::wstring NumberSection::write(PlacedDigits& digits, const LocaleFacts& facts) const {
  int64_t exponent = 0;
  if (!digits.is_zero()) digits.whole += shift_;
  if (exponent_digits_ > 0 && !digits.is_zero()) {
    const int whole = std::max(whole_places_, 1);
    exponent = digits.whole - whole;
    digits.whole = whole;
    digits.round(places_);
    if (digits.whole > whole) {  // 9.99 became 10.0
      --digits.whole;
      ++exponent;
    }
  } else {
    digits.round(places_);
  }
  std::wstring text;
  append_whole(text, digits, facts);
  append_places(text, digits, facts, exponent);
  return text;
}

void NumberSection::append_whole(std::wstring& text, const PlacedDigits& digits,
                                 const LocaleFacts& facts) const {
  // From the right; the leftmost place takes every digit that is left.
  std::wstring backwards;
  int64_t written = 0;
  int places_left = whole_places_;
  const auto emit = [&](int64_t place) {
    if (grouped_ && written > 0 && written % kGroup == 0) backwards += facts.group_mark;
    backwards += static_cast<wchar_t>(digits.at(place));
    ++written;
  };
  if (whole_places_ == 0 && mark_at_ < tokens_.size())
    while (written < digits.whole) emit(-1 - written);
  for (size_t i = mark_at_; i-- > 0;) {
    const Token& token = tokens_[i];
    if (token.kind == Kind::kLiteral) backwards += token.c;
    if (!is_place(token)) continue;
    --places_left;
    if (written < digits.whole || token.kind == Kind::kZero) emit(-1 - written);
    while (places_left == 0 && written < digits.whole) emit(-1 - written);
  }
  text.append(backwards.rbegin(), backwards.rend());
}

void NumberSection::append_places(std::wstring& text, const PlacedDigits& digits,
                                  const LocaleFacts& facts, int64_t exponent) const {
  const int64_t shown = static_cast<int64_t>(digits.digits.size()) - digits.whole;
  int64_t place = 0;
  for (size_t i = mark_at_; i < tokens_.size(); ++i) {
    const Token& token = tokens_[i];
    if (token.kind == Kind::kMark) text += facts.decimal_mark;
    if (token.kind == Kind::kLiteral) text += token.c;
    if (token.kind == Kind::kExponent)
      append_exponent(text, token.c, static_cast<size_t>(exponent_digits_), exponent);
    if (!is_place(token)) continue;
    if (token.kind == Kind::kZero || place < shown) text += static_cast<wchar_t>(digits.at(place));
    ++place;
  }
}

void NumberSection::append_exponent(std::wstring& text, wchar_t sign_rule, size_t width,
                                    int64_t exponent) {
  text += L'E';
  if (exponent < 0) text += L'-';
  if (exponent >= 0 && sign_rule == L'+') text += L'+';
  const std::wstring digits = decimal_text(exponent < 0 ? -exponent : exponent);
  text.append(width > digits.size() ? width - digits.size() : 0, L'0').append(digits);
}

}  // namespace kestrelon
