// USTab: a tab strip that contains controls and shows a page of them at a time. Pages are no
// containers: a switch slides all contained controls sideways by a stride.
#pragma once

#include <functional>

#include "chrome/us_tab/child_watch.h"
#include "chrome/us_tab/contained_controls.h"
#include "chrome/us_tab/tab_record.h"
#include "chrome/us_tab/tab_shape.h"
#include "contract/frame_types.h"
#include "frame/control_frame.h"
#include "frame/record_property.h"
#include "us_tab_glue.h"

namespace kestrelon {

class USTab final : public USTabGlue<USTab, ControlFrame> {
 public:
  static constexpr long kMostTabs = RecordList<TabRecord>::kMost;
  static constexpr long kStride = 75000;  // twips

  USTab();

  // In the order of the property bag.
  Property<ENUM_THEME> Theme{*this, L"Theme", Windows_8, &USTab::apply_theme};
  RecordList<TabRecord> tabs{*this,
                             L"TabCount",
                             &USTab::relayout,
                             field(L"TabCaption", &TabRecord::caption),
                             field(L"TabEnabled", &TabRecord::enabled),
                             field(L"TabPicture", &TabRecord::picture)};
  Property<long> active_{*this, L"ActiveTab", 0};
  Property<long> TabOffset{*this, L"TabOffset", kStride};
  Property<ENUM_TAB_STYLE> TabStyle{*this, L"TabStyle", Tabbed_Dialog, &USTab::relayout};
  Property<long> ActiveTabHeight{*this, L"ActiveTabHeight", 24, &USTab::relayout};
  Property<long> InActiveTabHeight{*this, L"InActiveTabHeight", 22, &USTab::relayout};
  Property<OLE_COLOR> ActiveTabBackStartColor{*this, L"ActiveTabBackStartColor", 0xFFFFFF,
                                              &USTab::redraw};
  Property<OLE_COLOR> ActiveTabBackEndColor{*this, L"ActiveTabBackEndColor", 0xFEF9F4,
                                            &USTab::redraw};
  Property<OLE_COLOR> ActiveTabForeColor{*this, L"ActiveTabForeColor", 0xB75F31, &USTab::redraw};
  FontProperty ActiveTabFont{*this, L"ActiveTabFont", &USTab::relayout};
  Property<OLE_COLOR> InActiveTabBackStartColor{*this, L"InActiveTabBackStartColor", 0xFEF9F4,
                                                &USTab::redraw};
  Property<OLE_COLOR> InActiveTabBackEndColor{*this, L"InActiveTabBackEndColor", 0xF1F0EC,
                                              &USTab::redraw};
  Property<OLE_COLOR> InActiveTabForeColor{*this, L"InActiveTabForeColor", 0x5A5A5A,
                                           &USTab::redraw};
  FontProperty InActiveTabFont{*this, L"InActiveTabFont", &USTab::relayout};
  Property<OLE_COLOR> DisabledTabBackColor{*this, L"DisabledTabBackColor", 0xF4F4F4,
                                           &USTab::redraw};
  Property<OLE_COLOR> DisabledTabForeColor{*this, L"DisabledTabForeColor", 0x99A8AC,
                                           &USTab::redraw};
  Property<OLE_COLOR> TabStripBackColor{*this, L"TabStripBackColor", 0x8000000F, &USTab::redraw};
  Property<OLE_COLOR> BorderColor{*this, L"BorderColor", 0xDBC9BA, &USTab::redraw};
  Property<OLE_COLOR> TopLeftInnerBorderColor{*this, L"TopLeftInnerBorderColor", 0xFFFFFF,
                                              &USTab::redraw};
  Property<OLE_COLOR> FocusedColor{*this, L"FocusedColor", 0xFAE1B4, &USTab::redraw};
  Property<bool> UseFocusedColor{*this, L"UseFocusedColor", false, &USTab::redraw};
  Property<OLE_COLOR> HoverColor{*this, L"HoverColor", 0xFCF1DC, &USTab::redraw};
  Property<bool> ShowFocusRect{*this, L"ShowFocusRect", true, &USTab::redraw};
  Property<bool> ShowTabsCorner{*this, L"ShowTabsCorner", true, &USTab::redraw};
  Property<bool> UseControlBox{*this, L"UseControlBox", false, &USTab::relayout};
  Property<long> XRadius{*this, L"XRadius", 3, &USTab::redraw};  // pixels, as the next
  Property<long> YRadius{*this, L"YRadius", 3, &USTab::redraw};
  Property<ENUM_ICON_ALIGNMENT> PictureAlignment{*this, L"PictureAlignment", Icon_Left,
                                                 &USTab::relayout};
  Property<long> PictureSize{*this, L"PictureSize", 16, &USTab::relayout};  // pixels
  Property<OLE_COLOR> PictureMaskColor{*this, L"PictureMaskColor", 0xC0C0C0, &USTab::redraw};
  Property<bool> UseMaskColor{*this, L"UseMaskColor", true, &USTab::redraw};
  FontProperty Font{*this, L"Font", &USTab::relayout};
  Property<bool> Enabled{*this, L"Enabled", true, &USTab::enabled_changed};
  Property<ENUM_TAB_PLACEMENT> TabPlacement{*this, L"TabPlacement", Tabs_Top, &USTab::relayout};
  Property<bool> ShowCloseMarks{*this, L"ShowCloseMarks", false, &USTab::relayout};
  Property<bool> AllowReorder{*this, L"AllowReorder", false};
  RecordList<FarControl> far_controls{*this,
                                      L"FarControlCount",
                                      &USTab::redraw,
                                      field(L"FarControlName", &FarControl::name),
                                      field(L"FarControlHome", &FarControl::home),
                                      field(L"FarControlShown", &FarControl::shown)};

