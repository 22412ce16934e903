#include "services/registry/binary_text.h"

#include "base/text.h"

namespace kestrelon {

std::string bytes_to_hex_text(std::string_view bytes) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  text.reserve(bytes.size() * 3);
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (!text.empty()) text.push_back(' ');
    text.push_back(kDigits[byte >> 4]);
    text.push_back(kDigits[byte & 15]);
  }
  return text;
}

std::optional<std::string> hex_text_to_bytes(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size() / 3 + 1);
  for (size_t at = 0; at < text.size();) {
    if (text[at] == ' ' || text[at] == ',') {
      ++at;
      continue;
    }
    if (at + 1 == text.size()) return std::nullopt;
    const int high = hex_digit_value(static_cast<unsigned char>(text[at]));
    const int low = hex_digit_value(static_cast<unsigned char>(text[at + 1]));
    if (high < 0 || low < 0) return std::nullopt;
    bytes.push_back(static_cast<char>(high << 4 | low));
    at += 2;
  }
  return bytes;
}

}  // namespace kestrelon
