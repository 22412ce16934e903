#include "lists/text_match.h"

#include <gtest/gtest.h>

namespace kestrelon {
namespace {

bool matches(const wchar_t* text, const wchar_t* sought, SearchMode mode, bool match_case = false) {
  return TextMatcher(sought, mode, match_case).matches(text);
}

TEST(TextMatch, EachModeComparesItsPartOfTheText) {
  EXPECT_TRUE(matches(L"Parafuso 10", L"FUSO", SearchMode::kLike));
  EXPECT_FALSE(matches(L"Parafuso 10", L"FUSO", SearchMode::kLike, true));
  EXPECT_TRUE(matches(L"Parafuso 10", L"para", SearchMode::kBeginsWith));
  EXPECT_TRUE(matches(L"Parafuso 10", L"O 10", SearchMode::kEndsWith));
  EXPECT_FALSE(matches(L"Parafuso 10", L"so 1", SearchMode::kEndsWith));
  EXPECT_TRUE(matches(L"abc", L"ABC", SearchMode::kEqual));
  EXPECT_FALSE(matches(L"abcd", L"ABC", SearchMode::kEqual));
  EXPECT_TRUE(matches(L"b", L"abc", SearchMode::kGreaterEqual));
  EXPECT_FALSE(matches(L"ab", L"abc", SearchMode::kGreaterEqual));
  EXPECT_TRUE(matches(L"abd", L"abc", SearchMode::kNavigate));
  EXPECT_FALSE(matches(L"b", L"abc", SearchMode::kNavigate));
}

TEST(TextMatch, NothingMatchesAnEmptyTextOrAnUnknownMode) {
  for (const int mode : {0, 1, 2, 3, 4, 5, 6, 7, -1}) {
    EXPECT_FALSE(matches(L"a", L"", static_cast<SearchMode>(mode))) << mode;
    EXPECT_FALSE(matches(L"", L"", static_cast<SearchMode>(mode))) << mode;
    EXPECT_FALSE(matches(L"", L"a", static_cast<SearchMode>(mode))) << mode;
  }
  EXPECT_FALSE(matches(L"a", L"a", static_cast<SearchMode>(3)));
}

TEST(TextMatch, AccentsAndCaseCountOnlyWhenAsked) {
  EXPECT_TRUE(matches(L"\u00c1gua mineral", L"agua", SearchMode::kBeginsWith));
  EXPECT_TRUE(matches(L"A\u0301gua mineral", L"\u00e1GUA", SearchMode::kBeginsWith));
  EXPECT_FALSE(matches(L"\u00c1gua mineral", L"agua", SearchMode::kLike, true));
  EXPECT_TRUE(matches(L"a\u00e7\u00e3o", L"ACAO", SearchMode::kNavigate));
  const auto found = TextMatcher(L"gua", SearchMode::kLike, false).find(L"\u00c1gua");
  ASSERT_TRUE(found);
  EXPECT_EQ(found->at, 1u);
}

}  // namespace
}  // namespace kestrelon
