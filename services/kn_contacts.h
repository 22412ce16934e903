// Brazilian postal codes, telephone numbers and keys of the instant payment system.
#pragma once

#include <string>
#include <string_view>

namespace kestrelon {

/// A postal code of eight digits, bare, "00000-000" or "00.000-000", from 01000-000 on (the lowest
/// that exists).
bool is_valid_postal_code(std::wstring_view text);

/// "00000-000"; "" for a text that is not of eight digits.
std::wstring format_postal_code(std::wstring_view text);

/// A number with its area code (one of the 67 in use): nine digits that begin with 9, or eight that
/// begin with 2 to 5. "+55" in front, brackets around the area code and single blanks, hyphens or
/// points between digits are welcome.
bool is_valid_phone(std::wstring_view text);

/// A key of the instant payment system: CPF or CNPJ (with or without marks), e-mail of at most 77
/// characters, phone as "+55", area code and number without anything between, or a random key of
/// 8-4-4-4-12 hexadecimal digits.
bool is_valid_pix_key(std::wstring_view text);

}  // namespace kestrelon
