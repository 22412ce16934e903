// Where pictures come from, and the mask and inverse put on them.
#include <cstring>
#include <exception>

#include "controls/us_alpha_image/us_alpha_image.h"
#include "imaging/c32bpp_dib/automation_bytes_win.h"
#include "imaging/image_list/image_list_entry_win.h"
#include "imaging/picture/picture_pixels.h"

namespace kestrelon {
namespace {

// While it lives, changes of the image are the control's own.
class Busy {
 public:
  explicit Busy(int& count) : count_(count) { ++count_; }
  ~Busy() { --count_; }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

 private:
  int& count_;
};

void copy_pixels(const c32bppDIB& from, c32bppDIB& to) {
  std::memcpy(to.bits(), from.bits(), to.pixel_count() * 4);
  to.set_alpha(from.Alpha());
  to.set_image_type(from.ImageType());
}

}  // namespace

// The end that all loads have in common; `loader` fills image_. What fails leaves no picture.
// Without `keep` the file's bytes do not stay with the image, where programs see them, but the
// control has them for saving.
template <class Loader>
bool USAlphaImage::load(bool keep, Loader&& loader, bool resize) {
  bool done = false;
  // Loading may run a program's code, which then finds a picture without mask and inverse.
  plain_.reset();
  inverse_in_ = false;
  {
    const Busy busy(busy_);
    try {
      done = loader(*image_) && picture().has_image();
    } catch (const std::exception&) {
      done = false;
    }
    if (!done) image_->destroy_dib();
    plain_.reset();
    file_.clear();
    inverse_in_ = altered_ = icon_follows_ = false;
    if (done && !keep) keep_file(false);
  }
  property_changed(Image.name());
  loaded(resize);
  return done;
}

void USAlphaImage::keep_file(bool visible) {
  if (visible) {
    if (!file_.empty()) picture().set_original_bytes(std::exchange(file_, {}));
    return;
  }
  if (!is_plain_bitmap(picture().ImageType())) picture().GetOrginalFormat(file_);
  picture().set_original_bytes({});
}

void USAlphaImage::loaded(bool resize) {
  apply_mask_and_inverse();
  ++version_;
  if (resize && auto_size()) take_picture_size();
  redraw();
}

// A program changed the image: that is the picture now, mask and inverse included.
void USAlphaImage::image_changed() {
  if (busy_ > 0) return;
  plain_.reset();
  file_.clear();
  altered_ = true;
  property_changed(Image.name());
  ++version_;
  if (auto_size()) take_picture_size();
  redraw();
}

// A program put another picture into the image, which has the end of every load.
void USAlphaImage::image_replaced() {
  if (busy_ > 0) return;
  plain_.reset();
  file_.clear();
  inverse_in_ = altered_ = icon_follows_ = false;
  property_changed(Image.name());
  loaded(true);
}

std::optional<int32_t> USAlphaImage::mask_key() const {
  const c32bppDIB& image = picture();
  const bool right = MaskUsed.get() == Use_TopRight || MaskUsed.get() == Use_BottomRight;
  const bool bottom = MaskUsed.get() == Use_BottomLeft || MaskUsed.get() == Use_BottomRight;
  switch (MaskUsed.get()) {
    case Use_MaskColor:
      return plain_color(MaskColor.get());
    case Use_TopLeft:
    case Use_TopRight:
    case Use_BottomLeft:
    case Use_BottomRight: {
      int32_t alpha = 0;
      const int32_t color =
          image.GetPixel(right ? image.Width() - 1 : 0, bottom ? image.Height() - 1 : 0, &alpha);
      // A corner that is transparent already has no colour.
      return alpha == 255 ? std::optional(color) : std::nullopt;
    }
    default:
      return std::nullopt;
  }
}

void USAlphaImage::undo_mask_and_inverse() {
  const Busy busy(busy_);
  GdiFlush();
  if (plain_ && plain_->pixel_count() == picture().pixel_count()) {
    copy_pixels(*plain_, picture());
  } else if (inverse_in_) {
    picture().MakeImageInverse();
  }
  plain_.reset();
  inverse_in_ = false;
}

// On a picture without either.
void USAlphaImage::apply_mask_and_inverse() {
  c32bppDIB& image = picture();
  const auto key = image.has_image() ? mask_key() : std::nullopt;
  const bool inverse = image.has_image() && inversed_image();
  if (!key && !inverse) return;
  const Busy busy(busy_);
  GdiFlush();
  plain_ = image.CopyImage();
  if (key) {
    Mask.assign(*key);
    image.MakeTransparent(*key);
  }
  if (inverse) image.MakeImageInverse();
  inverse_in_ = inverse;
}

void USAlphaImage::clear_image() {
  load(false, [](ImageObject&) { return false; });
}

bool USAlphaImage::load_image_from_file(Text name, long cx, long cy, long depth) {
  return load(keep_original_format(), [&](ImageObject& image) {
    return image.load_picture_file(name, cx, cy, true, depth);
  });
}

bool USAlphaImage::load_image_from_array(Bytes bytes, long cx, long cy, long depth) {
  return load(keep_original_format(), [&](ImageObject& image) {
    return image.load_picture_stream(bytes, cx, cy, 0, 0, true, depth);
  });
}

bool USAlphaImage::set_stream(Bytes bytes, long cx, long cy, long depth) {
  return load_image_from_array(bytes, cx, cy, depth);
}

bool USAlphaImage::load_bytes(std::vector<uint8_t> bytes, long cx, long cy, long depth,
                              bool resize) {
  const LoadOptions options{static_cast<int32_t>(cx), static_cast<int32_t>(cy),
                            static_cast<int32_t>(depth), true};
  const auto loader = [&](ImageObject& image) {
    const Replacing replacing(image);
    return image.native_image().LoadPicture_Stream(bytes, options);
  };
  return load(keep_original_format(), loader, resize);
}

void USAlphaImage::load_at_size(std::vector<uint8_t> bytes) {
  const bool done = load_bytes(std::move(bytes), width(), height(), 32, false);
  switch (picture().ImageType()) {
    case ImageFormat::Icon:
    case ImageFormat::IconArgb:
    case ImageFormat::PngIcon:
    case ImageFormat::Cursor:
    case ImageFormat::CursorArgb:
      icon_follows_ = done;
      break;
    default:
      break;
  }
}

bool USAlphaImage::load_image_from_orignal_bytes(long cx, long cy, long depth) {
  std::vector<uint8_t> bytes;
  picture().GetOrginalFormat(bytes);
  return load_bytes(std::move(bytes), cx, cy, depth, true);
}

bool USAlphaImage::load_image_from_std_picture(IDispatch* source) {
  return load(true, [&](ImageObject& image) { return image.load_picture_std_picture(source); });
}

bool USAlphaImage::load_image_from_clipboard() {
  return load(true, [](ImageObject& image) { return image.load_picture_clip_board(); });
}

bool USAlphaImage::load_image_from_handle(long handle) {
  return load(true, [&](ImageObject& image) { return image.load_picture_by_handle(handle); });
}

bool USAlphaImage::load_image_from_resource(IDispatch* global, const VARIANT& section,
                                            const VARIANT& id, long cx, long cy, long depth) {
  return load(true, [&](ImageObject& image) {
    return image.load_picture_resource(id, section, Variant(global), cx, cy, 0, 0, depth);
  });
}

bool USAlphaImage::load_image_from_droped_files(IUnknown* data, long index, long cx, long cy,
                                                bool keep, long depth) {
  return load(keep, [&](ImageObject& image) {
    return image.load_picture_droped_files(data, index, cx, cy, true, depth);
  });
}

bool USAlphaImage::load_image_from_pasted_files(long index, long cx, long cy, bool keep, long depth,
                                                VARIANT* count) {
  if (index == 0) return image_->load_picture_pasted_files(0, cx, cy, keep, depth, count);
  return load(keep, [&](ImageObject& image) {
    return image.load_picture_pasted_files(index, cx, cy, true, depth, count);
  });
}

bool USAlphaImage::load_image_from_us_image_list(IDispatch* list, const VARIANT& index,
                                                 const VARIANT& key) {
  return load(true, [&](ImageObject& image) {
    WindowsImage entry;  // the list may itself show this very image
    if (!copy_image_list_entry(list, key, index, entry)) return false;
    const Replacing replacing(image);
    image.native_image().SwapDIBs(entry);
    return true;
  });
}

bool USAlphaImage::set_image_bytes(Bytes bytes, bool bgr, bool bottom_up) {
  if (!picture().has_image()) return false;
  {
    const Busy busy(busy_);
    if (!image_->set_di_bbits(bytes, bgr, true, true, bottom_up, 0, 0, 0, 0)) return false;
    settle_stored_pixels(picture());
  }
  plain_.reset();
  file_.clear();
  inverse_in_ = false;
  altered_ = true;
  property_changed(Image.name());
  loaded(false);
  return true;
}

}  // namespace kestrelon
