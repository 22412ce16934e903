// Letters of all scripts, and capitals and small letters one to one.
#pragma once

#include <string>
#include <string_view>

namespace kestrelon {

/// A letter of the basic plane in any script; halves of surrogate pairs are none.
bool is_letter(wchar_t c);

/// The capital of a small letter that `fold_case` makes from one; other characters stay.
wchar_t to_capital(wchar_t c);

enum class TextCase { kNormal = 0, kUpper = 1, kLower = 2 };

/// The length stays the same, so positions in the text keep their meaning.
wchar_t with_case(wchar_t c, TextCase text_case);
std::wstring with_case(std::wstring_view text, TextCase text_case);

/// The halves of a character beyond the basic plane.
constexpr bool is_high_surrogate(wchar_t c) {
  return c >= 0xD800 && c <= 0xDBFF;
}
constexpr bool is_low_surrogate(wchar_t c) {
  return c >= 0xDC00 && c <= 0xDFFF;
}

}  // namespace kestrelon
