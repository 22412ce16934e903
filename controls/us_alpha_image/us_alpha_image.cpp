#include "controls/us_alpha_image/us_alpha_image.h"

namespace kestrelon {
namespace {

constexpr ControlTraits traits() {
  ControlTraits out;
  out.windowless = true;
  return out;
}

}  // namespace

USAlphaImage::USAlphaImage() : USAlphaImageGlue(traits()) {}

bool USAlphaImage::load_image_from_file(const std::wstring& name, long width, long height,
                                        long depth) {
  LoadOptions options;
  options.icon_cx = static_cast<int32_t>(width);
  options.icon_cy = static_cast<int32_t>(height);
  if (depth != 0) options.icon_bit_depth = static_cast<int32_t>(depth);
  const bool loaded = image_.LoadPicture_File(name, options);
  redraw();
  return loaded;
}

void USAlphaImage::redraw() {
  if (!surface()) return;
  const PixelView view = surface().pixels();
  for (int y = 0; y < view.height; ++y) std::fill_n(view.row(y), view.width, 0u);
  if (image_.has_image()) {
    render_to_dc(image_, surface().dc(), 0, 0, 0, 0, static_cast<int>(Opacity.get()));
  }
  surface_changed();
}

bool USAlphaImage::hit(POINT point) const {
  if (HitTest.get() == Entire_Control) return true;
  int32_t alpha = 0;
  image_.GetPixel(static_cast<int32_t>(point.x), static_cast<int32_t>(point.y), &alpha);
  return alpha != 0;
}

void USAlphaImage::mouse_down(short button, short shift, float x, float y) {
  raise_mouse_down(button, shift, x, y);
}

void USAlphaImage::mouse_up(short button, short shift, float x, float y) {
  raise_mouse_up(button, shift, x, y);
}

void USAlphaImage::mouse_move(short button, short shift, float x, float y) {
  if (!user_mode()) return;
  switch (hover_.moved(pointer_over_window())) {
    case Hover::Move::kEnter:
      track_leave();
      raise_mouse_enter();
      break;
    case Hover::Move::kInside:
      raise_mouse_move(button, shift, x, y);
      break;
    case Hover::Move::kExit:
      raise_mouse_exit();
      break;
    case Hover::Move::kNothing:
      break;
  }
}

void USAlphaImage::window_message_after(UINT message, WPARAM, LPARAM) {
  if (message != WM_MOUSELEAVE || !user_mode()) return;
  hover_.left();
  raise_mouse_exit();
}

}  // namespace kestrelon
