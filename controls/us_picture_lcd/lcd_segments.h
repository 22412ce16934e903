// Digits and letters made of bars: which bars of a place are lit, where they lie, and their pixels.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "frame/kit/pixel_view.h"

namespace kestrelon {

// The bars of a place. Of seven, the two halves in the middle are one.
enum LcdSegment : uint16_t {
  kTop = 1,
  kUpperRight = 2,
  kLowerRight = 4,
  kBottom = 8,
  kLowerLeft = 16,
  kUpperLeft = 32,
  kMiddleLeft = 64,
  kMiddleRight = 128,
  kSlopeUpperLeft = 256,
  kStemUpper = 512,
  kSlopeUpperRight = 1024,
  kSlopeLowerLeft = 2048,
  kStemLower = 4096,
  kSlopeLowerRight = 8192,
};
inline constexpr uint16_t kMiddle = kMiddleLeft | kMiddleRight;
inline constexpr uint16_t kSevenBars = 255;
inline constexpr uint16_t kFourteenBars = 16383;

/// One place and what stands between it and the next.
struct LcdCell {
  uint16_t lit = 0;
  bool point = false, comma = false, colon = false;
  bool operator==(const LcdCell&) const = default;
};

struct LcdCells {
  std::vector<LcdCell> cells;
  bool fourteen = false;  ///< a character occurs that seven bars cannot show
};

/// Small letters and accents are taken as capitals; what no bars can show is blank. A mark joins
/// the place before it, or a blank one where there is none or it has such a mark.
LcdCells lcd_cells(std::wstring_view text);

struct LcdPoint {
  float x = 0, y = 0;
};
using LcdShape = std::vector<LcdPoint>;  // convex

/// Measures of a row of places, in pixels.
struct LcdLayout {
  float left = 0, top = 0;      // of the first place
  float width = 0, height = 0;  // of a place
  float advance = 0;            // from one place to the next
  bool operator==(const LcdLayout&) const = default;

  float thickness() const { return height * 0.12f; }
  /// The pixels that belong to a place and its marks; none of the next one's lie among them.
  PixelRect cell(int index) const;
};

enum class LcdSide { kLeft, kCenter, kRight };

/// As high as the area, smaller where the places would be too wide together.
LcdLayout lcd_layout(int count, const PixelRect& area, LcdSide side);

/// The shapes of a place's bars and marks at a position.
void append_bars(std::vector<LcdShape>& out, uint16_t bars, bool fourteen, const LcdLayout& layout,
                 int index);
void append_marks(std::vector<LcdShape>& out, const LcdCell& cell, const LcdLayout& layout,
                  int index);

/// Blends a colour over what is there, within `clip`, as far as the shape covers each pixel;
/// `opacity` from 0 to 1.
void fill_shape(const PixelView& view, const PixelRect& clip, std::span<const LcdPoint> shape,
                ColorRef color, float opacity);

}  // namespace kestrelon
