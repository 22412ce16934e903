#include "host/base64.h"

namespace kestrelon::host {
namespace {

constexpr std::wstring_view kDigits =
    L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

}  // namespace

std::wstring to_base64(const uint8_t* bytes, size_t size) {
  std::wstring out;
  out.reserve((size + 2) / 3 * 4);
  for (size_t i = 0; i < size; i += 3) {
    const size_t left = size - i;
    const uint32_t group = static_cast<uint32_t>(bytes[i]) << 16 |
                           (left > 1 ? static_cast<uint32_t>(bytes[i + 1]) << 8 : 0u) |
                           (left > 2 ? bytes[i + 2] : 0u);
    out += kDigits[group >> 18];
    out += kDigits[group >> 12 & 63];
    out += left > 1 ? kDigits[group >> 6 & 63] : L'=';
    out += left > 2 ? kDigits[group & 63] : L'=';
  }
  return out;
}

std::optional<std::vector<uint8_t>> from_base64(std::wstring_view text) {
  if (text.size() % 4 != 0) return std::nullopt;
  size_t padding = 0;
  while (padding < 2 && padding < text.size() && text[text.size() - 1 - padding] == L'=') ++padding;
  std::vector<uint8_t> out;
  out.reserve(text.size() / 4 * 3);
  for (size_t i = 0; i < text.size(); i += 4) {
    uint32_t group = 0;
    for (size_t j = i; j < i + 4; ++j) {
      size_t digit = 0;
      if (j < text.size() - padding) {
        digit = kDigits.find(text[j]);
        if (digit == std::wstring_view::npos) return std::nullopt;
      }
      group = group << 6 | static_cast<uint32_t>(digit);
    }
    for (int shift = 16; shift >= 0; shift -= 8)
      out.push_back(static_cast<uint8_t>(group >> shift));
  }
  out.resize(out.size() - padding);
  return out;
}

}  // namespace kestrelon::host
