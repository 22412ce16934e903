// USAlphaImage: a picture drawn with its alpha over whatever lies behind it.
#pragma once

#include <optional>

#include "base/object_ref_win.h"
#include "frame/control_frame.h"
#include "frame/hover.h"
#include "imaging/c32bpp_dib/image_object_win.h"
#include "imaging/picture/picture_look.h"
#include "us_alpha_image_glue.h"

namespace kestrelon {

class USAlphaImage final : public USAlphaImageGlue<USAlphaImage, ControlFrame>,
                           private ImageObjectOwner {
  /// The picture as the bytes of a file.
  class ImageProperty final : public PropertyBase {
   public:
    explicit ImageProperty(USAlphaImage& owner) : PropertyBase(owner, L"Image"), control_(owner) {}
    Variant empty_value() const override;
    void load(const VARIANT& value) override;
    void reset() override { read_.clear(); }
    Variant save() const override;
    bool is_default() const override { return !control_.has_own_picture(); }
    /// The bytes that were read, once.
    std::vector<uint8_t> take() { return std::move(read_); }

   private:
    USAlphaImage& control_;
    std::vector<uint8_t> read_;
  };

 public:
  using Text = const std::wstring&;
  using Bytes = SAFEARRAY**;

  USAlphaImage();
  ~USAlphaImage() override;

  // In the order of the property bag.
  ImageProperty Image{*this};
  Property<ENUM_SCALE_METHOD> ScaleMethod{
      *this, {L"ScaleMethod", L"Scaler"}, Scaled, &USAlphaImage::redraw};
  Property<long> Opacity{*this, L"Opacity", 100, &USAlphaImage::redraw};
  Property<ENUM_MIRROR> Mirror{*this, L"Mirror", Mirror_None, &USAlphaImage::redraw};
  Property<long> Rotation{*this, {L"Rotation", L"Angle"}, 0, &USAlphaImage::redraw};
  Property<long> GrayFormula{*this, {L"grayScale", L"GrayScale"}, -1, &USAlphaImage::redraw};
  Property<ENUM_HITTEST_STYLE> HitTest{*this, L"HitTest", Entire_Control};
  Property<long> Props{*this, L"Props", kStretchQuality};
  Property<ENUM_MASK_SOURCE> MaskUsed{*this, L"MaskUsed", No_Mask,
                                      &USAlphaImage::mask_or_inverse_changed};
  Property<OLE_COLOR> MaskColor{*this, L"MaskColor", 0x8000000F, &USAlphaImage::mask_color_changed};
  Property<long> MaskSource{*this, L"MaskSource", 0};  // the last source that was chosen
  Property<long> Mask{*this, L"Mask", 0};              // the colour that became transparent
  Property<bool> Enabled{*this, L"Enabled", true, &USAlphaImage::apply_enabled};
  PictureProperty MouseIcon{*this, {L"MouseIcon", L"MIcon"}, &USAlphaImage::apply_mouse_pointer};
  Property<MousePointerConstants> MousePointer{
      *this, {L"MousePointer", L"MPointer"}, vbDefault, &USAlphaImage::apply_mouse_pointer};
  Property<ENUM_OLE_DROP_MODE> OLEDropMode{
      *this, {L"OLEDropMode", L"OLEdrop"}, Drop_None, &USAlphaImage::apply_drops};
  Property<long> ScaleCx{*this, L"ScaleCx", 0};
  Property<long> ScaleCy{*this, L"ScaleCy", 0};
  Property<OLE_COLOR> ShadowColor{*this, L"ShadowColor", 0x404040, &USAlphaImage::redraw};
  Property<long> ShadowDepth{*this, L"ShadowDepth", 2, &USAlphaImage::redraw};
  Property<long> ShadowOffsetX{*this, {L"ShadowOffsetX", L"ShadowX"}, 2, &USAlphaImage::redraw};
  Property<long> ShadowOffsetY{*this, {L"ShadowOffsetY", L"ShadowY"}, 2, &USAlphaImage::redraw};
  Property<long> ShadowOpacity{*this, L"ShadowOpacity", 50, &USAlphaImage::redraw};
  Property<float> IntensityOffset{
      *this, {L"IntensityOffset", L"Intensity"}, 0.0f, &USAlphaImage::redraw};

  // Properties that are more than a stored value
  bool stretch_quality() const { return flag(kStretchQuality); }
  void set_stretch_quality(bool on) { put_flag(kStretchQuality, L"StretchQuality", on); }
  bool auto_size() const { return flag(kAutoSize); }
  void set_auto_size(bool on) { put_flag(kAutoSize, L"AutoSize", on); }
  bool auto_redraw() const { return flag(kAutoRedraw); }
  void set_auto_redraw(bool on) { put_flag(kAutoRedraw, L"AutoRedraw", on); }
  bool keep_original_format() const { return flag(kKeepOriginalFormat); }
  void set_keep_original_format(bool on) {
    put_flag(kKeepOriginalFormat, L"KeepOriginalFormat", on);
  }
  bool inversed_image() const { return flag(kInversedImage); }
  void set_inversed_image(bool on) { put_flag(kInversedImage, L"InversedImage", on); }
  bool shadow_enabled() const { return flag(kShadowEnabled); }
  void set_shadow_enabled(bool on) { put_flag(kShadowEnabled, L"ShadowEnabled", on); }
  bool rotate_enabled() const { return flag(kRotateEnabled); }
  void set_rotate_enabled(bool on) { put_flag(kRotateEnabled, L"RotateEnabled", on); }
  /// One above the formula, which is what is saved.
  ENUM_GRAY_SCALES gray_scale() const {
    return static_cast<ENUM_GRAY_SCALES>(GrayFormula.get() + 1);
  }
  void set_gray_scale(ENUM_GRAY_SCALES value) { GrayFormula.put(long{value} - 1); }
  void set_scale_method(ENUM_SCALE_METHOD method);
  void set_mask_used(ENUM_MASK_SOURCE source);
  long image_width() const { return picture().Width(); }
  long image_height() const { return picture().Height(); }
  ENUM_IMAGE_FORMAT image_type() const {
    return static_cast<ENUM_IMAGE_FORMAT>(picture().ImageType());
  }
  bool gd_iplus_initialized() const { return imaging_bridge().library_ok(); }
  bool gd_iplus_enabled() const { return picture().isGDIplusEnabled(); }
  ComPtr<_c32bppDIB> dib_class() const { return image_.as<_c32bppDIB>(); }

  // Methods (us_alpha_image.cpp)
  bool is_mouse_over() const { return hover_.over(); }
  void refresh();
  void offset_shadow(long x, long y);
  void offset_image(bool set, VARIANT* x, VARIANT* y, VARIANT* shadow_x, VARIANT* shadow_y);
  bool get_image_scales(VARIANT* out_width, VARIANT* out_height, long method, long room_width,
                        long room_height, bool turned) const;
  void fade_in_out(long final_opacity, long step, long interval);

  // The picture (us_alpha_image_load.cpp)
  bool load_image_from_file(Text name, long cx, long cy, long depth);
  bool load_image_from_array(Bytes bytes, long cx, long cy, long depth);
  bool load_image_from_std_picture(IDispatch* picture);
  bool load_image_from_clipboard();
  bool load_image_from_handle(long handle);
  bool load_image_from_resource(IDispatch* global, const VARIANT& section, const VARIANT& id,
                                long cx, long cy, long depth);
  bool load_image_from_orignal_bytes(long cx, long cy, long depth);
  bool load_image_from_droped_files(IUnknown* data, long index, long cx, long cy, bool keep,
                                    long depth);
  bool load_image_from_pasted_files(long index, long cx, long cy, bool keep, long depth,
                                    VARIANT* count);
  bool load_image_from_us_image_list(IDispatch* list, const VARIANT& index, const VARIANT& key);
  bool set_stream(Bytes bytes, long cx, long cy, long depth);
  bool set_image_bytes(Bytes bytes, bool bgr, bool bottom_up);
  void clear_image();
  bool resize_image(long new_height, long new_width) {
    return image_->resize(new_width, new_height);
  }
  bool trim_image(bool update, long method, VARIANT* x, VARIANT* y, VARIANT* out_width,
                  VARIANT* out_height) {
    return image_->trim_image(update, method, x, y, out_width, out_height);
  }

  // Saving (us_alpha_image_save.cpp)
  bool get_stream(Bytes out) const;
  bool get_image_bytes(Bytes out, VARIANT* scan_width, bool as_2d, bool bgr, bool bottom_up,
                       bool premultiplied, bool as_file);
  bool render(long dc, long x, long y, long width, long height, long from_x, long from_y,
              long from_width, long from_height, long opacity, bool blend, bool half_tone,
              IDispatch* host, long gray, float light, float angle, bool centre);
  bool save_to_bmp(Text file, bool keep_premultiplied, long fill);
  bool save_to_gif(Text file, bool adaptive, long tolerance);
  bool save_to_jpg(Text file, long quality, long fill);
  bool save_to_png(Text file);
  bool save_to_tga(Text file, bool compress, bool reduce, bool premultiplied);
  bool save_to_bmp_stream(Bytes out, bool keep_premultiplied, long fill);
  bool save_to_gif_stream(Bytes out, bool adaptive, long tolerance);
  bool save_to_jpg_stream(Bytes out, long quality, long fill);
  bool save_to_png_stream(Bytes out);
  bool save_to_tga_stream(Bytes out, bool compress, bool reduce, bool premultiplied);
  bool save_redered_to_bmp(Text file, bool keep_premultiplied, long fill, const VARIANT& light);
  bool save_redered_to_gif(Text file, bool adaptive, long tolerance, const VARIANT& light);
  bool save_redered_to_jpg(Text file, long quality, long fill, const VARIANT& light);
  bool save_redered_to_png(Text file, const VARIANT& light);
  bool save_redered_to_tga(Text file, bool compress, bool reduce, bool premultiplied,
                           const VARIANT& light);

 private:
  /// The bits of "Props"; others are kept as they were read.
  enum Flag : long {
    kStretchQuality = 1,
    kAutoSize = 4,
    kAutoRedraw = 8,
    kKeepOriginalFormat = 16,
    kInversedImage = 64,
    kShadowEnabled = 128,
    kRotateEnabled = 256,
  };

  // us_alpha_image.cpp
  void init_properties() override;
  void properties_read() override;
  void resized() override;
  void shown() override { icon_follows_ = false; }
  void closing() override { end_fade(); }
  void terminate() override;
  const Property<bool>* enabled_property() const override { return &Enabled; }
  void describe(AccessibleItem& item) const override { item.role = ROLE_SYSTEM_GRAPHIC; }
  long mouse_pointer() const override { return MousePointer.get(); }
  const PictureProperty* mouse_icon() const override { return &MouseIcon; }
  bool flag(Flag which) const { return (Props.get() & which) != 0; }
  void put_flag(Flag which, const wchar_t* name, bool on);
  void mask_or_inverse_changed();
  void mask_color_changed();
  void fade_step();
  void end_fade();

  // us_alpha_image_draw.cpp
  bool has_alpha() const override { return true; }
  void about_to_show() override;
  bool hit(POINT point) const override;
  PictureSize picture_size() const { return {picture().Width(), picture().Height()}; }
  PictureSize size_in(PictureSize room, ENUM_SCALE_METHOD method) const;
  void take_picture_size();
  PictureLook look() const;
  const c32bppDIB* shadow_of(const ShadowLook& wanted);
  /// Shows the present look, unless it is what shows already.
  void redraw();

  // us_alpha_image_events.cpp
  void mouse_down(short button, short shift, float x, float y) override;
  void mouse_move(short button, short shift, float x, float y) override;
  void mouse_up(short button, short shift, float x, float y) override;
  void key_down(short& key, short& shift) override { raise_key_down(key, shift); }
  void key_press(short& character) override { raise_key_press(character); }
  void key_up(short& key, short& shift) override { raise_key_up(key, shift); }
  void window_message_after(UINT message, WPARAM wparam, LPARAM lparam) override;
  bool takes_drops() const override { return user_mode() && OLEDropMode.get() == Drop_Manual; }
  void drag(Drag& step) override;

  // us_alpha_image_load.cpp
  void image_changed() override;
  void image_replaced() override;
  template <class Loader>
  bool load(bool keep, Loader&& loader, bool resize = true);
  bool load_bytes(std::vector<uint8_t> bytes, long cx, long cy, long depth, bool resize);
  /// What a saved form holds. Icon files do not say which of their pictures was shown: the one for
  /// the control's size is, also when the container gives that size only afterwards. The form has
  /// its sizes already: AutoSize does not act.
  void load_at_size(std::vector<uint8_t> bytes);
  void loaded(bool resize);
  /// Moves the bytes of the file to where programs see them, or away from there.
  void keep_file(bool visible);
  void undo_mask_and_inverse();
  void apply_mask_and_inverse();
  std::optional<int32_t> mask_key() const;

  // us_alpha_image_save.cpp
  bool has_own_picture() const;
  std::vector<uint8_t> picture_bytes() const;
  template <class Saver>
  bool save_rendered(const VARIANT& light, Saver&& save) const;

  c32bppDIB& picture() const { return image_->native_image(); }

  ObjectRef<ImageObject> image_ = ObjectRef<ImageObject>::make();
  std::unique_ptr<c32bppDIB> plain_;  // the picture without the mask and inverse that image_ shows
  std::vector<uint8_t> file_;         // the file it came from, when image_ was not asked to keep it
  bool inverse_in_ = false;           // the pixels of image_ are inverse
  bool altered_ = false;              // they are no longer what the file says
  bool icon_follows_ = false;         // the picture out of an icon file follows the size
  int busy_ = 0;                      // the changes of image_ are our own

  uint32_t version_ = 0;  // of the picture, for looks
  std::optional<PictureLook> wanted_, drawn_;
  POINT offset_{}, shadow_shift_{};
  PicturePainter painter_;
  std::unique_ptr<c32bppDIB> shadow_;
  struct ShadowKey {
    uint32_t version;
    int32_t color, depth;
    bool operator==(const ShadowKey&) const = default;
  } shadow_key_{};
  mutable HitArea hit_area_;
  mutable std::optional<std::pair<PictureLook, ENUM_HITTEST_STYLE>> hit_made_for_;

  Hover hover_;
  PrivateTimer fade_timer_;
  std::optional<FadeSteps> fade_;
};

}  // namespace kestrelon
