#include "imaging/image_list/image_strip.h"

#include <algorithm>
#include <cstring>

namespace kestrelon {
namespace {

constexpr int32_t kFirstGrowth = 8;  // cells
// A strip that outgrows so many bytes takes all it may ever need, 4 MB: what is not used of it is
// never touched, and no further copies are made.
constexpr size_t kLastGrowth = 65536;

// Copies rows and keeps every colour byte at or below its alpha.
void copy_sound_rows(const ImageView& from, const MutableImageView& to) {
  for (int32_t y = 0; y < from.height; ++y) {
    const uint8_t* in = from.row(y);
    uint8_t* out = to.row(y);
    for (int32_t x = 0; x < from.width; ++x, in += 4, out += 4) {
      for (int c = 0; c < 3; ++c) out[c] = std::min(in[c], in[3]);
      out[3] = in[3];
    }
  }
}

// The drawing takes the source as it is: no other size, no turn.
bool draws_plainly(const RenderArguments& args, int32_t width, int32_t height) {
  const bool whole_size = (args.destWidth == 0 || args.destWidth == width) &&
                          (args.destHeight == 0 || args.destHeight == height);
  const bool whole_source = args.SrcX <= 0 && args.SrcY <= 0 &&
                            (args.SrcWidth == 0 || args.SrcWidth == width) &&
                            (args.SrcHeight == 0 || args.SrcHeight == height);
  return whole_size && whole_source && args.Angle == 0;
}

}  // namespace

ImageStrip::ImageStrip(int32_t cell_width, int32_t cell_height, PixelStoreFactory factory)
    : cell_width_(cell_width),
      cell_height_(cell_height),
      factory_(std::move(factory)),
      strip_(factory_),
      single_(factory_) {
  strip_.set_HighQualityInterpolation(true);
  single_.set_HighQualityInterpolation(true);
}

bool ImageStrip::reserve(int32_t cells) {
  if (cells <= capacity_) return true;
  if (cells > max_size()) return false;
  int32_t wanted = cells;
  if (capacity_ > 0) {
    const int64_t doubled = std::max<int64_t>(int64_t{capacity_} * 2, kFirstGrowth);
    const bool last = static_cast<size_t>(doubled) * cell_bytes() > kLastGrowth;
    wanted =
        last ? max_size() : static_cast<int32_t>(std::clamp<int64_t>(doubled, cells, max_size()));
  }
  c32bppDIB larger(factory_);
  if (!larger.InitializeDIB(cell_width_, wanted * cell_height_)) {
    wanted = cells;  // just enough may still fit
    if (!larger.InitializeDIB(cell_width_, wanted * cell_height_)) return false;
  }
  const size_t used = cell_bytes() * static_cast<size_t>(size_);
  const size_t whole = cell_bytes() * static_cast<size_t>(wanted);
  if (used != 0) std::memcpy(larger.bits() + whole - used, memory(size_ - 1), used);
  larger.set_alpha(AlphaType::Complex);
  strip_.SwapDIBs(larger);
  capacity_ = wanted;
  return true;
}

uint8_t* ImageStrip::memory(int32_t at) {
  return strip_.bits() + cell_bytes() * static_cast<size_t>(capacity_ - 1 - at);
}

void ImageStrip::insert(int32_t at) {
  // Later cells lie lower in memory; they move down by one.
  ++size_;
  uint8_t* const end = memory(size_ - 1);
  const size_t moved = cell_bytes() * static_cast<size_t>(size_ - 1 - at);
  if (moved != 0) std::memmove(end, end + cell_bytes(), moved);
  std::memset(memory(at), 0, cell_bytes());
}

void ImageStrip::remove(int32_t at) {
  uint8_t* const end = memory(size_ - 1);
  const size_t moved = cell_bytes() * static_cast<size_t>(size_ - 1 - at);
  if (moved != 0) std::memmove(end + cell_bytes(), end, moved);
  --size_;
}

void ImageStrip::clear() {
  strip_.DestroyDIB();
  single_.DestroyDIB();
  size_ = capacity_ = 0;
}

void ImageStrip::append_cells(const c32bppDIB& picture, int32_t count) {
  const int32_t columns = picture.Width() / cell_width_;
  const ImageView from = picture.view();
  for (int32_t i = 0; i < count; ++i) {
    const ImageRect place{i % columns * cell_width_, i / columns * cell_height_, cell_width_,
                          cell_height_};
    ++size_;
    copy_sound_rows(from.part(place), cell(size_ - 1));
  }
}

ImageView ImageStrip::cell(int32_t at) const {
  return strip_.view().part({0, at * cell_height_, cell_width_, cell_height_});
}

MutableImageView ImageStrip::cell(int32_t at) {
  return strip_.view().part({0, at * cell_height_, cell_width_, cell_height_});
}

std::span<const uint8_t> ImageStrip::bytes() const {
  const size_t used = cell_bytes() * static_cast<size_t>(size_);
  if (used == 0) return {};
  return {strip_.bits() + cell_bytes() * static_cast<size_t>(capacity_) - used, used};
}

bool ImageStrip::copy_to(c32bppDIB& out) const {
  const auto all = bytes();
  if (all.empty() || !out.InitializeDIB(cell_width_, cell_height_ * size_)) return false;
  std::memcpy(out.bits(), all.data(), all.size());
  out.set_alpha(AlphaType::Complex);
  return true;
}

bool ImageStrip::extract(int32_t at, c32bppDIB& out) const {
  const bool fits = out.has_image() && out.Width() == cell_width_ && out.Height() == cell_height_;
  if (!fits && !out.InitializeDIB(cell_width_, cell_height_)) return false;
  std::memcpy(out.bits(), cell(at).row(cell_height_ - 1), cell_bytes());
  out.set_alpha(AlphaType::Complex);
  out.set_image_type(ImageFormat::BitmapPargb);
  return true;
}

bool ImageStrip::render(int32_t at, DrawingSurface* destination,
                        const RenderArguments& arguments) const {
  if (!draws_plainly(arguments, cell_width_, cell_height_))
    return extract(at, single_) && single_.Render(destination, arguments);
  RenderArguments args = arguments;
  args.destWidth = args.SrcWidth = cell_width_;
  args.destHeight = args.SrcHeight = cell_height_;
  args.SrcX = 0;
  args.SrcY = at * cell_height_;
  return strip_.Render(destination, args);
}

}  // namespace kestrelon
