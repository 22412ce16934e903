#include "services/ajax/answer_text.h"

#include <gtest/gtest.h>

namespace kestrelon {
namespace {

using Bytes = std::vector<uint8_t>;

Bytes bytes_of(std::string_view text) {
  return {text.begin(), text.end()};
}

// "a\u00E7\u00E3o" in UTF-8, in a stored block, with every optional part of the head.
Bytes packed() {
  const std::string_view text = "a\xC3\xA7\xC3\xA3o";
  const auto size = static_cast<uint8_t>(text.size());
  Bytes out = {0x1F, 0x8B, 8, 2 | 4 | 8 | 16, 0, 0, 0, 0, 0, 0};
  for (const int byte : {3, 0, 1, 2, 3}) out.push_back(static_cast<uint8_t>(byte));
  for (const char c : std::string_view("nome\0nota\0cc", 12))
    out.push_back(static_cast<uint8_t>(c));
  for (const int byte : {1, int{size}, 0, 255 - size, 255})
    out.push_back(static_cast<uint8_t>(byte));
  out.insert(out.end(), text.begin(), text.end());
  out.insert(out.end(), 8, 0);
  return out;
}

TEST(Gunzip, PassesTheOptionalPartsOfTheHead) {
  const auto content = gunzip(packed(), 100);
  ASSERT_TRUE(content);
  EXPECT_EQ(*content, bytes_of("a\xC3\xA7\xC3\xA3o"));
  EXPECT_EQ(answer_text(packed(), L""), L"a\u00E7\u00E3o");
}

TEST(Gunzip, AFileCutAnywhereOrTooLargeGivesNothing) {
  const Bytes whole = packed();
  for (size_t length = 0; length + 8 < whole.size(); ++length)
    EXPECT_FALSE(gunzip(std::span(whole).first(length), 100)) << length;
  EXPECT_FALSE(gunzip(whole, 3)) << "beyond the limit";
  Bytes hostile = whole;
  hostile[10] = hostile[11] = 0xFF;  // an extra part longer than the file
  EXPECT_FALSE(gunzip(hostile, 100));
  EXPECT_FALSE(answer_text(hostile, L"text/html"));
  EXPECT_FALSE(gunzip(bytes_of("texto"), 100));
}

TEST(AnswerText, TheSetIsTheMarksThenTheHeadersThenTheBytes) {
  const Bytes western = bytes_of("pre\xE7o"), utf8 = bytes_of("pre\xC3\xA7o");
  EXPECT_EQ(answer_text(western, L"text/html; charset=ISO-8859-1"), L"pre\u00E7o");
  EXPECT_EQ(answer_text(western, L"text/html; Charset=\"Windows-1252\"; x=y"), L"pre\u00E7o");
  EXPECT_EQ(answer_text(western, L"text/html"), L"pre\u00E7o") << "no UTF-8";
  EXPECT_EQ(answer_text(utf8, L"text/html"), L"pre\u00E7o");
  EXPECT_EQ(answer_text(utf8, L"text/html; charset=utf-8"), L"pre\u00E7o");
  EXPECT_EQ(answer_text(utf8, L"text/html; charset=iso-8859-1"), L"pre\u00C3\u00A7o");
  EXPECT_EQ(answer_text(bytes_of("\xEF\xBB\xBF"
                                 "a\xC3\xA7"),
                        L"text/html; charset=iso-8859-1"),
            L"a\u00E7");
  EXPECT_EQ(answer_text(bytes_of(std::string("\xFF\xFE"
                                             "a\0\xE7\0",
                                             6)),
                        L""),
            L"a\u00E7");
  EXPECT_FALSE(answer_text(western, L"text/html; charset=shift_jis"));
  EXPECT_EQ(answer_text({}, L""), L"");
}

}  // namespace
}  // namespace kestrelon
