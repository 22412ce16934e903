#include "services/skipjack.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "services/digest_text.h"

namespace kestrelon {
namespace {

// The cipher a second time, in the terms that its users know it by: every value is a text of
// hexadecimal digits, and a missing word is a text without any.
namespace in_text {

const char* const kDigits = "0123456789abcdef";
const std::string kF =
    "a3d70983f848f6f4b321157899b1aff9e72d4d8ace4cca2e5295d91e4e3844280adf02a017f1606812b77ac3e9fa3d"
    "53"
    "96846bbaf2639a197caee5f5f7166aa239b67b0fc193811beeb41aead0912fb855b9da853f41bfe05a58805f660bd8"
    "90"
    "35d5c0a733066569450094566d989b7697fcb2c2b0fedb20e1ebd6e4dd474a1d42ed9e6e493ccd4327d207d4dec767"
    "18"
    "89cb301f8dc68faac874dcc95d5c31a47088612c9f0d2b8750825464267d0340344b1c73d1c4fd3bccfb7fabe63e5b"
    "a5"
    "ad04239c145122f02979717eff8c0ee20cefbc72756f37a1ecd38e628b8610e8087711be924f24c532369dcff3a6bb"
    "ac"
    "5e6ca9135725b5e3bda83a0105592a46";

// Digit by digit from the right; the left part of the longer text stays as it is.
std::string exclusive_or(std::string a, std::string b) {
  if (a.size() < b.size()) std::swap(a, b);
  const size_t extra = a.size() - b.size();
  for (size_t i = 0; i < b.size(); ++i) {
    const auto x = std::string(kDigits).find(a[extra + i]);
    const auto y = std::string(kDigits).find(b[i]);
    a[extra + i] = kDigits[x ^ y];
  }
  return a;
}

std::string f(const std::string& pair) {
  return kF.substr(2 * std::stoul(pair, nullptr, 16), 2);
}

std::string key_pair(const std::string& key, size_t entry) {
  return key.substr(entry % 10 * 2, 2);
}

std::string g(const std::string& word, const std::string& key, size_t round) {
  std::string left = word.substr(0, 2), right = word.substr(2, 2);
  left = exclusive_or(left, f(exclusive_or(right, key_pair(key, 4 * round))));
  right = exclusive_or(right, f(exclusive_or(left, key_pair(key, 4 * round + 1))));
  left = exclusive_or(left, f(exclusive_or(right, key_pair(key, 4 * round + 2))));
  right = exclusive_or(right, f(exclusive_or(left, key_pair(key, 4 * round + 3))));
  return left + right;
}

std::string counter(size_t round) {
  return {kDigits[(round + 1) / 16], kDigits[(round + 1) % 16]};
}

std::string encrypt(std::string w1, std::string w2, std::string w3, std::string w4,
                    const std::string& key) {
  for (size_t round = 0; round < 32; ++round) {
    const std::string made = g(w1, key, round);
    if (round < 8 || (round >= 16 && round < 24)) {
      const std::string first = exclusive_or(exclusive_or(made, w4), counter(round));
      w4 = w3, w3 = w2, w2 = made, w1 = first;
    } else {
      const std::string third = exclusive_or(exclusive_or(w1, w2), counter(round));
      w1 = w4, w4 = w3, w3 = third, w2 = made;
    }
  }
  return w1 + w2 + w3 + w4;
}

}  // namespace in_text

std::array<uint8_t, 10> key_bytes(const std::string& digits) {
  std::array<uint8_t, 10> bytes{};
  for (size_t i = 0; i < bytes.size(); ++i)
    bytes[i] = static_cast<uint8_t>(std::stoul(digits.substr(2 * i, 2), nullptr, 16));
  return bytes;
}

std::string hex(const SkipjackBlock& block) {
  std::string text;
  for (const uint16_t word : block)
    for (int shift = 12; shift >= 0; shift -= 4) text += in_text::kDigits[word >> shift & 15];
  return text;
}

std::string random_digits(std::mt19937& random, size_t count) {
  std::string digits;
  for (size_t i = 0; i < count; ++i) digits += in_text::kDigits[random() % 16];
  return digits;
}

TEST(Skipjack, GivesThePublishedVector) {
  std::vector<SkipjackBlock> blocks{{0x3322, 0x1100, 0xddcc, 0xbbaa}};
  const Skipjack cipher(key_bytes("00998877665544332211"));
  cipher.encrypt(blocks);
  EXPECT_EQ(hex(blocks[0]), "2587cae27a12d300");
  cipher.decrypt(blocks);
  EXPECT_EQ(hex(blocks[0]), "33221100ddccbbaa");
}

TEST(Skipjack, AgreesWithTheArithmeticOnTextForManyBlocksAndKeys) {
  std::mt19937 random(185);
  for (int key = 0; key < 200; ++key) {
    const std::string key_text = random_digits(random, 20);
    const Skipjack cipher(key_bytes(key_text));
    std::vector<SkipjackBlock> blocks(static_cast<size_t>(key % 13));  // every rest of a group
    std::vector<std::string> expected;
    for (auto& block : blocks) {
      for (auto& word : block) word = static_cast<uint16_t>(random());
      const std::string plain = hex(block);
      expected.push_back(in_text::encrypt(plain.substr(0, 4), plain.substr(4, 4),
                                          plain.substr(8, 4), plain.substr(12), key_text));
    }
    const auto plain_blocks = blocks;
    cipher.encrypt(blocks);
    for (size_t i = 0; i < blocks.size(); ++i) ASSERT_EQ(hex(blocks[i]), expected[i]);
    cipher.decrypt(blocks);
    ASSERT_EQ(blocks, plain_blocks);
  }
}

TEST(EncryptText, TreatsTheEmptyFourthWordAsNoDigits) {
  std::mt19937 random(6);
  for (int i = 0; i < 500; ++i) {
    const std::string key = random_digits(random, 20);
    const std::string plain = random_digits(random, 12);
    std::wstring text;
    for (size_t k = 0; k < 12; k += 2) {
      // Letters and signs whose code is the pair, kept to the part that is ASCII.
      const unsigned long code = std::stoul(plain.substr(k, 2), nullptr, 16) & 0x7F;
      text += static_cast<wchar_t>(code);
    }
    std::string masked;
    for (const wchar_t c : text) masked += {in_text::kDigits[c >> 4], in_text::kDigits[c & 15]};
    std::string expected =
        in_text::encrypt(masked.substr(0, 4), masked.substr(4, 4), masked.substr(8, 4), "", key);
    for (char& c : expected) c = static_cast<char>(std::toupper(c));
    ASSERT_EQ(encrypt_text(text, std::wstring(key.begin(), key.end())),
              std::wstring(expected.begin(), expected.end()));
  }
}

constexpr std::wstring_view kKey = L"00998877665544332211";

TEST(EncryptText, GivesSixteenDigitsForSixCharacters) {
  EXPECT_EQ(encrypt_text(L"", kKey), L"");
  for (size_t length = 1; length <= 40; ++length) {
    const std::wstring text(length, L'ç');
    const std::wstring digits = encrypt_text(text, kKey);
    EXPECT_EQ(digits.size(), (length + 5) / 6 * 16);
    EXPECT_EQ(digits.find_first_not_of(L"0123456789ABCDEF"), std::wstring::npos);
    EXPECT_EQ(decrypt_text(digits, kKey), text);
  }
}

TEST(DecryptText, LosesOuterBlanksAndWhatIsLessThanABlock) {
  const std::wstring digits = encrypt_text(L"  São Paulo, € 5  ", kKey);
  EXPECT_EQ(decrypt_text(digits, kKey), L"São Paulo, € 5");
  std::wstring lower = digits;
  for (wchar_t& c : lower) c = c >= L'A' ? static_cast<wchar_t>(c + 32) : c;
  EXPECT_EQ(decrypt_text(lower, kKey), L"São Paulo, € 5");
  EXPECT_EQ(decrypt_text(digits + L"0123456789ABCDE", kKey), L"São Paulo, € 5");
  EXPECT_EQ(decrypt_text(digits.substr(0, 47), kKey), L"São Paulo,");
  EXPECT_EQ(decrypt_text(L"", kKey), L"");
  EXPECT_EQ(decrypt_text(L"0123456789ABCDE", kKey), L"");
}

TEST(DecryptText, KeepsTheBytesOfAFourthWordThatIsNotZero) {
  std::vector<SkipjackBlock> blocks{{0x4142, 0x4344, 0x4546, 0x4748}};
  Skipjack(key_bytes("00998877665544332211")).encrypt(blocks);
  const std::string digits = hex(blocks[0]);
  EXPECT_EQ(decrypt_text(std::wstring(digits.begin(), digits.end()), kKey), L"ABCDEFGH");
}

TEST(CipherKey, IsTakenAsItComes) {
  const std::wstring text = L"segredo";
  EXPECT_EQ(encrypt_text(text, L"ABCDEF01234567890000ignored"),
            encrypt_text(text, L"abcdef01234567890000"));
  EXPECT_EQ(encrypt_text(text, L"1"), encrypt_text(text, L"01"));
  EXPECT_EQ(encrypt_text(text, L""), encrypt_text(text, L"00000000000000000000"));
  EXPECT_EQ(encrypt_text(text, L"xAzz"), encrypt_text(text, L"0A"));
  const std::wstring wrong = decrypt_text(encrypt_text(text, kKey), L"00998877665544332212");
  EXPECT_NE(wrong, text);
}

}  // namespace
}  // namespace kestrelon
