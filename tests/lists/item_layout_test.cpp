#include "lists/item_layout.h"

#include <gtest/gtest.h>

#include <random>

namespace kestrelon {
namespace {

ItemMetrics everything(int dpi) {
  ItemMetrics metrics = item_metrics(dpi, scale_pixels(13, dpi));
  metrics.check_side = scale_pixels(13, dpi);
  metrics.image_width = metrics.image_height = scale_pixels(16, dpi);
  metrics.expander = scale_pixels(19, dpi);
  return metrics;
}

bool inside(const PixelRect& part, const PixelRect& row) {
  return part.empty() || (part.left >= row.left && part.right <= row.right);
}

TEST(ItemLayout, PartsFollowEachOtherAndNeverOverlapInAnyWidth) {
  for (const int dpi : {96, 120, 144, 192})
    for (int width = 0; width < 400; ++width)
      for (const int indent : {0, 19, 1000}) {
        const PixelRect row{7, 40, 7 + width, 40 + item_height(everything(dpi))};
        const ItemParts parts = layout_item(row, everything(dpi), indent, false);
        int last = row.left;
        for (const PixelRect& part : {parts.expander, parts.check, parts.image, parts.text}) {
          ASSERT_TRUE(inside(part, row)) << width;
          if (part.empty()) continue;
          ASSERT_GE(part.left, last);
          last = part.right;
        }
      }
}

TEST(ItemLayout, ReadingFromRightToLeftIsTheMirrorImage) {
  const PixelRect row{10, 0, 211, 20};
  const ItemParts there = layout_item(row, everything(96), 19, false);
  const ItemParts back = layout_item(row, everything(96), 19, true);
  EXPECT_EQ(mirror_rect(there.text, row), back.text);
  EXPECT_EQ(back.expander.right, row.right - 19);
  std::mt19937 random(1);
  for (int i = 0; i < 2000; ++i) {
    const int x = static_cast<int>(random() % 240), y = static_cast<int>(random() % 24);
    EXPECT_EQ(hit_item(there, x, y), hit_item(back, row.left + row.right - 1 - x, y)) << x;
  }
}

TEST(ItemLayout, SmallTargetsTakeTheWholeHeight) {
  const PixelRect row{0, 100, 200, 140};
  const ItemParts parts = layout_item(row, everything(96), 0, false);
  EXPECT_EQ(hit_item(parts, parts.check.left, 100), ItemPart::kCheck);
  EXPECT_EQ(hit_item(parts, parts.check.right - 1, 139), ItemPart::kCheck);
  EXPECT_EQ(hit_item(parts, parts.check.right, 139), ItemPart::kRow);
  EXPECT_EQ(hit_item(parts, parts.image.left, 100), ItemPart::kRow);
  EXPECT_EQ(hit_item(parts, parts.check.left, 99), ItemPart::kNone);
  EXPECT_EQ(hit_item(parts, parts.check.left, 140), ItemPart::kNone);
}

TEST(ItemLayout, RowsHoldTheHighestPart) {
  ItemMetrics metrics = item_metrics(96, 13);
  EXPECT_EQ(item_height(metrics), 15);
  EXPECT_EQ(item_height(metrics, 3), 41);
  metrics.image_height = 32;
  EXPECT_EQ(item_height(metrics), 34);
  metrics.image_height = 0;
  metrics.text_height = 0;
  metrics.vertical = 0;
  EXPECT_EQ(item_height(metrics), 1);
}

}  // namespace
}  // namespace kestrelon
