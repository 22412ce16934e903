// Decimal numbers as their digits, so that no value passes through a binary fraction.
#pragma once

#include <compare>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kestrelon {

/// The characters that part the whole digits from the places and the groups of three from each
/// other; a group mark of 0 writes no groups.
struct AmountMarks {
  wchar_t decimal = L',';
  wchar_t group = L'.';
};

struct Amount {
  bool negative = false;
  std::wstring whole;   // without leading zeros, empty for none
  std::wstring places;  // digits behind the mark, trailing zeros as given

  bool is_zero() const;
};

/// The number that a person means by `text`: signs in front or behind, brackets, a currency word
/// and blanks are welcome. Of two kinds of marks the last is the decimal one; a mark that occurs
/// more than once parts groups; one alone is the decimal mark unless it is not `marks.decimal` and
/// stands between one to three digits and exactly three. Nothing for a text without a number.
std::optional<Amount> read_amount(std::wstring_view text, const AmountMarks& marks);

/// Exactly `count` places, halves away from zero.
void round_places(Amount& amount, size_t count);

/// `digits` in groups of three from the right.
std::wstring group_digits(std::wstring_view digits, wchar_t mark);

/// Grouped, with `count` places and the sign in front; `prefix` stands between sign and digits.
std::wstring format_amount(Amount amount, size_t count, const AmountMarks& marks,
                           std::wstring_view prefix = {});

std::strong_ordering operator<=>(const Amount& a, const Amount& b);
inline bool operator==(const Amount& a, const Amount& b) {
  return (a <=> b) == std::strong_ordering::equal;
}

/// The amount and a whole number, of either sign.
Amount plus(const Amount& amount, int addend);

double to_double(const Amount& amount);
/// By 15 significant digits, as the hosts' language writes a Double; zero for what is no number.
Amount amount_of(double value);

}  // namespace kestrelon
