#include "imaging/gif_animation/gif_canvas.h"

#include <algorithm>

namespace kestrelon {
namespace {

uint32_t* pixels_at(c32bppDIB& image, size_t x, size_t y) {
  return reinterpret_cast<uint32_t*>(image.row(static_cast<int32_t>(y))) + x;
}

// Whether the opaque ones of `indexes` changed a pixel.
bool draw_run(uint32_t* out, std::span<const uint8_t> indexes, const Palette& palette) {
  uint32_t changed = 0;
  for (const uint8_t index : indexes) {
    const uint32_t colour = palette[index];
    const uint32_t pixel = colour != 0 ? colour : *out;
    changed |= pixel ^ *out;
    *out++ = pixel;
  }
  return changed != 0;
}

}  // namespace

bool GifCanvas::open(const GifFile& file) {
  close();
  if (file.frames().empty() || !image_.InitializeDIB(file.width(), file.height())) return false;
  image_.set_image_type(ImageFormat::Gif);
  file_ = &file;
  return true;
}

void GifCanvas::close() {
  file_ = nullptr;
  image_.DestroyDIB();
  below_ = {};
  shown_ = kNothing;
}

bool GifCanvas::show(size_t index) {
  if (index == shown_) return false;
  bool changed = false;
  if (shown_ != kNothing && index < shown_) {
    std::fill_n(image_.bits(), image_.pixel_count() * 4, uint8_t{0});
    shown_ = kNothing;
    changed = true;
  }
  while (shown_ != index) changed |= step();
  return changed;
}

void GifCanvas::recompose() {
  const size_t present = shown_;
  if (present == kNothing) return;
  std::fill_n(image_.bits(), image_.pixel_count() * 4, uint8_t{0});
  shown_ = kNothing;
  show(present);
}

bool GifCanvas::step() {
  const auto& frames = file_->frames();
  const bool cleared = shown_ != kNothing && dispose(frames[shown_]);
  shown_ = shown_ == kNothing ? 0 : shown_ + 1;
  if (frames[shown_].disposal == GifDisposal::Restore) save_below(frames[shown_]);
  return draw(shown_) || cleared;
}

bool GifCanvas::dispose(const GifFrame& frame) {
  if (frame.disposal == GifDisposal::Clear) {
    for (size_t y = 0; y < frame.height; ++y)
      std::fill_n(pixels_at(image_, frame.left, frame.top + y), frame.width, 0u);
    return true;
  }
  if (frame.disposal != GifDisposal::Restore) return false;
  for (size_t y = 0; y < frame.height; ++y)
    std::copy_n(below_.data() + y * frame.width, frame.width,
                pixels_at(image_, frame.left, frame.top + y));
  return true;
}

void GifCanvas::save_below(const GifFrame& frame) {
  below_.resize(size_t{frame.width} * frame.height);
  for (size_t y = 0; y < frame.height; ++y)
    std::copy_n(pixels_at(image_, frame.left, frame.top + y), frame.width,
                below_.data() + y * frame.width);
}

// What broken or missing data does not reach keeps what lay there.
bool GifCanvas::draw(size_t index) {
  const gif::FrameSource source = file_->source(index);
  const auto& place = source.descriptor;
  const bool can_be_decoded = source.min_code_size >= 1 && source.min_code_size <= 8;
  if (place.width == 0 || place.height == 0 || !can_be_decoded) return false;
  const Palette palette = gif::make_palette(source);
  bool changed = false;
  gif::decode_rows(source, [&](size_t x, int32_t y, std::span<const uint8_t> indexes) {
    uint32_t* const out = pixels_at(image_, place.left + x, place.top + static_cast<size_t>(y));
    changed |= draw_run(out, indexes, palette);
  });
  return changed;
}

}  // namespace kestrelon
