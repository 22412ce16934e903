// Copies and other sizes.
#include <cstdlib>
#include <cstring>

#include "imaging/c32bpp_dib.h"
#include "imaging/drawing.h"
#include "imaging/picture/picture_layout.h"

namespace kestrelon {

std::unique_ptr<c32bppDIB> c32bppDIB::CopyImage(int32_t new_width, int32_t new_height,
                                                bool copy_original_bytes) const {
  auto copy = std::make_unique<c32bppDIB>(factory_);
  copy->take_settings(*this);
  if (!CopyImageTo(*copy, new_width, new_height, copy_original_bytes)) return nullptr;
  return copy;
}

bool c32bppDIB::CopyImageTo(c32bppDIB& dest, int32_t new_width, int32_t new_height,
                            bool copy_original_bytes) const {
  if (!has_image() || new_width == INT32_MIN || new_height == INT32_MIN) return false;
  if (&dest == this) return dest.Resize(new_width, new_height);
  if (new_width == 0) new_width = width_;
  if (new_height == 0) new_height = height_;
  const int32_t width = std::abs(new_width), height = std::abs(new_height);
  if (dest.width_ != width || dest.height_ != height) {
    if (!dest.InitializeDIB(width, height)) return false;
  }
  dest.original_bytes_ = copy_original_bytes ? original_bytes_ : std::vector<uint8_t>();
  const bool same = new_width == width_ && new_height == height_;
  if (same) {
    std::memcpy(dest.bits_, bits_, pixel_count() * 4);
  } else if (!scale_into(dest, new_width, new_height)) {
    return false;
  }
  dest.alpha_ = alpha_;
  dest.image_type_ = image_type_;
  return true;
}

// Fills `dest`, which has the absolute size; negative sizes mirror.
bool c32bppDIB::scale_into(c32bppDIB& dest, int32_t width, int32_t height) const {
  if (isGDIplusEnabled()) {
    dest.EraseDIB();
    DrawRequest request;
    request.source = this;
    request.host = &dest;
    request.dest_width = width;
    request.dest_height = height;
    request.area = {0, 0, width_, height_};
    request.high_quality = true;
    if (imaging_bridge().library_draw(request)) return true;
  }
  ScaledSource source;
  source.pixels = view();
  source.dest_width = std::abs(width);
  source.dest_height = std::abs(height);
  source.mirror_x = width < 0;
  source.mirror_y = height < 0;
  source.high_quality = high_quality_;
  copy_scaled(source, dest.view());
  return true;
}

bool c32bppDIB::Resize(int32_t new_width, int32_t new_height) {
  if (!has_image()) return false;
  if (new_width == 0) new_width = width_;
  if (new_height == 0) new_height = height_;
  if (new_width == width_ && new_height == height_) return true;
  const auto resized = CopyImage(new_width, new_height, true);
  if (!resized) return false;
  SwapDIBs(*resized);
  return true;
}

bool c32bppDIB::ScaleImage(int32_t dest_width, int32_t dest_height, int32_t& out_width,
                           int32_t& out_height, ScaleOption option) const {
  if (!has_image()) return false;
  out_width = width_;
  out_height = height_;
  if (option == ScaleOption::Stretched) {
    out_width = dest_width;
    out_height = dest_height;
    return true;
  }
  if (option != ScaleOption::ToSize && option != ScaleOption::DownAsNeeded) return true;
  if (option == ScaleOption::DownAsNeeded && dest_width >= width_ && dest_height >= height_)
    return true;
  const PictureSize fitted = fit_picture({width_, height_}, {dest_width, dest_height});
  out_width = fitted.width;
  out_height = fitted.height;
  return true;
}

}  // namespace kestrelon
