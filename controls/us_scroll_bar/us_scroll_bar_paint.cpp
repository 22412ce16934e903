// Layout and state of the parts to pixels.
#include "controls/us_scroll_bar/us_scroll_bar.h"

namespace kestrelon {
namespace {

RECT to_rect(const PixelRect& r) {
  return {r.left, r.top, r.right, r.bottom};
}

}  // namespace

USScrollBar::Look USScrollBar::look() const {
  if (!Enabled.get())
    return {kEndButtonDisabled, kEndButtonDisabled, kBackDisabled, kBackDisabled, kThumbDisabled};
  const BarPart under =
      layout_.hit(static_cast<int>(last_point_.x), static_cast<int>(last_point_.y));
  const bool inside = hover_.over();
  const auto pressed = [&](BarPart part) { return hit_part_ == part && under == part; };
  const auto hot = [&](BarPart part) {
    return hit_part_ == BarPart::kNone && inside && under == part;
  };
  const auto button = [&](BarPart part) -> int {
    if (pressed(part)) return kEndButtonPressed;
    if (hot(part)) return kEndButtonHot;
    return inside ? kEndButtonNear : kEndButtonIdle;
  };
  const auto back = [&](BarPart part) -> int { return pressed(part) ? kBackPressed : kBackIdle; };
  // The thumb stays pressed wherever the pointer drags it.
  const int thumb = hit_part_ == BarPart::kThumb ? kThumbPressed
                    : hot(BarPart::kThumb)       ? kThumbHot
                                                 : kThumbIdle;
  return {button(BarPart::kTopLeft), button(BarPart::kBottomRight), back(BarPart::kBefore),
          back(BarPart::kAfter), thumb};
}

void USScrollBar::draw_if_changed() {
  if (look() != shown_) draw();
}

void USScrollBar::draw() {
  if (!surface()) return;
  if (!painter_) painter_ = std::make_unique<cScrollbarDraw>();
  shown_ = look();
  const HDC dc = surface().dc();
  const ENUM_POSITION orientation = Orientation.get();
  painter_->DrawTopLeftButton(dc, shown_.top_left, orientation, to_rect(layout_.top_left));
  painter_->DrawBottomRightButton(dc, shown_.bottom_right, orientation,
                                  to_rect(layout_.bottom_right));
  if (layout_.has_thumb) {
    painter_->DrawBack(dc, shown_.before, orientation, to_rect(layout_.before));
    painter_->DrawBack(dc, shown_.after, orientation, to_rect(layout_.after));
    painter_->DrawBar(dc, shown_.thumb, orientation, to_rect(layout_.thumb));
  }
  surface_changed();
}

}  // namespace kestrelon
