#include "chrome/us_tab/tab_strip_layout.h"

#include <gtest/gtest.h>

#include <random>

#include "chrome/us_tab/page_places.h"
#include "chrome/us_tab/tab_shape.h"

namespace kestrelon::tab_strip {
namespace {

Shape shape(int width, Side side = Side::kTop, int dpi = 96) {
  Shape out;
  out.width = width;
  out.height = 200;
  out.scale = Scale(dpi);
  out.active_height = out.scale(24);
  out.inactive_height = out.scale(22);
  out.side = side;
  out.equal_widths = false;
  return out;
}

bool within(const PixelRect& inner, const PixelRect& outer) {
  return inner.left >= outer.left && inner.right <= outer.right && inner.top >= outer.top &&
         inner.bottom <= outer.bottom;
}

TEST(TabStripLayout, NothingOverlapsOnAnySideAtAnyWidth) {
  const std::vector<Item> items{{40, 13}, {90, 16}, {20, 13}, {60, 13}};
  for (const Side side : {Side::kTop, Side::kBottom, Side::kLeft, Side::kRight})
    for (const bool marks : {false, true})
      for (int width = 0; width < 460; width += 3) {
        Shape of = shape(width, side, width % 2 == 0 ? 96 : 144);
        of.close_marks = of.control_box = marks;
        const Arrangement strip = arrange(of, items, 1, 0, -1);
        ASSERT_TRUE(intersect(strip.strip, strip.page).empty());
        std::vector<PixelRect> taken{strip.back, strip.forward, strip.box};
        for (size_t i = 0; i < items.size(); ++i) {
          const PixelRect& tab = strip.tabs[i];
          if (tab.empty()) continue;
          ASSERT_TRUE(within(tab, strip.strip)) << width;
          for (const PixelRect& other : taken) ASSERT_TRUE(intersect(tab, other).empty()) << width;
          ASSERT_TRUE(strip.close_marks[i].empty() || within(strip.close_marks[i], tab));
          taken.push_back(tab);
        }
      }
}

TEST(TabStripLayout, ArrowsComeWithTheFirstPixelThatIsMissing) {
  const std::vector<Item> items{{40, 13}, {40, 13}, {40, 13}};
  const int needed = arrange(shape(1000), items, 0, 0, -1).tabs[2].right;
  EXPECT_TRUE(arrange(shape(needed), items, 0, 0, -1).back.empty());
  const Arrangement tight = arrange(shape(needed - 1), items, 0, 0, -1);
  EXPECT_FALSE(tight.back.empty());
  EXPECT_EQ(hit(tight, tight.forward.left, 5).part, Part::kForward);
}

TEST(TabStripLayout, AWantedTabScrollsIntoViewAndNoRoomStaysEmptyAtTheEnd) {
  const std::vector<Item> items(20, Item{50, 13});
  for (int wanted = 0; wanted < 20; ++wanted)
    for (const int first : {0, 7, 19, 1000, -5}) {
      const Arrangement strip = arrange(shape(260), items, 0, first, wanted);
      const PixelRect& tab = strip.tabs[static_cast<size_t>(wanted)];
      ASSERT_EQ(tab.right - tab.left, 70) << wanted << " from " << first;
    }
  const Arrangement end = arrange(shape(260), items, 0, 19, -1);
  EXPECT_EQ(end.last, 19);
  EXPECT_EQ(end.first, 17);
}

TEST(TabStripLayout, EqualWidthsAreThoseOfTheWidestCaption) {
  Shape of = shape(900);
  of.equal_widths = true;
  const std::vector<Item> items{{20, 13}, {180, 13}, {20, 13}};
  const Arrangement strip = arrange(of, items, 0, 0, -1);
  for (const PixelRect& tab : strip.tabs) EXPECT_EQ(tab.right - tab.left, 200);
}

TEST(TabStripLayout, ADraggedTabTakesThePlaceWhoseMiddleItPasses) {
  const std::vector<Item> items(4, Item{50, 13});
  const Arrangement strip = arrange(shape(600), items, 0, 0, -1);
  EXPECT_EQ(drop_place(strip, Side::kTop, 0, 40, 5), 0);
  EXPECT_EQ(drop_place(strip, Side::kTop, 0, 108, 5), 1);
  EXPECT_EQ(drop_place(strip, Side::kTop, 0, 5000, 5), 3);
  EXPECT_EQ(drop_place(strip, Side::kTop, 3, -50, 5), 0);
  EXPECT_EQ(drop_place(strip, Side::kTop, 2, 100, 5), 1);
}

TEST(TabStripLayout, PictureAndCaptionLieInTheTabOnTheSideTold) {
  const PixelRect tab{100, 0, 220, 40};
  for (int side = 0; side < 4; ++side) {
    const Face parts = face(tab, {}, 16, 50, 13, side, {});
    EXPECT_TRUE(within(parts.picture, tab) && within(parts.text, tab)) << side;
    EXPECT_TRUE(intersect(parts.picture, parts.text).empty()) << side;
    EXPECT_EQ(parts.picture.right <= parts.text.left, side == 0);
    EXPECT_EQ(parts.picture.left >= parts.text.right, side == 1);
  }
  EXPECT_TRUE(within(face(tab, {200, 10, 211, 21}, 16, 900, 13, 0, {}).text, {100, 0, 194, 40}));
}

TEST(TabStripLayout, WalksPastWhatCannotBeChosenAndStopsOrGoesRound) {
  const auto even = [](int i) { return i % 2 == 0; };
  EXPECT_EQ(walk(0, 1, 5, false, even), 2);
  EXPECT_EQ(walk(4, 1, 5, false, even), 4);
  EXPECT_EQ(walk(4, 1, 5, true, even), 0);
  EXPECT_EQ(walk(0, -1, 5, true, even), 4);
  EXPECT_EQ(walk(2, 1, 5, true, [](int) { return false; }), 2);
  EXPECT_EQ(walk(0, 1, 0, true, even), 0);
}

TEST(TabShape, CornersAreRoundedOnTheOuterSideOnly) {
  EXPECT_EQ(corner_inset(0, 5, 0), 0);
  EXPECT_EQ(corner_inset(4, 4, 4), 0);
  for (int depth = 1; depth < 8; ++depth)
    EXPECT_LE(corner_inset(8, 8, depth), corner_inset(8, 8, depth - 1));
  constexpr ColorRef kEmpty = 0xABCDEF;
  std::vector<uint32_t> bits(40 * 20, to_pixel(kEmpty));
  const PixelView view{bits.data(), 40, 20, 40};
  paint_tab(view, {0, 0, 40, 20}, Side::kTop, 6, 6, {1, 2, 3, 4}, 1);
  EXPECT_EQ(to_color(view.row(0)[0]), kEmpty);
  EXPECT_EQ(to_color(view.row(0)[39]), kEmpty);
  EXPECT_EQ(to_color(view.row(19)[0]), 3u);
  EXPECT_EQ(to_color(view.row(19)[39]), 3u);
  EXPECT_EQ(to_color(view.row(0)[20]), 3u);
}

}  // namespace
}  // namespace kestrelon::tab_strip

