// USForm: takes over the window of the form it lies on and draws title, buttons and edges itself.
// The control's own window is the title strip; the edges are three windows beside it.
#pragma once

#include <memory>

#include "chrome/us_form/edge_windows.h"
#include "chrome/us_form/skin_host.h"
#include "chrome/us_form/skin_layout.h"
#include "chrome/us_form/skin_sheet.h"
#include "frame/control_frame.h"
#include "frame/tooltip.h"
#include "us_form_glue.h"

namespace kestrelon {

class USForm final : public USFormGlue<USForm, ControlFrame>, private EdgeOwner {
 public:
  USForm();

  // In the order of the property bag.
  Property<ENUM_THEME> Theme{*this, L"Theme", Windows_8, &USForm::apply_theme};
  Property<bool> ChangeThemeControls{*this, L"ChangeThemeControls", false};
  Property<bool> FadeIn{*this, L"FadeIn", false};
  Property<bool> FadeOut{*this, L"FadeOut", false};
  Property<OLE_COLOR> GradientColor1{*this, L"GradientColor1", 0xFCEDE1};
  Property<OLE_COLOR> GradientColor2{*this, L"GradientColor2", 0xFFFFFF};
  Property<bool> UseGradient{*this, L"UseGradient", false};
  Property<OLE_COLOR> ForeColor{*this, L"ForeColor", 0xFFFFFF, &USForm::redraw};
  Property<OLE_COLOR> ForeColorDelimiter{
      *this, {L"ForeColorDelimiter", L"ForeColorDemiliter"}, 0xE0E0E0, &USForm::redraw};
  Property<bool> ShowMinimize{*this, L"ShowMinimize", true, &USForm::redraw};
  Property<bool> ShowMaximize{*this, L"ShowMaximize", true, &USForm::redraw};
  Property<bool> ShowClose{*this, L"ShowClose", true, &USForm::redraw};
  Property<bool> EnableMinimizeButton{*this, L"EnableMinimizeButton", true, &USForm::redraw};
  Property<bool> EnableMaximizeButton{*this, L"EnableMaximizeButton", true, &USForm::redraw};
  Property<bool> EnableCloseButton{*this, L"EnableCloseButton", true, &USForm::redraw};
  Property<bool> ShowControlBox{*this, L"ShowControlBox", true, &USForm::redraw};
  Property<std::wstring> ToolTipMaximize{*this, L"ToolTipMaximize", L"Maximizar"};
  Property<std::wstring> ToolTipMinimize{*this, L"ToolTipMinimize", L"Minimizar"};
  Property<std::wstring> ToolTipClose{*this, L"ToolTipClose", L"Fechar"};
  Property<bool> AllowMove{*this, L"AllowMove", true};
  Property<bool> AllowResize{*this, L"AllowResize", false};
  Property<bool> AutoRedraw{*this, L"AutoRedraw", true};
  Property<std::wstring> own_caption{*this, L"Caption", L"", &USForm::redraw};
  Property<std::wstring> CaptionDelimiter{*this, L"CaptionDelimiter", L"-", &USForm::redraw};
  FontProperty Font{*this, L"Font", &USForm::redraw};
  PictureProperty own_icon{*this, L"Icon", &USForm::redraw};
  Property<bool> KeepFrame{*this, L"KeepFrame", false, &USForm::frame_kept};

  /// Never set, they follow the host's. Setting them sets the host's too.
  std::wstring caption();
  void set_caption(const std::wstring& caption);
  ComPtr<IPictureDisp> icon();
  void set_icon(IPictureDisp* icon);
  long h_wnd() const;
  /// Twips, as the extents of all controls.
  long height() const;
  long width() const;

  void draw_form();
  void draw_gradient();
  void full_screen(bool maximize);
  void center_on_screen(IDispatch* form, long left, long top);
  void center_on_screen_ex();
  void deactivate_form();
  void unload_sub_class();
  void translucent_form(unsigned char level);
  void back_inicalize(IDispatch* parent, const VARIANT& color);
  void back_kill();
  bool attach_window(long window);
  long task_bar_set_progress_state(long window, ENUM_TASKBAR flags);
  long task_bar_set_progress_value(long window, long percent);
  long task_bar_set_overlay_icon(long window, long icon, const std::wstring& description);
  long task_bar_set_thumbnail_clip(long window, long left, long top, long right, long bottom);
  long task_bar_set_thumbnail_tooltip(long window, const std::wstring& tip);
  long task_bar_thumb_bar_add_buttons(long window, long count, SAFEARRAY** icons);

