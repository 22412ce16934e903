// `pcMemDC`: an off-screen picture strip, loaded once and copied from.
#pragma once

#include <windows.h>

#include <olectl.h>

#include "frame/dib_section.h"
#include "frame/kit/blit.h"

namespace kestrelon {

/// The colour that a masked draw leaves out.
inline constexpr ColorRef kMaskKey = 0xFF00FF;

class pcMemDC {
 public:
  /// Null while there is no picture.
  HDC hDc() const { return picture_.dc(); }
  int Width() const { return width_; }
  int Height() const { return height_; }
  /// A larger size makes a new, black picture; a smaller or equal one changes nothing. Without the
  /// memory for it both sizes become 0.
  void set_Width(int width);
  void set_Height(int height);

  /// Grows to the size of a bitmap and copies it to the top left. Anything but a bitmap leaves the
  /// picture as it is. The caller keeps what it gave.
  bool CreateFromPicture(IPicture* picture);
  bool CreateFromBitmap(HBITMAP bitmap);

  /// Copies a part to a device context; a width or height of 0 or less means the picture's own.
  /// With a mask, pixels of magenta leave the target as it is.
  void Draw(HDC target, int from_x, int from_y, int width, int height, int x, int y,
            bool use_mask) const;
  /// Stretches a part in the target's own stretching mode; a source width or height of 0 or less
  /// means the picture's own.
  void StretchDraw(HDC target, int x, int y, int width, int height, int from_x, int from_y,
                   int from_width, int from_height) const;

  PixelView pixels() const { return picture_.pixels(); }

 private:
  void grow(int width, int height);

  int width_ = 0;
  int height_ = 0;
  DibSection picture_;  // empty while either size is 0
};

/// The bitmap that a picture object holds and keeps; null for every other kind of picture.
HBITMAP bitmap_of(IPicture* picture);

/// Copies from pixels to a device context, leaving out those of the key colour. The target must be
/// one that can be read back.
void draw_masked(HDC target, const CopyArea& area, const PixelView& source, ColorRef key);

}  // namespace kestrelon
