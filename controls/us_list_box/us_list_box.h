// USListBox: a list with images, check boxes, search, filters, editing in place and items that the
// program holds itself.
#pragma once

#include <unordered_map>

#include "controls/items/item_control.h"
#include "controls/items/item_painter.h"
#include "controls/items/list_members.h"
#include "frame/inner/child_edit.h"
#include "frame/scroll/scroll_bars.h"
#include "lists/row_window.h"
#include "lists/type_ahead.h"
#include "lists/virtual_items.h"
#include "us_list_box_glue.h"

namespace kestrelon {

class USListBox final : public USListBoxGlue<USListBox, ListMembers<ItemControl>>,
                        private ScrollBarsOwner,
                        private ChildEditOwner,
                        private RowHeights {
 public:
  USListBox();

  // In the order of the property bag, after those of every item control.
  Property<GRID_SCROLLBAR_ORIENTATION> ScrollBars{*this, L"ScrollBars", Scroll_Both,
                                                  &USListBox::relayout};
  Property<bool> ScrollTrack{*this, L"ScrollTrack", true};
  Property<ENUM_OLE_DROP_MODE> OLEDropMode{*this, L"OLEDropMode", Drop_None,
                                           &USListBox::apply_drops};
  Property<bool> AllowDrag{*this, L"AllowDrag", false};
  Property<bool> AllowEdit{*this, L"AllowEdit", false};
  Property<bool> AutoToolTips{*this, L"AutoToolTips", true};
  Property<OLE_COLOR> BackNormal{*this, L"BackNormal", 0x80000005, &USListBox::redraw};
  Property<OLE_COLOR> BackSelected{*this, L"BackSelected", 0xC0FFFF, &USListBox::redraw};
  Property<OLE_COLOR> BorderColor{*this, L"BorderColor", 0xDBC9BA, &USListBox::border_changed};
  Property<GRID_BORDER_STYLE> BorderStyle{*this, L"BorderStyle", Fixed_Single,
                                          &USListBox::border_changed};
  Property<bool> CheckBoxes{*this, L"CheckBoxes", false, &USListBox::relayout};
  Property<std::wstring> ColumnWidths{*this, L"ColumnWidths", L"", &USListBox::relayout};
  Property<std::wstring> EmptyText{*this, L"EmptyText", L"", &USListBox::redraw};
  Property<OLE_COLOR> ForeColor{*this, L"ForeColor", 0, &USListBox::redraw};
  Property<OLE_COLOR> ForeColorSelected{*this, L"ForeColorSelected", 0x004080, &USListBox::redraw};
  Property<bool> HotTracking{*this, L"HotTracking", true, &USListBox::redraw};
  Property<bool> IntegralHeight{*this, L"IntegralHeight", false, &USListBox::relayout};
  Property<long> ItemHeight{*this, L"ItemHeight", 0, &USListBox::relayout};
  Property<std::wstring> ListItems{*this, L"ListItems", L"", &USListBox::list_items_changed};
  Property<GRID_MULTISELECT> MultiSelect{*this, L"MultiSelect", Single_Select,
                                         &USListBox::mode_changed};
  Property<OLE_COLOR> SelectedListColor1{*this, L"SelectedListColor1", 0xFDE6CF,
                                         &USListBox::redraw};
  Property<OLE_COLOR> SelectedListColor2{*this, L"SelectedListColor2", 0xFDE6CF,
                                         &USListBox::redraw};
  Property<OLE_COLOR> SelectedListBorderColor{*this, L"SelectedListBorderColor", 0xE7A665,
                                              &USListBox::redraw};
  Property<OLE_COLOR> ShadowColorText{*this, L"ShadowColorText", 0x80000015, &USListBox::redraw};
  Property<bool> ShadowText{*this, L"ShadowText", false, &USListBox::redraw};
  Property<bool> Sorted{*this, L"Sorted", false, &USListBox::sorted_changed};
  Property<bool> WordWrap{*this, L"WordWrap", false, &USListBox::relayout};

  // Items of the program's own and filtered ones differ from what every list has
  // (us_list_box_items.cpp).
  std::wstring list(long index) { return item_text(at(index)); }
  void set_list(long index, const std::wstring& text);
  bool item_checked(long index) { return item_ticked(at(index)); }
  bool item_visible(long index) const { return model_.shows(at(index)); }
  void set_item_visible(long index, bool visible);
  void move_item(long from, long to);
  void filter_on(const std::wstring& sought, GRID_SEARCH_MODE mode, bool match_case);
  void filter_off();

  // Current item, selection, places (us_list_box.cpp).
  bool selected(long index) const { return model_.selected(static_cast<int>(index)); }
  void set_selected(long index, bool selected);
  long list_index() const { return model_.current(); }
  void set_list_index(long index);
  long top_index();
  void set_top_index(long index);
  std::wstring text();
  void set_text(const std::wstring& text);
  long sel_count() const { return model_.selected_count(); }
  long checked_count() const { return model_.store().checked_count(); }
  long virtual_count() const { return model_.is_virtual() ? model_.count() : 0; }
  void set_virtual_count(long count);
  void select_all();
  void unselect_all();
  void ensure_visible(long index);
  long hit_test(float x, float y);

  void start_edit(long index);

 private:
  // us_list_box.cpp
  ThemeTable theme_table() const override { return theme::kListBox; }
  void init_properties() override;
  void properties_read() override;
  void window_created() override;
  void terminate() override;
  void font_changed() override;
  void border_changed();
  void mode_changed();
  void sorted_changed();
  void list_items_changed();
  bool keeps_sorted() const override { return Sorted.get(); }
  void contents_changed() override;
  void texts_changed() override;
  void item_look_changed() override { redraw(); }
  void before_clear() override;
  /// Draws, tells bound data, screen readers and the program.
  void choice_changed(bool changed) override;
  const VirtualItem* virtual_item(int index);
  bool item_ticked(int index);
  std::wstring item_text(int index);

  // us_list_box_layout.cpp
  void lay_out() override;
  int height(int row) const override;
  RowWindow rows() const { return {*this, model_.row_count(), view_height()}; }
  int view_height() const { return ControlFrame::height(); }
  int first_row();
  int border() const;
  void measure_items();
  void keep_integral_height();
  void lay_out_bars();
  ItemParts parts_of(int row);
  PixelRect row_rect(int row);
  int item_at(int y);
  void scroll_to(int64_t top, bool by_user);
  void scroll_sideways(int64_t left);
  void show_item(int index, bool by_user);
  void BarScroll(int bar) override;
  void BarChange(int bar) override;
  void BarMouseWheel(int bar, long& amount) override;
  void take_bar(int bar);
  bool window_message_before(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;
  void paint_border();

  // us_list_box_paint.cpp
  void draw() override;
  void fetch_shown();
  ItemColors colors() const;
  ItemLook look_of(int index, const ItemColors& colors) const;
  void draw_row(ItemPainter& painter, const ItemColors& colors, int row);
  void draw_drop_mark();
  void note_width(std::wstring_view text);

  // us_list_box_mouse.cpp
  void mouse_down(short button, short shift, float x, float y) override;
  void mouse_up(short button, short shift, float x, float y) override;
  void click() override { raise_click(); }
  void double_click() override;
  void pointer_moved(short button, short shift, float x, float y) override;
  void hover_changed() override;
  void lost_focus() override;
  bool takes_drops() const override { return user_mode() && OLEDropMode.get() == Drop_Manual; }
  void drag(Drag& step) override;
  void press(short button, short shift, int x, int y);
  void drag_selection(int y);
  void drag_item(int y);
  void edge_tick();
  void end_drag(bool drop);
  void set_hot(int index);
  void toggle_check(int index);
  void move_by_user(int from, int to);

  // us_list_box_keys.cpp
  void key_down(short& key, short& shift) override;
  void key_press(short& character) override;
  void key_up(short& key, short& shift) override { raise_key_up(key, shift); }
  bool wants_key(int key, short shift) const override;
  bool wants_characters() const override { return true; }
  void run(const ListCommand& command);
  void move_mark(int index, Choice how);
  void look_for(wchar_t character);

  // us_list_box_edit.cpp
  bool editing() const { return edit_.hwnd() != nullptr; }
  /// False while the program keeps the editor open.
  bool take_edit();
  void drop_edit();
  void place_editor();

  // us_list_box_tips.cpp
  void watch_for_tip(int index);
  void show_item_tip();
  void hide_item_tip();

  // us_list_box_accessible.cpp
  void describe(AccessibleItem& item) const override;
  long accessible_count() const override { return model_.row_count(); }
  bool accessible_item(long child, AccessibleItem& item) const override;
  long accessible_at(POINT point) const override;
  long accessible_focus() const override;
  std::vector<long> accessible_selection() const override;
  void accessible_default_action(long child) override;
  bool accessible_select(long child, long flags) override;

  VirtualItems virtual_;
  IAPP_ScrollBars bars_{*this};
  ChildEdit edit_{*this, *this};
  uint32_t edit_slot_ = 0;  // the record being edited
  bool taking_edit_ = false;
  TypeAhead type_ahead_;

  ItemMetrics metrics_;
  std::vector<int> columns_;
  int row_height_ = 1;                            // of every row, unless texts wrap
  mutable std::unordered_map<int, int> wrapped_;  // measured heights, by index
  int top_ = 0;                                   // first row
  int left_ = 0;                                  // pixels scrolled sideways
  int widest_ = 0;                                // pixels of the widest row that was shown
  bool laying_out_ = false;

  int hot_ = -1;
  int pressed_ = -1;  // item under the press that holds the mouse
  int press_y_ = 0, last_x_ = 0, last_y_ = 0;
  short press_button_ = 0, press_shift_ = 0;
  bool moving_item_ = false;
  int drop_row_ = -1;  // the row before which the moved item would go
  PrivateTimer edge_timer_;

  CTooltip item_tip_;
  PrivateTimer tip_timer_;
  int tip_item_ = -1;
};

}  // namespace kestrelon
