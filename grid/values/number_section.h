// One section of a number format, taken apart, and the filling of its places.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "grid/locale_rules.h"

namespace kestrelon {

/// Decimal digits around a decimal mark, without zeros in front: 1.5 is "15" with `whole` 1.
/// `whole` may be negative (0.05: "5", -1) or beyond the digits (100: "1", 3).
struct PlacedDigits {
  std::string digits;
  int64_t whole = 0;

  char at(int64_t place) const {  // place 0 is the first behind the mark, -1 the units
    const int64_t i = whole + place;
    return i >= 0 && i < static_cast<int64_t>(digits.size()) ? digits[static_cast<size_t>(i)] : '0';
  }
  bool is_zero() const { return digits.empty(); }
  /// Halves away from zero.
  void round(int64_t places);
};

class NumberSection {
 public:
  explicit NumberSection(std::wstring_view section);

  /// Writes without any sign; `digits` is scaled and rounded on the way, and tells afterwards
  /// whether anything but zeros is shown.
  std::wstring write(PlacedDigits& digits, const LocaleFacts& facts) const;

 private:
  enum class Kind : uint8_t { kLiteral, kZero, kDigit, kMark, kExponent };
  struct Token {
    Kind kind;
    wchar_t c = 0;  // of a literal; the sign rule of an exponent
  };

  void read_comma(std::wstring_view rest);
  bool is_place(const Token& token) const {
    return token.kind == Kind::kZero || token.kind == Kind::kDigit;
  }
  void append_whole(std::wstring& text, const PlacedDigits& digits, const LocaleFacts& facts) const;
  void append_places(std::wstring& text, const PlacedDigits& digits, const LocaleFacts& facts,
                     int64_t exponent) const;
  static void append_exponent(std::wstring& text, wchar_t sign_rule, size_t width,
                              int64_t exponent);

  std::vector<Token> tokens_;
  size_t mark_at_ = 0;  // index of the decimal mark, or of the end
  int whole_places_ = 0;
  int places_ = 0;
  int exponent_digits_ = 0;
  int shift_ = 0;  // powers of ten: percent signs and commas in front of the mark
  bool grouped_ = false;
};

}  // namespace kestrelon
