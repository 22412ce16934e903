#include "lists/virtual_items.h"

#include <gtest/gtest.h>

namespace kestrelon {
namespace {

VirtualItem item(int index) {
  return {.index = index, .text = std::to_wstring(index)};
}

TEST(VirtualItems, TwoPagesStayWhileTheViewMovesByOne) {
  VirtualItems items;
  items.set_page(10);
  for (int i = 9'999'980; i < 10'000'000; ++i) items.keep(item(i), items.age());
  for (int i = 9'999'980; i < 10'000'000; ++i) {
    ASSERT_NE(items.find(i), nullptr);
    EXPECT_EQ(items.find(i)->text, std::to_wstring(i));
  }
  items.keep(item(9'999'979), items.age());
  EXPECT_NE(items.find(9'999'979), nullptr);
  EXPECT_EQ(items.find(9'999'999), nullptr);
  EXPECT_NE(items.find(9'999'998), nullptr);
}

TEST(VirtualItems, AnAnswerFromBeforeTheListChangedIsDropped) {
  VirtualItems items;
  items.set_page(5);
  const uint32_t asked = items.age();
  items.keep(item(1), asked);
  items.forget();  // what a handler does in the middle of being asked
  items.keep(item(2), asked);
  EXPECT_EQ(items.find(1), nullptr);
  EXPECT_EQ(items.find(2), nullptr);
}

TEST(VirtualItems, WithoutAPageNothingIsKept) {
  VirtualItems items;
  items.keep(item(1), items.age());
  EXPECT_EQ(items.find(1), nullptr);
  items.set_page(0);
  items.keep(item(1), items.age());
  EXPECT_NE(items.find(1), nullptr);
  EXPECT_EQ(items.find(-1), nullptr);
}

}  // namespace
}  // namespace kestrelon
