#include "controls/us_picture_lcd/lcd_segments.h"

#include <algorithm>

#include "base/fold.h"
#include "controls/us_picture_lcd/lcd_text.h"

namespace kestrelon {
namespace {

constexpr uint16_t kSides = kUpperRight | kLowerRight | kLowerLeft | kUpperLeft;
constexpr uint16_t kLeft = kUpperLeft | kLowerLeft, kRight = kUpperRight | kLowerRight;
constexpr uint16_t kStem = kStemUpper | kStemLower;
constexpr uint16_t kRising = kSlopeUpperRight | kSlopeLowerLeft;
constexpr uint16_t kFalling = kSlopeUpperLeft | kSlopeLowerRight;

constexpr uint16_t kDigits[10] = {
    kTop | kSides | kBottom,
    kRight,
    kTop | kUpperRight | kMiddle | kLowerLeft | kBottom,
    kTop | kRight | kMiddle | kBottom,
    kUpperLeft | kMiddle | kRight,
    kTop | kUpperLeft | kMiddle | kLowerRight | kBottom,
    kTop | kLeft | kMiddle | kLowerRight | kBottom,
    kTop | kRight,
    kTop | kSides | kMiddle | kBottom,
    kTop | kUpperLeft | kMiddle | kRight | kBottom,
};

constexpr uint16_t kLetters[26] = {
    kTop | kSides | kMiddle,                                    // A
    kTop | kRight | kStem | kMiddleRight | kBottom,             // B
    kTop | kLeft | kBottom,                                     // C
    kTop | kRight | kStem | kBottom,                            // D
    kTop | kLeft | kMiddle | kBottom,                           // E
    kTop | kLeft | kMiddleLeft,                                 // F
    kTop | kLeft | kMiddleRight | kLowerRight | kBottom,        // G
    kSides | kMiddle,                                           // H
    kTop | kStem | kBottom,                                     // I
    kRight | kBottom | kLowerLeft,                              // J
    kLeft | kMiddleLeft | kSlopeUpperRight | kSlopeLowerRight,  // K
    kLeft | kBottom,                                            // L
    kSides | kSlopeUpperLeft | kSlopeUpperRight,                // M
    kSides | kFalling,                                          // N
    kTop | kSides | kBottom,                                    // O
    kTop | kLeft | kUpperRight | kMiddle,                       // P
    kTop | kSides | kBottom | kSlopeLowerRight,                 // Q
    kTop | kLeft | kUpperRight | kMiddle | kSlopeLowerRight,    // R
    kTop | kUpperLeft | kMiddle | kLowerRight | kBottom,        // S
    kTop | kStem,                                               // T
    kSides | kBottom,                                           // U
    kLeft | kRising,                                            // V
    kSides | kSlopeLowerLeft | kSlopeLowerRight,                // W
    kFalling | kRising,                                         // X
    kSlopeUpperLeft | kSlopeUpperRight | kStemLower,            // Y
    kTop | kRising | kBottom,                                   // Z
};

struct Sign {
  wchar_t character;
  uint16_t bars;
};

constexpr Sign kSigns[] = {
    {L' ', 0},
    {L'-', kMiddle},
    {L'_', kBottom},
    {L'=', kMiddle | kBottom},
    {0xB0, kTop | kUpperRight | kUpperLeft | kMiddle},  // degree
    {L'+', kMiddle | kStem},
    {L'*', kMiddle | kStem | kRising | kFalling},
    {L'/', kRising},
    {L'\\', kFalling},
    {L'$', kTop | kUpperLeft | kMiddle | kLowerRight | kBottom | kStem},
    {L'%', kUpperLeft | kRising | kLowerRight},
    {L'(', kSlopeUpperRight | kSlopeLowerRight},
    {L')', kSlopeUpperLeft | kSlopeLowerLeft},
    {L'<', kSlopeUpperRight | kSlopeLowerRight},
    {L'>', kSlopeUpperLeft | kSlopeLowerLeft},
    {L'\'', kStemUpper},
    {L'"', kUpperLeft | kStemUpper},
    {L'|', kStem},
    {L'?', kTop | kUpperRight | kMiddleRight | kStemLower},
};

// Bars of a character, and whether they are letters' own; nothing for blanks of unknown ones.
struct Bars {
  uint16_t lit = 0;
  bool fourteen = false;
};

Bars bars_of(wchar_t c) {
  if (c >= L'0' && c <= L'9') return {kDigits[c - L'0'], false};
  for (const Sign& sign : kSigns)
    if (sign.character == c) return {sign.bars, (sign.bars & ~kSevenBars) != 0};
  const wchar_t letter = folded_letter(c);
  if (letter >= L'a' && letter <= L'z') return {kLetters[letter - L'a'], true};
  return {};
}

bool& mark_of(LcdCell& cell, wchar_t mark) {
  return mark == L'.' ? cell.point : mark == L',' ? cell.comma : cell.colon;
}

constexpr float kSlant = 0.07f;  // to the right at the top, of the height

// Shapes of one place, leaned and moved to where the place is.
class Pen {
 public:
  Pen(std::vector<LcdShape>& out, const LcdLayout& layout, int index)
      : out_(out), layout_(layout), x_(layout.left + layout.advance * static_cast<float>(index)) {}

