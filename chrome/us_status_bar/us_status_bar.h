// USStatusBar: panels with texts, images, clocks, lock keys and progress at the foot of a form.
#pragma once

#include <bitset>

#include "chrome/us_status_bar/status_bar_layout.h"
#include "chrome/us_status_bar/status_panel.h"
#include "chrome/us_status_bar/system_watch.h"
#include "controls/items/images_pack.h"
#include "frame/display_control.h"
#include "frame/private_timer.h"
#include "frame/record_property.h"
#include "frame/tooltip.h"
#include "us_status_bar_glue.h"

namespace kestrelon {

/// What the pack of images stands on.
class StatusBarBase : public DisplayControl {
 public:
  Property<ENUM_THEME> Theme{*this, L"Theme", Windows_8, &StatusBarBase::apply_theme};

 protected:
  using DisplayControl::DisplayControl;
  virtual void apply_theme() = 0;
  virtual void relayout() = 0;
};

class USStatusBar final : public USStatusBarGlue<USStatusBar, ImagesPack<StatusBarBase>> {
 public:
  static constexpr size_t kMostPanels = 64;

  USStatusBar();

  // In the order of the property bag, after those of the bases.
  Property<OLE_COLOR> BorderColor{*this, L"BorderColor", 0xDBC9BA, &USStatusBar::redraw};
  Property<OLE_COLOR> ForeColor{*this, L"ForeColor", 0xB75F31, &USStatusBar::redraw};
  Property<OLE_COLOR> GradientColor1{*this, L"GradientColor1", 0xFEF9F4, &USStatusBar::redraw};
  Property<OLE_COLOR> GradientColor2{*this, L"GradientColor2", 0xF1F0EC, &USStatusBar::redraw};
  Property<bool> ShowSizeGrip{*this, L"ShowSizeGrip", true, &USStatusBar::relayout};
  Property<bool> SimpleMode{*this, L"SimpleMode", false, &USStatusBar::panels_changed};
  Property<std::wstring> SimpleText{*this, L"SimpleText", L"", &USStatusBar::redraw};
  RecordList<StatusPanel> panels{*this,
                                 L"PanelCount",
                                 &USStatusBar::panels_changed,
                                 field(L"PanelAlignment", &StatusPanel::alignment),
                                 field(L"PanelAutoSize", &StatusPanel::auto_size),
                                 field(L"PanelBold", &StatusPanel::bold),
                                 field(L"PanelCaption", &StatusPanel::caption),
                                 field(L"PanelEnabled", &StatusPanel::enabled),
                                 field(L"PanelForeColor", &StatusPanel::fore_color),
                                 field(L"PanelFormat", &StatusPanel::format),
                                 field(L"PanelHandPointer", &StatusPanel::hand_pointer),
                                 field(L"PanelImage", &StatusPanel::image),
                                 field(L"PanelKey", &StatusPanel::key),
                                 field(L"PanelMax", &StatusPanel::most),
                                 field(L"PanelMinWidth", &StatusPanel::min_width),
                                 field(L"PanelStyle", &StatusPanel::style),
                                 field(L"PanelToolTipText", &StatusPanel::tool_tip),
                                 field(L"PanelValue", &StatusPanel::value),
                                 field(L"PanelVisible", &StatusPanel::visible),
                                 field(L"PanelWidth", &StatusPanel::width)};

  // us_status_bar_fields.cpp: the fields of a panel, by its number from 1. A number that names none
  // reads empty and sets nothing.
  long panel_count() const { return static_cast<long>(panels.size()); }
  ENUM_ALIGNMENTS panel_alignment(long index) const { return get(index, &StatusPanel::alignment); }
  void set_panel_alignment(long index, ENUM_ALIGNMENTS alignment);
  ENUM_PANEL_SIZE panel_auto_size(long index) const { return get(index, &StatusPanel::auto_size); }
  void set_panel_auto_size(long index, ENUM_PANEL_SIZE size);
  bool panel_bold(long index) const { return get(index, &StatusPanel::bold); }
  void set_panel_bold(long index, bool bold);
  std::wstring panel_caption(long index) const { return get(index, &StatusPanel::caption); }
  void set_panel_caption(long index, std::wstring caption);
  bool panel_enabled(long index) const { return known(index) && at(index).enabled; }
  void set_panel_enabled(long index, bool enabled);
  OLE_COLOR panel_fore_color(long index) const;
  void set_panel_fore_color(long index, OLE_COLOR color);
  std::wstring panel_format(long index) const { return get(index, &StatusPanel::format); }
  void set_panel_format(long index, std::wstring format);
  bool panel_hand_pointer(long index) const { return get(index, &StatusPanel::hand_pointer); }
  void set_panel_hand_pointer(long index, bool hand);
  Variant panel_image(long index) const { return get(index, &StatusPanel::image); }
  void set_panel_image(long index, const VARIANT& image);
  std::wstring panel_key(long index) const { return get(index, &StatusPanel::key); }
  void set_panel_key(long index, std::wstring key);
  double panel_max(long index) const { return known(index) ? at(index).most : 0; }
  void set_panel_max(long index, double most);
  long panel_min_width(long index) const { return known(index) ? at(index).min_width : 0; }
  void set_panel_min_width(long index, long width);
  ENUM_PANEL_STYLE panel_style(long index) const { return get(index, &StatusPanel::style); }
  void set_panel_style(long index, ENUM_PANEL_STYLE style);
  std::wstring panel_tool_tip_text(long index) const { return get(index, &StatusPanel::tool_tip); }
  void set_panel_tool_tip_text(long index, std::wstring text);
  double panel_value(long index) const { return get(index, &StatusPanel::value); }
  void set_panel_value(long index, double value);
  bool panel_visible(long index) const { return known(index) && at(index).visible; }
  void set_panel_visible(long index, bool visible);
  long panel_width(long index) const { return known(index) ? at(index).width : 0; }
  void set_panel_width(long index, long width);
  long panel_left(long index);
  long panel_top(long index);
  long panel_height(long index);

