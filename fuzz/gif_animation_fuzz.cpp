// Animated GIFs against hostile files: a file that was read can be played, changed in its colours
// and read again; frames stay within the canvas, pixels are opaque or nothing.
#include <cstdlib>
#include <cstring>

#include "imaging/gif_animation/gif_canvas.h"

using namespace kestrelon;

namespace {

constexpr size_t kPixelBudget = size_t{1} << 22;  // of one input; more of the same tells no more

void require(bool condition) {
  if (!condition) std::abort();
}

void check_pixels(const c32bppDIB& image) {
  for (size_t at = 0; at < image.pixel_count() * 4; at += 4) {
    uint32_t pixel;
    std::memcpy(&pixel, image.bits() + at, 4);
    require(pixel == 0 || pixel >> 24 == 255);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  GifFile file;
  if (!file.read({data, data + size})) {
    require(file.frames().empty() && file.bytes().empty());
    return 0;
  }
  const auto width = static_cast<size_t>(file.width()), height = static_cast<size_t>(file.height());
  GifCanvas canvas;
  require(canvas.open(file));
  size_t spent = 0;
  for (size_t i = 0; i < file.frames().size() && spent < kPixelBudget; ++i) {
    const GifFrame& frame = file.frames()[i];
    require(size_t{frame.left} + frame.width <= width &&
            size_t{frame.top} + frame.height <= height);
    canvas.show(i);
    spent += width * height;
  }
  check_pixels(canvas.image());

  GifTableCache cache;
  cache.store(file);
  for (size_t i = 0; i <= canvas.shown(); ++i)
    for (uint8_t& channel : file.table(i)) channel = static_cast<uint8_t>(~channel);
  if (spent < kPixelBudget) canvas.recompose();
  cache.restore(file);
  GifFile again;
  require(again.read({file.bytes().begin(), file.bytes().end()}));
  require(again.frames().size() == file.frames().size());
  return 0;
}
