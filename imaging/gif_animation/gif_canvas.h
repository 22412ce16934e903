// The picture that the frames of a GIF put together.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "imaging/c32bpp_dib.h"
#include "imaging/gif_animation/gif_file.h"

namespace kestrelon {

/// Composes frame after frame on one image of the canvas' size; each frame is decoded when it is
/// shown. Beside the image there is at most one copy of a frame's rectangle, for frames that are to
/// vanish without a trace.
class GifCanvas {
 public:
  static constexpr size_t kNothing = static_cast<size_t>(-1);

  /// `file` outlives the canvas, which keeps nothing of what it showed before. False when memory is
  /// short or the file has no frame.
  bool open(const GifFile& file);
  void close();

  /// Composes frame `index`, from 0 and below the file's number of frames. Frames are meant to be
  /// shown in turn: going back composes from the first one on. True if the picture may differ from
  /// what it was.
  bool show(size_t index);
  /// The colours of the file have changed: composes the present frame anew.
  void recompose();

  /// Premultiplied pixels, alpha 0 or 255; empty unless open.
  const c32bppDIB& image() const { return image_; }
  /// The frame shown last, or kNothing.
  size_t shown() const { return shown_; }

 private:
  bool step();
  bool dispose(const GifFrame& frame);
  void save_below(const GifFrame& frame);
  bool draw(size_t index);

  const GifFile* file_ = nullptr;
  c32bppDIB image_;
  std::vector<uint32_t> below_;  // what a frame to be restored has covered
  size_t shown_ = kNothing;
};

}  // namespace kestrelon
