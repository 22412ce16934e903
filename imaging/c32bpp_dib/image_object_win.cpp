#include "imaging/c32bpp_dib/image_object_win.h"

#include "imaging/c32bpp_dib/automation_bytes_win.h"

namespace kestrelon {
namespace {

// What ShowMessages and LastMessage of every object of the process speak of.
struct Messages {
  bool shown = true;
  std::wstring last;
};

Messages& messages() {
  static Messages state;
  return state;
}

void keep_message(const std::wstring& text) {
  messages().last = text;
  if (messages().shown)
    MessageBoxW(GetActiveWindow(), text.c_str(), L"Kestrelon", MB_OK | MB_ICONEXCLAMATION);
}

ImageRect rect_of(long x, long y, long width, long height) {
  return {x, y, width, height};
}

// The image an output variable gets: its own object's, or that of a new one.
class OutputImage {
 public:
  explicit OutputImage(VARIANT* variable) : variable_(variable) {
    native_ = native_image_of(object_in(variable).get());
    if (native_) return;
    made_.attach(new ImageObject);
    native_ = native_image_of(made_->own_unknown());
  }
  NativeImage& get() { return *native_; }
  bool is_new() const { return made_.get() != nullptr; }
  void hand_over() {
    if (is_new()) give_object(variable_, made_->dispatch());
  }

 private:
  struct Owner {
    ~Owner() { attach(nullptr); }
    void attach(ImageObject* next) {
      if (object != nullptr) object->own_unknown()->Release();
      object = next;
    }
    ImageObject* get() const { return object; }
    ImageObject* operator->() const { return object; }
    ImageObject* object = nullptr;
  };

