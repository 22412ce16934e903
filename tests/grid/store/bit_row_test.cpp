#include "grid/store/bit_row.h"

#include <gtest/gtest.h>

#include <random>

namespace kestrelon {
namespace {

void expect_same(const BitRow& bits, const std::vector<bool>& plain) {
  ASSERT_EQ(bits.size(), static_cast<int>(plain.size()));
  int count = 0;
  int last = -1;
  for (int i = 0; i < bits.size(); ++i) {
    ASSERT_EQ(bits.count_before(i), count);
    const bool set = plain[static_cast<size_t>(i)];
    ASSERT_EQ(bits.test(i), set);
    if (set) {
      ASSERT_EQ(bits.select(count), i);
      ASSERT_EQ(bits.next(last + 1), i);
      ++count;
      last = i;
    }
    ASSERT_EQ(bits.previous(i), last);
  }
  ASSERT_EQ(bits.count(), count);
  ASSERT_EQ(bits.select(count), -1);
  ASSERT_EQ(bits.next(last + 1), -1);
}

TEST(BitRow, AgreesWithPlainBitsAcrossWordEnds) {
  std::mt19937 random(3);
  for (const int start : {0, 1, 63, 64, 65, 127, 128, 200}) {
    BitRow bits;
    bits.assign(start, true);
    std::vector<bool> plain(static_cast<size_t>(start), true);
    expect_same(bits, plain);
    for (int step = 0; step < 400; ++step) {
      const bool value = random() % 3 == 0;
      const int at = static_cast<int>(random() % (plain.size() + 1));
      const bool inside = at < static_cast<int>(plain.size());
      switch (random() % 4) {
        case 0:
        case 1:
          bits.insert(at, value);
          plain.insert(plain.begin() + at, value);
          break;
        case 2:
          if (inside) bits.erase(at), plain.erase(plain.begin() + at);
          break;
        default:
          if (!inside) break;
          EXPECT_EQ(bits.set(at, value), plain[static_cast<size_t>(at)] != value);
          plain[static_cast<size_t>(at)] = value;
      }
      ASSERT_NO_FATAL_FAILURE(expect_same(bits, plain)) << "step " << step;
    }
  }
}

TEST(BitRow, AnswersForPlacesOutside) {
  BitRow bits;
  EXPECT_EQ(bits.next(0), -1);
  EXPECT_EQ(bits.previous(5), -1);
  EXPECT_EQ(bits.select(0), -1);
  bits.assign(70, true);
  EXPECT_EQ(bits.next(-9), 0);
  EXPECT_EQ(bits.next(70), -1);
  EXPECT_EQ(bits.previous(1000), 69);
  EXPECT_EQ(bits.previous(-1), -1);
  EXPECT_EQ(bits.count_before(1000), 70);
  EXPECT_EQ(bits.select(-1), -1);
}

}  // namespace
}  // namespace kestrelon
