#include "services/typing/text_file.h"

#include <algorithm>

#include "base/text.h"
#include "services/mysql/utf8_text.h"

namespace kestrelon {
namespace {

constexpr uint8_t kUtf8Mark[] = {0xEF, 0xBB, 0xBF};
constexpr uint8_t kUtf16LittleMark[] = {0xFF, 0xFE};
constexpr uint8_t kUtf16BigMark[] = {0xFE, 0xFF};

enum class Encoding { kAnsi, kUtf8, kUtf8Marked, kUtf16Little, kUtf16Big };

bool starts_with(std::span<const uint8_t> bytes, std::span<const uint8_t> mark) {
  return bytes.size() >= mark.size() && std::equal(mark.begin(), mark.end(), bytes.begin());
}

// Bytes behind the lead of a well-formed sequence, and the bounds of the first of them, which keep
// out overlong forms, surrogates and what lies beyond the last plane.
struct Tail {
  size_t count = 0;
  uint8_t lowest = 0x80, highest = 0xBF;
};

bool tail_of(uint8_t lead, Tail& tail) {
  if (lead >= 0xC2 && lead <= 0xDF) tail.count = 1;
  if (lead >= 0xE0 && lead <= 0xEF) tail.count = 2;
  if (lead >= 0xF0 && lead <= 0xF4) tail.count = 3;
  if (lead == 0xE0) tail.lowest = 0xA0;
  if (lead == 0xED) tail.highest = 0x9F;
  if (lead == 0xF0) tail.lowest = 0x90;
  if (lead == 0xF4) tail.highest = 0x8F;
  return tail.count > 0;
}

bool is_utf8(std::span<const uint8_t> bytes) {
  for (size_t at = 0; at < bytes.size();) {
    const uint8_t lead = bytes[at++];
    if (lead < 0x80) continue;
    Tail tail;
    if (!tail_of(lead, tail) || bytes.size() - at < tail.count) return false;
    if (bytes[at] < tail.lowest || bytes[at] > tail.highest) return false;
    for (size_t i = 1; i < tail.count; ++i)
      if ((bytes[at + i] & 0xC0) != 0x80) return false;
    at += tail.count;
  }
  return true;
}

Encoding encoding_of(std::span<const uint8_t> bytes) {
  if (starts_with(bytes, kUtf8Mark)) return Encoding::kUtf8Marked;
  if (starts_with(bytes, kUtf16LittleMark)) return Encoding::kUtf16Little;
  if (starts_with(bytes, kUtf16BigMark)) return Encoding::kUtf16Big;
  return is_utf8(bytes) ? Encoding::kUtf8 : Encoding::kAnsi;
}

std::string_view as_chars(std::span<const uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::wstring from_utf16(std::span<const uint8_t> bytes, bool big) {
  std::wstring text(bytes.size() / 2, L'\0');
  for (size_t i = 0; i < text.size(); ++i) {
    const unsigned first = bytes[2 * i], second = bytes[2 * i + 1];
    text[i] = static_cast<wchar_t>(big ? first << 8 | second : second << 8 | first);
  }
  return text;
}

std::vector<uint8_t> as_bytes(std::string_view chars) {
  return {chars.begin(), chars.end()};
}

// The bytes by the code page; nothing when a character is lost.
bool ansi_of(std::wstring_view text, std::vector<uint8_t>& bytes) {
  const std::string ansi = to_ansi(text);
  if (from_ansi(ansi) != text) return false;
  bytes = as_bytes(ansi);
  return true;
}

bool is_ascii(std::span<const uint8_t> bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](uint8_t byte) { return byte < 0x80; });
}

// The text in one of the encodings that every text has; units stay as they are, halves of pairs
// included.
std::vector<uint8_t> unicode_of(std::wstring_view text, Encoding encoding) {
  if (encoding == Encoding::kUtf8 || encoding == Encoding::kUtf8Marked)
    return as_bytes(to_utf8(text));
  std::vector<uint8_t> bytes;
  bytes.reserve(text.size() * 2);
  for (const wchar_t c : text) {
    const auto low = static_cast<uint8_t>(code_unit(c)),
               high = static_cast<uint8_t>(code_unit(c) >> 8);
    bytes.push_back(encoding == Encoding::kUtf16Big ? high : low);
    bytes.push_back(encoding == Encoding::kUtf16Big ? low : high);
  }
  return bytes;
}

}  // namespace

std::wstring decode_text_file(std::span<const uint8_t> bytes) {
  std::wstring text;
  switch (encoding_of(bytes)) {
    case Encoding::kUtf8Marked:
      from_utf8(as_chars(bytes.subspan(3)), text);
      break;
    case Encoding::kUtf8:
      from_utf8(as_chars(bytes), text);
      break;
    case Encoding::kUtf16Little:
      text = from_utf16(bytes.subspan(2), false);
      break;
    case Encoding::kUtf16Big:
      text = from_utf16(bytes.subspan(2), true);
      break;
    case Encoding::kAnsi:
      text = from_ansi(as_chars(bytes));
      break;
  }
  std::erase(text, L'\0');
  return text;
}

std::vector<uint8_t> encode_text_file(std::wstring_view text) {
  std::vector<uint8_t> bytes;
  // Bytes of the code page that happen to be well-formed UTF-8, or to begin with a mark, would read
  // back as another text.
  if (ansi_of(text, bytes) && (is_ascii(bytes) || encoding_of(bytes) == Encoding::kAnsi))
    return bytes;
  bytes.assign(std::begin(kUtf8Mark), std::end(kUtf8Mark));
  const std::string utf8 = to_utf8(text);
  bytes.insert(bytes.end(), utf8.begin(), utf8.end());
  return bytes;
}

std::vector<uint8_t> append_to_text_file(std::span<const uint8_t> old, std::wstring_view text) {
  std::vector<uint8_t> tail;
  const Encoding encoding = encoding_of(old);
  const bool whole_units = encoding != Encoding::kUtf16Little && encoding != Encoding::kUtf16Big;
  if (is_ascii(old) || encoding == Encoding::kAnsi || (!whole_units && old.size() % 2 != 0))
    return encode_text_file(decode_text_file(old) + std::wstring(text));
  std::vector<uint8_t> bytes(old.begin(), old.end());
  tail = unicode_of(text, encoding);
  bytes.insert(bytes.end(), tail.begin(), tail.end());
  return bytes;
}

}  // namespace kestrelon
