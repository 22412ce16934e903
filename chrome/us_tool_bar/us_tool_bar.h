// USToolBar: a gradient bar with a gripper, buttons and separators, and a panel at its end.
#pragma once

#include "chrome/us_tool_bar/tool_bar_layout.h"
#include "chrome/us_tool_bar/tool_button.h"
#include "frame/control_frame.h"
#include "frame/record_property.h"
#include "frame/tooltip.h"
#include "us_tool_bar_glue.h"

namespace kestrelon {

class USToolBar final : public USToolBarGlue<USToolBar, ControlFrame> {
 public:
  USToolBar();

  // In the order of the property bag.
  Property<ENUM_THEME> Theme{*this, L"Theme", Office_Blue, &USToolBar::apply_theme};
  Property<bool> Enabled{*this, L"Enabled", true, &USToolBar::enabled_changed};
  Property<bool> IsStrech{*this, L"IsStrech", false, &USToolBar::refresh};
  Property<bool> ShowGripper{*this, L"ShowGripper", true, &USToolBar::refresh};
  Property<bool> ShowEndPanel{*this, L"ShowEndPanel", true, &USToolBar::refresh};
  Property<OLE_COLOR> BackColor{*this, L"BackColor", 0xE2A981, &USToolBar::draw};
  Property<OLE_COLOR> GradientColor1{*this, L"GradientColor1", 0xFDEEE3, &USToolBar::draw};
  Property<OLE_COLOR> GradientColor2{*this, L"GradientColor2", 0xF7DECA, &USToolBar::draw};
  Property<OLE_COLOR> GradientColorOver1{*this, L"GradientColorOver1", 0xDBFDFF, &USToolBar::draw};
  Property<OLE_COLOR> GradientColorOver2{*this, L"GradientColorOver2", 0x92E6FF, &USToolBar::draw};
  Property<OLE_COLOR> GradientColorDown1{*this, L"GradientColorDown1", 0xA4D6FF, &USToolBar::draw};
  Property<OLE_COLOR> GradientColorDown2{*this, L"GradientColorDown2", 0x70D8FE, &USToolBar::draw};
  Property<OLE_COLOR> RightColor1{*this, L"RightColor1", 0xFDEEE3, &USToolBar::draw};
  Property<OLE_COLOR> RightColor2{*this, L"RightColor2", 0xF7DECA, &USToolBar::draw};
  Property<OLE_COLOR> GradientColorOverRight1{*this, L"GradientColorOverRight1", 0xFDEEE3,
                                              &USToolBar::draw};
  Property<OLE_COLOR> GradientColorOverRight2{*this, L"GradientColorOverRight2", 0xF7DECA,
                                              &USToolBar::draw};
  Property<OLE_COLOR> GradientColorPressRight1{*this, L"GradientColorPressRight1", 0xA4D6FF,
                                               &USToolBar::draw};
  Property<OLE_COLOR> GradientColorPressRight2{*this, L"GradientColorPressRight2", 0x70D8FE,
                                               &USToolBar::draw};
  Property<OLE_COLOR> GripperColor{*this, L"GripperColor", 0xF7DECA, &USToolBar::draw};
  Property<OLE_COLOR> BorderPicture{*this, L"BorderPicture", 0x78A8C1, &USToolBar::draw};
  RecordList<ToolButton> buttons{*this,
                                 L"ButtonCount",
                                 &USToolBar::refresh,
                                 field(L"ButtonCaption", &ToolButton::caption),
                                 field(L"ButtonKey", &ToolButton::key),
                                 field(L"ButtonToolTipText", &ToolButton::tool_tip),
                                 field(L"ButtonIcon", &ToolButton::icon),
                                 field(L"ButtonIconSize", &ToolButton::icon_size),
                                 field(L"ButtonFont", &ToolButton::font),
                                 field(L"ButtonForeColor", &ToolButton::fore_color),
                                 field(L"ButtonAlignment", &ToolButton::alignment),
                                 field(L"ButtonType", &ToolButton::type),
                                 field(L"ButtonStyle", &ToolButton::style),
                                 field(L"ButtonState", &ToolButton::state),
                                 field(L"ButtonValue", &ToolButton::value),
                                 field(L"ButtonEnabled", &ToolButton::enabled),
                                 field(L"ButtonUseMaskColor", &ToolButton::use_mask_color),
                                 field(L"ButtonMaskColor", &ToolButton::mask_color),
                                 field(L"ButtonLeft", &ToolButton::left),
                                 field(L"ButtonTop", &ToolButton::top),
                                 field(L"ButtonWidth", &ToolButton::width),
                                 field(L"ButtonHeight", &ToolButton::height),
                                 field(L"ButtonRHeight", &ToolButton::natural_height)};

