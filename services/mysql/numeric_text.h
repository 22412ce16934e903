// Texts that a host takes for numbers.
#pragma once

#include <string>
#include <string_view>

namespace kestrelon {

/// Marks of numbers in the user's locale; Brazilian at first.
struct NumberMarks {
  wchar_t decimal = L',';
  wchar_t thousands = L'.';
  std::wstring currency = L"R$";
};

/// True for a text that the hosts' IsNumeric accepts: blanks around, one sign or parentheses, one
/// currency mark, digits with thousands marks, one decimal mark, an exponent behind E or D.
bool is_numeric(std::wstring_view text, const NumberMarks& marks);

}  // namespace kestrelon
