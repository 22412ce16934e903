// What list, combo box, tree and their like share beyond the frame: font, theme, tip, drawing on
// demand, hover.
#pragma once

#include <string>

#include "controls/items/item_look.h"
#include "frame/control_frame.h"
#include "frame/hover.h"
#include "frame/kit/theme.h"
#include "frame/tooltip.h"

namespace kestrelon {

class ItemControl : public ControlFrame {
 public:
  explicit ItemControl(const ControlTraits& traits) : ControlFrame(traits) {}
  ~ItemControl() override;

  // In the order of the property bag.
  Property<bool> Enabled{*this, L"Enabled", true, &ItemControl::enabled_changed};
  PictureProperty MouseIcon{*this, L"MouseIcon", &ItemControl::apply_mouse_pointer};
  Property<MousePointerConstants> MousePointer{*this, L"MousePointer", vbDefault,
                                               &ItemControl::apply_mouse_pointer};
  Property<bool> ShowFocusRect{*this, L"ShowFocusRect", true, &ItemControl::redraw};
  FontProperty Font{*this, L"Font", &ItemControl::font_changed};
  Property<ENUM_THEME> Theme{*this, L"Theme", Windows_8, &ItemControl::apply_theme};
  Property<OLE_COLOR> ToolTipBackColor{*this, L"ToolTipBackColor", 0xD7FCFE, &ItemControl::tip};
  Property<OLE_COLOR> ToolTipForeColor{*this, L"ToolTipForeColor", 0, &ItemControl::tip};
  Property<ENUM_TOOLTIP_ICON> ToolTipIcon{*this, L"ToolTipIcon", No_Icon, &ItemControl::tip};
  Property<bool> ToolTipCentered{*this, L"ToolTipCentered", false, &ItemControl::tip};
  Property<long> ToolTipVisibleTime{*this, L"ToolTipVisibleTime", 5000, &ItemControl::tip};
  Property<long> ToolDelayTime{*this, L"ToolDelayTime", 500, &ItemControl::tip};
  Property<ENUM_TOOLTIP_STYLE> ToolTipStyle{*this, L"ToolTipStyle", ToolTip_Balloon,
                                            &ItemControl::tip};
  Property<std::wstring> ToolTipTitle{*this, L"ToolTipTitle", L"", &ItemControl::tip};
  Property<std::wstring> ToolTipDescription{*this, L"ToolTipDescription", L"", &ItemControl::tip};

  // Members of the interface.
  void refresh();
  void disable_refresh() { redraw_enabled_ = false; }
  void create_tool_tip();
  void destroy_tool_tip() { tip_.Destroy(); }

 protected:
  // What a control supplies.
  virtual ThemeTable theme_table() const = 0;
  virtual void theme_applied(int32_t /*theme*/) {}
  /// Draws everything on the surface.
  virtual void draw() = 0;
  /// Sizes have to be worked out anew before the next drawing.
  virtual void lay_out() {}
  /// The pointer has entered or left; after the events.
  virtual void hover_changed() {}
  virtual void pointer_moved(short /*button*/, short /*shift*/, float /*x*/, float /*y*/) {}

  /// Both show at the next paint, once for however many changes.
  void redraw();
  void relayout();
  /// Lays out what is to be laid out; before positions are used.
  void ensure_layout();
  bool pointer_over() const { return hover_.over(); }
  HFONT plain_font() { return Font.handle(); }
  HFONT bold_font();
  /// The height of a line of text, in pixels.
  int line_height();
  /// Colours that hold for every item control, high contrast included.
  ItemColors base_colors(OLE_COLOR back, OLE_COLOR text) const;

  // From the frame.
  void take_ambient_defaults() override;
  void init_properties() override;
  void properties_read() override { refresh(); }
  void resized() override { relayout(); }
  void rescaled() override { font_changed(); }
  void shown() override { create_tool_tip(); }
  void ambient_changed(DISPID id) override;
  void terminate() override;
  void about_to_show() override { draw_if_needed(); }
  bool window_message_before(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;
  void window_message_after(UINT message, WPARAM wparam, LPARAM lparam) override;
  void mouse_move(short button, short shift, float x, float y) override;
  void got_focus() override { redraw(); }
  void lost_focus() override { redraw(); }
  virtual void font_changed();

 private:
  FontProperty* font_property() override { return &Font; }
  const Property<bool>* enabled_property() const override { return &Enabled; }
  long mouse_pointer() const override { return MousePointer.get(); }
  const PictureProperty* mouse_icon() const override { return &MouseIcon; }
  void enabled_changed();
  void apply_theme();
  void tip();
  void draw_if_needed();

  CTooltip tip_;
  Hover hover_;
  HFONT bold_ = nullptr;
  HFONT bold_of_ = nullptr;  // the font that it is the bold form of
  int line_height_ = 0;
  bool redraw_enabled_ = false;
  bool dirty_ = false;          // the surface does not show what is
  bool asked_to_show_ = false;  // the system has been asked for a paint
  bool layout_dirty_ = false;
};

}  // namespace kestrelon
