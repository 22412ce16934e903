#include "grid/store/exact_sum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace kestrelon {
namespace {

double sum_of(std::initializer_list<double> values) {
  ExactSum sum;
  for (const double value : values) sum.add(value);
  return sum.value();
}

TEST(ExactSum, RoundsOnceAtTheEnd) {
  EXPECT_EQ(sum_of({1e308, 1, -1e308}), 1);
  EXPECT_EQ(sum_of({1, 1e100, 1, -1e100}), 2);
  ExactSum tenths;
  for (int i = 0; i < 1'000'000; ++i) tenths.add(0.1);
  EXPECT_EQ(tenths.value(), 100000);
  // Halves to even, decided by a bit far below.
  const double big = std::ldexp(1, 53);
  EXPECT_EQ(sum_of({big, 1}), big);
  EXPECT_EQ(sum_of({big, 1, 1e-300}), big + 2);
  EXPECT_EQ(sum_of({big, 1, -1e-300}), big);
  EXPECT_EQ(sum_of({-big, -1, -1e-300}), -big - 2);
}

TEST(ExactSum, ReachesTheEndsOfTheRange) {
  using Limits = std::numeric_limits<double>;
  for (const double value : {Limits::denorm_min(), Limits::min(), Limits::max(), 1.0, 0x1p-1022})
    for (const double sign : {1.0, -1.0}) {
      EXPECT_EQ(sum_of({sign * value}), sign * value);
      EXPECT_EQ(sum_of({sign * value, sign * value}), sign * value + sign * value);
      EXPECT_EQ(sum_of({sign * value, -sign * value}), 0);
    }
  EXPECT_EQ(sum_of({Limits::max(), Limits::max(), -Limits::max()}), Limits::max());
  EXPECT_EQ(sum_of({Limits::infinity(), Limits::quiet_NaN(), 3}), 3);
}

TEST(ExactSum, EndsAtZeroWhateverCameAndWent) {
  std::mt19937_64 random(11);
  std::vector<double> values;
  while (values.size() < 20'000) {
    const auto value = std::bit_cast<double>(random());
    if (std::isfinite(value)) values.push_back(value);
  }
  ExactSum sum;
  for (const double value : values) sum.add(value);
  std::shuffle(values.begin(), values.end(), random);
  for (const double value : values) sum.subtract(value);
  EXPECT_EQ(sum.value(), 0);
  EXPECT_FALSE(std::signbit(sum.value()));
}

TEST(ExactSum, AgreesWithWholeNumbers) {
  // Sums of whole multiples of a unit: 300 parts below 2^52 stay within 64 bits.
  std::mt19937_64 random(12);
  for (int round = 0; round < 200; ++round) {
    const int unit = static_cast<int>(random() % 1600) - 800;
    ExactSum sum;
    int64_t whole = 0;
    for (int i = 0; i < 300; ++i) {
      const auto part = static_cast<int64_t>(random()) >> (11 + random() % 40);
      whole += part;
      sum.add(std::ldexp(static_cast<double>(part), unit));
    }
    ASSERT_EQ(sum.value(), std::ldexp(static_cast<double>(whole), unit));
  }
}

}  // namespace
}  // namespace kestrelon
