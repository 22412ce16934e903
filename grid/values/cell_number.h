// The tolerant number: what sorting, totals, edits and formats read out of a cell's text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "grid/locale_rules.h"

namespace kestrelon {

/// A decimal number without rounding: digits times 10 to the power of -scale.
class CellNumber {
 public:
  CellNumber() = default;
  CellNumber(bool negative, uint64_t head, int32_t scale = 0)
      : negative_(negative), scale_(scale), head_(head) {}

  bool negative() const { return negative_; }
  bool is_zero() const { return head_ == 0 && long_digits_.empty(); }
  /// True where the whole text was the number, with nothing ignored but blanks and currency marks.
  bool whole_text() const { return whole_text_; }
  /// Places behind the decimal mark that the digits hold, zeros at the end included.
  int32_t scale() const { return scale_; }
  /// The digits without zeros in front; "" for zero.
  std::string digits() const;
  /// All digits as one number; only where `fits()`.
  uint64_t head() const { return head_; }
  bool fits() const { return long_digits_.empty(); }
  /// The nearest Double; an infinity beyond its range.
  double to_double() const;

 private:
  friend class NumberReader;

  bool negative_ = false;
  bool whole_text_ = false;
  int32_t scale_ = 0;
  uint64_t head_ = 0;
  std::string long_digits_;  // instead of head_ beyond 19 digits
};

/// Reads the number at the front of a text. Blanks, currency marks and the locale's group mark are
/// passed over, parentheses or one minus before or behind make it negative, "&H" and "&O" lead
/// whole numbers of base 16 and 8 that are never negative, the word for True is -1. What cannot be
/// read or lies beyond the range of a Double is 0.
CellNumber read_number(std::wstring_view text, const LocaleFacts& facts);

/// `read_number` as Double.
double cell_number(std::wstring_view text, const LocaleFacts& facts);

/// The state that a word tells: "True", "False" and the locale's own, in any case. 1, 0, or -1 for
/// any other text.
int boolean_word(std::wstring_view text, const LocaleFacts& facts);

}  // namespace kestrelon
