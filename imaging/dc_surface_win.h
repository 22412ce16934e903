// A device context as a place to draw images on.
#pragma once

#include <windows.h>

#include <memory>

#include "imaging/dib_section_win.h"

namespace kestrelon {

/// Gives the engine the pixels of a device context: the very memory where a 32-bit DIB section is
/// selected and nothing but a rectangle clips it, otherwise a copy that is written back. A context
/// that cannot be read (a printer, a metafile) counts as white paper.
class DcSurface final : public DrawingSurface {
 public:
  /// The context must outlive the surface; coordinates are its logical ones.
  explicit DcSurface(HDC dc) : dc_(dc) {}

  HDC dc() const { return dc_; }
  bool begin_pixels(const ImageRect& wanted, ImageRect& got, MutableImageView& view) override;
  void end_pixels() override;

 private:
  bool open_memory(const ImageRect& area, MutableImageView& view) const;
  bool open_copy(const ImageRect& area, MutableImageView& view);

  HDC dc_;
  std::unique_ptr<PixelStore> copy_;
  ImageRect copied_;
};

}  // namespace kestrelon
