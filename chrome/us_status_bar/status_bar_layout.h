// Where the panels of a status bar lie: numbers alone.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "frame/kit/pixel_view.h"
#include "frame/kit/scale.h"

namespace kestrelon::status_bar {

/// Numbered as ENUM_PANEL_SIZE.
enum class Sizing { kFixed = 0, kSpring = 1, kContents = 2 };

/// What layout knows of a panel; pixels of the screen.
struct Item {
  bool visible = true;
  Sizing sizing = Sizing::kFixed;
  int64_t width = 0;      ///< of a fixed panel
  int64_t min_width = 0;  ///< of any
  int64_t content = 0;    ///< what its content needs, edges included
};

struct Shape {
  int width = 0;
  int height = 0;
  bool grip = false;
  Scale scale;
};

struct Arrangement {
  std::vector<PixelRect> panels;  ///< empty for one that is hidden or lies beyond the end
  PixelRect room;                 ///< between the edges and the grip
  PixelRect grip;
  bool operator==(const Arrangement&) const = default;
};

/// Panels from left to right. Springs share what the others leave, to the pixel; where nothing is
/// left they keep their least width, and what does not fit any more is clipped at the end.
Arrangement arrange(const Shape& shape, std::span<const Item> items);

/// Panels count from 1.
inline constexpr int kNothing = 0, kGrip = -1;
int hit(const Arrangement& bar, int x, int y);

/// Image and text within a panel. The image stands before the text, both together aligned (0 left,
/// 1 in the middle, 2 right); a text that is too wide keeps what room there is.
struct Face {
  PixelRect image, text;
};
struct Content {
  int image_width = 0, image_height = 0;
  int text_width = 0;
  int alignment = 0;
};
Face face(const PixelRect& panel, const Content& content, Scale scale);
/// The width a panel needs to show its content whole.
int needed_width(const Content& content, Scale scale);

/// The part of a progress bar that is filled, from its left; 0 for any limit that is not positive.
int filled_width(double value, double most, int width);

}  // namespace kestrelon::status_bar
