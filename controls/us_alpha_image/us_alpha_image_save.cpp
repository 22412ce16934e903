// The picture as bytes, files and drawings.
#include "controls/us_alpha_image/us_alpha_image.h"
#include "imaging/c32bpp_dib/automation_bytes_win.h"
#include "imaging/picture/picture_pixels.h"

namespace kestrelon {
namespace {

// A file that holds the pixels, transparent ones too.
std::vector<uint8_t> encoded(const c32bppDIB& image) {
  GdiFlush();
  std::vector<uint8_t> out;
  if ((image.isGDIplusEnabled() || image.isZlibEnabled()) && image.SaveToStream_PNG(out))
    return out;
  image.SaveToStream_Bitmap(out, image.Alpha() != AlphaType::None);
  return out;
}

}  // namespace

Variant USAlphaImage::ImageProperty::empty_value() const {
  Variant out;
  V_VT(&out) = VT_ARRAY | VT_UI1;
  return out;
}

void USAlphaImage::ImageProperty::load(const VARIANT& value) {
  const ArrayBytes bytes(array_in(value), 1);
  read_.assign(bytes.bytes().begin(), bytes.bytes().end());
}

Variant USAlphaImage::ImageProperty::save() const {
  return property_detail::Automation<std::vector<uint8_t>>::to(control_.picture_bytes());
}

bool USAlphaImage::has_own_picture() const {
  return picture().has_image() && picture().ImageType() != ImageFormat::CheckerBoard;
}

// What is saved with the form: the picture before mask and inverse, as its file where the file says
// more than the pixels do.
std::vector<uint8_t> USAlphaImage::picture_bytes() const {
  if (!has_own_picture()) return {};
  const c32bppDIB& base = plain_ ? *plain_ : picture();
  if (!altered_ && !is_plain_bitmap(base.ImageType())) {
    if (!file_.empty()) return file_;
    std::vector<uint8_t> original;
    if (picture().GetOrginalFormat(original)) return original;
  }
  if (plain_ || !inverse_in_) return encoded(base);
  const auto upright = picture().CopyImage();
  if (!upright) return {};
  upright->MakeImageInverse();
  return encoded(*upright);
}

bool USAlphaImage::get_stream(Bytes out) const {
  return has_own_picture() && give_bytes(out, picture_bytes());
}

bool USAlphaImage::get_image_bytes(Bytes out, VARIANT* scan_width, bool as_2d, bool bgr,
                                   bool bottom_up, bool premultiplied, bool as_file) {
  if (!has_own_picture()) return false;
  if (as_file) {
    std::vector<uint8_t> original;
    return give_bytes(out, picture().GetOrginalFormat(original) ? original : encoded(picture()));
  }
  give_number(scan_width, static_cast<long>(picture().scanWidth()));
  return image_->get_di_bbits(out, as_2d, bgr, true, true, bottom_up, 0, 0, 0, 0, premultiplied);
}

bool USAlphaImage::render(long dc, long x, long y, long width, long height, long from_x,
                          long from_y, long from_width, long from_height, long opacity, bool blend,
                          bool half_tone, IDispatch* host, long gray, float light, float angle,
                          bool centre) {
  return image_->render(dc, x, y, width, height, from_x, from_y, from_width, from_height, opacity,
                        blend, half_tone, host, gray, light, angle, centre);
}

bool USAlphaImage::save_to_bmp(Text file, bool keep_premultiplied, long fill) {
  return image_->save_to_file_bitmap(file, keep_premultiplied, static_cast<OLE_COLOR>(fill));
}

bool USAlphaImage::save_to_gif(Text file, bool adaptive, long tolerance) {
  return image_->save_to_file_gif(file, adaptive, tolerance);
}

bool USAlphaImage::save_to_jpg(Text file, long quality, long fill) {
  return image_->save_to_file_jpg(file, quality, static_cast<OLE_COLOR>(fill));
}

bool USAlphaImage::save_to_png(Text file) {
  return image_->save_to_file_png(file, Variant());
}

bool USAlphaImage::save_to_tga(Text file, bool compress, bool reduce, bool premultiplied) {
  return image_->save_to_file_tga(file, compress, reduce, premultiplied);
}

bool USAlphaImage::save_to_bmp_stream(Bytes out, bool keep_premultiplied, long fill) {
  return image_->save_to_stream_bitmap(out, keep_premultiplied, static_cast<OLE_COLOR>(fill));
}

bool USAlphaImage::save_to_gif_stream(Bytes out, bool adaptive, long tolerance) {
  return image_->save_to_stream_gif(out, adaptive, tolerance);
}

bool USAlphaImage::save_to_jpg_stream(Bytes out, long quality, long fill) {
  return image_->save_to_stream_jpg(out, quality, static_cast<OLE_COLOR>(fill));
}

bool USAlphaImage::save_to_png_stream(Bytes out) {
  return image_->save_to_stream_png(out, Variant());
}

bool USAlphaImage::save_to_tga_stream(Bytes out, bool compress, bool reduce, bool premultiplied) {
  return image_->save_to_stream_tga(out, compress, reduce, premultiplied);
}

// Gives `save` the picture as it shows, without shadow and offset, cut to what is visible.
template <class Saver>
bool USAlphaImage::save_rendered(const VARIANT& light, Saver&& save) const {
  if (!picture().has_image()) return false;
  PictureLook shown = look();
  shown.room = turned_box(shown.drawn, shown.degrees);
  shown.x = shown.y = 0;
  shown.shadow = {};
  Variant given;
  copy_value(given, light);
  if (!is_missing(light) && given.change(VT_R4)) shown.light = V_R4(&given);
  const auto drawing = ObjectRef<ImageObject>::make();
  c32bppDIB& canvas = drawing->native_image();
  ImageRect found;
  GdiFlush();
  if (!picture_on_nothing(shown, picture(), nullptr, canvas) ||
      !canvas.TrimImage(true, kTrimAll, found))
    return false;
  canvas.set_alpha(alpha_type_of(std::as_const(canvas).view()));
  return save(*drawing);
}

bool USAlphaImage::save_redered_to_bmp(Text file, bool keep_premultiplied, long fill,
                                       const VARIANT& light) {
  return save_rendered(light, [&](ImageObject& image) {
    return image.save_to_file_bitmap(file, keep_premultiplied, static_cast<OLE_COLOR>(fill));
  });
}

bool USAlphaImage::save_redered_to_gif(Text file, bool adaptive, long tolerance,
                                       const VARIANT& light) {
  return save_rendered(
      light, [&](ImageObject& image) { return image.save_to_file_gif(file, adaptive, tolerance); });
}

bool USAlphaImage::save_redered_to_jpg(Text file, long quality, long fill, const VARIANT& light) {
  return save_rendered(light, [&](ImageObject& image) {
    return image.save_to_file_jpg(file, quality, static_cast<OLE_COLOR>(fill));
  });
}

bool USAlphaImage::save_redered_to_png(Text file, const VARIANT& light) {
  return save_rendered(light,
                       [&](ImageObject& image) { return image.save_to_file_png(file, Variant()); });
}

bool USAlphaImage::save_redered_to_tga(Text file, bool compress, bool reduce, bool premultiplied,
                                       const VARIANT& light) {
  return save_rendered(light, [&](ImageObject& image) {
    return image.save_to_file_tga(file, compress, reduce, premultiplied);
  });
}

}  // namespace kestrelon
