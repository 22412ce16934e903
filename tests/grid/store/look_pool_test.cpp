#include "grid/store/look_pool.h"

#include <gtest/gtest.h>

namespace kestrelon {
namespace {

GridLook colored(uint32_t color) {
  GridLook look;
  look.back_color = color;
  return look;
}

TEST(LookPool, SharesEqualLooksAndReusesOnlyWhatNobodyUses) {
  LookPool pool;
  const int red = pool.acquire(colored(1), 2);
  EXPECT_EQ(pool.acquire(colored(1)), red);
  EXPECT_EQ(pool.use_count(red), 3);
  const int blue = pool.acquire(colored(2));
  EXPECT_NE(blue, red);
  pool.release(blue);
  EXPECT_EQ(pool.acquire(colored(2)), blue) << "found again while its number is free";
  EXPECT_EQ(pool.acquire(colored(3)), 2) << "the number has users again";
  pool.release(red, 3);
  EXPECT_EQ(pool.acquire(colored(4)), red);
  EXPECT_EQ(pool.look(red), colored(4));
  EXPECT_NE(pool.acquire(colored(1)), red) << "the old look is forgotten";
}

TEST(LookPool, RefusesWhatPassesSixteenBits) {
  LookPool pool;
  for (uint32_t i = 0; i < LookPool::kMost; ++i) ASSERT_EQ(pool.acquire(colored(i)), int(i));
  EXPECT_EQ(pool.acquire(colored(99999)), LookPool::kFull);
  EXPECT_EQ(pool.acquire(colored(77)), 77);
  pool.release(5);
  EXPECT_EQ(pool.acquire(colored(99999)), 5);
  EXPECT_EQ(pool.acquire(colored(5)), LookPool::kFull);
}

}  // namespace
}  // namespace kestrelon
