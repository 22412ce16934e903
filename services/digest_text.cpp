#include "services/digest_text.h"

#include <algorithm>
#include <vector>

#include "base/text.h"
#include "services/digest_crc32.h"
#include "services/digest_md5.h"
#include "services/kn_files.h"
#include "services/skipjack.h"

namespace kestrelon {
namespace {

constexpr std::wstring_view kUpper = L"0123456789ABCDEF";
constexpr std::wstring_view kLower = L"0123456789abcdef";
constexpr size_t kBlockCharacters = 6;
constexpr size_t kBlockDigits = 16;

std::span<const uint8_t> bytes_of(const std::string& ansi) {
  return {reinterpret_cast<const uint8_t*>(ansi.data()), ansi.size()};
}

// Writes `digits` digits of `value` to `out`.
void put_hex(wchar_t* out, uint32_t value, size_t digits, std::wstring_view alphabet) {
  for (size_t i = digits; i-- > 0; value >>= 4) out[i] = alphabet[value & 15];
}

std::wstring crc_digits(uint32_t crc) {
  std::wstring text(8, L'0');
  put_hex(text.data(), crc, text.size(), kUpper);
  return text;
}

uint32_t digit_or_zero(wchar_t c) {
  const int value = hex_digit_value(c);
  return value < 0 ? 0 : static_cast<uint32_t>(value);
}

// Pairs of digits; one digit alone at the end is a pair without its left digit.
Skipjack cipher_of(std::wstring_view key) {
  std::array<uint8_t, Skipjack::kKeyBytes> bytes{};
  for (size_t i = 0; i < bytes.size() && 2 * i < key.size(); ++i) {
    uint32_t pair = 0;
    for (const wchar_t c : key.substr(2 * i, 2)) pair = pair << 4 | digit_or_zero(c);
    bytes[i] = static_cast<uint8_t>(pair);
  }
  return Skipjack(bytes);
}

uint16_t word_of(const std::string& bytes, size_t at) {
  return static_cast<uint16_t>(static_cast<uint8_t>(bytes[at]) << 8 |
                               static_cast<uint8_t>(bytes[at + 1]));
}

void append_word(std::string& bytes, uint16_t word) {
  bytes += static_cast<char>(word >> 8);
  bytes += static_cast<char>(word & 0xFF);
}

}  // namespace

std::wstring md5_text(std::wstring_view text) {
  Md5 md5;
  md5.update(bytes_of(to_ansi(text)));
  const auto digest = md5.finish();
  std::wstring digits(2 * digest.size(), L'0');
  for (size_t i = 0; i < digest.size(); ++i) put_hex(&digits[2 * i], digest[i], 2, kLower);
  return digits;
}

std::wstring crc32_text(std::wstring_view text) {
  const std::wstring digits = crc_digits(crc32(bytes_of(to_ansi(text))));
  return digits.substr(std::min(digits.find_first_not_of(L'0'), digits.size() - 1));
}

std::wstring crc32_of_file(KnPlatform& platform, std::wstring_view path) {
  if (!platform.has_zlib()) return {};
  const auto file = platform.open_file(std::wstring(trim_blanks(path)));
  if (!file) return {};
  std::vector<uint8_t> block(kFileBlock);
  uint32_t crc = 0;
  while (const auto length = file->read(block)) {
    if (*length == 0) return crc_digits(crc);
    crc = crc32(std::span(block).first(*length), crc);
  }
  return {};
}

std::wstring encrypt_text(std::wstring_view text, std::wstring_view key) {
  std::string bytes = to_ansi(text);
  bytes.resize((bytes.size() + kBlockCharacters - 1) / kBlockCharacters * kBlockCharacters, ' ');
  std::vector<SkipjackBlock> blocks(bytes.size() / kBlockCharacters);
  for (size_t i = 0; i < blocks.size(); ++i)
    for (size_t k = 0; k < 3; ++k) blocks[i][k] = word_of(bytes, i * kBlockCharacters + 2 * k);
  cipher_of(key).encrypt(blocks);
  std::wstring digits(blocks.size() * kBlockDigits, L'0');
  wchar_t* out = digits.data();
  for (const SkipjackBlock& block : blocks)
    for (const uint16_t word : block) {
      put_hex(out, word, 4, kUpper);
      out += 4;
    }
  return digits;
}

std::wstring decrypt_text(std::wstring_view digits, std::wstring_view key) {
  std::vector<SkipjackBlock> blocks(digits.size() / kBlockDigits);
  for (size_t i = 0; i < blocks.size(); ++i)
    for (size_t k = 0; k < kBlockDigits; ++k) {
      uint16_t& word = blocks[i][k / 4];
      word = static_cast<uint16_t>(word << 4 | digit_or_zero(digits[i * kBlockDigits + k]));
    }
  cipher_of(key).decrypt(blocks);
  std::string bytes;
  bytes.reserve(blocks.size() * 8);
  for (const SkipjackBlock& block : blocks) {
    for (size_t k = 0; k < 3; ++k) append_word(bytes, block[k]);
    if (block[3] != 0) append_word(bytes, block[3]);
  }
  const std::wstring text = from_ansi(bytes);
  return std::wstring(trim_blanks(text));
}

}  // namespace kestrelon
