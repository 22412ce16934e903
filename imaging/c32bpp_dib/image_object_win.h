// The automation class c32bppDIB.
#pragma once

#include "base/automation_win.h"
#include "c32bpp_dib_glue.h"
#include "imaging/c32bpp_dib/native_image_win.h"
#include "imaging/dib_win.h"
#include "imaging/gdi_plus_win.h"

namespace kestrelon {

/// What shows an image object and must follow changes that others make to it.
class ImageObjectOwner {
 public:
  /// The pixels of the picture, or its size, have changed. Both may come at any depth of calls.
  virtual void image_changed() = 0;
  /// There is another picture, or none.
  virtual void image_replaced() = 0;

 protected:
  ~ImageObjectOwner() = default;
};

class ImageObject final : public c32bppDIBGlue<ImageObject, AutomationObject>, public NativeImage {
 public:
  using Text = const std::wstring&;
  using Bytes = SAFEARRAY**;

  // NativeImage
  c32bppDIB& native_image() override { return image_; }
  void before_replace() override;
  void after_replace() override;
  void after_change() override {
    if (owner_ != nullptr) owner_->image_changed();
  }
  /// Null when the owner goes; programs may hold the object longer.
  void set_owner(ImageObjectOwner* owner) { owner_ = owner; }
  STDMETHODIMP QueryInterface(REFIID iid, void** out) override { return outer_query(iid, out); }
  STDMETHODIMP_(ULONG) AddRef() override { return outer_add_ref(); }
  STDMETHODIMP_(ULONG) Release() override { return outer_release(); }

  // Properties
  long bits_pointer() { return static_cast<long>(reinterpret_cast<INT_PTR>(image_.bits())); }
  long handle() { return static_cast<long>(image_.handle()); }
  long width() { return image_.Width(); }
  long height() { return image_.Height(); }
  long scan_width() { return static_cast<long>(image_.scanWidth()); }
  ENUM_IMAGE_FORMAT image_type() { return static_cast<ENUM_IMAGE_FORMAT>(image_.ImageType()); }
  void set_image_type(ENUM_IMAGE_FORMAT type) {
    image_.set_image_type(static_cast<ImageFormat>(type));
  }
  ENUM_ALPHA_TYPE alpha() { return static_cast<ENUM_ALPHA_TYPE>(image_.Alpha()); }
  void set_alpha(ENUM_ALPHA_TYPE alpha) { image_.set_alpha(static_cast<AlphaType>(alpha)); }
  bool manage_own_dc() { return manage_own_dc_; }
  void set_manage_own_dc(bool on);
  long gdi_token() { return static_cast<long>(image_.gdiToken()); }
  void set_gdi_token(long token) { image_.set_gdiToken(token); }
  bool keep_gd_iplus_active() { return image_.KeepGDIplusActive(); }
  void set_keep_gd_iplus_active(bool on);
  bool high_quality_interpolation() { return image_.HighQualityInterpolation(); }
  void set_high_quality_interpolation(bool on) { image_.set_HighQualityInterpolation(on); }
  Variant tag() { return tag_; }
  void set_tag(const VARIANT& tag);
  bool is_alpha_blend_friendly() { return image_.isAlphaBlendFriendly(); }
  void set_is_alpha_blend_friendly(bool on) { image_.set_isAlphaBlendFriendly(on); }
  bool is_gd_iplus_enabled() { return image_.isGDIplusEnabled(); }
  void set_is_gd_iplus_enabled(bool on) { image_.set_isGDIplusEnabled(on); }
  bool is_zlib_enabled() { return image_.isZlibEnabled(); }
  bool platform_png_first() { return kestrelon::platform_png_first(); }
  void set_platform_png_first(bool on) { kestrelon::set_platform_png_first(on); }
  bool show_messages();
  void set_show_messages(bool on);
  std::wstring last_message();

  // The image
  bool initialize_dib(long width, long height);
  void destroy_dib();
  void erase_dib() {
    image_.EraseDIB();
    after_change();
  }
  long load_di_bin_dc(bool select);
  bool swap_di_bs(IDispatch* other);
  bool get_orginal_format(Bytes out);
  long create_gd_iplus_token() { return static_cast<long>(c32bppDIB::CreateGDIplusToken()); }
  void destroy_gd_iplus_token(long token) { c32bppDIB::DestroyGDIplusToken(token); }

  // Loading (image_object_load_win.cpp)
  bool load_picture_file(Text file, long cx, long cy, bool save_format, long depth);
  bool load_picture_stream(Bytes in, long cx, long cy, long offset, long length, bool save_format,
                           long depth);
  bool load_picture_resource(const VARIANT& index, const VARIANT& section, const VARIANT& global,
                             long cx, long cy, long offset, long length, long depth);
  bool load_picture_std_picture(IDispatch* picture);
  bool load_picture_by_handle(long handle);
  bool load_picture_clip_board();
  bool load_picture_droped_files(IUnknown* data, long index, long cx, long cy, bool save_format,
                                 long depth);
  bool load_picture_pasted_files(long index, long cx, long cy, bool save_format, long depth,
                                 VARIANT* count);
  bool load_picture_from_orignal_format(long cx, long cy, long depth);
  bool get_dropped_file_names(IUnknown* data);
  bool get_pasted_file_names(VARIANT* names);
  long source_icon_sizes(VARIANT* sizes);

