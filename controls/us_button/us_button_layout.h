// Where picture and caption of a USButton go: pure arithmetic in pixels.
#pragma once

#include <cstdint>

#include "frame/kit/pixel_view.h"

namespace kestrelon::button_layout {

inline constexpr int kMargin = 4;
inline constexpr int kSmallest = 15;  // side below which a button asks for more

/// The places of `ENUM_PIC_ALIGNMENTS`.
enum class PicturePlace {
  kBehindText = 0,
  kBottomEdge = 1,
  kBottomOfCaption = 2,
  kLeftEdge = 3,
  kLeftOfCaption = 4,
  kRightEdge = 5,
  kRightOfCaption = 6,
  kTopEdge = 7,
  kTopOfCaption = 8,
};

struct Content {
  bool has_text = false;
  bool has_picture = false;
  int text_width = 0, text_height = 0;  ///< as measured; used only with text
  int picture_width = 0, picture_height = 0;
  PicturePlace place = PicturePlace::kLeftOfCaption;
};

struct Places {
  PixelRect text;     ///< empty without text
  PixelRect picture;  ///< empty without a picture
};

/// Lays a button of width by height pixels out. A place that is none of the nine leaves the picture
/// at the top left.
Places arrange(int width, int height, const Content& content);

/// `ENUM_ALIGNMENTS` applied to the text: 0 puts its left at `distance`, 2 its right that far from
/// the right edge; its size stays.
PixelRect align_text(const PixelRect& text, int alignment, int distance, int width);

/// The focus mark, which fills a button without round corners.
PixelRect focus_rect(int width, int height, bool square);

}  // namespace kestrelon::button_layout
