// USButton: the push button. Gradient face, thin frame, caption with access key, pictures in nine
// places, check mode, tip.
#pragma once

#include "controls/us_button/us_button_face.h"
#include "controls/us_button/us_button_input.h"
#include "controls/us_button/us_button_layout.h"
#include "frame/control_frame.h"
#include "frame/tooltip.h"
#include "imaging/dib_win.h"
#include "us_button_glue.h"

namespace kestrelon {

class USButton final : public USButtonGlue<USButton, ControlFrame>, private ButtonHost {
 public:
  USButton();

  // In the order of the property bag.
  Property<std::vector<uint8_t>> Picture32Dib{*this, {L"Picture32Dib", L"DibPicture"}, {}};
  Property<short> CaptionDistance{*this, L"CaptionDistance", 0, &USButton::repaint};
  Property<ENUM_ALIGNMENTS> Alignment{*this, L"Alignment", On_Center, &USButton::repaint};
  Property<ENUM_THEME> Theme{*this, L"Theme", Windows_8, &USButton::apply_theme};
  Property<OLE_COLOR> ToolTipBackColor{*this, L"ToolTipBackColor", 0xD7FCFE, &USButton::tip};
  Property<OLE_COLOR> ToolTipForeColor{*this, L"ToolTipForeColor", 0, &USButton::tip};
  Property<ENUM_TOOLTIP_ICON> ToolTipIcon{*this, L"ToolTipIcon", No_Icon, &USButton::tip};
  Property<bool> ToolTipCentered{*this, L"ToolTipCentered", false, &USButton::tip};
  Property<long> ToolTipVisibleTime{*this, L"ToolTipVisibleTime", 5000, &USButton::tip};
  Property<long> ToolDelayTime{*this, L"ToolDelayTime", 500, &USButton::tip};
  Property<ENUM_TOOLTIP_STYLE> ToolTipStyle{*this, L"ToolTipStyle", ToolTip_Balloon,
                                            &USButton::tip};
  Property<std::wstring> ToolTipTitle{*this, L"ToolTipTitle", L"", &USButton::tip};
  Property<std::wstring> ToolTipDescription{*this, L"ToolTipDescription", L"", &USButton::tip};
  Property<bool> ShowFocusRect{*this, L"ShowFocusRect", true, &USButton::repaint};
  Property<bool> ShowFocusRectDown{*this, L"ShowFocusRectDown", false, &USButton::repaint};
  Property<OLE_COLOR> BorderColor{*this, L"BorderColor", 0xDBC9BA, &USButton::repaint};
  Property<OLE_COLOR> BorderColorOver{*this, L"BorderColorOver", 0xB17F3C, &USButton::repaint};
  Property<OLE_COLOR> BorderColorDown{*this, L"BorderColorDown", 0xB17F3C, &USButton::repaint};
  Property<OLE_COLOR> BorderColorDisabled{*this, L"BorderColorDisabled", 0xC8D0D4,
                                          &USButton::repaint};
  Property<ENUM_GRADIENT_COLORS> GradientColors{*this, L"GradientColors", Two_Colors,
                                                &USButton::repaint};
  Property<OLE_COLOR> GradientColor1{*this, L"GradientColor1", 0xFFFBF7, &USButton::repaint};
  Property<OLE_COLOR> GradientColor2{*this, L"GradientColor2", 0xF6EAE0, &USButton::repaint};
  Property<OLE_COLOR> GradientColor3{*this, L"GradientColor3", 0xDBC9BA, &USButton::repaint};
  Property<OLE_COLOR> GradientColor4{*this, L"GradientColor4", 0xF6E9DF, &USButton::repaint};
  Property<OLE_COLOR> GradientColorDown1{*this, L"GradientColorDown1", 0xFBF0DD,
                                         &USButton::repaint};
  Property<OLE_COLOR> GradientColorDown2{*this, L"GradientColorDown2", 0xF7E8CA,
                                         &USButton::repaint};
  Property<OLE_COLOR> GradientColorDown3{*this, L"GradientColorDown3", 0xE7C584,
                                         &USButton::repaint};
  Property<OLE_COLOR> GradientColorDown4{*this, L"GradientColorDown4", 0xDEB870,
                                         &USButton::repaint};
  Property<OLE_COLOR> GradientColorOver1{*this, L"GradientColorOver1", 0xFDF5E8,
                                         &USButton::repaint};
  Property<OLE_COLOR> GradientColorOver2{*this, L"GradientColorOver2", 0xFCF1DC,
                                         &USButton::repaint};
  Property<OLE_COLOR> GradientColorOver3{*this, L"GradientColorOver3", 0xFAE1B4,
                                         &USButton::repaint};
  Property<OLE_COLOR> GradientColorOver4{*this, L"GradientColorOver4", 0xF6DBAB,
                                         &USButton::repaint};
  Property<OLE_COLOR> GradientColorDisabled1{*this, L"GradientColorDisabled1", 0xD8E9EC,
                                             &USButton::repaint};
  Property<OLE_COLOR> GradientColorDisabled2{*this, L"GradientColorDisabled2", 0xD8E9EC,
                                             &USButton::repaint};
  Property<OLE_COLOR> GradientColorDisabled3{*this, L"GradientColorDisabled3", 0xD8E9EC,
                                             &USButton::repaint};
  Property<OLE_COLOR> GradientColorDisabled4{*this, L"GradientColorDisabled4", 0xD8E9EC,
                                             &USButton::repaint};
  Property<bool> Locked{*this, L"Locked", false};
  Property<OLE_COLOR> BackColor{*this, L"BackColor", 0xFFFFFF, &USButton::base_color_changed};
  Property<ENUM_BUTTON_SHAPES> ButtonShape{*this, L"ButtonShape", Cut_Sides, &USButton::relayout};
  Property<std::wstring> Caption{*this, L"Caption", L"", &USButton::caption_changed};
  Property<bool> CheckBoxMode{
      *this, {L"CheckBoxMode", L"CheckBox"}, false, &USButton::check_mode_changed};
  Property<bool> Enabled{*this, L"Enabled", true, &USButton::enabled_changed};
  Property<OLE_COLOR> ForeColor{*this, L"ForeColor", 0, &USButton::base_color_changed};
  Property<OLE_COLOR> ForeColorDown{*this, L"ForeColorDown", 0, &USButton::repaint};
  Property<OLE_COLOR> ForeColorOver{*this, L"ForeColorOver", 0, &USButton::repaint};
  Property<OLE_COLOR> ForeColorDisabled{*this, L"ForeColorDisabled", 0x80000011,
                                        &USButton::repaint};
  Property<bool> HandPointer{*this, L"HandPointer", true, &USButton::hand_pointer_changed};
  Property<OLE_COLOR> MaskColor{*this, L"MaskColor", 0xC0C0C0, &USButton::base_color_changed};
  Property<ENUM_PIC_ALIGNMENTS> PictureAlignment{
      *this, {L"PictureAlignment", L"PicAlign"}, Picture_LeftOfCaption, &USButton::relayout};
  PictureProperty PictureOn{*this, {L"PictureOn", L"PicDown"}, &USButton::relayout};
  PictureProperty PictureOver{*this, {L"PictureOver", L"PicHot"}, &USButton::relayout};
  PictureProperty Picture{*this, {L"Picture", L"PicNormal"}, &USButton::relayout};
  PictureProperty PictureToChange{*this, {L"PictureToChange", L"PicToChange"}, &USButton::nothing};
  Property<float> PictureOpacity{
      *this, {L"PictureOpacity", L"PicOpacity"}, 1.0f, &USButton::repaint};
  Property<ENUM_PICTURE_SIZES> PictureSize{
      *this, {L"PictureSize", L"PicSize"}, Picture_Normal, &USButton::picture_size_changed};
  Property<long> PictureSizeY{*this, {L"PictureSizeY", L"PicSizeH"}, 16, &USButton::relayout};
  Property<long> PictureSizeX{*this, {L"PictureSizeX", L"PicSizeW"}, 16, &USButton::relayout};
  Property<long> DrawnState{*this, L"State", kFaceNormal};
  Property<bool> UseMaskColor{*this, {L"UseMaskColor", L"UseMask"}, true, &USButton::repaint};
  Property<bool> Value{*this, L"Value", false, &USButton::value_changed};
  FontProperty Font{*this, L"Font", &USButton::relayout};
  PictureProperty MouseIcon{*this, L"MouseIcon", &USButton::mouse_icon_changed};
  Property<MousePointerConstants> MousePointer{*this, L"MousePointer", vbDefault,
                                               &USButton::apply_mouse_pointer};

