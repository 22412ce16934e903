#include "base/text.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <type_traits>

namespace kestrelon {
namespace {

// Codes 0x80 to 0x9F of the Western code page, as published by the Unicode Consortium (CP1252.TXT);
// its five free codes stand for the control of the same value.
constexpr uint16_t kWestern80[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr uint32_t code_of(wchar_t c) {
  return static_cast<std::make_unsigned_t<wchar_t>>(c);
}

// Capitals of ASCII, Latin-1 (but the multiplication sign), Greek and the main Cyrillic row.
constexpr bool is_32_below_small(uint32_t code) {
  return (code >= 'A' && code <= 'Z') || (code >= 0xC0 && code <= 0xDE && code != 0xD7) ||
         (code >= 0x391 && code <= 0x3AB && code != 0x3A2) || (code >= 0x410 && code <= 0x42F);
}

char western_byte(uint32_t c) {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
  const auto found = std::find(std::begin(kWestern80), std::end(kWestern80), c);
  return found == std::end(kWestern80) ? '?'
                                       : static_cast<char>(0x80 + (found - std::begin(kWestern80)));
}

// Latin Extended-A: capitals are the even codes but for two runs where they are the odd ones.
uint32_t fold_latin_extended(uint32_t c) {
  if (c == 0x178) return 0xFF;                           // Y with diaeresis
  if (c == 0x130 || c == 0x131 || c == 0x138) return c;  // dotted and dotless I, kra
  if (c == 0x149 || c == 0x17F) return c;                // 'n, long s
  const bool capital_is_odd = (c >= 0x139 && c <= 0x148) || c >= 0x179;
  return ((c & 1) != 0) == capital_is_odd ? c + 1 : c;
}

}  // namespace

bool is_all_digits(std::wstring_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), is_digit);
}

std::wstring_view trim_blanks(std::wstring_view text) {
  const size_t first = text.find_first_not_of(L' ');
  if (first == std::wstring_view::npos) return {};
  return text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

std::vector<std::wstring_view> split(std::wstring_view text, std::wstring_view delimiter) {
  std::vector<std::wstring_view> pieces;
  size_t from = 0;
  if (!delimiter.empty()) {
    for (size_t at; (at = text.find(delimiter, from)) != std::wstring_view::npos;
         from = at + delimiter.size())
      pieces.push_back(text.substr(from, at - from));
  }
  pieces.push_back(text.substr(from));
  return pieces;
}

wchar_t fold_case(wchar_t c) {
  const uint32_t code = code_of(c);
  if (is_32_below_small(code)) return static_cast<wchar_t>(code + 32);
  if (code >= 0x100 && code <= 0x17F) return static_cast<wchar_t>(fold_latin_extended(code));
  if (code >= 0x400 && code <= 0x40F) return static_cast<wchar_t>(code + 80);
  return c;
}

std::wstring fold_case(std::wstring_view text) {
  std::wstring folded(text);
  for (wchar_t& c : folded) c = fold_case(c);
  return folded;
}

bool equals_ignoring_case(std::wstring_view a, std::wstring_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](wchar_t x, wchar_t y) { return fold_case(x) == fold_case(y); });
}

size_t find_ignoring_case(std::wstring_view text, std::wstring_view what, size_t from) {
  return fold_case(text).find(fold_case(what), from);
}

std::string to_ansi(std::wstring_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (const wchar_t c : text) {
    const uint32_t code = code_of(c);
    bytes.push_back(western_byte(code));
    // Where wchar_t has 32 bits, a character beyond the base plane still counts as its two units.
    if (code > 0xFFFF) bytes.push_back('?');
  }
  return bytes;
}

std::wstring from_ansi(std::string_view bytes) {
  std::wstring text;
  text.reserve(bytes.size());
  for (const char c : bytes) {
    const auto byte = static_cast<uint8_t>(c);
    text.push_back(static_cast<wchar_t>((byte & 0xE0) == 0x80 ? kWestern80[byte & 0x1F] : byte));
  }
  return text;
}

}  // namespace kestrelon