namespace kestrelon {
namespace {

TEST(PagePlaces, ARoundTripIsExactOverAnyNumberOfPages) {
  // A container that rounds to whole pixels and holds positions to 16 bits.
  const auto round = [](double twips) {
    return static_cast<double>(static_cast<int>(twips / 15) * 15);
  };
  PagePlaces places;
  places.set_limit(450000);
  std::mt19937 random(7);
  double present = round(1207);
  const double start = present;
  int page = 0;
  for (int step = 0; step < 500; ++step) {
    const int to = step == 499 ? 0 : static_cast<int>(random() % 200);
    const double home = places.home_of(L"a", present) + (to - page) * 75000.0;
    present = round(places.position_for(home));
    ASSERT_LE(present, 450000);
    ASSERT_GE(present, -450000);
    places.sent(L"a", home, present);
    page = to;
  }
  EXPECT_EQ(present, start);
}

TEST(PagePlaces, WhatTheProgramMovesBelongsWhereItWasPut) {
  PagePlaces places;
  places.set_limit(1000);
  places.sent(L"a", 75000, 1000);
  EXPECT_EQ(places.home_of(L"a", 1000), 75000);
  EXPECT_EQ(places.home_of(L"a", 120), 120);
  EXPECT_EQ(places.home_of(L"b", 1000), 1000);
  places.forget(L"a");
  EXPECT_EQ(places.home_of(L"a", 1000), 1000);
}

TEST(PagePlaces, TellsThePageOfAPlace) {
  for (const long active : {0L, 3L, 9L})
    for (const long page : {0L, 1L, 3L, 12L})
      for (const double base : {-300.0, 0.0, 120.0, 30000.0})
        EXPECT_EQ(page_of(base + static_cast<double>(active - page) * 75000, 75000, active), page);
  EXPECT_EQ(page_of(100, 0, 2), -1);
}

}  // namespace
}  // namespace kestrelon
