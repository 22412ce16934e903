// The walk over a text that `read_number` makes.
#pragma once

#include "grid/values/cell_number.h"

namespace kestrelon {

class NumberReader {
 public:
  NumberReader(std::wstring_view text, const LocaleFacts& facts) : text_(text), facts_(facts) {}

  /// False where the text holds no number; it may still be a word.
  bool read_decimal();
  bool read_based(unsigned base);
  CellNumber& number() { return number_; }
  /// Something was read, though it makes no number.
  bool kept_any() const { return digits_ > 0 || signed_ || marked_ || broken_; }

 private:
  bool step();
  void take_digit(wchar_t c);
  void take_minus();
  bool take_mark(wchar_t c);
  bool take_parenthesis(wchar_t c);
  size_t currency_mark_here() const;
  bool rest_is_blank() const;

  std::wstring_view text_;
  const LocaleFacts& facts_;
  CellNumber number_;
  size_t at_ = 0;
  int digits_ = 0;       // read, zeros in front included
  int significant_ = 0;  // held
  bool signed_ = false;
  bool behind_ = false, minus_behind_ = false;  // past the digits, by a currency mark or a minus
  bool marked_ = false;                         // past the decimal mark
  bool opened_ = false, closed_ = false;        // parentheses
  bool broken_ = false;                         // what was kept is no number
};

}  // namespace kestrelon
