// USComboBox: a field with a list that drops out of it; what is typed is completed from the list.
#pragma once

#include "controls/items/drawn_border.h"
#include "controls/items/item_painter.h"
#include "controls/items/list_members.h"
#include "controls/items/tagged_control.h"
#include "controls/us_combo_box/combo_list_access.h"
#include "frame/inner/child_edit.h"
#include "frame/popup/popup.h"
#include "frame/scroll/scroll_bars.h"
#include "lists/combo_keys.h"
#include "lists/completion.h"
#include "lists/row_window.h"
#include "lists/type_ahead.h"
#include "services/late_object_win.h"
#include "us_combo_box_glue.h"

namespace kestrelon {

class USComboBox final : public USComboBoxGlue<USComboBox, ListMembers<TaggedControl>>,
                         private PopupOwner,
                         private ChildEditOwner,
                         private ScrollBarsOwner {
 public:
  USComboBox();

  // In the order of the property bag, after those of every control with tags and images.
  Property<ENUM_COMBO_COMPLETE> AutoComplete{*this, L"AutoComplete", Complete_Suggest};
  Property<OLE_COLOR> BackColor{*this, L"BackColor", 0xFFFFFF, &USComboBox::look_changed};
  Property<OLE_COLOR> BackColorOver{*this, L"BackColorOver", 0xD7FCFE, &USComboBox::look_changed};
  Property<OLE_COLOR> BorderColor{*this, L"BorderColor", 0xDBC9BA, &USComboBox::redraw};
  Property<OLE_COLOR> BorderColorOver{*this, L"BorderColorOver", 0x80C0FF, &USComboBox::redraw};
  Property<bool> CheckBoxes{*this, L"CheckBoxes", false, &USComboBox::relayout};
  Property<std::wstring> ColumnWidths{*this, L"ColumnWidths", L"", &USComboBox::relayout};
  Property<short> DropDownRows{*this, L"DropDownRows", 8};
  Property<long> DropDownWidth{*this, L"DropDownWidth", 0};
  Property<OLE_COLOR> ForeColor{*this, L"ForeColor", 0xC56A31, &USComboBox::look_changed};
  Property<OLE_COLOR> GradientColor1{*this, L"GradientColor1", 0xFEF9F4, &USComboBox::redraw};
  Property<OLE_COLOR> GradientColor2{*this, L"GradientColor2", 0xF5E7DC, &USComboBox::redraw};
  Property<ENUM_COMBO_GRADIENT> GradientMode{*this, L"GradientMode", Combo_TopBottom,
                                             &USComboBox::redraw};
  Property<OLE_COLOR> HighLightColorText{*this, L"HighLightColorText", 0x004080,
                                         &USComboBox::redraw};
  Property<bool> LimitToList{*this, L"LimitToList", false};
  Property<std::wstring> ListItems{*this, L"ListItems", L"", &USComboBox::list_items_changed};
  Property<bool> ListGradient{*this, L"ListGradient", false, &USComboBox::redraw};
  Property<bool> Locked{*this, L"Locked", false, &USComboBox::look_changed};
  Property<long> MaxLength{*this, L"MaxLength", 0, &USComboBox::look_changed};
  Property<short> MinChars{*this, L"MinChars", 1};
  Property<std::wstring> PlaceHolder{*this, L"PlaceHolder", L"", &USComboBox::look_changed};
  Property<bool> Required{*this, L"Required", false, &USComboBox::redraw};
  Property<OLE_COLOR> RequiredColor{*this, L"RequiredColor", 0x0061FF, &USComboBox::redraw};
  Property<OLE_COLOR> SelectListBorderColor{*this, L"SelectListBorderColor", 0xE7A665,
                                            &USComboBox::redraw};
  Property<OLE_COLOR> SelectListColor{*this, L"SelectListColor", 0xFDF4E2, &USComboBox::redraw};
  Property<bool> ShowCorner{*this, L"ShowCorner", false, &USComboBox::redraw};
  Property<bool> Sorted{*this, L"Sorted", false, &USComboBox::sorted_changed};
  Property<ENUM_COMBO_STYLE> Style{*this, L"Style", Combo_Edit, &USComboBox::style_changed};
  Property<ENUM_TEXT_CASE> TextCase{*this, L"TextCase", Case_Normal, &USComboBox::style_changed};
  Property<short> TextColumn{*this, L"TextColumn", 0, &USComboBox::column_changed};
  Property<bool> UseGradient{*this, L"UseGradient", true, &USComboBox::redraw};
  Property<bool> WheelChanges{*this, L"WheelChanges", false};
  Property<std::wstring> Value{*this, {L"Text", L"Value"}, L""};

  // Text and choice (us_combo_box_text.cpp).
  std::wstring text() const { return Value.get(); }
  void set_text(const std::wstring& text);
  long list_index();
  void set_list_index(long index);
  Variant bound_value();
  void set_bound_value(const VARIANT& value);
  std::wstring checked_text() const;
  long sel_start() const { return edit_.selection().start; }
  void set_sel_start(long start);
  long sel_length() const;
  void set_sel_length(long length);
  std::wstring sel_text() const;
  void set_sel_text(const std::wstring& text) { edit_.replace_selection(text); }
  void clear_control();
  void remove_item(long index);
  long fill_list_from_query(IDispatch* records, const std::wstring& text, const std::wstring& data,
                            const std::wstring& tag, const std::wstring& image);

  // The list that drops (us_combo_box_popup.cpp).
  bool dropped_down() const { return popup_.is_open(); }
  void set_dropped_down(bool open) { open ? show_drop_down() : hide_drop_down(); }
  void show_drop_down();
  void hide_drop_down() { close_list(false); }

  // Record sets (us_combo_box_query.cpp).
  bool initialize_auto_complete(IDispatch* connection, const std::wstring& table,
                                const std::wstring& field, const std::wstring& tag_field);
  void requery_auto_complete();
  void finalize_auto_complete();

 private:
  friend class ComboListAccess;

  /// While items are replaced the text stays: its item may come again.
  class Refill {
   public:
    explicit Refill(USComboBox& combo) : combo_(combo) { combo_.refilling_ = true; }
    ~Refill() { combo_.refilling_ = false; }
    Refill(const Refill&) = delete;
    Refill& operator=(const Refill&) = delete;

   private:
    USComboBox& combo_;
  };

  // us_combo_box.cpp
  ThemeTable theme_table() const override { return theme::kComboBox; }
  void theme_applied(int32_t theme) override;
  void properties_read() override;
  void window_created() override;
  void shown() override;
  void hidden() override;
  void closing() override;
  void terminate() override;
  void font_changed() override;
  void ambient_changed(DISPID id) override;
  /// A control that is made while a program runs never reads properties, but is used all the same.
  bool runs() { return ambient().user_mode(); }
  bool keeps_sorted() const override { return Sorted.get(); }
  void contents_changed() override;
  void texts_changed() override { contents_changed(); }
  void item_look_changed() override;
  void choice_changed(bool changed) override;
  void look_changed();
  void color_edit();
  void list_items_changed();
  void sorted_changed();
  void style_changed();
  void column_changed();
  bool editable() const { return Style.get() == Combo_Edit; }

  // us_combo_box_text.cpp
  /// The column that texts are compared in.
  int text_column() const;
  std::wstring item_text(int index) const;
  int find_text(const std::wstring& text) const;
  /// What the field shows.
  std::wstring shown_text() const {
    return CheckBoxes.get() && !editable() ? checked_text() : text();
  }
  bool lacks_required() const { return Required.get() && shown_text().empty(); }
  /// Puts a text into field and property without events; tells whether it is another one.
  bool show_text(const std::wstring& text);
  /// All of it, its beginning in view.
  void select_text();
  void text_changed();
  /// Makes an item the current one, with its text and the events.
  void choose(int index);
  /// The current item is gone, or was taken away.
  void choice_lost();
  /// The list may have been filled after the text was set.
  void find_current();

  // us_combo_box_paint.cpp
  void lay_out() override;
  void draw() override;
  void draw_text(const PixelRect& area);
  void draw_button(const PixelRect& area);
  PixelRect button_area();
  PixelRect text_area();
  bool lit() const { return Enabled.get() && (pointer_over() || focus_within()); }

  // us_combo_box_input.cpp
  void mouse_down(short button, short shift, float x, float y) override;
  void mouse_up(short button, short shift, float x, float y) override;
  void click() override { raise_click(); }
  void double_click() override { raise_dbl_click(); }
  bool mouse_wheel(bool horizontal, int delta, short shift) override;
  void pointer_moved(short button, short shift, float x, float y) override;
  void hover_changed() override;
  void key_down(short& key, short& shift) override;
  void key_press(short& character) override;
  void key_up(short& key, short& shift) override { raise_key_up(key, shift); }
  bool wants_key(int key, short shift) const override;
  bool wants_characters() const override { return true; }
  HWND focus_target() override { return restyling_ ? nullptr : edit_.hwnd(); }
  void got_focus() override;
  void lost_focus() override;
  bool run(ComboAct act, short shift);
  void step(int index);
  void restore();
  void judge_text();

  // us_combo_box_typing.cpp
  void edit_changed(ChildEdit& edit) override;
  void complete_typed(const std::wstring& typed);
  void append_rest(const std::wstring& typed);
  bool enough_typed(const std::wstring& typed) const;
  void suggest(const std::wstring& typed);
  void end_suggestions();
  void ask_for_suggestions();

  // us_combo_box_popup.cpp
  bool open_list();
  void close_list(bool accepted);
  void list_closed(bool accepted);
  void popup_closed(PopupEnd why) override;
  bool popup_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;
  void BarScroll(int bar) override { BarChange(bar); }
  void BarChange(int bar) override;
  PopupPlace popup_place() const;
  void lay_out_list();
  void draw_list();
  /// Lays out and draws before the next paint, once for however many changes.
  void redraw_list();
  void show_row_of(int index);
  void scroll_list(int64_t top);
  int list_height() const;
  RowWindow list_rows() const { return {heights_, model_.row_count(), list_height()}; }
  PixelRect list_row(int row) const;
  PixelRect grip_area() const;
  bool on_grip(int x, int y) const;
  void drag_grip();

  // us_combo_box_list.cpp
  void popup_draw(Surface& surface) override;
  void draw_grip(Surface& surface, const ItemColors& colors);
  ItemColors list_colors() const;
  ItemLook look_of(int index) const;
  void list_moved(int x, int y);
  void list_clicked(int x, int y);
  void toggle_check(int index);

  // us_combo_box_accessible.cpp
  void describe(AccessibleItem& item) const override;
  long accessible_count() const override { return dropped_down() ? 1 : 0; }
  bool accessible_item(long child, AccessibleItem& item) const override;
  ComPtr<IDispatch> accessible_object(long child) const override;
  void accessible_default_action(long child) override;
  bool accessible_set_value(long child, const std::wstring& text) override;
  void tell_choice();

  ChildEdit edit_{*this, *this};
  bool setting_text_ = false;  // by code: no event, no completion
  bool deleting_ = false;      // the last key took something away
  bool restyling_ = false;     // the focus waits at the control's own window
  bool refilling_ = false;     // the text outlives the items
  bool contents_new_ = false;  // the current item may be found among new ones
  bool list_new_ = false;      // a handler has changed what is suggested
  int asked_height_ = 0;       // pixels that the container was asked for last
  bool button_hot_ = false;
  std::wstring former_text_;  // when the focus came
  TypeAhead type_ahead_;
  PrivateTimer suggestion_timer_;

  Popup popup_;
  IAPP_ScrollBars bars_{*this};
  ComboListAccess list_access_{*this};
  FixedRowHeights heights_{16};
  ItemMetrics metrics_;
  std::vector<int> columns_;
  int row_height_ = 16;
  int top_ = 0;
  int hot_ = -1;
  SIZE list_size_{};  // that the user has given the list
  POINT grip_offset_{};
  bool gripped_ = false;
  bool opens_up_ = false;
  bool laying_out_ = false;
  bool list_dirty_ = false;
  int index_at_opening_ = -1;
  std::wstring text_at_opening_;
  std::wstring suggested_for_;  // what the shown suggestions match

  LateObject completion_records_;
  std::wstring completion_field_, completion_tag_;
};

}  // namespace kestrelon
