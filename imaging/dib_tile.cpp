// Tiling: one tile with all effects, repeated by plain copies.
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {
namespace {

// Repeats the first `tile_width` pixels of each row along the row.
void repeat_columns(c32bppDIB& strip, int32_t tile_width) {
  for (int32_t y = 0; y < strip.Height(); ++y) {
    uint8_t* row = strip.row(y);
    size_t filled = static_cast<size_t>(tile_width) * 4;
    while (filled < strip.scanWidth()) {
      const size_t bytes = std::min(filled, strip.scanWidth() - filled);
      std::memcpy(row + filled, row, bytes);
      filled += bytes;
    }
  }
}

}  // namespace

bool c32bppDIB::TileImage(DrawingSurface* destination, const RenderArguments& arguments) const {
  RenderArguments args = arguments;
  if (!has_image() || (!destination && !args.destHostDIB)) return false;
  if (args.Opacity < 1) return true;
  auto magnitude = [](int32_t v) { return v == INT32_MIN ? INT32_MAX : std::abs(v); };
  args.destWidth = magnitude(args.destWidth);
  args.destHeight = magnitude(args.destHeight);
  if (args.destWidth == 0 || args.destHeight == 0) return false;
  const int32_t wanted_width = args.SrcWidth == 0 ? width_ : magnitude(args.SrcWidth);
  const int32_t wanted_height = args.SrcHeight == 0 ? height_ : magnitude(args.SrcHeight);
  args.SrcX = std::max(args.SrcX, 0);
  args.SrcY = std::max(args.SrcY, 0);
  const ImageRect area =
      clip_to(args.SrcX, args.SrcY, wanted_width, wanted_height, width_, height_);
  if (area.empty()) return true;
  args.Angle = 0;
  args.SrcWidth = std::min(area.width, args.destWidth);
  args.SrcHeight = std::min(area.height, args.destHeight);
  if (area.width >= args.destWidth && area.height >= args.destHeight)
    return Render(destination, args);

  c32bppDIB strip(factory_);
  strip.take_settings(*this);
  if (!strip.InitializeDIB(args.destWidth, args.SrcHeight)) return false;
  RenderArguments tile = args;
  tile.destX = tile.destY = 0;
  tile.destWidth = args.SrcWidth;
  tile.destHeight = args.SrcHeight;
  tile.destHostDIB = &strip;
  tile.CenterOnDestXY = false;
  if (!Render(nullptr, tile)) return false;
  repeat_columns(strip, args.SrcWidth);
  strip.alpha_ = args.Opacity % 100 == 0 ? alpha_ : AlphaType::Complex;

  int64_t left = args.destX, top = args.destY;
  if (args.CenterOnDestXY) {
    left -= args.destWidth / 2;
    top -= args.destHeight / 2;
  }
  if (left < INT32_MIN || top < INT32_MIN) return true;
  RenderArguments put;
  put.destX = static_cast<int32_t>(left);
  put.destHostDIB = args.destHostDIB;
  for (int32_t y = 0; y < args.destHeight; y += args.SrcHeight) {
    if (top + y > INT32_MAX) break;
    put.destY = static_cast<int32_t>(top + y);
    put.destHeight = put.SrcHeight = std::min(args.SrcHeight, args.destHeight - y);
    if (!strip.Render(destination, put)) return false;
    if (args.destHeight - y <= args.SrcHeight) break;
  }
  return true;
}

}  // namespace kestrelon
