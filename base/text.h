// Text helpers that do not depend on the machine's locale. Text is UTF-16 where wchar_t has 16
// bits.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kestrelon {

/// A character as the number of its code unit; wchar_t is signed on some systems and 16 bits on
/// others.
constexpr uint32_t code_unit(wchar_t c) {
  return static_cast<uint32_t>(c);
}

/// True for the ASCII digits only; digits of other scripts are letters here.
constexpr bool is_digit(wchar_t c) {
  return c >= L'0' && c <= L'9';
}

/// True for a text of one or more ASCII digits.
bool is_all_digits(std::wstring_view text);

/// Value 0 to 15 of a hexadecimal digit in either case, -1 for any other character.
constexpr int hex_digit_value(wchar_t c) {
  if (is_digit(c)) return c - L'0';
  if (c >= L'A' && c <= L'F') return c - L'A' + 10;
  if (c >= L'a' && c <= L'f') return c - L'a' + 10;
  return -1;
}

/// The text without blanks (U+0020 only) at both ends; a view into the argument.
std::wstring_view trim_blanks(std::wstring_view text);

/// The pieces between the delimiters, empty ones included: at least one piece. An empty delimiter
/// does not split. The pieces are views into `text`.
std::vector<std::wstring_view> split(std::wstring_view text, std::wstring_view delimiter);

/// Lower-case form of a character by simple one-to-one folding of ASCII, Latin-1, Latin Extended-A,
/// Greek and Cyrillic letters; other characters come back as they are.
wchar_t fold_case(wchar_t c);

/// `fold_case` over a text; the length stays the same.
std::wstring fold_case(std::wstring_view text);

bool equals_ignoring_case(std::wstring_view a, std::wstring_view b);

/// Position of `what` in `text` at or after `from`, npos when absent.
size_t find_ignoring_case(std::wstring_view text, std::wstring_view what, size_t from = 0);

/// One byte for each UTF-16 unit by the Western code page (1252); what it lacks becomes '?',
/// without best-fit substitutes. The page does not follow the machine, so digests are the same
/// everywhere.
std::string to_ansi(std::wstring_view text);

/// The character for each byte of the Western code page; its five free codes keep their value.
std::wstring from_ansi(std::string_view bytes);

}  // namespace kestrelon
