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
  if (look.shadow.shown && shadow != nullptr && shadow->has_image()) {
    const PictureSize size{scaled(shadow->Width(), picture.Width(), look.drawn.width),
                           scaled(shadow->Height(), picture.Height(), look.drawn.height)};
    RenderArguments args = arguments_of(look, size, canvas);
    args.destX = moved(args.destX, look.shadow.x);
    args.destY = moved(args.destY, look.shadow.y);
    args.Opacity = share(look.shadow.opacity, look.opacity);
    shadow->Render(nullptr, args);
  }
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

}  // namespace kestrelon
