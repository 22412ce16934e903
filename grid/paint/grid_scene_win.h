// What a painter of the grid is given: a page, a look, what it shows and the means to draw it.
#pragma once

#include "frame/surface.h"
#include "grid/layout/page.h"
#include "grid/paint/faces.h"
#include "grid/paint/grid_contents.h"
#include "grid/paint/marks_win.h"
#include "grid/paint/text_win.h"

namespace kestrelon::grid_paint {

using grid_layout::GridPage;
using grid_layout::PlacedColumn;
using grid_layout::PlacedRow;

/// Where images and pictures come from. Sizes are pixels of the screen.
class GridPictures {
 public:
  virtual ~GridPictures() = default;
  /// `image` as a row or a style holds it; empty when there is no such image.
  virtual grid_layout::Size image_size(int32_t image) const = 0;
  virtual void draw_image(HDC dc, int32_t image, const PixelRect& area, bool selected) const = 0;
  virtual grid_layout::Size picture_size(const void* picture) const = 0;
  virtual void draw_picture(HDC dc, const void* picture, const PixelRect& area) const = 0;
};

struct GridScene {
  const GridPage& page;
  const PaintLook& look;
  const GridContents& contents;
  GridFonts& fonts;
  const GridPictures* pictures = nullptr;
  PixelRect focus = {};  ///< the focus mark, empty when it does not show
  int32_t dragged = -1;  ///< position of a heading that follows the mouse
  int dragged_by = 0;    ///< and how far it has gone

  /// A rectangle cut to what the grid may draw on.
  PixelRect seen(const PixelRect& area) const { return intersect(area, page.inner); }
};

/// A clip region that is gone at the end of the block.
class ClipInUse {
 public:
  ClipInUse(HDC dc, const PixelRect& clip) : dc_(dc), saved_(SaveDC(dc)) {
    IntersectClipRect(dc, clip.left, clip.top, clip.right, clip.bottom);
  }
  ClipInUse(const ClipInUse&) = delete;
  ~ClipInUse() { RestoreDC(dc_, saved_); }

 private:
  HDC dc_;
  int saved_;
};

}  // namespace kestrelon::grid_paint