  void shape(std::initializer_list<LcdPoint> points) {
    LcdShape& fresh = out_.emplace_back();
    fresh.reserve(points.size());
    for (const LcdPoint& point : points)
      fresh.push_back(
          {x_ + point.x + (layout_.height / 2 - point.y) * kSlant, layout_.top + point.y});
  }
  // Bars with pointed ends; ends that have passed each other make none.
  void level(float from, float to, float y) {
    const float half = layout_.thickness() / 2;
    if (to - from < 2 * half) return;
    shape({{from, y},
           {from + half, y - half},
           {to - half, y - half},
           {to, y},
           {to - half, y + half},
           {from + half, y + half}});
  }
  void upright(float x, float from, float to) {
    const float half = layout_.thickness() / 2;
    if (to - from < 2 * half) return;
    shape({{x, from},
           {x + half, from + half},
           {x + half, to - half},
           {x, to},
           {x - half, to - half},
           {x - half, from + half}});
  }
  void slope(LcdPoint from, LcdPoint to) {
    const float thick = layout_.thickness() * (to.y > from.y ? 1.3f : -1.3f);
    shape({from, {to.x, to.y - thick}, to, {from.x, from.y + thick}});
  }
  void dot(float x, float y, float size) {
    const float half = size / 2;
    shape({{x - half, y - half}, {x + half, y - half}, {x + half, y + half}, {x - half, y + half}});
  }

