#include <gtest/gtest.h>
#include <zlib.h>

#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "services/digest_crc32.h"
#include "services/digest_md5.h"
#include "services/digest_text.h"
#include "services/kn_files.h"
#include "tests/services/kn_fake_platform.h"

namespace kestrelon {
namespace {

std::vector<uint8_t> random_bytes(size_t size) {
  std::mt19937 generator(static_cast<unsigned>(size));
  std::vector<uint8_t> bytes(size);
  for (uint8_t& byte : bytes) byte = static_cast<uint8_t>(generator());
  return bytes;
}

// The test suite of RFC 1321, appendix A.5.
TEST(Md5Digest, GivesThePublishedDigests) {
  const wchar_t* vectors[][2] = {
      {L"", L"d41d8cd98f00b204e9800998ecf8427e"},
      {L"a", L"0cc175b9c0f1b6a831c399e269772661"},
      {L"abc", L"900150983cd24fb0d6963f7d28e17f72"},
      {L"message digest", L"f96b697d7cb7938d525a2f31aaf161d0"},
      {L"abcdefghijklmnopqrstuvwxyz", L"c3fcd3d76192e4007dfb496cca67e13b"},
      {L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789",
       L"d174ab98d277d9f5a5611c2c9f419d9f"},
      {L"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
       L"57edf4a22be3c955ac49da2e2107b67a"}};
  for (const auto& [text, digest] : vectors) EXPECT_EQ(md5_text(text), digest);
}

TEST(Md5Digest, IsTheSameHoweverTheMessageIsCut) {
  const auto message = random_bytes(300);
  for (size_t length = 0; length <= message.size(); ++length) {
    const std::span<const uint8_t> whole(message.data(), length);
    Md5 at_once;
    at_once.update(whole);
    const auto digest = at_once.finish();
    for (const size_t piece : {1u, 7u, 63u, 64u, 65u}) {
      Md5 in_pieces;
      for (size_t at = 0; at < length; at += piece)
        in_pieces.update(whole.subspan(at, std::min(piece, length - at)));
      ASSERT_EQ(in_pieces.finish(), digest) << length << " by " << piece;
    }
  }
}

TEST(Digests, TakeAnsiBytes) {
  // The digest of the one byte E9.
  EXPECT_EQ(md5_text(L"é"), L"3406877694691ddd1dfb0aca54681407");
  EXPECT_EQ(crc32_text(L"漢"), crc32_text(L"?"));
  EXPECT_NE(crc32_text(L"€"), crc32_text(L"?"));
}

TEST(Crc32Text, HasNoLeadingZeros) {
  EXPECT_EQ(crc32_text(L"123456789"), L"CBF43926");  // the check value of the catalogue
  EXPECT_EQ(crc32_text(L""), L"0");
  // Texts found by search whose value begins with zeros.
  bool short_one = false;
  for (int i = 0; i < 3000; ++i) {
    const std::string text = std::to_string(i);
    const auto value =
        ::crc32(0, reinterpret_cast<const Bytef*>(text.data()), static_cast<uInt>(text.size()));
    char expected[16];
    std::snprintf(expected, sizeof expected, "%lX", value);
    short_one = short_one || std::string(expected).size() < 7;
    ASSERT_EQ(crc32_text(std::wstring(text.begin(), text.end())),
              std::wstring(expected, expected + std::strlen(expected)));
  }
  EXPECT_TRUE(short_one);
}

TEST(Crc32, AgreesWithZlibAtEveryLengthAndAlignment) {
  const auto bytes = random_bytes(700);
  for (size_t from = 0; from < 17; ++from)
    for (size_t length = 0; from + length <= bytes.size(); length += length < 160 ? 1 : 13) {
      const std::span<const uint8_t> piece(bytes.data() + from, length);
      const auto state = static_cast<uint32_t>(0x9E3779B9u * (length + 1));
      const auto expected =
          static_cast<uint32_t>(::crc32(~state, piece.data(), static_cast<uInt>(length)));
      ASSERT_EQ(~crc32_detail::by_tables(piece, state), expected) << from << ", " << length;
      if (crc32_detail::has_multiplication()) {
        ASSERT_EQ(~crc32_detail::by_multiplication(piece, state), expected)
            << from << ", " << length;
      }
    }
}

TEST(Crc32OfFile, AgreesWithZlib) {
  FakePlatform machine;
  for (const size_t size : {0u, 1u, 65535u, 65536u, 65537u, 200000u}) {
    const auto bytes = random_bytes(size);
    machine.files[L"f"] = content_of(std::string(bytes.begin(), bytes.end()));
    char expected[16];
    std::snprintf(expected, sizeof expected, "%08lX",
                  ::crc32(0, bytes.data(), static_cast<uInt>(size)));
    EXPECT_EQ(crc32_of_file(machine, L"f"), std::wstring(expected, expected + 8)) << size;
  }
}

TEST(Crc32OfFile, StreamsALargeFileInBlocks) {
  constexpr uint64_t kSize = uint64_t{100} << 20;
  const auto block = random_bytes(4096);
  const auto fill = [&block](uint64_t at, std::span<uint8_t> out) {
    for (size_t done = 0; done < out.size();) {
      const size_t from = static_cast<size_t>((at + done) % block.size());
      const size_t length = std::min(block.size() - from, out.size() - done);
      std::memcpy(out.data() + done, block.data() + from, length);
      out[done] ^= static_cast<uint8_t>((at + done) >> 12);
      done += length;
    }
  };
  uLong expected = 0;
  std::vector<uint8_t> piece(1 << 20);
  for (uint64_t at = 0; at < kSize; at += piece.size()) {
    fill(at, piece);
    expected = ::crc32(expected, piece.data(), static_cast<uInt>(piece.size()));
  }
  FakePlatform machine;
  machine.files[L"f"] = {kSize, fill};
  char digits[16];
  std::snprintf(digits, sizeof digits, "%08lX", expected);
  EXPECT_EQ(crc32_of_file(machine, L"f"), std::wstring(digits, digits + 8));
  EXPECT_EQ(machine.largest_read, kFileBlock);
}

TEST(Crc32OfFile, IsEmptyWhenItCannotBeTold) {
  FakePlatform machine;
  machine.files[L"f"] = content_of("123456789");
  EXPECT_EQ(crc32_of_file(machine, L" f "), L"CBF43926");
  EXPECT_EQ(crc32_of_file(machine, L"missing"), L"");
  EXPECT_EQ(crc32_of_file(machine, L""), L"");
  machine.files[L"f"].fails_at = 5;
  EXPECT_EQ(crc32_of_file(machine, L"f"), L"");
  machine.files[L"f"].fails_at = 100;
  machine.zlib = false;
  EXPECT_EQ(crc32_of_file(machine, L"f"), L"");
  EXPECT_EQ(machine.open_files, 0u);
}

}  // namespace
}  // namespace kestrelon