 private:
  // us_form.cpp: the control's life
  void take_ambient_defaults() override;
  void init_properties() override;
  void properties_read() override;
  void resized() override;
  void shown() override;
  void rescaled() override;
  void closing() override { let_go(true); }
  void terminate() override { let_go(false); }
  FontProperty* font_property() override { return &Font; }
  long mouse_pointer() const override { return pointer_; }
  void apply_theme();
  void theme_siblings();
  void frame_kept();
  void describe(AccessibleItem& item) const override;
  long accessible_count() const override { return 3; }
  bool accessible_item(long child, AccessibleItem& item) const override;
  long accessible_at(POINT at) const override;
  void accessible_default_action(long child) override;

  // us_form_host.cpp: the form and its messages
  class Listener;
  void take_over();
  void let_go(bool fade);
  void listen();
  bool live() const { return running_ && !closing_ && host_.takes_skin() && !host_.gone(); }
  void host_before(UINT message, WPARAM wparam, LPARAM lparam, bool& handled, LRESULT& result);
  void host_after(UINT message, WPARAM wparam, LPARAM lparam);
  void host_sized();
  void host_painted();
  void first_paint();
  void strip_border(bool force);
  void set_host_border(long style);
  void hold_to_monitor(MINMAXINFO& info) const;
  void cut_corners();
  void place_edges();
  void place_strip();
  void refresh_gradient();
  void close_now();

  // us_form_paint.cpp
  void redraw();
  void redraw_chrome();
  void about_to_show() override;
  void draw();
  void draw_contrast();
  void draw_box();
  void draw_icon();
  void draw_caption();
  void paint_edge(skin::Edge edge, HDC dc, const RECT& area) override;
  skin::BoxState box_state() const;
  skin::Buttons buttons() const;

  // us_form_input.cpp
  void mouse_down(short button, short shift, float x, float y) override;
  void mouse_move(short button, short shift, float x, float y) override;
  void mouse_up(short button, short shift, float x, float y) override;
  void click() override { raise_click(); }
  void double_click() override;
  bool window_message_before(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;
  void window_message_after(UINT message, WPARAM wparam, LPARAM lparam) override;
  void edge_moved(skin::Edge edge, int x, int width) override;
  void edge_pressed(skin::Edge edge, int x, int width) override;
  void hit_test(int x, int y);
  void show_tip();
  void leave_box();
  void press(skin::Button button);
  void send_command(WPARAM command);
  void take_hold(int grip);
  void set_pointer(long pointer);
  void show_system_menu(POINT screen);
  bool sizable() const { return AllowResize.get() && host_.normal(); }

  // us_form_fade.cpp
  void fade_in();
  void fade_out();
  void set_opacity(BYTE alpha);

  int strip_width() const { return ControlFrame::width(); }
  int strip_height() const { return scale()(skin::kTitleHeight); }
  int unit_width() const { return scale().to_unit(strip_width()); }

  SkinHost host_;
  EdgeWindows edges_{*this};
  SkinSheet sheet_;
  CTooltip tip_;
  std::unique_ptr<Listener> listener_;
  cSelfSub host_sub_;
  PrivateTimer end_timer_;
  PrivateTimer fade_timer_;
  bool running_ = false;  // the skin is live
  bool closing_ = false;
  bool active_ = true;
  bool first_paint_done_ = false;
  bool dirty_ = true;
  bool changing_border_ = false;
  bool size_asked_ = false;
  bool title_down_ = false;
  bool cut_ = false;
  bool faded_in_ = false;
  bool thumb_buttons_added_ = false;
  skin::Button hover_ = skin::Button::kNone;
  skin::Button painted_ = skin::Button::kNone;
  long pointer_ = skin::kDefaultPointer;
  POINT last_mouse_{};    // pixels of 96 dots
  WPARAM last_keys_ = 0;  // MK_ bits of the last mouse message
  SIZE cut_size_{};
  SIZE gradient_size_{};
  struct Given {  // what an attached window was before
    LONG_PTR style = 0, ex_style = 0;
    HWND strip_parent = nullptr;
    RECT strip_place{};
    int dx = 0, dy = 0, grown = 0;
  } given_;
};

}  // namespace kestrelon