  // Members of the interface that are more than a stored value.
  void refresh();
  long h_dc() { return static_cast<long>(reinterpret_cast<LONG_PTR>(surface().dc())); }
  SAFEARRAY* picture32_dib() const;
  void set_picture32_dib(SAFEARRAY* bytes);
  void set_picture(IPictureDisp* picture) { put_picture(Picture, picture); }
  void set_picture_on(IPictureDisp* picture) { put_picture(PictureOn, picture); }
  void set_picture_over(IPictureDisp* picture) { put_picture(PictureOver, picture); }
  long picture_opacity() const;
  void set_picture_opacity(long percent);
  void set_mouse_pointer(MousePointerConstants pointer);
  bool load_image_from_std_picture(IDispatch* picture);
  bool load_image_from_handle(long handle);
  bool load_image_from_array(SAFEARRAY** bytes, long width, long height, long depth);
  bool load_image_from_file(const std::wstring& name, long width, long height, long depth);
  bool load_image_from_resource(IDispatch* global, const VARIANT& section, const VARIANT& id,
                                long width, long height, long depth);
  bool load_image_from_us_image_list(IDispatch* list, const VARIANT& index, const VARIANT& key);
  void clear_picture32_dib();
  void create_tool_tip();
  void destroy_tool_tip();