  VARIANT* variable_;
  Owner made_;
  ComPtr<NativeImage> native_;
};

}  // namespace

int32_t plain_color(OLE_COLOR color) {
  COLORREF out = 0;
  if (FAILED(OleTranslateColor(color, nullptr, &out))) return 0;
  return static_cast<int32_t>(out & 0xFFFFFF);
}

void* ImageObject::find_interface(REFIID iid) {
  if (iid == IID_NativeImage) return static_cast<NativeImage*>(this);
  return AutomationObject::find_interface(iid);
}

void ImageObject::before_replace() {
  dc_.deselect();  // a bitmap in use cannot be freed
}

void ImageObject::after_replace() {
  if (!image_.has_image()) {
    dc_.reset();
  } else if (manage_own_dc_) {
    dc_.make();
  }
  if (owner_ == nullptr) return;
  reshaping_ ? owner_->image_changed() : owner_->image_replaced();
}

void ImageObject::set_manage_own_dc(bool on) {
  manage_own_dc_ = on;
  if (!on) {
    dc_.reset();
  } else if (image_.has_image()) {
    dc_.make();
  }
}

void ImageObject::set_keep_gd_iplus_active(bool on) {
  image_.set_KeepGDIplusActive(on);
  session_ = image_.KeepGDIplusActive() ? std::make_unique<GdiPlusSession>() : nullptr;
}

void ImageObject::set_tag(const VARIANT& tag) {
  copy_value(tag_, tag);
}

bool ImageObject::show_messages() {
  return messages().shown;
}

void ImageObject::set_show_messages(bool on) {
  messages().shown = on;
  set_message_hook(keep_message);
}

std::wstring ImageObject::last_message() {
  return messages().last;
}

bool ImageObject::initialize_dib(long width, long height) {
  const Replacing replacing(*this);
  return image_.InitializeDIB(width, height);
}

void ImageObject::destroy_dib() {
  const Replacing replacing(*this);
  image_.DestroyDIB();
}

long ImageObject::load_di_bin_dc(bool select) {
  if (!select) {
    const bool in_use = static_cast<bool>(dc_);
    dc_.deselect();
    if (!manage_own_dc_) dc_.reset();
    if (in_use) after_change();  // whatever was drawn there
    return 0;
  }
  if (!dc_ && !dc_.select(bitmap_of(image_))) return 0;
  return static_cast<long>(reinterpret_cast<INT_PTR>(dc_.get()));
}

bool ImageObject::swap_di_bs(IDispatch* other) {
  const auto native = native_image_of(other);
  if (!native || &native->native_image() == &image_) return false;
  auto* const partner = static_cast<ImageObject*>(native.get());
  const bool mine = static_cast<bool>(dc_), theirs = static_cast<bool>(partner->dc_);
  {
    const Replacing first(*this), second(*native);
    image_.SwapDIBs(native->native_image());
  }
  if (mine) load_di_bin_dc(true);
  if (theirs) partner->load_di_bin_dc(true);
  return true;
}

bool ImageObject::get_orginal_format(Bytes out) {
  std::vector<uint8_t> bytes;
  return image_.GetOrginalFormat(bytes) && give_bytes(out, bytes);
}

long ImageObject::get_pixel(long x, long y, VARIANT* alpha, bool premultiplied) {
  GdiFlush();
  int32_t value = 0;
  const int32_t color = image_.GetPixel(x, y, &value, premultiplied);
  if (color != -1) give_number(alpha, value);
  return color;
}

long ImageObject::set_pixel(long x, long y, OLE_COLOR color, long alpha, bool premultiplied) {
  const auto address = image_.SetPixel(x, y, plain_color(color), alpha, premultiplied);
  changed(address != 0);
  return static_cast<long>(address);
}

bool ImageObject::get_di_bbits(Bytes out, bool as_2d, bool bgr, bool with_alpha, bool dword_aligned,
                               bool bottom_up, long x, long y, long width, long height,
                               bool premultiplied) {
  GdiFlush();
  const BitsFormat format{bgr, with_alpha, dword_aligned, bottom_up, premultiplied};
  const ImageRect area = rect_of(x, y, width, height);
  std::vector<uint8_t> bytes;
  if (!image_.GetDIBbits(bytes, format, area)) return false;
  const int32_t columns =
      std::min<int64_t>(width > 0 ? width : image_.Width(), int64_t{image_.Width()} - x);
  return give_bytes(out, bytes, as_2d ? format.row_length(columns) : 0);
}

bool ImageObject::set_di_bbits(Bytes in, bool bgr, bool has_alpha, bool dword_aligned,
                               bool bottom_up, long x, long y, long width, long height) {
  const ArrayBytes source(in != nullptr ? *in : nullptr, 2);
  const BitsFormat format{bgr, has_alpha, dword_aligned, bottom_up, true};
  return source && changed(image_.SetDIBbits(source.bytes(), format, rect_of(x, y, width, height)));
}

bool ImageObject::get_alpha_mask(Bytes out, bool as_2d, bool dword_aligned, bool bottom_up, long x,
                                 long y, long width, long height) {
  GdiFlush();
  std::vector<uint8_t> bytes;
  if (!image_.GetAlphaMask(bytes, dword_aligned, bottom_up, rect_of(x, y, width, height)))
    return false;
  const int64_t rows =
      std::min<int64_t>(height > 0 ? height : image_.Height(), int64_t{image_.Height()} - y);
  const size_t row_length = as_2d && rows > 0 ? bytes.size() / static_cast<size_t>(rows) : 0;
  return give_bytes(out, bytes, row_length);
}

bool ImageObject::copy_image_to(VARIANT* dest, long width, long height, bool copy_original) {
  OutputImage output(dest);
  c32bppDIB& target = output.get().native_image();
  if (output.is_new()) {
    target.set_gdiToken(image_.gdiToken());
    target.set_isGDIplusEnabled(image_.isGDIplusEnabled());
    target.set_HighQualityInterpolation(image_.HighQualityInterpolation());
  }
  GdiFlush();
  {
    const Replacing replacing(output.get());
    if (!image_.CopyImageTo(target, width, height, copy_original)) return false;
  }
  output.hand_over();
  return true;
}

bool ImageObject::resize(long width, long height) {
  const Reshaping reshaping(*this);
  return image_.Resize(width, height);
}

bool ImageObject::scale_image(long width, long height, VARIANT* out_width, VARIANT* out_height,
                              long option) {
  int32_t scaled_width = 0, scaled_height = 0;
  if (!image_.ScaleImage(width, height, scaled_width, scaled_height,
                         static_cast<ScaleOption>(option))) {
    return false;
  }
  give_number(out_width, scaled_width);
  give_number(out_height, scaled_height);
  return true;
}

bool ImageObject::trim_image(bool update, long method, VARIANT* x, VARIANT* y, VARIANT* width,
                             VARIANT* height) {
  ImageRect found;
  GdiFlush();
  {
    std::optional<Reshaping> reshaping;
    if (update) reshaping.emplace(*this);
    if (!image_.TrimImage(update, method, found)) return false;
  }
  give_number(x, found.x);
  give_number(y, found.y);
  give_number(width, found.width);
  give_number(height, found.height);
  return true;
}

bool ImageObject::make_transparent(OLE_COLOR color, bool reverse) {
  return changed(image_.MakeTransparent(plain_color(color), reverse));
}

bool ImageObject::blend_to_color(OLE_COLOR color, long percent) {
  return changed(image_.BlendToColor(plain_color(color), percent));
}

bool ImageObject::create_checker_board(long size, OLE_COLOR first, OLE_COLOR second) {
  return changed(image_.CreateCheckerBoard(size, plain_color(first), plain_color(second)));
}

bool ImageObject::create_drop_shadow(long depth, OLE_COLOR color, VARIANT* out) {
  OutputImage output(out);
  if (&output.get().native_image() == &image_) return false;
  {
    const Replacing replacing(output.get());
    if (!image_.CreateDropShadow(depth, plain_color(color), output.get().native_image()))
      return false;
  }
  output.hand_over();
  return true;
}

}  // namespace kestrelon
