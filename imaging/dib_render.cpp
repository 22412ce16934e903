// Drawing an image: arguments put in order, then one of four engines.
#include <cmath>
#include <cstdlib>

#include "base/rounding.h"
#include "imaging/c32bpp_dib.h"
#include "imaging/drawing.h"

namespace kestrelon {
namespace {

// Sizes in 64 bits, so that no sum or change of sign overflows.
struct Drawing {
  int64_t dest_x, dest_y, dest_width, dest_height;
  int64_t x, y, width, height;  // source
};

// One axis of the source: a size of 0 is the whole, a negative one mirrors, the end is cut.
void settle_axis(int64_t whole, int64_t& start, int64_t& size, int64_t& dest_size) {
  if (dest_size == 0) dest_size = whole;
  if (start < 0) start = 0;
  if (size == 0) size = whole;
  if (size < 0) {
    size = -size;
    dest_size = -dest_size;
  }
  if (start + size > whole) size = whole - start;
}

bool fits_32(int64_t value) {
  return value >= -INT32_MAX && value <= INT32_MAX;
}

bool is_rotated(double angle) {
  return std::isfinite(angle) && (angle != std::floor(angle) || std::fmod(angle, 360) != 0);
}

int32_t whole_degrees(double angle) {
  // A half rounds to even before the full turns are taken off.
  return static_cast<int32_t>(std::fmod(std::nearbyint(angle), 360));
}

ScaledSource source_of(const c32bppDIB& image, const DrawRequest& request) {
  ScaledSource source;
  source.pixels = image.view().part(request.area);
  source.origin_x = request.area.x;
  source.origin_y = request.area.y;
  source.dest_x = request.dest_x;
  source.dest_y = request.dest_y;
  source.dest_width = std::abs(request.dest_width);
  source.dest_height = std::abs(request.dest_height);
  source.mirror_x = request.dest_width < 0;
  source.mirror_y = request.dest_height < 0;
  source.high_quality = image.HighQualityInterpolation();
  return source;
}

bool draw(const c32bppDIB& image, const DrawRequest& request, bool rotated) {
  const ScaledSource source = source_of(image, request);
  const BlendEffects effects{static_cast<uint32_t>(request.opacity * 255 / 100), request.gray_scale,
                             request.light};
  const ImageRect bounds =
      rotated ? rotated_bounds(source)
              : ImageRect{source.dest_x, source.dest_y, source.dest_width, source.dest_height};
  OpenTarget target(request.surface, request.host, bounds);
  if (target.empty()) return true;
  if (rotated) {
    draw_rotated(source, request.degrees, effects, target.get());
  } else {
    draw_scaled(source, effects, target.get());
  }
  return true;
}

}  // namespace

bool c32bppDIB::alpha_blend_serves(const RenderArguments& args, bool mirrored, bool scaled) const {
  if (keep_library_active_ || library_token_ != 0 || !isAlphaBlendFriendly()) return false;
  if (mirrored || args.grayScale != GrayScale::None || args.LightAdjustment != 0) return false;
  return !scaled || !high_quality_;
}

bool c32bppDIB::Render(DrawingSurface* destination, const RenderArguments& arguments) const {
  RenderArguments args = arguments;
  if (args.Opacity < 1) return has_image();
  if (!has_image() || (!destination && !args.destHostDIB)) return false;
  if (args.destHostDIB && !args.destHostDIB->has_image()) return false;
  if (args.destHostDIB == this) {
    // Rows already drawn must not be read again.
    const auto copy = CopyImage();
    return copy && copy->Render(destination, args);
  }

  Drawing d{args.destX, args.destY, args.destWidth, args.destHeight,
            args.SrcX,  args.SrcY,  args.SrcWidth,  args.SrcHeight};
  settle_axis(width_, d.x, d.width, d.dest_width);
  settle_axis(height_, d.y, d.height, d.dest_height);
  if (d.width <= 0 || d.height <= 0) return true;
  if (!fits_32(d.dest_width) || !fits_32(d.dest_height)) return false;
  args.Opacity %= 100;
  if (args.Opacity == 0) args.Opacity = 100;
  if (!(args.LightAdjustment >= -100 && args.LightAdjustment <= 100)) args.LightAdjustment = 0;
  if (args.CenterOnDestXY) {
    d.dest_x -= std::abs(d.dest_width) / 2;
    d.dest_y -= std::abs(d.dest_height) / 2;
  }
  if (!fits_32(d.dest_x) || !fits_32(d.dest_y)) return true;

  const bool rotated = is_rotated(args.Angle);
  DrawRequest request;
  request.source = this;
  request.surface = args.destHostDIB ? nullptr : destination;
  request.host = args.destHostDIB;
  request.dest_x = static_cast<int32_t>(d.dest_x);
  request.dest_y = static_cast<int32_t>(d.dest_y);
  request.dest_width = static_cast<int32_t>(d.dest_width);
  request.dest_height = static_cast<int32_t>(d.dest_height);
  request.area = {static_cast<int32_t>(d.x), static_cast<int32_t>(d.y),
                  static_cast<int32_t>(d.width), static_cast<int32_t>(d.height)};
  request.opacity = args.Opacity;
  request.high_quality = args.SetHalfTone;
  request.gray_scale = args.grayScale;
  request.light = args.LightAdjustment;
  request.degrees = rotated ? whole_degrees(args.Angle) : 0;

  const bool mirrored = d.dest_width < 0 || d.dest_height < 0;
  const bool scaled = std::abs(d.dest_width) != d.width || std::abs(d.dest_height) != d.height;
  // An engine of the platform that declines leaves the drawing to our own.
  if (!rotated && alpha_blend_serves(args, mirrored, scaled)) {
    DrawRequest blend = request;
    blend.high_quality = args.SetHalfTone && (flags_ & kFlagNt) != 0;
    const auto constant = static_cast<uint32_t>(args.Opacity * 255 / 100);
    if (imaging_bridge().alpha_blend(blend, constant, alpha_ != AlphaType::None)) return true;
  } else if (isGDIplusEnabled() && imaging_bridge().library_draw(request)) {
    return true;
  }
  return draw(*this, request, rotated);
}

}  // namespace kestrelon