 private:
  std::vector<LcdShape>& out_;
  const LcdLayout& layout_;
  float x_;
};

}  // namespace

LcdCells lcd_cells(std::wstring_view text) {
  LcdCells out;
  out.cells.reserve(text.size());
  for (const wchar_t c : text) {
    if (is_lcd_mark(c)) {
      if (out.cells.empty() || mark_of(out.cells.back(), c)) out.cells.emplace_back();
      mark_of(out.cells.back(), c) = true;
      continue;
    }
    const Bars bars = bars_of(c);
    out.cells.emplace_back().lit = bars.lit;
    out.fourteen |= bars.fourteen;
  }
  return out;
}

LcdLayout lcd_layout(int count, const PixelRect& area, LcdSide side) {
  LcdLayout out;
  const auto wide = static_cast<float>(area.right - area.left);
  const auto high = static_cast<float>(area.bottom - area.top);
  if (count < 1 || wide < 1 || high < 1) return out;
  constexpr float kWidth = 0.52f, kAdvance = 0.78f;  // of the height
  const float all = kAdvance * static_cast<float>(count) + kSlant;
  out.height = std::min(high, wide / all);
  out.width = out.height * kWidth;
  out.advance = out.height * kAdvance;
  const float free = wide - all * out.height;
  const float lean = out.height * kSlant;
  const float share = side == LcdSide::kLeft ? 0.0f : side == LcdSide::kCenter ? 0.5f : 1.0f;
  out.left = static_cast<float>(area.left) + lean + free * share;
  out.top = static_cast<float>(area.top) + (high - out.height) / 2;
  return out;
}

PixelRect LcdLayout::cell(int index) const {
  const float begin = left + advance * static_cast<float>(index) - height * 0.05f;
  return {static_cast<int>(begin), static_cast<int>(top), static_cast<int>(begin + advance),
          static_cast<int>(top + height) + 1};
}

void append_bars(std::vector<LcdShape>& out, uint16_t bars, bool fourteen, const LcdLayout& layout,
                 int index) {
  Pen pen(out, layout, index);
  const float t = layout.thickness(), half = t / 2, gap = t * 0.12f;
  const float w = layout.width, h = layout.height, middle = h / 2, center = w / 2;
  const float first = half + gap, last = w - half - gap;
  if (bars & kTop) pen.level(first, last, half);
  if (bars & kBottom) pen.level(first, last, h - half);
  if (bars & kUpperLeft) pen.upright(half, first, middle - gap);
  if (bars & kLowerLeft) pen.upright(half, middle + gap, h - half - gap);
  if (bars & kUpperRight) pen.upright(w - half, first, middle - gap);
  if (bars & kLowerRight) pen.upright(w - half, middle + gap, h - half - gap);
  if (!fourteen) {
    if (bars & kMiddle) pen.level(first, last, middle);
    return;
  }
  if (bars & kMiddleLeft) pen.level(first, center - gap, middle);
  if (bars & kMiddleRight) pen.level(center + gap, last, middle);
  if (bars & kStemUpper) pen.upright(center, t + gap, middle - gap);
  if (bars & kStemLower) pen.upright(center, middle + gap, h - t - gap);
  const float near_x = t + gap, far_x = center - half - gap;
  const float near_y = t + gap, far_y = middle - half - gap;
  if (bars & kSlopeUpperLeft) pen.slope({near_x, near_y}, {far_x, far_y});
  if (bars & kSlopeUpperRight) pen.slope({w - near_x, near_y}, {w - far_x, far_y});
  if (bars & kSlopeLowerLeft) pen.slope({near_x, h - near_y}, {far_x, h - far_y});
  if (bars & kSlopeLowerRight) pen.slope({w - near_x, h - near_y}, {w - far_x, h - far_y});
}

void append_marks(std::vector<LcdShape>& out, const LcdCell& cell, const LcdLayout& layout,
                  int index) {
  Pen pen(out, layout, index);
  const float t = layout.thickness(), h = layout.height;
  const float x = layout.width + h * 0.11f;
  if (cell.point || cell.comma) pen.dot(x, h - t / 2, t);
  if (cell.comma)
    pen.shape({{x - t / 2, h - t / 4}, {x + t / 2, h - t / 4}, {x - t / 2, h + t * 0.7f}});
  if (!cell.colon) return;
  pen.dot(x, h * 0.32f, t);
  pen.dot(x, h * 0.68f, t);
}

namespace {

constexpr int kSlices = 4;  // of a row of pixels

// Where a level line cuts a convex shape.
struct Cut {
  float from = 0, to = 0;
};

Cut cut_at(std::span<const LcdPoint> shape, float y) {
  Cut out{1e9f, -1e9f};
  for (size_t i = 0; i < shape.size(); ++i) {
    const LcdPoint& a = shape[i];
    const LcdPoint& b = shape[i + 1 == shape.size() ? 0 : i + 1];
    if ((a.y <= y) == (b.y <= y)) continue;
    const float x = a.x + (b.x - a.x) * (y - a.y) / (b.y - a.y);
    out.from = std::min(out.from, x);
    out.to = std::max(out.to, x);
  }
  return out;
}

uint32_t mixed(uint32_t under, uint32_t over, float part) {
  const uint32_t weight = (static_cast<uint32_t>(part * 512) + 1) / 2, rest = 256 - weight;
  const uint32_t ends = ((under & 0xFF00FF) * rest + (over & 0xFF00FF) * weight) >> 8;
  const uint32_t green = ((under & 0xFF00) * rest + (over & 0xFF00) * weight) >> 8;
  return (ends & 0xFF00FF) | (green & 0xFF00);
}

}  // namespace

void fill_shape(const PixelView& view, const PixelRect& clip, std::span<const LcdPoint> shape,
                ColorRef color, float opacity) {
  if (shape.size() < 3 || opacity <= 0) return;
  const auto [left, right] = std::ranges::minmax(shape, {}, &LcdPoint::x);
  const auto [high, low] = std::ranges::minmax(shape, {}, &LcdPoint::y);
  const PixelRect box = intersect(intersect(clip, view.bounds()),
                                  {static_cast<int>(left.x) - 1, static_cast<int>(high.y) - 1,
                                   static_cast<int>(right.x) + 2, static_cast<int>(low.y) + 2});
  if (box.empty()) return;
  const uint32_t pixel = to_pixel(color);
  std::vector<float> covered(static_cast<size_t>(box.right - box.left));
  for (int y = box.top; y < box.bottom; ++y) {
    std::ranges::fill(covered, 0.0f);
    for (int slice = 0; slice < kSlices; ++slice) {
      const Cut cut =
          cut_at(shape, static_cast<float>(y) + (static_cast<float>(slice) + 0.5f) / kSlices);
      const int begin = std::max(box.left, static_cast<int>(std::max(cut.from, 0.0f)));
      const int end = std::min(box.right, static_cast<int>(std::max(cut.to, -1.0f)) + 1);
      for (int x = begin; x < end; ++x) {
        const auto edge = static_cast<float>(x);
        const float part = std::min(cut.to, edge + 1) - std::max(cut.from, edge);
        if (part > 0) covered[static_cast<size_t>(x - box.left)] += part / kSlices;
      }
    }
    uint32_t* const row = view.row(y);
    for (int x = box.left; x < box.right; ++x) {
      const float part = covered[static_cast<size_t>(x - box.left)] * opacity;
      if (part > 0) row[x] = mixed(row[x], pixel, std::min(part, 1.0f));
    }
  }
}

}  // namespace kestrelon
