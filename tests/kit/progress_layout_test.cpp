#include "controls/us_progress_bar/progress_layout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace kestrelon {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kHuge = std::numeric_limits<double>::max();

TEST(ProgressRange, CutsPercentAndReachesAHundredOnlyAtTheEnd) {
  const ProgressRange plain;
  EXPECT_EQ(plain.percent(99.6, 0), 99);
  EXPECT_EQ(plain.percent(99.6, 1), 996);
  EXPECT_EQ(plain.percent(std::nextafter(100.0, 0.0), 0), 99);
  EXPECT_EQ(plain.percent(std::nextafter(100.0, 0.0), 10), 999999999999);
  EXPECT_EQ(plain.percent(100, 3), 100000);
  // Every whole percent of a range that binary fractions do not meet.
  for (int i = 0; i <= 100; ++i) {
    EXPECT_EQ((ProgressRange{0, 1}.percent(i / 100.0, 0)), i);
    EXPECT_EQ((ProgressRange{0, 7}.percent(7 * (i / 100.0), 0)), i);
    EXPECT_EQ((ProgressRange{-0.5, 0.5}.percent(i / 100.0 - 0.5, 0)), i);
  }
}

TEST(ProgressRange, BearsRangesThatAreNone) {
  for (const ProgressRange range : {ProgressRange{5, 5}, {10, 0}, {0, NAN}, {NAN, 1}}) {
    EXPECT_EQ(range.fraction(7), 0);
    EXPECT_FALSE(range.complete(7));
  }
  EXPECT_EQ((ProgressRange{-kHuge, kHuge}.percent(0, 0)), 50);
  EXPECT_EQ((ProgressRange{0, 100}.percent(kInfinity, 2)), 10000);
  EXPECT_EQ((ProgressRange{0, 100}.percent(-kInfinity, 2)), 0);
  EXPECT_EQ((ProgressRange{-kInfinity, kInfinity}.percent(NAN, 2)), 0);
}

TEST(ProgressTexts, WriteDecimalsAndCaptions) {
  EXPECT_EQ(percent_text(5, 2), L"0,05");
  EXPECT_EQ(percent_text(0, 3), L"0,000");
  EXPECT_EQ(percent_text(10000, 2), L"100,00");
  EXPECT_EQ(percent_text(42, -3), L"42");
  const ProgressTexts texts{L"5%", L"1", L"20", L"0:09"};
  EXPECT_EQ(fill_caption(L"{v} de {m} ({p}), {t}", texts), L"1 de 20 (5%), 0:09");
  EXPECT_EQ(fill_caption(L"{{p}} {x} {p", texts), L"{5%} {x} {p");
  EXPECT_EQ(fill_caption(L"{p", texts), L"{p");
  EXPECT_TRUE(mentions(L"a {t}", L't'));
  EXPECT_FALSE(mentions(L"{ t}", L't'));
}

TEST(ProgressValueStep, ChangesWithEveryTextOfTheValue) {
  EXPECT_EQ(value_step(1.2, 0), value_step(1.3, 0));
  EXPECT_NE(value_step(1.4, 0), value_step(1.5, 0));
  EXPECT_NE(value_step(0.14, 1), value_step(0.15, 1));
  EXPECT_NE(value_step(-0.4, 0), value_step(-0.6, 0));
}

TEST(ProgressBarPixels, PartsMeetAndStayInside) {
  const PixelRect bar{1, 1, 101, 21};
  EXPECT_EQ(filled_length(100, 0.999), 99);
  EXPECT_EQ(filled_length(-5, 0.5), 0);
  EXPECT_EQ(bar_part(bar, 0, 40, false), (PixelRect{1, 1, 41, 21}));
  EXPECT_EQ(bar_part(bar, 0, 5, true), (PixelRect{1, 16, 101, 21}));
  EXPECT_EQ(bar_part(bar, -9, 900, true), bar);
  EXPECT_TRUE(bar_part({5, 5, 3, 3}, 0, 9, false).empty());
  // One pixel begins a block, and the last one ends with the bar.
  for (int filled = 1; filled <= 100; ++filled) {
    const auto blocks = bar_blocks(bar, filled, {12, 2}, false);
    ASSERT_EQ(blocks.size(), static_cast<size_t>((filled + 13) / 14)) << filled;
    EXPECT_EQ(blocks.back().right, std::min(blocks.back().left + 12, bar.right));
  }
  EXPECT_TRUE(bar_blocks(bar, 0, {12, 2}, false).empty());
  EXPECT_TRUE(bar_blocks(bar, 9, {0, 2}, false).empty());
}

TEST(ProgressBarPixels, TheRunnerCrossesTheWholeBar) {
  bool at_begin = false, at_end = false;
  int last = 0;
  for (uint64_t time = 0; time < 2000; time += 10) {
    const Runner runner = runner_at(90, time);
    EXPECT_LE(0, runner.from);
    EXPECT_LE(runner.from, runner.to);
    EXPECT_LE(runner.to, 90);
    EXPECT_LE(runner.to - runner.from, 30);
    EXPECT_GE(runner.from, last);
    last = runner.from;
    at_begin |= runner.from == 0 && runner.to > 0;
    at_end |= runner.to == 90 && runner.from > 80;
  }
  EXPECT_TRUE(at_begin && at_end);
  EXPECT_EQ(runner_at(0, 77).to, 0);
  EXPECT_EQ(runner_at(90, 500).from, runner_at(90, ~uint64_t{0} / 2000 * 2000 - 1500).from);
}

TEST(ProgressClock, TellsTheRestFromThePaceAndBeginsAnewWhenTheWorkDoes) {
  ProgressClock clock;
  EXPECT_EQ(clock.seconds_left(), -1);
  clock.at(0, 1000);
  EXPECT_EQ(clock.seconds_left(), -1);
  clock.at(0.25, 6000);
  EXPECT_EQ(clock.seconds_left(), 15);
  clock.at(0.5, 7000);
  EXPECT_EQ(clock.seconds_left(), 6);
  clock.at(0.1, 8000);  // the next table
  EXPECT_EQ(clock.seconds_left(), -1);
  clock.at(0.2, 8000);  // no time has passed
  EXPECT_EQ(clock.seconds_left(), -1);
  clock.at(1, 8001);
  EXPECT_EQ(clock.seconds_left(), 0);
  clock.reset();
  clock.at(0.5, 0);
  clock.at(0.5 + 1e-15, 1u << 30);
  EXPECT_EQ(clock.seconds_left(), -1);  // no pace worth telling
}

}  // namespace
}  // namespace kestrelon
