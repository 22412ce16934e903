#include "grid/layout/damage.h"

#include <gtest/gtest.h>

#include <random>

#include "grid/layout/cell_rects.h"
#include "tests/grid/layout_rows.h"

namespace kestrelon {
namespace {

using namespace grid_layout;

constexpr int kWidth = 60;
constexpr int kHeight = 90;
using Screen = std::vector<uint32_t>;

bool inside(const PixelRect& area, int x, int y) {
  return x >= area.left && x < area.right && y >= area.top && y < area.bottom;
}

// A stand-in for painting: each pixel tells what it belongs to and where in it.
uint32_t pixel(const Shown& shown, int x, int y) {
  const auto mix = [](uint64_t a, uint64_t b, uint64_t c) {
    return static_cast<uint32_t>((a * 1'000'003 + b) * 7919 + c);
  };
  if (!inside(shown.inner, x, y)) return 0;
  if (inside(shown.header, x, y)) {
    for (size_t i = 0; i < shown.columns.size(); ++i)
      if (x >= shown.columns[i].left && x < shown.columns[i].right())
        return mix(1, shown.headers[i], static_cast<uint64_t>(x) + shown.look);
    return 2;
  }
  if (inside(shown.total_line, x, y)) return mix(3, shown.totals, static_cast<uint64_t>(x));
  if (inside(shown.focus, x, y)) return mix(4, static_cast<uint64_t>(x), 0);
  for (const ShownRow& row : shown.rows)
    if (y >= row.place.top && y < row.place.bottom())
      return mix(5 + row.state, static_cast<uint64_t>(row.place.position) + shown.look,
                 static_cast<uint64_t>(y - row.place.top) * 100 + static_cast<uint64_t>(x));
  return mix(6, shown.rows.empty(), static_cast<uint64_t>(x));
}

Screen painted(const Shown& shown) {
  Screen screen;
  for (int y = 0; y < kHeight; ++y)
    for (int x = 0; x < kWidth; ++x) screen.push_back(pixel(shown, x, y));
  return screen;
}

uint32_t& at(Screen& screen, int x, int y) {
  return screen[static_cast<size_t>(y * kWidth + x)];
}

int64_t apply(Screen& screen, const Damage& damage, const Shown& now) {
  if (damage.move_by != 0) {
    const Screen old = screen;
    for (int y = damage.moved.top; y < damage.moved.bottom; ++y)
      for (int x = damage.moved.left; x < damage.moved.right; ++x)
        at(screen, x, y + damage.move_by) = old[static_cast<size_t>(y * kWidth + x)];
  }
  int64_t drawn = 0;
  for (const PixelRect& area : damage.draw)
    for (int y = area.top; y < area.bottom; ++y)
      for (int x = area.left; x < area.right; ++x, ++drawn) at(screen, x, y) = pixel(now, x, y);
  return drawn;
}

struct Scene {
  explicit Scene(int32_t count) : rows(count) {
    MetricsInput metrics;
    metrics.text_height = metrics.min_row_height = 6;
    input.metrics = ComputeMetrics(metrics);
    input.width = kWidth;
    input.height = kHeight;
    input.total_line = true;
    columns = {{0, 20}, {1, 15}, {2, 40}};
    rows.other_height = 11;
  }
  Shown shown() {
    input.columns = columns;
    input.rows = &rows;
    const GridPage page = lay_out(input);
    Shown out = shown_page(page);
    for (ShownRow& row : out.rows)
      row.state = static_cast<uint32_t>(row.place.position == caret) +
                  (row.place.position == changed ? 7u : 0u);
    if (hover < static_cast<int>(out.headers.size())) out.headers[static_cast<size_t>(hover)] = 2;
    out.focus = intersect(focus_rect(page, mode, caret, caret_column), page.rows_area);
    out.totals = totals;
    return out;
  }
  PageInput input;
  std::vector<Column> columns;
  TestRows rows;
  int32_t caret = 0, caret_column = 0, changed = -1;
  int hover = 99;
  uint64_t totals = 0;
  FocusMode mode = FocusMode::kCell;
};

TEST(GridDamage, DrawnPiecesMakeTheWholePicture) {
  std::mt19937 random(11);
  Scene scene(30);
  for (int i = 0; i < 12; ++i) scene.rows.heights.push_back(3 + static_cast<int>(random() % 25));
  Shown before = scene.shown();
  Screen screen = painted(before);
  for (int round = 0; round < 4000; ++round) {
    switch (random() % 9) {
      case 0:
        scene.input.first_row = static_cast<int32_t>(random() % 30);
        break;
      case 1:
        scene.input.first_row += static_cast<int32_t>(random() % 3) - 1;
        break;
      case 2:
        scene.caret = static_cast<int32_t>(random() % 30);
        break;
      case 3:
        scene.caret_column = static_cast<int32_t>(random() % 3);
        break;
      case 4:
        scene.hover = static_cast<int>(random() % 5);
        break;
      case 5:
        scene.changed = static_cast<int32_t>(random() % 30);
        break;
      case 6:
        scene.rows.heights[random() % 12] = 3 + static_cast<int>(random() % 25);
        break;
      case 7:
        ++scene.totals;
        break;
      default:
        scene.mode = static_cast<FocusMode>(random() % 3);
    }
    if (random() % 30 == 0) scene.rows.rows = static_cast<int32_t>(random() % 30);
    if (random() % 40 == 0) scene.input.first_column = static_cast<int32_t>(random() % 3);
    const Shown now = scene.shown();
    apply(screen, damage_between(before, now), now);
    ASSERT_EQ(screen, painted(now)) << "round " << round;
    before = now;
  }
}

TEST(GridDamage, UnchangedLooksAreNotDrawn) {
  Scene scene(100);
  const Shown shown = scene.shown();
  const Damage damage = damage_between(shown, shown);
  EXPECT_TRUE(damage.draw.empty());
  EXPECT_EQ(damage.move_by, 0);
}

TEST(GridDamage, SmallChangesDrawLittle) {
  Scene scene(100);
  Shown before = scene.shown();
  Screen screen = painted(before);
  const auto drawn = [&] {
    const Shown now = scene.shown();
    const int64_t pixels = apply(screen, damage_between(before, now), now);
    before = now;
    return pixels;
  };
  const int row = 11 * kWidth;
  scene.input.first_row = 1;
  EXPECT_LE(drawn(), 3 * row) << "one row on: the new row and the one that was cut";
  scene.caret = 3;
  EXPECT_LE(drawn(), 2 * row);
  scene.caret_column = 1;
  EXPECT_LE(drawn(), row) << "two cells of one row";
  scene.hover = 1;
  EXPECT_LE(drawn(), 15 * (kHeight - 5 * 11));
  scene.input.first_row = 50;
  EXPECT_GT(drawn(), 4 * row);
}

}  // namespace
}  // namespace kestrelon
