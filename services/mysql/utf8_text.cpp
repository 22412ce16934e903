#include "services/mysql/utf8_text.h"

#include <cstdint>

#include "base/text.h"

namespace kestrelon {
namespace {

constexpr uint32_t kReplacement = 0xFFFD;

void append_character(std::wstring& text, uint32_t c) {
  if (sizeof(wchar_t) == 2 && c > 0xFFFF) {
    c -= 0x10000;
    text.push_back(static_cast<wchar_t>(0xD800 + (c >> 10)));
    c = 0xDC00 + (c & 0x3FF);
  }
  text.push_back(static_cast<wchar_t>(c));
}

// The character whose lead byte is `lead`; moves `at` over the bytes behind the lead.
uint32_t read_tail(std::string_view bytes, size_t& at, uint32_t lead) {
  const size_t tail = lead >= 0xF0 && lead < 0xF8 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
  if (tail == 0 || lead >= 0xF8 || bytes.size() - at < tail) return kReplacement;
  uint32_t c = lead & (0x3Fu >> tail);
  for (size_t i = 0; i < tail; ++i) {
    const auto byte = static_cast<unsigned char>(bytes[at + i]);
    if ((byte & 0xC0) != 0x80) return kReplacement;
    c = c << 6 | (byte & 0x3F);
  }
  at += tail;
  return c <= 0x10FFFF ? c : kReplacement;
}

}  // namespace

std::string to_utf8(std::wstring_view text) {
  std::string utf8;
  utf8.reserve(text.size() + text.size() / 2);
  for (size_t i = 0; i < text.size(); ++i) {
    uint32_t c = code_unit(text[i]);
    if (c < 0x80) {
      utf8.push_back(static_cast<char>(c));
      continue;
    }
    const auto low = i + 1 < text.size() ? static_cast<uint32_t>(text[i + 1]) : 0;
    if (c >= 0xD800 && c <= 0xDBFF && low >= 0xDC00 && low <= 0xDFFF) {
      c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
      ++i;
    }
    const int tail = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
    const uint32_t lead = tail == 1 ? 0xC0 : tail == 2 ? 0xE0 : 0xF0;
    utf8.push_back(static_cast<char>(lead | (c >> (6 * tail))));
    for (int shift = 6 * (tail - 1); shift >= 0; shift -= 6)
      utf8.push_back(static_cast<char>(0x80 | ((c >> shift) & 0x3F)));
  }
  return utf8;
}

void from_utf8(std::string_view bytes, std::wstring& text) {
  text.clear();
  text.reserve(bytes.size());
  for (size_t at = 0; at < bytes.size();) {
    const auto lead = static_cast<unsigned char>(bytes[at++]);
    if (lead < 0x80)
      text.push_back(static_cast<wchar_t>(lead));
    else
      append_character(text, read_tail(bytes, at, lead));
  }
}

}  // namespace kestrelon
