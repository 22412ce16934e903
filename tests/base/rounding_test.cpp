#include "base/rounding.h"

#include <gtest/gtest.h>

#include <limits>

namespace kestrelon {
namespace {

TEST(RoundHalfEven, GoesToTheEvenNeighbourAtHalves) {
  const double in[] = {0.5, 1.5, 2.5, -0.5, -1.5, -2.5, 0.49999999999999994, 2.5000000000000004};
  const int32_t out[] = {0, 2, 2, 0, -2, -2, 0, 3};
  for (size_t i = 0; i < std::size(in); ++i) EXPECT_EQ(round_half_even(in[i]), out[i]) << in[i];
}

TEST(RoundHalfEven, StaysInTheRangeOfTheResult) {
  EXPECT_EQ(round_half_even(1e300), std::numeric_limits<int32_t>::max());
  EXPECT_EQ(round_half_even(-1e300), std::numeric_limits<int32_t>::min());
  EXPECT_EQ(round_half_even<uint8_t>(255.5), 255);
  EXPECT_EQ(round_half_even<uint8_t>(-0.6), 0);
  EXPECT_EQ(round_half_even<int64_t>(9.3e18), std::numeric_limits<int64_t>::max());
  EXPECT_EQ(round_half_even(std::numeric_limits<double>::quiet_NaN()), 0);
}

}  // namespace
}  // namespace kestrelon
