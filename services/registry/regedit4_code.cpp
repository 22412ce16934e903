#include "services/registry/regedit4_code.h"

#include "base/text.h"
#include "services/mysql/utf8_text.h"

namespace kestrelon {
namespace {

void append_unit(std::string& bytes, uint32_t unit) {
  bytes.push_back(static_cast<char>(unit));
  bytes.push_back(static_cast<char>(unit >> 8));
}

// A character beyond 16 bits is one of ours where wchar_t has 32.
void append_character(std::string& bytes, uint32_t c) {
  if (c <= 0xFFFF) return append_unit(bytes, c);
  append_unit(bytes, 0xD800 + ((c - 0x10000) >> 10));
  append_unit(bytes, 0xDC00 + ((c - 0x10000) & 0x3FF));
}

}  // namespace

std::optional<std::string> Utf16FileCode::encode(std::string_view text) const {
  std::wstring units;
  from_utf8(text, units);
  std::string bytes;
  bytes.reserve(units.size() * 2);
  for (const wchar_t c : units) append_character(bytes, code_unit(c));
  return bytes;
}

std::string Utf16FileCode::decode(std::string_view bytes) const {
  std::wstring units(bytes.size() / 2, L'\0');
  for (size_t i = 0; i < units.size(); ++i)
    units[i] = static_cast<wchar_t>(static_cast<unsigned char>(bytes[2 * i]) |
                                    static_cast<unsigned char>(bytes[2 * i + 1]) << 8);
  return to_utf8(units);
}

}  // namespace kestrelon
