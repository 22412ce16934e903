#include "frame/kit/scroll_math.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace kestrelon {
namespace {

constexpr int32_t kLowest = std::numeric_limits<int32_t>::min();
constexpr int32_t kHighest = std::numeric_limits<int32_t>::max();
constexpr BarShape kDown{17, 200, true, true};

int area(const PixelRect& r) {
  return r.empty() ? 0 : (r.right - r.left) * (r.bottom - r.top);
}

TEST(ScrollRange, StepsStopAtBothEndsOfALong) {
  const ScrollRange all{kLowest, kHighest};
  EXPECT_EQ(all.span(), 4294967295);
  EXPECT_EQ(all.moved(kHighest, kHighest), kHighest);
  EXPECT_EQ(all.moved(kLowest, -int64_t{kHighest}), kLowest);
  EXPECT_EQ(all.moved(kLowest, -int64_t{kLowest}), 0);
  const ScrollRange few{-3, 5};
  EXPECT_EQ(few.moved(4, 10), 5);
  EXPECT_EQ(few.moved(-2, -10), -3);
  EXPECT_EQ(few.moved(400, -1), 5);  // a value set beyond the end comes back to it
  EXPECT_EQ(few.moved(-400, 1), -3);
  const ScrollRange swapped{5, -3};
  EXPECT_EQ(swapped.span(), 0);
  EXPECT_EQ(swapped.moved(0, 1), 5);
  EXPECT_EQ(swapped.moved(0, -1), 5);
}

TEST(BarLayout, PartsCoverTheBarOnceAtEveryLength) {
  for (const bool vertical : {false, true})
    for (const bool buttons : {false, true})
      for (int length = 0; length < 130; ++length)
        for (const int value : {-9, 0, 1, 7, 99, 100, 400}) {
          const BarShape shape{vertical ? 17 : length, vertical ? length : 17, vertical, buttons};
          const BarLayout bar = layout_bar(shape, {0, 100}, value, 10, 0);
          ASSERT_EQ(area(bar.top_left) + area(bar.before) + area(bar.thumb) + area(bar.after) +
                        area(bar.bottom_right),
                    17 * length)
              << length << ' ' << value;
          ASSERT_EQ(bar.has_thumb, length >= (buttons ? 44 : 8)) << length;
          for (int at = 0; at < length; ++at) {
            const BarPart part = vertical ? bar.hit(16, at) : bar.hit(at, 16);
            ASSERT_NE(part, BarPart::kNone) << length << ' ' << at;
          }
          ASSERT_EQ(vertical ? bar.hit(17, 0) : bar.hit(0, 17), BarPart::kNone);
        }
}

TEST(BarLayout, ButtonsOfAShortBarShareIt) {
  const BarLayout odd = layout_bar({43, 17, false, true}, {0, 100}, 0, 10, 0);
  EXPECT_EQ(odd.top_left, (PixelRect{0, 0, 21, 17}));
  EXPECT_EQ(odd.bottom_right, (PixelRect{21, 0, 43, 17}));
  EXPECT_FALSE(odd.has_thumb);
  const BarLayout enough = layout_bar({44, 17, false, true}, {0, 100}, 50, 10, 0);
  EXPECT_EQ(enough.top_left, (PixelRect{0, 0, 18, 17}));
  EXPECT_EQ(enough.thumb, (PixelRect{18, 0, 26, 17}));
  EXPECT_TRUE(enough.before.empty());
  EXPECT_TRUE(enough.after.empty());
}

TEST(BarLayout, ThumbIsAsLongAsAPageIsOfTheRange) {
  const auto size = [](int32_t max, int32_t page, int last = 0) {
    return layout_bar(kDown, {0, max}, 0, page, last).thumb_size;
  };
  EXPECT_EQ(size(100, 10), 164 / 11);
  EXPECT_EQ(size(99, 10), 164 / 10);  // whole pages alone count
  EXPECT_EQ(size(9, 10), 164);
  EXPECT_EQ(size(0, 10), 164);
  EXPECT_EQ(size(0, 1), 82);  // a range of 0 counts as 1
  EXPECT_EQ(size(kHighest, 1), 8);
  EXPECT_EQ(size(100, 0, 31), 31);  // no page, no formula
  EXPECT_EQ(size(100, 0), 8);
  EXPECT_EQ(size(100, 0, 900), 164);
  EXPECT_EQ(size(100, -100, 31), 31);
  EXPECT_EQ(size(100, -10, 31), 8);
}

TEST(BarLayout, ThumbStandsWhereTheValueDoesAndInsideTheTrack) {
  const auto start = [](ScrollRange range, int32_t value, int32_t page) {
    return layout_bar(kDown, range, value, page, 0).thumb_start;
  };
  EXPECT_EQ(start({0, 100}, 0, 10), 18);
  EXPECT_EQ(start({0, 100}, 100, 10), 200 - 18 - 14);
  EXPECT_EQ(start({0, 100}, 33, 10), 18 + 150 * 33 / 100);
  EXPECT_EQ(start({0, 100}, 5000, 10), 200 - 18 - 14);
  EXPECT_EQ(start({0, 100}, -5000, 10), 18);
  EXPECT_EQ(start({7, 7}, 7, 1), 18);
  EXPECT_EQ(start({7, 7}, 9, 1), 18);
  EXPECT_EQ(start({kLowest, kHighest}, kHighest, 1), 200 - 18 - 8);
  EXPECT_EQ(start({kLowest, kHighest}, 0, 1), 18 + 156 / 2);
  EXPECT_EQ(start({kLowest, kHighest}, -1, 1), 18 + 156 / 2 - 1);  // truncated, exactly
}

TEST(BarLayout, DraggingReachesBothEndsAndTheNearestValue) {
  for (const ScrollRange range :
       {ScrollRange{0, 100}, ScrollRange{-5, 2}, ScrollRange{0, 100000},
        ScrollRange{kLowest, kHighest}, ScrollRange{kHighest - 1, kHighest}}) {
    const BarLayout bar = layout_bar(kDown, range, range.min, 1, 0);
    const int room = bar.track_length - bar.thumb_size;
    EXPECT_EQ(value_at(bar, range, bar.track_start, 77), range.min);
    EXPECT_EQ(value_at(bar, range, bar.track_start - 1000, 77), range.min);
    EXPECT_EQ(value_at(bar, range, bar.track_start + room, 77), range.max);
    EXPECT_EQ(value_at(bar, range, kHighest, 77), range.max);
    EXPECT_EQ(value_at(bar, range, kLowest, 77), range.min);
    for (int moved = 0; moved <= room; ++moved) {
      const long double exact = static_cast<long double>(range.min) +
                                static_cast<long double>(moved) * range.span() / room;
      const long double got = value_at(bar, range, bar.track_start + moved, 77);
      EXPECT_LE(std::abs(got - exact), 0.5L) << moved;
    }
  }
}

TEST(BarLayout, AHalfWayDragTakesTheEvenValue) {
  // Two pixels to a value: every odd pixel is half way.
  const ScrollRange range{0, 3};
  BarLayout bar;
  bar.has_thumb = true;
  bar.track_length = 14;
  bar.thumb_size = 8;
  std::vector<int32_t> values;
  for (int at = 0; at <= 6; ++at) values.push_back(value_at(bar, range, at, 9));
  EXPECT_EQ(values, (std::vector<int32_t>{0, 0, 1, 2, 2, 2, 3}));
  bar.thumb_size = 14;
  EXPECT_EQ(value_at(bar, range, 3, 9), 9);  // nowhere to go: the value stays
  bar.has_thumb = false;
  EXPECT_EQ(value_at(bar, range, 3, 9), 9);
}

TEST(WheelNotches, KeepsWhatIsLessThanANotch) {
  WheelNotches wheel;
  EXPECT_EQ(wheel.add(120), -1);
  EXPECT_EQ(wheel.add(-240), 2);
  EXPECT_EQ(wheel.add(-50), 0);
  EXPECT_EQ(wheel.add(-50), 0);
  EXPECT_EQ(wheel.add(-50), 1);
  EXPECT_EQ(wheel.add(30), 0);
  EXPECT_EQ(wheel.add(119), 0);
  EXPECT_EQ(wheel.add(1), -1);
  EXPECT_EQ(wheel.add(-32768), 273);
  wheel.reset();
  EXPECT_EQ(wheel.add(-119), 0);
}

TEST(ScrollInfo, EndAndMaximumAreInverseAndStayLongs) {
  for (const int32_t page : {-5, 0, 1, 10, 1000})
    for (const int32_t max : {-7, 0, 100, kHighest - 1000})
      EXPECT_EQ(max_of_info(info_end(max, page), page), max) << page;
  EXPECT_EQ(info_end(100, 10), 109);
  EXPECT_EQ(info_end(100, 0), 100);
  EXPECT_EQ(info_end(kHighest, 10), kHighest);
  EXPECT_EQ(max_of_info(kLowest, 10), kLowest);
}

}  // namespace
}  // namespace kestrelon
