#include "lists/bit_set.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace kestrelon {
namespace {

TEST(BitSet, AgreesWithAPlainSet) {
  std::mt19937 random(5);
  BitSet bits;
  std::set<uint32_t> plain;
  for (int step = 0; step < 3000; ++step) {
    const uint32_t a = random() % 400, b = random() % 400;
    const size_t before = plain.size();
    if (step % 3 == 0) {
      for (uint32_t i = a; i < b; ++i) plain.insert(i);
      EXPECT_EQ(bits.set_range(a, b), plain.size() != before);
    } else if (step % 3 == 1) {
      plain.erase(a);
      EXPECT_EQ(bits.set(a, false), plain.size() != before);
    } else {
      plain.insert(a);
      EXPECT_EQ(bits.set(a), plain.size() != before);
    }
    if (step % 100 == 99) {
      EXPECT_TRUE(bits.clear());
      plain.clear();
    }
    ASSERT_EQ(bits.count(), static_cast<int>(plain.size()));
    for (uint32_t i = 0; i < 420; ++i) ASSERT_EQ(bits.test(i), plain.contains(i)) << i;
  }
}

}  // namespace
}  // namespace kestrelon
