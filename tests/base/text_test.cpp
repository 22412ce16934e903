#include "base/text.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kestrelon {
namespace {

TEST(Ansi, GivesEveryByteBackThroughItsCharacter) {
  std::string all;
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  const std::wstring text = from_ansi(all);
  EXPECT_EQ(to_ansi(text), all);
  EXPECT_EQ(text[0x80], L'€');
  EXPECT_EQ(text[0x9F], L'Ÿ');
  EXPECT_EQ(text[0xE7], L'ç');
  std::wstring sorted = text;
  std::sort(sorted.begin(), sorted.end());
  EXPECT_EQ(std::adjacent_find(sorted.begin(), sorted.end()), sorted.end());
}

TEST(Ansi, ReplacesWhatThePageLacksUnitByUnit) {
  EXPECT_EQ(to_ansi(L"aāΩ漢z"), "a???z");  // no best fit for the a with macron
  EXPECT_EQ(to_ansi(L"x\U0001F600y"), "x??y");
}

TEST(FoldCase, PairsLettersAndLeavesTheRest) {
  EXPECT_EQ(fold_case(L"AZ[@`ÀÞ×ß÷ŸĲŊŹŻŽЖЁΩ"), L"az[@`àþ×ß÷ÿĳŋźżžжёω");
  for (uint32_t c = 0; c < 0x10000; ++c) {
    const wchar_t folded = fold_case(static_cast<wchar_t>(c));
    EXPECT_EQ(fold_case(folded), folded) << c;
  }
  EXPECT_TRUE(equals_ignoring_case(L"AÇÃO", L"ação"));
  EXPECT_FALSE(equals_ignoring_case(L"AÇÃO", L"açã"));
  EXPECT_EQ(find_ignoring_case(L"xxÁbxÁB", L"áb", 3), 5u);
}

TEST(Split, KeepsEmptyPieces) {
  using Pieces = std::vector<std::wstring_view>;
  EXPECT_EQ(split(L"", L":"), (Pieces{L""}));
  EXPECT_EQ(split(L":a::b:", L":"), (Pieces{L"", L"a", L"", L"b", L""}));
  EXPECT_EQ(split(L"a--b-c", L"--"), (Pieces{L"a", L"b-c"}));
  EXPECT_EQ(split(L"abc", L""), (Pieces{L"abc"}));
}

TEST(TrimBlanks, TakesBlanksAndNothingElse) {
  EXPECT_EQ(trim_blanks(L"  a b  "), L"a b");
  EXPECT_EQ(trim_blanks(L"    "), L"");
  EXPECT_EQ(trim_blanks(L" \ta\r "), L"\ta\r");
}

TEST(HexDigit, KnowsTheNeighboursOfItsRanges) {
  for (const wchar_t c : std::wstring(L"/:@G`g\0é", 8)) EXPECT_EQ(hex_digit_value(c), -1);
  EXPECT_EQ(hex_digit_value(L'9'), 9);
  EXPECT_EQ(hex_digit_value(L'A'), 10);
  EXPECT_EQ(hex_digit_value(L'f'), 15);
  EXPECT_FALSE(is_digit(L'٣'));
}

}  // namespace
}  // namespace kestrelon