  // us_tab.cpp
  long tab_count() const { return static_cast<long>(tabs.size()); }
  void set_tab_count(long count);
  long active_tab() const { return active_.get(); }
  void set_active_tab(long index) { switch_to(index); }
  long last_active_tab() const { return last_active_; }
  std::wstring tab_caption(long index) const;
  void set_tab_caption(long index, std::wstring caption);
  bool tab_enabled(long index) const { return known(index) && at(index).enabled; }
  void set_tab_enabled(long index, bool enabled);
  ComPtr<IPictureDisp> tab_picture(long index) const;
  void set_tab_picture(long index, IPictureDisp* picture);
  void insert_tab(long after, std::wstring caption);
  void remove_tab(long index);
  void copy_tab_images_from_image_list(IDispatch* list);
  void remove_tab_images(long index, bool all);
  void refresh();
  void cls();
  void draw_tabs() { refresh(); }
  void show_hide_focus() { ShowFocusRect.put(!ShowFocusRect.get()); }
  // us_tab_pages.cpp
  void add_control(const VARIANT& control, long window, long left, long top, long width,
                   long height, long tab);

 private:
  bool known(long index) const { return tabs.contains(index); }
  const TabRecord& at(long index) const { return tabs[static_cast<size_t>(index)]; }
  bool usable(int index) const { return Enabled.get() && known(index) && at(index).enabled; }
  ContainedControls contained() { return {extender(), window()}; }

  // us_tab.cpp
  void take_ambient_defaults() override;
  void init_properties() override;
  void properties_read() override;
  void resized() override { relayout(); }
  void rescaled() override { relayout(); }
  void shown() override;
  void closing() override;
  void terminate() override;
  void window_created() override { watch(); }
  FontProperty* font_property() override { return &Font; }
  const Property<bool>* enabled_property() const override { return &Enabled; }
  void enabled_changed();
  void apply_theme();
  void set_records(std::vector<TabRecord> list);
  void relayout();
  void redraw();
  void about_to_show() override;
  void lay_out();
  void ensure_layout();
  tab_strip::Shape shape() const;
  tab_strip::Side side() const;
  SIZE text_size(int index);
  int picture_edge(int index) const;
  HFONT font_of(int index);

  // us_tab_pages.cpp: the controls of the pages
  bool switch_to(long index);
  void set_active(long index);
  void slide(double twips);
  /// Sends each control to the page that `page_after(page)` tells, as `active_after` is shown.
  void rearrange(long active_after, const std::function<long(long)>& page_after);
  void remember_far();
  void recall_far();
  void watch();
  void focus_came(HWND window);
  void give_back();
  void move_tab(int from, int to);

  // us_tab_input.cpp
  void mouse_down(short button, short shift, float x, float y) override;
  void mouse_move(short button, short shift, float x, float y) override;
  void mouse_up(short button, short shift, float x, float y) override;
  void click() override { raise_click(); }
  void double_click() override { raise_dbl_click(); }
  bool window_message_before(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;
  void window_message_after(UINT message, WPARAM wparam, LPARAM lparam) override;
  tab_strip::Hit part_at(float x, float y);
  void set_hot(tab_strip::Hit part);
  void choose(int index);
  void scroll(int direction);
  void close_tab(int index);
  void forget_input();

  // us_tab_keys.cpp
  bool wants_key(int key, short shift) const override;
  void key_down(short& key, short& shift) override;
  void key_press(short& character) override { raise_key_press(character); }
  void key_up(short& key, short& shift) override { raise_key_up(key, shift); }
  void got_focus() override { redraw(); }
  void lost_focus() override { redraw(); }
  void access_key_press(short key) override;
  int next_tab(int direction, bool round) const;
  void page_key(int key, short shift);
  void describe(AccessibleItem& item) const override;
  long accessible_count() const override { return tab_count(); }
  bool accessible_item(long child, AccessibleItem& item) const override;
  long accessible_at(POINT point) const override;
  long accessible_focus() const override { return active_.get() + 1; }
  std::vector<long> accessible_selection() const override { return {active_.get() + 1}; }
  void accessible_default_action(long child) override;
  bool accessible_select(long child, long flags) override;

  // us_tab_paint.cpp
  void draw();
  void paint_page();
  void paint_tab(int index);
  void paint_close(const PixelRect& area, bool hot, bool pressed);
  void paint_arrows();
  tab_strip::TabColors colors_of(int index) const;

  tab_strip::Arrangement strip_;
  PagePlaces places_;
  std::vector<AddedControl> added_;
  ChildWatch watch_;
  long last_active_ = 0;
  int first_ = 0;    // the first tab shown, where they do not all fit
  int wanted_ = -1;  // a tab to scroll to
  bool layout_stale_ = true;
  bool stale_ = true;
  bool draws_ = false;
  bool switching_ = false;  // within BeforeTabSwitch and the move that follows
  bool cleared_ = false;    // nothing is drawn until the next change
  tab_strip::Hit hot_, pressed_;
  int drag_from_ = -1;  // where the tab that is dragged stood
};

}  // namespace kestrelon