  // Pixels
  long get_pixel(long x, long y, VARIANT* alpha, bool premultiplied);
  long set_pixel(long x, long y, OLE_COLOR color, long alpha, bool premultiplied);
  bool get_di_bbits(Bytes out, bool as_2d, bool bgr, bool with_alpha, bool dword_aligned,
                    bool bottom_up, long x, long y, long width, long height, bool premultiplied);
  bool set_di_bbits(Bytes in, bool bgr, bool has_alpha, bool dword_aligned, bool bottom_up, long x,
                    long y, long width, long height);
  bool get_alpha_mask(Bytes out, bool as_2d, bool dword_aligned, bool bottom_up, long x, long y,
                      long width, long height);

  // Saving (image_object_save_win.cpp)
  bool save_to_file_bitmap(Text file, bool keep_premultiplied, OLE_COLOR fill);
  bool save_to_stream_bitmap(Bytes out, bool keep_premultiplied, OLE_COLOR fill);
  bool save_to_file_png(Text file, const VARIANT& fill);
  bool save_to_stream_png(Bytes out, const VARIANT& fill);
  bool save_to_file_jpg(Text file, long quality, OLE_COLOR fill);
  bool save_to_stream_jpg(Bytes out, long quality, OLE_COLOR fill);
  bool save_to_file_gif(Text file, bool adaptive, long tolerance);
  bool save_to_stream_gif(Bytes out, bool adaptive, long tolerance);
  bool save_to_file_tga(Text file, bool compress, bool reduce, bool premultiplied);
  bool save_to_stream_tga(Bytes out, bool compress, bool reduce, bool premultiplied);
  bool png_property_set(ENUM_PNG_PROPERTIES id, const VARIANT& value, Text keyword);
  Variant png_property_get(ENUM_PNG_PROPERTIES id, Text keyword);

  // Drawing (image_object_draw_win.cpp)
  bool render(long dc, long x, long y, long width, long height, long from_x, long from_y,
              long from_width, long from_height, long opacity, bool blend, bool half_tone,
              IDispatch* host, long gray, float light, float angle, bool centre);
  bool tile_image(long dc, long x, long y, long width, long height, long from_x, long from_y,
                  long from_width, long from_height, long opacity, bool blend, bool half_tone,
                  IDispatch* host, long gray, float light);
  bool render_drop_shadow_jit(long dc, long x, long y, long depth, OLE_COLOR color, long opacity,
                              float light, long gray, IDispatch* host);
  bool draw_text_std_font(Text text, IDispatch* font, long x, long y, long width, long height,
                          OLE_COLOR color, long opacity, long format);
  bool draw_text_h_font(Text text, long font, long x, long y, long width, long height,
                        OLE_COLOR color, long opacity, long format);
  long create_region(long style, long x, long y);
  long create_icon(bool cursor, long x, long y);
  ComPtr<IDispatch> create_picture(bool as_icon, OLE_COLOR back);

  // Transforms
  bool copy_image_to(VARIANT* dest, long width, long height, bool copy_original);
  bool resize(long width, long height);
  bool scale_image(long width, long height, VARIANT* out_width, VARIANT* out_height, long option);
  bool trim_image(bool update, long method, VARIANT* x, VARIANT* y, VARIANT* width,
                  VARIANT* height);
  bool make_gray_scale(long formula) {
    return changed(image_.MakeGrayScale(static_cast<GrayScale>(formula)));
  }
  bool make_image_inverse() { return changed(image_.MakeImageInverse()); }
  bool make_transparent(OLE_COLOR color, bool reverse);
  bool mirror_image(bool x, bool y) { return changed(image_.MirrorImage(x, y)); }
  bool make_lighter_darker(float percent) { return changed(image_.MakeLighterDarker(percent)); }
  bool blend_to_color(OLE_COLOR color, long percent);
  bool create_checker_board(long size, OLE_COLOR first, OLE_COLOR second);
  bool create_drop_shadow(long depth, OLE_COLOR color, VARIANT* out);

 protected:
  void* find_interface(REFIID iid) override;

 private:
  // The time in which the picture is replaced by itself in another size.
  class Reshaping {
   public:
    explicit Reshaping(ImageObject& object) : object_(object) {
      object.before_replace();
      object.reshaping_ = true;
    }
    ~Reshaping() {
      object_.after_replace();
      object_.reshaping_ = false;
    }
    Reshaping(const Reshaping&) = delete;
    Reshaping& operator=(const Reshaping&) = delete;

   private:
    ImageObject& object_;
  };

  bool changed(bool done) {
    if (done) after_change();
    return done;
  }

  WindowsImage image_;
  BitmapDc dc_;
  bool manage_own_dc_ = false;
  Variant tag_;
  ImageObjectOwner* owner_ = nullptr;
  bool reshaping_ = false;
  std::unique_ptr<GdiPlusSession> session_;  // with KeepGDIplusActive
};

/// A colour as 0x00BBGGRR; a system colour is looked up.
int32_t plain_color(OLE_COLOR color);

}  // namespace kestrelon
