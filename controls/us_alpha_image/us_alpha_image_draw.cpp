// From the properties to a look, and from a look to pixels and the area that takes the mouse.
#include <cstring>

#include "controls/us_alpha_image/us_alpha_image.h"

namespace kestrelon {
namespace {

RegionStyle region_style(ENUM_HITTEST_STYLE style) {
  switch (style) {
    case Bounding_Region:
      return RegionStyle::Bounds;
    case Enclosed_Region:
      return RegionStyle::Enclosed;
    default:
      return RegionStyle::Shaped;
  }
}

int32_t to_int(long value) {
  return static_cast<int32_t>(value);
}

}  // namespace

PictureSize USAlphaImage::size_in(PictureSize room, ENUM_SCALE_METHOD method) const {
  return drawn_size(static_cast<PictureScale>(method), picture_size(), room,
                    {to_int(ScaleCx.get()), to_int(ScaleCy.get())});
}

void USAlphaImage::take_picture_size() {
  if (!picture().has_image()) return;
  const PictureSize size =
      size_in(picture_size(), ScaleMethod.get() == LockScale ? LockScale : ActualSize);
  if (size != PictureSize{width(), height()}) request_size(size.width, size.height);
}

PictureLook USAlphaImage::look() const {
  PictureLook out;
  out.version = version_;
  out.room = {width(), height()};
  if (!picture().has_image()) return out;
  out.drawn = size_in(out.room, ScaleMethod.get());
  out.x = to_int(offset_.x);
  out.y = to_int(offset_.y);
  out.mirror_x = Mirror.get() == Mirror_Horizontal || Mirror.get() == Mirror_All;
  out.mirror_y = Mirror.get() == Mirror_Vertical || Mirror.get() == Mirror_All;
  if (rotate_enabled()) out.degrees = to_int(Rotation.get() % 360);
  out.opacity = to_int(Opacity.get());
  out.gray = static_cast<GrayScale>(GrayFormula.get());
  out.light = IntensityOffset.get();
  out.smooth = stretch_quality();
  if (shadow_enabled())
    out.shadow = {true,
                  plain_color(ShadowColor.get()),
                  to_int(ShadowDepth.get()),
                  to_int(ShadowOpacity.get()),
                  to_int(ShadowOffsetX.get() + shadow_shift_.x),
                  to_int(ShadowOffsetY.get() + shadow_shift_.y)};
  return out;
}

void USAlphaImage::redraw() {
  const PictureLook now = look();
  if (wanted_ == now) return;
  wanted_ = now;
  invalidate();
  if (auto_redraw()) update_now();
}

const c32bppDIB* USAlphaImage::shadow_of(const ShadowLook& wanted) {
  if (!wanted.shown) {
    shadow_.reset();
    return nullptr;
  }
  const ShadowKey key{version_, wanted.color, wanted.depth};
  if (!shadow_ || !(key == shadow_key_)) {
    shadow_ = std::make_unique<c32bppDIB>();
    shadow_key_ = key;
    if (!picture().CreateDropShadow(wanted.depth, wanted.color, *shadow_)) shadow_.reset();
    if (shadow_) shadow_->set_HighQualityInterpolation(true);
  }
  return shadow_.get();
}

void USAlphaImage::about_to_show() {
  const PictureLook now = look();
  if (drawn_ == now || !surface() || surface().width() != now.room.width ||
      surface().height() != now.room.height)
    return;
  GdiFlush();  // a program may have drawn on the picture
  c32bppDIB canvas;
  if (!painter_.draw(now, picture(), shadow_of(now.shadow), canvas)) return;
  const PixelView view = surface().pixels();
  for (int y = 0; y < view.height; ++y) std::memcpy(view.row(y), canvas.row(y), canvas.scanWidth());
  wanted_ = drawn_ = now;
  surface_drawn();
}

bool USAlphaImage::hit(POINT point) const {
  if (HitTest.get() == Entire_Control) return true;
  const auto made_for = std::pair(look().shape(), HitTest.get());
  if (hit_made_for_ != made_for) {
    c32bppDIB canvas;
    std::optional<std::vector<ImageRect>> rects;
    if (picture_on_nothing(made_for.first, picture(), nullptr, canvas))
      rects = canvas.CreateRegion(region_style(made_for.second));
    hit_area_ = HitArea(rects ? std::move(*rects) : std::vector<ImageRect>());
    hit_made_for_ = made_for;
  }
  return hit_area_.contains(to_int(point.x), to_int(point.y));
}

}  // namespace kestrelon