  // us_tool_bar_fields.cpp: the fields of a button, by its number from 1. A number that names none
  // reads as a default and sets nothing.
  long button_count() const { return static_cast<long>(buttons.size()); }
  std::wstring button_caption(long index) const { return get(index, &ToolButton::caption); }
  void set_button_caption(long index, std::wstring caption);
  std::wstring button_key(long index) const { return get(index, &ToolButton::key); }
  void set_button_key(long index, std::wstring key);
  std::wstring button_tool_tip_text(long index) const { return get(index, &ToolButton::tool_tip); }
  void set_button_tool_tip_text(long index, std::wstring text);
  ComPtr<IPictureDisp> button_icon(long index) const { return get(index, &ToolButton::icon); }
  void set_button_icon(long index, IPictureDisp* icon);
  short button_icon_size(long index) const { return get(index, &ToolButton::icon_size); }
  void set_button_icon_size(long index, short size);
  ComPtr<IFontDisp> button_font(long index) const { return get(index, &ToolButton::font); }
  void set_button_font(long index, IFontDisp* font);
  OLE_COLOR button_fore_color(long index) const { return get(index, &ToolButton::fore_color); }
  void set_button_fore_color(long index, OLE_COLOR color);
  ENUM_ICON_ALIGNMENT button_alignment(long index) const;
  void set_button_alignment(long index, ENUM_ICON_ALIGNMENT alignment);
  ENUM_BUTTON_TYPE button_type(long index) const { return get(index, &ToolButton::type); }
  void set_button_type(long index, ENUM_BUTTON_TYPE type);
  ButtonStyle button_style(long index) const { return get(index, &ToolButton::style); }
  void set_button_style(long index, ButtonStyle style);
  ENUM_BUTTON_STATE button_state(long index) const { return get(index, &ToolButton::state); }
  void set_button_state(long index, ENUM_BUTTON_STATE state);
  bool button_value(long index) const { return get(index, &ToolButton::value); }
  void set_button_value(long index, bool value);
  bool button_enabled(long index) const { return get(index, &ToolButton::enabled); }
  void set_button_enabled(long index, bool enabled);
  bool button_use_mask_color(long index) const { return get(index, &ToolButton::use_mask_color); }
  void set_button_use_mask_color(long index, bool use);
  OLE_COLOR button_mask_color(long index) const { return get(index, &ToolButton::mask_color); }
  void set_button_mask_color(long index, OLE_COLOR color);
  long button_left(long index) const { return get(index, &ToolButton::left); }
  long button_top(long index) const { return get(index, &ToolButton::top); }
  long button_width(long index) const { return get(index, &ToolButton::width); }
  long button_height(long index) const { return get(index, &ToolButton::height); }
  long button_r_height(long index) const { return get(index, &ToolButton::natural_height); }

  // us_tool_bar.cpp
  void refresh();
  short add_button(ENUM_BUTTON_TYPE type, std::wstring caption, std::wstring key,
                   IPictureDisp* icon, short icon_size, ENUM_ICON_ALIGNMENT alignment,
                   std::wstring tool_tip, long fore_color, IFontDisp* font, ButtonStyle style,
                   ENUM_BUTTON_STATE state, bool use_mask_color, const VARIANT& mask_color);
  short delete_button(long index);
  short move_button(long index, ENUM_MOVE direction);
  // us_tool_bar_dialogs.cpp
  long show_color(long parent, OLE_COLOR color);
  bool show_font(IFontDisp* font);

  void property_changed(const wchar_t* name) override;

 private:
  bool known(long index) const { return buttons.contains(index - 1); }
  const ToolButton& at(long index) const { return buttons[static_cast<size_t>(index - 1)]; }
  template <class T>
  T get(long index, T ToolButton::*member) const {
    return known(index) ? at(index).*member : ToolButton{}.*member;
  }
  template <class T>
  void set(const wchar_t* name, long index, T ToolButton::*member, T value);

  // us_tool_bar.cpp
  void properties_read() override { refresh(); }
  void init_properties() override { refresh(); }
  void resized() override { refresh(); }
  void ambient_changed(DISPID id) override;
  void window_created() override { refresh(); }
  void hidden() override { tip_.Destroy(); }
  void terminate() override;
  const Property<bool>* enabled_property() const override { return &Enabled; }
  void enabled_changed();
  void apply_theme();
  void lay_out();
  void forget_input();
  ComPtr<IFontDisp> bar_font();
  HFONT font_of(const ToolButton& button);
  tool_bar::Item item_of(const ToolButton& button);

  // us_tool_bar_input.cpp
  void mouse_down(short button, short shift, float x, float y) override;
  void mouse_move(short button, short shift, float x, float y) override;
  void mouse_up(short button, short shift, float x, float y) override;
  void window_message_after(UINT message, WPARAM wparam, LPARAM lparam) override;
  bool live(int part) const;
  int part_at(float x, float y) const;
  void set_hot(int part);
  void set_pressed(int part);
  void show_tip();
  void act(int part);
  void push_button(int index);
  void drop_down(int index);
  void open_overflow();

  // us_tool_bar_keys.cpp
  bool wants_key(int key, short shift) const override;
  void key_down(short& key, short& shift) override;
  void got_focus() override;
  void lost_focus() override;
  void access_key_press(short key) override;
  void set_focus_button(int index);
  bool takes_focus(int index) const;
  void describe(AccessibleItem& item) const override;
  long accessible_count() const override { return button_count(); }
  bool accessible_item(long child, AccessibleItem& item) const override;
  long accessible_at(POINT point) const override;
  long accessible_focus() const override { return focus_; }
  void accessible_default_action(long child) override;

  // us_tool_bar_paint.cpp
  void draw();
  void draw_part(int part);
  void paint_body(int left, int right);
  void paint_gripper();
  void paint_end_panel();
  void paint_chevron();
  void paint_button(int index);
  void paint_icon(const ToolButton& button, const PixelRect& place, bool dim);
  tool_bar::Look look_of(int index) const;
  PixelRect area_of(int part) const;

  tool_bar::Arrangement bar_;
  std::vector<tool_bar::Item> items_;
  ComPtr<IFontDisp> own_font_;  // where neither a button nor the container has one
  CTooltip tip_;
  int hot_ = tool_bar::kNothing;
  int pressed_ = tool_bar::kNothing;
  int focus_ = tool_bar::kNothing;  // the button the keyboard is on
  bool left_alone_ = false;         // in a batch of changes: drawn once, at the end
  bool theming_ = false;
};

}  // namespace kestrelon