 private:
  // us_button.cpp
  void take_ambient_defaults() override;
  void init_properties() override;
  void properties_read() override;
  void resized() override;
  void shown() override;
  void hidden() override;
  void ambient_changed(DISPID id) override;
  void window_created() override;
  void terminate() override;
  FontProperty* font_property() override { return &Font; }
  const Property<bool>* enabled_property() const override { return &Enabled; }
  long mouse_pointer() const override { return MousePointer.get(); }
  const PictureProperty* mouse_icon() const override { return &MouseIcon; }
  void ready();
  void describe(AccessibleItem& item) const override;
  void accessible_default_action(long) override { input_.access_key(0); }
  void nothing() {}
  void repaint() { set_state(kFaceAsIs, true); }
  void relayout();
  void tip();
  void apply_theme();
  void update_access_key();
  void base_color_changed();
  void caption_changed();
  void check_mode_changed();
  void enabled_changed();
  void hand_pointer_changed();
  void mouse_icon_changed();
  void value_changed();

  // us_button_events.cpp
  void mouse_down(short button, short shift, float x, float y) override;
  void mouse_move(short button, short shift, float x, float y) override;
  void mouse_up(short button, short shift, float x, float y) override;
  void click() override { input_.click(); }
  void double_click() override;
  void key_down(short& key, short& shift) override;
  void key_press(short& character) override { raise_key_press(character); }
  void key_up(short& key, short& shift) override;
  void got_focus() override { input_.got_focus(); }
  void lost_focus() override { input_.lost_focus(); }
  void access_key_press(short key) override { input_.access_key(key); }
  std::span<const UINT> intercepted_messages() const override;
  void window_message_after(UINT message, WPARAM wparam, LPARAM lparam) override;

  // ButtonHost
  bool enabled() const override { return Enabled.get(); }
  bool locked() const override { return Locked.get(); }
  bool check_mode() const override { return CheckBoxMode.get(); }
  bool pointer_inside() const override { return pointer_over_window(); }
  void set_state(int state, bool force) override;
  void flip_value() override;
  void clear_value() override;
  void click_event() override { raise_click(); }
  bool captured() const override { return has_capture(); }
  void capture() override { capture_mouse(); }
  void release() override { release_mouse(); }
  void track_leave() override;
  void move_focus(bool backwards) override { send_tab(backwards); }
  bool ask_default() const override;

  // us_button_pictures.cpp
  void put_picture(PictureProperty& which, IPictureDisp* picture);
  void picture_size_changed();
  template <class Loader>
  bool load_image(Loader loader);
  bool show_bytes(const std::vector<uint8_t>& bytes);
  const PictureProperty& picture_for(int state) const;
  void draw_std_picture(const PictureProperty& picture);

  // us_button_paint.cpp
  void lay_out();
  void apply_shape();
  HRGN outline() const override;
  void draw(int state);
  ColorRef draw_face(int state);
  ColorRef draw_plain_face(int state);
  ColorRef draw_focus(int state);
  void draw_picture(int state);
  void draw_caption(ColorRef color);

  ButtonInput input_{*this};
  CTooltip tip_;
  WindowsImage dib_;
  DerivedColors derived_{};
  button_layout::Places places_;
  bool has_dib_ = false;
  bool last_focus_ = false;
  bool layout_dirty_ = true;
  struct Cut {
    HWND window;
    int width, height, shape;
    bool operator==(const Cut&) const = default;
  };
  Cut last_cut_{};  // what the window was last cut to
  bool paint_suspended_ = false;
  bool paint_missed_ = false;
  bool in_batch_ = false;
  bool initialised_ = false;
};

}  // namespace kestrelon
