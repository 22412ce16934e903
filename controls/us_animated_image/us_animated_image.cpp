// Life, drawing and the mouse.
#include "controls/us_animated_image/us_animated_image.h"

#include "frame/input_state.h"
#include "frame/translate_color.h"
#include "imaging/c32bpp_dib/automation_bytes_win.h"

namespace kestrelon {
namespace {

constexpr ControlTraits traits() {
  ControlTraits out;
  out.windowless = true;
  out.misc_status |=
      OLEMISC_NOUIACTIVATE;  // no keys to give it: a click leaves the focus where it is
  out.initial_pixels = {64, 64};
  return out;
}

}  // namespace

USAnimatedImage::FileProperty::FileProperty(USAnimatedImage& owner)
    : PropertyBase(owner, {L"AnimatedGIF", L"GIF"}) {
  saved_when([this] { return !is_default(); });
}

Variant USAnimatedImage::FileProperty::empty_value() const {
  Variant out;
  V_VT(&out) = VT_ARRAY | VT_UI1;
  return out;
}

void USAnimatedImage::FileProperty::load(const VARIANT& value) {
  const ArrayBytes bytes(array_in(value), 1);
  file.read({bytes.bytes().begin(), bytes.bytes().end()});
}

Variant USAnimatedImage::FileProperty::save() const {
  Variant out;
  give_bytes(&out, file.bytes());
  return out;
}

USAnimatedImage::LoopsProperty::LoopsProperty(USAnimatedImage& owner)
    : PropertyBase(owner, L"Loops") {
  saved_when([this] { return !is_default(); });
}

Variant USAnimatedImage::LoopsProperty::empty_value() const {
  Variant out;
  V_VT(&out) = VT_I4;
  return out;
}

void USAnimatedImage::LoopsProperty::load(const VARIANT& value) {
  number.reset();
  if (V_VT(&value) == VT_EMPTY || V_VT(&value) == VT_NULL) return;
  Variant converted;
  if (SUCCEEDED(VariantChangeType(&converted, const_cast<VARIANT*>(&value), 0, VT_I4)))
    number = V_I4(&converted);
}

Variant USAnimatedImage::LoopsProperty::save() const {
  return Variant(number.value_or(0));
}

void USAnimatedImage::LoopsProperty::put(long value) {
  number = value;
  changed();
}

USAnimatedImage::USAnimatedImage() : USAnimatedImageGlue(traits()) {}

void USAnimatedImage::properties_read() {
  timing_changed();
  show_file();
  begin();
}

void USAnimatedImage::shown() {
  if (std::exchange(shown_once_, true)) return;
  if (DelayAnimation.get() == Delay_Startup && player_.state() == AnimationAction::Stop) begin();
}

void USAnimatedImage::ambient_changed(DISPID id) {
  if (id != DISPID_AMBIENT_USERMODE && id != DISPID_UNKNOWN) return;
  sync_timer();
  redraw();
}

void USAnimatedImage::terminate() {
  remote_.cancel();
  timer_.stop();
}

void USAnimatedImage::set_auto_size(bool value) {
  auto_size_ = value;
  property_changed(L"AutoSize");
  layout_changed();
}

// Takes the drawn size; true if that gave the control another one, and so drew it.
bool USAnimatedImage::fit() {
  if (!auto_size_ || fitting_ || !canvas_.image().has_image()) return false;
  const GifSize wanted =
      scaled_size(canvas_.image(), static_cast<GifScale>(Stretch.get()), width(), height());
  const int old_width = width(), old_height = height();
  if (wanted == GifSize{old_width, old_height}) return false;
  fitting_ = true;
  request_size(wanted.width, wanted.height);
  fitting_ = false;
  return width() != old_width || height() != old_height;
}

void USAnimatedImage::layout_changed() {
  if (!fit()) redraw();
}

void USAnimatedImage::resized() {
  if (fit()) return;
  drawn_.reset();
  redraw();
}

void USAnimatedImage::refresh() {
  drawn_.reset();
  redraw();
}

GifLook USAnimatedImage::look() {
  const c32bppDIB& canvas = canvas_.image();
  const GifSize size = scaled_size(canvas, static_cast<GifScale>(Stretch.get()), width(), height());
  GifLook out;
  out.place = {static_cast<int32_t>(OffsetX.get()), static_cast<int32_t>(OffsetY.get()), size.width,
               size.height};
  out.mirror_x = (Mirrored.get() & Horizontal_Mirror) != 0;
  out.mirror_y = (Mirrored.get() & Vertical_Mirror) != 0;
  out.outlined = !canvas.has_image() && !ambient().user_mode();
  if (BackStyle.get() == Solid_Gif)
    out.background = kOpaque | to_pixel(TranslateColor(BackColor.get()));
  return out;
}

void USAnimatedImage::redraw() {
  if (!surface()) return;
  const GifLook wanted = look();
  if (drawn_ == wanted) return;
  drawn_ = wanted;
  const PixelView view = surface().pixels();
  draw_canvas(
      canvas_.image(), wanted,
      {reinterpret_cast<uint8_t*>(view.bits), view.stride * ptrdiff_t{4}, view.width, view.height});
  surface_changed();
}

void USAnimatedImage::mouse_down(short button, short shift, float x, float y) {
  press_ = {button, shift, x, y};
  raise_mouse_down(button, shift, x, y);
}

void USAnimatedImage::mouse_move(short button, short shift, float x, float y) {
  if (user_mode()) raise_mouse_move(button, shift, x, y);
}

void USAnimatedImage::mouse_up(short button, short shift, float x, float y) {
  raise_mouse_up(button, shift, x, y);
}

void USAnimatedImage::click() {
  if (press_.button == kLeftButton) raise_click();
}

// The press that completes a double click is a press like any other.
void USAnimatedImage::double_click() {
  Press again = press_;
  raise_mouse_down(again.button, again.shift, again.x, again.y);
}

}  // namespace kestrelon
