// State and rectangles to pixels.
#include "controls/us_button/us_button.h"
#include "frame/kit/lines.h"
#include "frame/region.h"
#include "frame/screen.h"
#include "frame/text.h"
#include "frame/translate_color.h"

namespace kestrelon {
namespace {

constexpr UINT kTextFlags = DT_CENTER | DT_WORDBREAK | DT_NOCLIP;
constexpr int kCornerDiameter = 3;

FaceStops stops(const Property<OLE_COLOR>& a, const Property<OLE_COLOR>& b,
                const Property<OLE_COLOR>& c, const Property<OLE_COLOR>& d) {
  return {TranslateColor(a.get()), TranslateColor(b.get()), TranslateColor(c.get()),
          TranslateColor(d.get())};
}

RECT to_rect(const PixelRect& r) {
  return {r.left, r.top, r.right, r.bottom};
}

}  // namespace

HRGN USButton::outline() const {
  const int shape = ButtonShape.get();
  const bool known = shape >= Cut_None && shape <= Cut_Sides;
  return round_region(width(), height(), kCornerDiameter, kCornerDiameter,
                      known ? static_cast<SquareSides>(shape) : SquareSides::kNone);
}

void USButton::apply_shape() {
  if (window() == nullptr) return;
  // Cutting a window to the shape it has makes the system paint it and its neighbours again.
  const Cut cut{window(), width(), height(), static_cast<int>(ButtonShape.get())};
  if (cut == last_cut_) return;
  const bool was_whole = last_cut_.window != window() || last_cut_.shape == Cut_Sides;
  last_cut_ = cut;
  // A plain rectangle needs no region; hundreds of windows with one make a form slow.
  const bool whole = cut.shape == Cut_Sides;
  if (whole && was_whole) return;
  const HRGN region = whole ? nullptr : outline();
  // The window owns the region from here on, unless it refuses it.
  if (!SetWindowRgn(window(), region, TRUE) && region != nullptr) DeleteObject(region);
}

void USButton::lay_out() {
  layout_dirty_ = false;
  apply_shape();
  button_layout::Content content;
  content.has_text = !Caption.get().empty();
  content.has_picture = has_dib_ || Picture;
  content.picture_width = static_cast<int>(PictureSizeX.get());
  content.picture_height = static_cast<int>(PictureSizeY.get());
  content.place = static_cast<button_layout::PicturePlace>(PictureAlignment.get());
  if (content.has_text) {
    const HDC dc = surface().dc();
    const HGDIOBJ displaced = SelectObject(dc, Font.handle());
    RECT measured{0, 0, width(), height()};
    DrawTextUnicode(dc, Caption.get(), -1, &measured, kTextFlags | DT_CALCRECT);
    SelectObject(dc, displaced);
    content.text_width = static_cast<int>(measured.right - measured.left);
    content.text_height = static_cast<int>(measured.bottom - measured.top);
  }
  places_ = button_layout::arrange(width(), height(), content);
}

void USButton::draw(int state) {
  if (layout_dirty_) lay_out();
  if (state == kFaceDown && CheckBoxMode.get() && Value.get()) state = kFaceNormal;
  const ColorRef text = draw_face(state);
  const ColorRef border = draw_focus(state);
  draw_picture(state);
  draw_caption(text);
  paint_frame(surface().pixels(), border, ButtonShape.get());
}

// In high contrast: a plain face, told apart by the system's colours alone.
ColorRef USButton::draw_plain_face(int state) {
  const bool lit = state == kFaceOver || state == kFaceDown || Value.get();
  surface().clear(GetSysColor(lit ? COLOR_HIGHLIGHT : COLOR_BTNFACE));
  if (state == kFaceDisabled) return GetSysColor(COLOR_GRAYTEXT);
  return GetSysColor(lit ? COLOR_HIGHLIGHTTEXT : COLOR_BTNTEXT);
}

// Answers the colour of the caption.
ColorRef USButton::draw_face(int state) {
  if (high_contrast()) return draw_plain_face(state);
  const PixelView view = surface().pixels();
  const bool four = GradientColors.get() == Four_Colors;
  if (state == kFaceDisabled) {
    paint_face(view,
               stops(GradientColorDisabled1, GradientColorDisabled2, GradientColorDisabled3,
                     GradientColorDisabled4),
               four);
    return TranslateColor(ForeColorDisabled.get());
  }
  if (Value.get() && state != kFaceDown) {
    paint_value_face(view, derived_);
    return 0;
  }
  switch (state) {
    case kFaceOver:
      paint_face(
          view,
          stops(GradientColorOver1, GradientColorOver2, GradientColorOver3, GradientColorOver4),
          four);
      return TranslateColor(ForeColorOver.get());
    case kFaceDown:
      paint_face(
          view,
          stops(GradientColorDown1, GradientColorDown2, GradientColorDown3, GradientColorDown4),
          four);
      return TranslateColor(ForeColorDown.get());
    default:
      paint_face(view, stops(GradientColor1, GradientColor2, GradientColor3, GradientColor4), four);
      return derived_[kDerivedFore];
  }
}

// Answers the colour of the frame.
ColorRef USButton::draw_focus(int state) {
  const PixelView view = surface().pixels();
  const PixelRect inset = button_layout::focus_rect(width(), height(), false);
  const PixelRect fitted =
      button_layout::focus_rect(width(), height(), ButtonShape.get() == Cut_Sides);
  const bool focus = ShowFocusRect.get() && last_focus_;
  if (state == kFaceDisabled) return shown_color(BorderColorDisabled.get(), COLOR_GRAYTEXT);
  if (state == kFaceDown) {
    if (ShowFocusRectDown.get()) draw_focus_rect(view, fitted);
    return shown_color(BorderColorDown.get(), COLOR_BTNTEXT);
  }
  if (state == kFaceOver || (input_.mouse_pressed() && !input_.over())) {
    if (focus) draw_focus_rect(view, fitted);
    return shown_color(BorderColorOver.get(), COLOR_BTNTEXT);
  }
  if (focus && input_.window_active()) draw_focus_rect(view, inset);
  return shown_color(BorderColor.get(), COLOR_BTNTEXT);
}

void USButton::draw_picture(int state) {
  if (!has_dib_) return draw_std_picture(picture_for(state));
  if (PictureSizeX.get() <= 0 || PictureSizeY.get() <= 0) return;
  render_to_dc(dib_, surface().dc(), places_.picture.left, places_.picture.top,
               static_cast<int>(PictureSizeX.get()), static_cast<int>(PictureSizeY.get()),
               static_cast<int>(picture_opacity()));
}

void USButton::draw_caption(ColorRef color) {
  if (Caption.get().empty()) return;
  const HDC dc = surface().dc();
  const HGDIOBJ displaced = SelectObject(dc, Font.handle());
  SetTextColor(dc, color);
  RECT place = to_rect(
      button_layout::align_text(places_.text, Alignment.get(), CaptionDistance.get(), width()));
  DrawTextUnicode(dc, Caption.get(), -1, &place, kTextFlags);
  SelectObject(dc, displaced);
}

}  // namespace kestrelon
