// Life, the setters that do more than draw again, and fades.
#include "controls/us_alpha_image/us_alpha_image.h"

#include "imaging/c32bpp_dib/automation_bytes_win.h"

namespace kestrelon {
namespace {

constexpr ControlTraits traits() {
  ControlTraits out;
  out.windowless = true;
  out.initial_pixels = {64, 64};
  return out;
}

}  // namespace

USAlphaImage::USAlphaImage() : USAlphaImageGlue(traits()) {
  image_->set_owner(this);
  Image.saved_when([this] { return has_own_picture(); });
  Mask.saved_when([this] { return MaskUsed.get() != No_Mask; });
  for (Property<long>* const size : {&ScaleCx, &ScaleCy})
    size->saved_when([this] { return ScaleMethod.get() == LockScale; });
}

USAlphaImage::~USAlphaImage() {
  image_->set_owner(nullptr);  // a script may hold the image longer
}

void USAlphaImage::init_properties() {
  Props.assign(Props.get() | kAutoSize);  // on top of what a program has set already
  picture().set_HighQualityInterpolation(stretch_quality());
}

void USAlphaImage::properties_read() {
  picture().set_HighQualityInterpolation(stretch_quality());
  auto bytes = Image.take();
  if (bytes.empty()) {
    clear_image();
  } else {
    load_at_size(std::move(bytes));
  }
  apply_drops();
}

void USAlphaImage::resized() {
  if (icon_follows_) {
    std::vector<uint8_t> bytes;
    if (!picture().GetOrginalFormat(bytes)) bytes = std::move(file_);
    load_at_size(std::move(bytes));
  }
  redraw();
}

void USAlphaImage::terminate() {
  end_fade();
}

void USAlphaImage::refresh() {
  ++version_;  // a program may have drawn on the picture through its device context
  redraw();
}

void USAlphaImage::put_flag(Flag which, const wchar_t* name, bool on) {
  Props.assign(on ? Props.get() | which : Props.get() & ~long{which});
  property_changed(name);
  switch (which) {
    case kStretchQuality:
      picture().set_HighQualityInterpolation(on);
      return redraw();
    case kAutoSize:
      if (on) take_picture_size();
      return;
    case kInversedImage:
      return mask_or_inverse_changed();
    case kKeepOriginalFormat:
      return keep_file(on);
    default:
      return redraw();
  }
}

void USAlphaImage::set_scale_method(ENUM_SCALE_METHOD method) {
  if (method == LockScale && ScaleMethod.get() != LockScale) {
    // What shows now is what is locked.
    const PictureSize size = size_in({width(), height()}, ScaleMethod.get());
    ScaleCx.assign(size.width);
    ScaleCy.assign(size.height);
  }
  ScaleMethod.put(method);
}

void USAlphaImage::set_mask_used(ENUM_MASK_SOURCE source) {
  // The property began as a Boolean: True takes up the source that was chosen last.
  if (source == VARIANT_TRUE)
    source = MaskSource.get() != No_Mask ? static_cast<ENUM_MASK_SOURCE>(MaskSource.get())
                                         : Use_MaskColor;
  if (source != No_Mask) MaskSource.assign(source);
  MaskUsed.put(source);
}

void USAlphaImage::mask_color_changed() {
  if (MaskUsed.get() == Use_MaskColor) mask_or_inverse_changed();
}

void USAlphaImage::mask_or_inverse_changed() {
  undo_mask_and_inverse();
  loaded(false);
}

void USAlphaImage::offset_shadow(long x, long y) {
  ShadowOffsetX.assign(x);
  property_changed(ShadowOffsetX.name());
  ShadowOffsetY.put(y);
}

void USAlphaImage::offset_image(bool set, VARIANT* x, VARIANT* y, VARIANT* shadow_x,
                                VARIANT* shadow_y) {
  if (!set) {
    give_number(x, offset_.x);
    give_number(y, offset_.y);
    give_number(shadow_x, shadow_shift_.x);
    give_number(shadow_y, shadow_shift_.y);
    return;
  }
  offset_ = {number_in(x, 0), number_in(y, 0)};
  shadow_shift_ = {number_in(shadow_x, 0), number_in(shadow_y, 0)};
  redraw();
}

bool USAlphaImage::get_image_scales(VARIANT* out_width, VARIANT* out_height, long method,
                                    long room_width, long room_height, bool turned) const {
  if (!picture().has_image()) return false;
  const auto chosen = method < 0
                          ? ScaleMethod.get()
                          : static_cast<ENUM_SCALE_METHOD>(std::min<long>(method, LockScale));
  PictureSize size = size_in({static_cast<int32_t>(room_width < 1 ? width() : room_width),
                              static_cast<int32_t>(room_height < 1 ? height() : room_height)},
                             chosen);
  if (turned) size = turned_box(size, static_cast<int32_t>(Rotation.get()));
  give_number(out_width, size.width);
  give_number(out_height, size.height);
  return true;
}

void USAlphaImage::fade_in_out(long final_opacity, long step, long interval) {
  fade_timer_.stop();
  fade_ = picture().has_image()
              ? FadeSteps::plan(static_cast<int32_t>(Opacity.get()),
                                static_cast<int32_t>(final_opacity), static_cast<int32_t>(step))
              : std::nullopt;
  if (!fade_) return;
  const auto milliseconds = static_cast<UINT>(FadeSteps::interval(static_cast<int32_t>(interval)));
  if (!fade_timer_.start(milliseconds, [this] { fade_step(); })) {
    // No timer is left: the fade is over at once, but it ends where it should.
    Opacity.put(fade_->end());
    end_fade();
  }
}

void USAlphaImage::fade_step() {
  const Hold hold(*this);
  if (!fade_) return;
  const long next = fade_->after(static_cast<int32_t>(Opacity.get()));
  const bool last = next == fade_->end();
  if (last) fade_timer_.stop();
  Opacity.put(next);  // whoever hears of it may begin another fade
  if (last && fade_ && !fade_timer_.running()) end_fade();
}

void USAlphaImage::end_fade() {
  fade_timer_.stop();
  if (!std::exchange(fade_, std::nullopt)) return;
  painter_.release();
  long opacity = Opacity.get();
  raise_fade_terminated(opacity);
}

}  // namespace kestrelon
