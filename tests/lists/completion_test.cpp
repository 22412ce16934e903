#include "lists/completion.h"

#include <gtest/gtest.h>

namespace kestrelon {
namespace {

TEST(Completion, AddsTheRestOfTheFirstItemThatBeginsAlike) {
  ListStore store;
  for (const wchar_t* text : {L"Porca", L"A\u00e7o inox", L"Aco carbono", L"A\u0301gua"})
    store.add(text);
  auto found = complete(store, L"ACO");
  ASSERT_TRUE(found);
  EXPECT_EQ(found->index, 1);
  EXPECT_EQ(found->text, L"ACO inox") << "what was typed stays as it was typed";
  EXPECT_EQ(found->typed, 3u);
  store.set_flag(1, ItemFlag::kDisabled, true);
  EXPECT_EQ(complete(store, L"ACO")->index, 2);
  found = complete(store, L"ag");
  ASSERT_TRUE(found);
  EXPECT_EQ(found->text, L"agua") << "a combining accent belongs to the letter before it";
  EXPECT_FALSE(complete(store, L""));
  EXPECT_FALSE(complete(store, L"inox"));
  EXPECT_FALSE(complete(store, L"porca"));
  store.set_flag(3, ItemFlag::kHeader, true);
  EXPECT_FALSE(complete(store, L"ag")) << "the last item, and it cannot be chosen";
}

TEST(Completion, LooksAtTheColumnThatIsTyped) {
  ListStore store;
  store.add(L"Porca\t10");
  store.add(L"20\tPorta");
  const auto found = complete(store, L"por", 1);
  ASSERT_TRUE(found);
  EXPECT_EQ(found->index, 1);
  EXPECT_EQ(found->text, L"porta");
  EXPECT_EQ(complete(store, L"por", 0)->text, L"porca") << "what follows the tab is no part of it";
}

}  // namespace
}  // namespace kestrelon
