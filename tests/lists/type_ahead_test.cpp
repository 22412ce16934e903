#include "lists/type_ahead.h"

#include <gtest/gtest.h>

namespace kestrelon {
namespace {

TEST(TypeAhead, LettersGatherUntilAPause) {
  TypeAhead typed;
  EXPECT_EQ(typed.add(L'p', 0).text, L"p");
  const TypeAhead::Search second = typed.add(L'a', 999);
  EXPECT_EQ(second.text, L"pa");
  EXPECT_FALSE(second.from_next);
  EXPECT_EQ(typed.add(L'r', 1998).text, L"par");
  const TypeAhead::Search anew = typed.add(L'b', 2998);
  EXPECT_EQ(anew.text, L"b");
  EXPECT_TRUE(anew.from_next);
}

TEST(TypeAhead, TheClockMayWrap) {
  TypeAhead typed;
  typed.add(L'p', 0xFFFFFFF0u);
  EXPECT_EQ(typed.add(L'a', 10).text, L"pa");
}

TEST(TypeAhead, OneLetterRepeatedWalksUntilAnotherFollows) {
  TypeAhead typed;
  typed.add(L'a', 0);
  for (uint32_t i = 1; i < 4; ++i) {
    const TypeAhead::Search again = typed.add(L'a', i);
    EXPECT_EQ(again.text, L"a");
    EXPECT_TRUE(again.from_next);
  }
  const TypeAhead::Search word = typed.add(L'b', 5);
  EXPECT_EQ(word.text, L"aaaab");
  EXPECT_FALSE(word.from_next);
}

TEST(TypeAhead, ABlankBelongsToAWordOnly) {
  TypeAhead typed;
  EXPECT_FALSE(typed.takes_blank(0));
  EXPECT_EQ(typed.add(L' ', 0).text, L"");
  typed.add(L's', 1);
  EXPECT_TRUE(typed.takes_blank(1000));
  EXPECT_FALSE(typed.takes_blank(1001));
  EXPECT_EQ(typed.add(L' ', 500).text, L"s ");
  EXPECT_EQ(typed.add(L'\b', 501).text, L"");
  EXPECT_EQ(typed.add(L'x', 502).text, L"x");
}

}  // namespace
}  // namespace kestrelon
