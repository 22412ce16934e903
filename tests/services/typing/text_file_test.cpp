#include "services/typing/text_file.h"

#include <gtest/gtest.h>

#include "services/typing/text_counts.h"

namespace kestrelon {
namespace {

using Bytes = std::vector<uint8_t>;

TEST(DecodeTextFile, KnowsTheEncodings) {
  EXPECT_EQ(decode_text_file(Bytes{}), L"");
  EXPECT_EQ(decode_text_file(Bytes{'a', 0xE7, 0xE3, 'o'}), L"ação");
  EXPECT_EQ(decode_text_file(Bytes{'a', 0xC3, 0xA7, 'o'}), L"aço");
  EXPECT_EQ(decode_text_file(Bytes{0xEF, 0xBB, 0xBF, 0xC3, 0xA7}), L"ç");
  EXPECT_EQ(decode_text_file(Bytes{0xEF, 0xBB, 0xBF}), L"");
  EXPECT_EQ(decode_text_file(Bytes{0xFF, 0xFE, 0xE7, 0x00, 'x', 0x00}), L"çx");
  EXPECT_EQ(decode_text_file(Bytes{0xFE, 0xFF, 0x00, 0xE7, 0x00}), L"ç");  // half a unit is dropped
  EXPECT_EQ(decode_text_file(Bytes{'a', 0, 'b'}), L"ab");
}

TEST(DecodeTextFile, TakesBrokenUtf8AsTheCodePage) {
  EXPECT_EQ(decode_text_file(Bytes{0xC3}), L"Ã");                          // cut short
  EXPECT_EQ(decode_text_file(Bytes{0xC0, 0x80}), L"À\u20AC");              // overlong
  EXPECT_EQ(decode_text_file(Bytes{0xE0, 0x9F, 0xBF}), L"à\u0178¿");       // overlong
  EXPECT_EQ(decode_text_file(Bytes{0xED, 0xA0, 0x80}), L"í\u00A0\u20AC");  // a surrogate
  EXPECT_EQ(decode_text_file(Bytes{0xF5, 0x80, 0x80, 0x80}).size(), 4u);   // beyond the planes
  EXPECT_EQ(decode_text_file(Bytes{0xE2, 0x82}), L"â\u201A");
}

TEST(EncodeTextFile, ReadsBackAsTheSameText) {
  // A pair of surrogates is one character where wchar_t has 32 bits.
  const std::wstring pair = sizeof(wchar_t) == 2 ? L"\xD83D\xDE00" : L"";
  const std::wstring texts[] = {L"",          L"plain",  L"ação \u20AC",        L"\u00C3\u00A7",
                                L"日本",      L"Ã©tude", L"\u00EF\u00BB\u00BF", L"\u00FF\u00FEab",
                                L"a\tb\r\nc", pair};
  for (const std::wstring& text : texts) EXPECT_EQ(decode_text_file(encode_text_file(text)), text);
}

TEST(EncodeTextFile, PrefersTheCodePageAndMarksUtf8) {
  EXPECT_EQ(encode_text_file(L"ação"), (Bytes{'a', 0xE7, 0xE3, 'o'}));
  EXPECT_EQ(encode_text_file(L"日"), (Bytes{0xEF, 0xBB, 0xBF, 0xE6, 0x97, 0xA5}));
  // These two bytes of the code page are well-formed UTF-8.
  EXPECT_EQ(encode_text_file(L"Ã©"), (Bytes{0xEF, 0xBB, 0xBF, 0xC3, 0x83, 0xC2, 0xA9}));
}

TEST(AppendToTextFile, KeepsTheEncodingThatTheFileHas) {
  const auto appended = [](Bytes old, std::wstring_view text) {
    return append_to_text_file(old, text);
  };
  EXPECT_EQ(appended({'a'}, L"ç"), (Bytes{'a', 0xE7}));
  EXPECT_EQ(appended({0xE7}, L"日"), (Bytes{0xEF, 0xBB, 0xBF, 0xC3, 0xA7, 0xE6, 0x97, 0xA5}));
  EXPECT_EQ(appended({'a', 0xC3, 0xA7}, L"é"), (Bytes{'a', 0xC3, 0xA7, 0xC3, 0xA9}));
  EXPECT_EQ(appended({0xEF, 0xBB, 0xBF}, L"é"), (Bytes{0xEF, 0xBB, 0xBF, 0xC3, 0xA9}));
  EXPECT_EQ(appended({0xFF, 0xFE, 'a', 0}, L"é"), (Bytes{0xFF, 0xFE, 'a', 0, 0xE9, 0}));
  EXPECT_EQ(appended({0xFE, 0xFF, 0, 'a'}, L"é"), (Bytes{0xFE, 0xFF, 0, 'a', 0, 0xE9}));
  EXPECT_EQ(appended({}, L"x"), (Bytes{'x'}));
}

TEST(TextCounts, CountLinesAndFields) {
  EXPECT_EQ(count_lines(L""), 0);
  EXPECT_EQ(count_lines(L"a"), 1);
  EXPECT_EQ(count_lines(L"a\r\nb"), 2);
  EXPECT_EQ(count_lines(L"a\nb\rc\r\n"), 4);
  EXPECT_EQ(tab_field(L"a\tb\t", 0), L"a");
  EXPECT_EQ(tab_field(L"a\tb\t", 1), L"b");
  EXPECT_EQ(tab_field(L"a\tb\t", 2), L"");
  EXPECT_EQ(tab_field(L"a\tb\t", 3), L"");
  EXPECT_EQ(tab_field(L"a", -1), L"");
  EXPECT_EQ(tab_field(L"", 0), L"");
}

}  // namespace
}  // namespace kestrelon
