#include "grid/values/row_matcher.h"

#include <gtest/gtest.h>

#include <array>

namespace kestrelon {
namespace {

bool matches(const wchar_t* text, GridSearchMode mode, const wchar_t* cell,
             bool match_case = false) {
  const RowMatcher matcher(text, static_cast<int>(mode), match_case);
  return matcher.active() && matcher.matches(cell);
}

TEST(RowMatcher, ComparesByMode) {
  using enum GridSearchMode;
  EXPECT_TRUE(matches(L"\u00E1gua", Equal, L"\u00C1GUA"));
  EXPECT_FALSE(matches(L"agua", Equal, L"\u00C1GUA")) << "accents count in the grid";
  EXPECT_FALSE(matches(L"agua", Equal, L"aguas"));
  EXPECT_FALSE(matches(L"a", Equal, L"A", true));
  EXPECT_TRUE(matches(L"b", GreaterEqual, L"B"));
  EXPECT_TRUE(matches(L"b", GreaterEqual, L"\u00C1"));
  EXPECT_TRUE(matches(L"b", GreaterEqual, L"Ba"));
  EXPECT_FALSE(matches(L"ba", GreaterEqual, L"B"));
  EXPECT_FALSE(matches(L"b", GreaterEqual, L""));
  EXPECT_TRUE(matches(L"b", GreaterEqual, L"a") == false &&
              matches(L"B", GreaterEqual, L"a", true));
  EXPECT_TRUE(matches(L"GUA", Like, L"agua fria"));
  EXPECT_TRUE(matches(L"agu", BeginsWith, L"AGUA"));
  EXPECT_FALSE(matches(L"agua", BeginsWith, L"agu"));
  EXPECT_TRUE(matches(L"ria", EndsWith, L"agua FRIA"));
  EXPECT_FALSE(matches(L"xria", EndsWith, L"ria"));
}

TEST(RowMatcher, NavigateWantsTheFirstLetterAndNotLess) {
  using enum GridSearchMode;
  EXPECT_TRUE(matches(L"b", Navigate, L"banana"));
  EXPECT_TRUE(matches(L"ba", Navigate, L"Bz"));
  EXPECT_FALSE(matches(L"bz", Navigate, L"banana"));
  EXPECT_FALSE(matches(L"b", Navigate, L"caju"));
  EXPECT_FALSE(matches(L"b", Navigate, L""));
}

TEST(RowMatcher, IsIdleWithoutTextOrMode) {
  EXPECT_FALSE(RowMatcher(L"", 0, false).active());
  for (const int mode : {-1, 3, 7, 1 << 20}) EXPECT_FALSE(RowMatcher(L"a", mode, false).active());
  EXPECT_TRUE(RowMatcher(L"a", 6, false).active());
}

TEST(RowMatcher, FindsFromAStartThatMayBeNone) {
  const std::array<std::wstring_view, 4> cells = {L"x", L"b", L"y", L"B"};
  const auto find = [&](const wchar_t* text, int start) {
    return find_position(RowMatcher(text, 0, false), 4, start,
                         [&](int at) { return cells[static_cast<size_t>(at)]; });
  };
  EXPECT_EQ(find(L"b", 0), 1);
  EXPECT_EQ(find(L"b", 2), 3);
  EXPECT_EQ(find(L"b", 4), 1);
  EXPECT_EQ(find(L"b", -5), 1);
  EXPECT_EQ(find(L"c", 0), -1);
  EXPECT_EQ(find(L"", 0), -1);
}

}  // namespace
}  // namespace kestrelon
