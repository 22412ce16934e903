#include "imaging/picture/picture_look.h"

#include <algorithm>

namespace kestrelon {
namespace {

// Percent of percent. Opacities above 100 wrap, as in every drawing of an image.
int32_t share(int32_t percent, int32_t of) {
  const auto settle = [](int32_t value) {
    return value > 100 ? (value - 1) % 100 + 1 : std::max(value, 0);
  };
  return settle(percent) * settle(of) / 100;
}

// Offsets are a program's: any number may come, and far away is far enough.
int32_t moved(int32_t from, int32_t by) {
  constexpr int64_t kFar = 1 << 30;
  return static_cast<int32_t>(std::clamp(int64_t{from} + by, -kFar, kFar));
}

RenderArguments arguments_of(const PictureLook& look, PictureSize size, c32bppDIB& canvas) {
  RenderArguments args;
  args.destHostDIB = &canvas;
  args.destX = moved(look.room.width / 2, look.x);
  args.destY = moved(look.room.height / 2, look.y);
  args.destWidth = look.mirror_x ? -size.width : size.width;
  args.destHeight = look.mirror_y ? -size.height : size.height;
  args.CenterOnDestXY = true;
  args.Angle = look.degrees;
  args.Opacity = look.opacity;
  args.SetHalfTone = look.smooth;
  return args;
}

// The size of the shadow in the scale of the picture.
int32_t scaled(int32_t shadow, int32_t picture, int32_t drawn) {
  const int64_t length = (int64_t{shadow} * drawn + picture / 2) / picture;
  return static_cast<int32_t>(std::clamp<int64_t>(length, 1, INT32_MAX));
}

// Turned by no whole quarter, so that its edges run across the pixels.
bool is_tilted(const PictureLook& look) {
  constexpr int64_t kMostPixels = 1 << 22;  // of a copy made for one drawing
  return look.smooth && look.degrees % 90 != 0 &&
         int64_t{look.drawn.width} * look.drawn.height <= kMostPixels;
}

// A picture that is opaque to its border would end in steps. So it is brought to its final size
// inside a transparent border one pixel wide, which turns with it and takes part in the sampling.
bool draw_with_soft_edges(const PictureLook& look, const c32bppDIB& picture, c32bppDIB& canvas) {
  const PictureSize size{look.drawn.width + 2, look.drawn.height + 2};
  PictureLook upright = look.shape();
  upright.room = size;
  upright.x = upright.y = upright.degrees = 0;
  upright.gray = look.gray;
  upright.light = look.light;
  c32bppDIB layer;
  if (!picture_on_nothing(upright, picture, nullptr, layer)) return false;
  layer.set_HighQualityInterpolation(true);
  layer.set_alpha(AlphaType::Complex);
  RenderArguments args = arguments_of(look, size, canvas);
  args.destWidth = size.width;  // mirrored already
  args.destHeight = size.height;
  layer.Render(nullptr, args);
  return true;
}

// Drawing it costs no more than copying it.
bool is_plain(const PictureLook& look, const c32bppDIB& picture) {
  return look.drawn == PictureSize{picture.Width(), picture.Height()} && look.degrees == 0 &&
         !look.mirror_x && !look.mirror_y && look.gray == GrayScale::None && look.light == 0;
}

void draw_shadow(const PictureLook& look, const c32bppDIB& picture, const c32bppDIB& shadow,
                 c32bppDIB& canvas) {
  const PictureSize size{scaled(shadow.Width(), picture.Width(), look.drawn.width),
                         scaled(shadow.Height(), picture.Height(), look.drawn.height)};
  RenderArguments args = arguments_of(look, size, canvas);
  args.destX = moved(args.destX, look.shadow.x);
  args.destY = moved(args.destY, look.shadow.y);
  args.Opacity = share(look.shadow.opacity, look.opacity);
  shadow.Render(nullptr, args);
}

void blend_layer(const c32bppDIB& layer, int32_t opacity, c32bppDIB& canvas) {
  RenderArguments args;
  args.destHostDIB = &canvas;
  args.Opacity = opacity;
  layer.Render(nullptr, args);
}

}  // namespace

PictureLook PictureLook::shape() const {
  PictureLook out = *this;
  out.opacity = 100;
  out.gray = GrayScale::None;
  out.light = 0;
  out.shadow = {};
  return out;
}

void draw_picture(const PictureLook& look, const c32bppDIB& picture, const c32bppDIB* shadow,
                  c32bppDIB& canvas) {
  if (!picture.has_image() || look.drawn.empty()) return;
  if (look.shadow.shown && shadow != nullptr && shadow->has_image())
    draw_shadow(look, picture, *shadow, canvas);
  if (is_tilted(look) && draw_with_soft_edges(look, picture, canvas)) return;
  RenderArguments args = arguments_of(look, look.drawn, canvas);
  args.grayScale = look.gray;
  args.LightAdjustment = look.light;
  picture.Render(nullptr, args);
}

bool picture_on_nothing(const PictureLook& look, const c32bppDIB& picture, const c32bppDIB* shadow,
                        c32bppDIB& canvas) {
  if (look.room.empty() || !canvas.InitializeDIB(look.room.width, look.room.height)) return false;
  draw_picture(look, picture, shadow, canvas);
  return true;
}

bool PicturePainter::draw(const PictureLook& look, const c32bppDIB& picture,
                          const c32bppDIB* shadow, c32bppDIB& canvas) {
  PictureLook full = look;
  full.opacity = full.shadow.opacity = 100;
  const bool again = last_ == full;
  if (!again) release();
  last_ = full;
  if (!again || !picture.has_image() || is_plain(look, picture) || !make_layers(picture, shadow))
    return picture_on_nothing(look, picture, shadow, canvas);
  if (!canvas.InitializeDIB(look.room.width, look.room.height)) return false;
  if (shadow_) blend_layer(*shadow_, share(look.shadow.opacity, look.opacity), canvas);
  blend_layer(*picture_, look.opacity, canvas);
  return true;
}

void PicturePainter::release() {
  last_.reset();
  picture_.reset();
  shadow_.reset();
}

bool PicturePainter::make_layers(const c32bppDIB& picture, const c32bppDIB* shadow) {
  if (picture_) return true;
  PictureLook alone = *last_;
  alone.shadow.shown = false;
  auto layer = std::make_unique<c32bppDIB>();
  if (!picture_on_nothing(alone, picture, nullptr, *layer)) return false;
  if (last_->shadow.shown && shadow != nullptr && shadow->has_image()) {
    shadow_ = std::make_unique<c32bppDIB>();
    if (!shadow_->InitializeDIB(alone.room.width, alone.room.height)) {
      shadow_.reset();
      return false;
    }
    draw_shadow(*last_, picture, *shadow, *shadow_);
    shadow_->set_alpha(AlphaType::Complex);
  }
  layer->set_alpha(AlphaType::Complex);
  picture_ = std::move(layer);
  return true;
}

}  // namespace kestrelon
