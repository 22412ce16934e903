// A simple reader of numbers for the tests of the store: one notation, as exact as the store needs.
#pragma once

#include <cstdlib>
#include <string>
#include <string_view>

namespace kestrelon {

inline double test_number(std::wstring_view text) {
  if (text == L"True") return -1;
  std::string plain;
  for (const wchar_t c : text) {
    if ((c < L'0' || c > L'9') && c != L',' && c != L'-') break;
    plain += c == L',' ? '.' : static_cast<char>(c);
  }
  return plain.empty() ? 0 : std::strtod(plain.c_str(), nullptr);
}

}  // namespace kestrelon