  // us_status_bar.cpp
  short add_panel(ENUM_PANEL_STYLE style, std::wstring caption, std::wstring key, long width,
                  ENUM_PANEL_SIZE auto_size, ENUM_ALIGNMENTS alignment, const VARIANT& image,
                  std::wstring tool_tip);
  short delete_panel(long index);
  short move_panel(long index, ENUM_MOVE direction);
  short panel_index(const std::wstring& key) const;
  void push_text(std::wstring text);
  void pop_text();

 private:
  bool known(long index) const { return panels.contains(index - 1); }
  const StatusPanel& at(long index) const { return panels[static_cast<size_t>(index - 1)]; }
  template <class T>
  T get(long index, T StatusPanel::*member) const {
    return known(index) ? at(index).*member : StatusPanel{}.*member;
  }
  /// What a change of a field reaches: the panel's own look, its text, or the places of all.
  enum class Reach { kLook, kText, kPlaces };
  template <class T>
  void set(const wchar_t* name, long index, T StatusPanel::*member, T value, Reach reach);

  // us_status_bar.cpp
  void init_properties() override;
  void properties_read() override;
  void resized() override { relayout(); }
  void rescaled() override { relayout(); }
  void font_changed() override;
  void shown() override { watch(); }
  void hidden() override;
  void closing() override { stop_watching(); }
  void terminate() override;
  void apply_theme() override;
  void relayout() override;
  void panels_changed();
  void about_to_show() override;
  bool lay_out();
  void ensure_layout();
  status_bar::Item item_of(long index);
  status_bar::Content content_of(long index);
  PixelRect area_of(long index);

  // us_status_bar_auto.cpp: texts that come from elsewhere than the program
  std::wstring text_of(long index) const;
  long first_text_panel() const;
  bool lock_on(long index) const;
  void panel_text_changed(long index);
  void repaint_panel(long index);
  void watch();
  void stop_watching();
  void set_clock();
  void clock_ticked();
  void set_lock_poll();
  void read_locks();
  void heard(SystemWatch::News news);

  // us_status_bar_input.cpp
  void mouse_down(short button, short shift, float x, float y) override;
  void mouse_move(short button, short shift, float x, float y) override;
  void mouse_up(short button, short shift, float x, float y) override;
  void click() override;
  void double_click() override;
  void hover_changed() override;
  bool shows_hand() const override;
  bool window_message_before(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;
  int part_under_pointer() const;
  bool live(int part) const;
  void set_hot(int part);
  void forget_input();
  bool wants_grip();
  void size_host();
  void raise_for_panel(int index, bool twice);
  void describe(AccessibleItem& item) const override;
  long accessible_count() const override { return SimpleMode.get() ? 0 : panel_count(); }
  bool accessible_item(long child, AccessibleItem& item) const override;
  long accessible_at(POINT point) const override;
  void accessible_default_action(long child) override;

  // us_status_bar_paint.cpp
  void draw() override;
  void paint_ground(int left, int right);
  void paint_panel(long index);
  void paint_progress(long index, const PixelRect& area);
  void paint_text(const std::wstring& text, const PixelRect& area, UINT flags, COLORREF color,
                  bool bold);
  void paint_grip();
  void paint_sample();
  COLORREF ink_of(long index) const;
  int text_width(const std::wstring& text, bool bold);

  status_bar::Arrangement bar_;
  std::bitset<kMostPanels> stale_;        // panels to draw before the next showing
  std::vector<std::wstring> pushed_;      // over the first text panel, the last on top
  std::vector<std::wstring> clock_text_;  // as drawn, by panel
  std::wstring user_;
  unsigned locks_ = 0;  // bit n: the lock key of the style Panel_CapsLock + n is on
  PrivateTimer clock_, lock_poll_;
  SystemWatch system_;
  CTooltip tip_;
  ComPtr<IDispatch> skin_;  // the form's skin, which may forbid sizing
  bool skin_looked_for_ = false;
  bool layout_stale_ = true;
  unsigned version_ = 0;  // of the list: numbers kept over a change mean other panels
  int hot_ = status_bar::kNothing;
  int pressed_ = status_bar::kNothing;
  int released_ = status_bar::kNothing;  // where press and release lie in one panel
};

}  // namespace kestrelon
