// Brazilian tax numbers: check digits, recognition and display.
#pragma once

#include <string>
#include <string_view>

namespace kestrelon {

// Blanks around a number do not count.

/// The documented check of a CPF or CNPJ of digits: ".", "-" and "/" are dropped wherever they
/// stand, anything else that is no digit fails. Eleven or fourteen equal digits pass where the
/// arithmetic says.
bool is_valid_cpf_or_cnpj(std::wstring_view text);

/// Strict CPF, with or without its marks; refuses eleven equal digits.
bool is_valid_cpf(std::wstring_view text);

/// Strict CNPJ of digits or, as issued since July 2026, of twelve characters 0-9 A-Z and two check
/// digits, with or without its marks. Refuses lower case and fourteen equal characters.
bool is_valid_cnpj(std::wstring_view text);

/// "000.000.000-00" or "00.000.000/0000-00" by the number of characters; check digits are not
/// looked at. "" for what has the form of neither.
std::wstring format_cpf_or_cnpj(std::wstring_view text);

}  // namespace kestrelon
