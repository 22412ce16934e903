// USTreeView: a tree with images, check boxes of two or three states, lazy branches, editing in
// place and drag.
#pragma once

#include <unordered_map>

#include "controls/items/images_pack.h"
#include "controls/items/item_control.h"
#include "controls/items/item_painter.h"
#include "controls/us_tree_view/tree_objects.h"
#include "frame/inner/child_edit.h"
#include "frame/scroll/scroll_bars.h"
#include "lists/row_window.h"
#include "lists/tree/tree_choice.h"
#include "lists/tree/tree_keys.h"
#include "lists/type_ahead.h"

namespace kestrelon {

class USTreeView final : public USTreeViewGlue<USTreeView, ImagesPack<ItemControl>>,
                         public TreeAccess,
                         private ScrollBarsOwner,
                         private ChildEditOwner {
 public:
  USTreeView();
  ~USTreeView() override;

  // In the order of the property bag, after those of every item control.
  Property<GRID_SCROLLBAR_ORIENTATION> ScrollBars{*this, L"ScrollBars", Scroll_Both,
                                                  &USTreeView::relayout};
  Property<bool> ScrollTrack{*this, L"ScrollTrack", true};
  Property<ENUM_OLE_DROP_MODE> OLEDropMode{*this, L"OLEDropMode", Drop_None,
                                           &USTreeView::apply_drops};
  Property<ENUM_TREE_DRAG> AllowDrag{*this, L"AllowDrag", Drag_None};
  Property<bool> AllowEdit{*this, L"AllowEdit", false};
  Property<bool> AutoToolTips{*this, L"AutoToolTips", true};
  Property<OLE_COLOR> BackColor{*this, L"BackColor", 0x80000005, &USTreeView::redraw};
  Property<OLE_COLOR> BackColorSelected1{*this, L"BackColorSelected1", 0xFDF4E2,
                                         &USTreeView::redraw};
  Property<OLE_COLOR> BackColorSelected2{*this, L"BackColorSelected2", 0xFDF4E2,
                                         &USTreeView::redraw};
  Property<OLE_COLOR> BorderColor{*this, L"BorderColor", 0xDBC9BA, &USTreeView::border_changed};
  Property<GRID_BORDER_STYLE> BorderStyle{*this, L"BorderStyle", Fixed_Single,
                                          &USTreeView::border_changed};
  Property<ENUM_TREE_CHECK> CheckBoxes{*this, L"CheckBoxes", Check_None,
                                       &USTreeView::check_mode_changed};
  Property<std::wstring> EmptyText{*this, L"EmptyText", L"", &USTreeView::redraw};
  Property<OLE_COLOR> FocusRectColor{*this, L"FocusRectColor", 0xE7A665, &USTreeView::redraw};
  Property<OLE_COLOR> ForeColor{*this, L"ForeColor", 0, &USTreeView::redraw};
  Property<OLE_COLOR> ForeColorSelected{*this, L"ForeColorSelected", 0x80, &USTreeView::redraw};
  Property<bool> FullRowSelect{*this, L"FullRowSelect", false, &USTreeView::redraw};
  Property<bool> HideSelection{*this, L"HideSelection", false, &USTreeView::redraw};
  Property<bool> HotTracking{*this, L"HotTracking", true, &USTreeView::redraw};
  Property<long> Indent{*this, L"Indent", 19, &USTreeView::relayout};
  Property<long> ItemHeight{*this, L"ItemHeight", 0, &USTreeView::relayout};
  Property<OLE_COLOR> LineColor{*this, L"LineColor", 0xBEBEBE, &USTreeView::redraw};
  Property<GRID_MULTISELECT> MultiSelect{*this, L"MultiSelect", Single_Select,
                                         &USTreeView::mode_changed};
  Property<std::wstring> PathSeparator{*this, L"PathSeparator", L"\\"};
  Property<bool> ShowExpanders{*this, L"ShowExpanders", true, &USTreeView::redraw};
  Property<bool> ShowLines{*this, L"ShowLines", true, &USTreeView::redraw};
  Property<bool> ShowRootLines{*this, L"ShowRootLines", true, &USTreeView::relayout};
  Property<bool> SingleExpand{*this, L"SingleExpand", false};
  Property<bool> Sorted{*this, L"Sorted", false, &USTreeView::sorted_changed};

  // Nodes (us_tree_view_nodes.cpp).
  ComPtr<_cTreeNodes> nodes();
  ComPtr<_cTreeNode> selected_node() { return view_of(choice_.current()); }
  void set_selected_node(_cTreeNode* node);
  ComPtr<_cTreeNode> drop_node() { return view_of(store_.find(drop_)); }
  void set_drop_node(_cTreeNode* node);
  ComPtr<_cTreeNode> first_node() { return view_of(store_.first_child()); }
  ComPtr<_cTreeNode> top_node() { return view_of(store_.node_at(first_row())); }
  void set_top_node(_cTreeNode* node);
  ComPtr<_cTreeNodeList> selected_nodes();
  ComPtr<_cTreeNodeList> checked_nodes();
  std::wstring expanded_keys();
  void set_expanded_keys(const std::wstring& keys);
  long visible_count() const { return store_.row_count(); }
  ComPtr<_cTreeNode> add_node(const std::wstring& text, const std::wstring& key,
                              const VARIANT& node, ENUM_TREE_POSITION position,
                              const VARIANT& image, const VARIANT& image_selected,
                              bool has_children);
  void expand_all(const VARIANT& node);
  void collapse_all(const VARIANT& node);
  ComPtr<_cTreeNode> find_node(const std::wstring& sought, GRID_SEARCH_MODE mode, bool match_case,
                               const VARIANT& start);
  ComPtr<_cTreeNode> hit_test(float x, float y);
  long fill_tree_from_query(IDispatch* records, const std::wstring& key, const std::wstring& parent,
                            const std::wstring& text, const std::wstring& image);
  long fill_tree_from_codes(IDispatch* records, const std::wstring& code, const std::wstring& text,
                            const std::wstring& separator);

 private:
  // us_tree_view.cpp
  ThemeTable theme_table() const override { return theme::kTreeView; }
  void properties_read() override;
  void window_created() override;
  void terminate() override;
  void font_changed() override;
  void border_changed();
  void mode_changed();
  void check_mode_changed();
  void sorted_changed();
  bool has_checks() const { return CheckBoxes.get() != Check_None; }
  /// Draws, tells screen readers and the program.
  void choice_changed(bool changed);
  /// Keeps nothing of nodes that have gone.
  void drop_released();
  /// A reference for an event's argument; the caller releases it.
  IDispatch* argument(NodeId id) { return view_of(id).as<IDispatch>().detach(); }
  template <class Raise>
  void tell(NodeId id, Raise&& raise);

  // us_tree_view_nodes.cpp: TreeAccess
  TreeStore& store() override { return store_; }
  ComPtr<_cTreeNode> view_of(NodeId id) override;
  NodeId node_named(const VARIANT& name) override;
  std::wstring path_separator() const override { return PathSeparator.get(); }
  Variant tag_of(NodeId id) const override;
  void set_tag_of(NodeId id, const VARIANT& tag) override;
  Variant image_value(int32_t number) const override { return images().value(number); }
  int32_t image_number(const VARIANT& image) override { return images().number(image); }
  void look_changed() override { redraw(); }
  void rows_changed() override;
  void set_checked(NodeId id, long state) override;
  void set_expanded(NodeId id, bool expanded) override;
  void set_selected(NodeId id, bool selected) override;
  void remove_node(NodeId id) override;
  void clear_nodes() override;
  bool move_node(NodeId id, NodeId target, long position) override;
  void show_node(NodeId id) override;
  void sort_node(NodeId id, GRID_SORT_TYPE type) override;
  void edit_node(NodeId id) override { start_edit(id); }
  void collapse_quietly(NodeId id);
  void filled();

  // us_tree_view_user.cpp: what the user does to nodes, with its events
  void expand_by_user(NodeId id);
  void collapse_by_user(NodeId id);
  void toggle_expanded(NodeId id);
  void toggle_check(NodeId id);

  // us_tree_view_layout.cpp
  void lay_out() override;
  void measure_items();
  void lay_out_bars();
  RowWindow rows() const { return {heights_, store_.row_count(), ControlFrame::height()}; }
  int first_row();
  int border() const { return BorderStyle.get() == Fixed_Single ? 1 : 0; }
  int indent_of(NodeId id) const;
  ItemParts parts_of(int row);
  NodeId node_at_point(int y);
  void scroll_to(int64_t top, bool by_user);
  void scroll_sideways(int64_t left);
  void show_row_of(NodeId id, bool by_user);
  void BarScroll(int bar) override;
  void BarChange(int bar) override;
  void BarMouseWheel(int bar, long& amount) override;
  void take_bar(int bar);
  bool window_message_before(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;
  void paint_border();

  // us_tree_view_paint.cpp
  void draw() override;
  ItemColors colors() const;
  ItemLook look_of(NodeId id) const;
  int32_t image_number_of(NodeId id) const;
  int width_of(HDC dc, std::wstring_view text, bool bold);
  void draw_row(ItemPainter& painter, int row);
  void draw_lines(NodeId id, const ItemParts& parts);
  void draw_expander(NodeId id, const ItemParts& parts);
  void draw_drop_mark();

  // us_tree_view_mouse.cpp
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
  void set_hot(NodeId id);

  // us_tree_view_drag.cpp
  void begin_drag();
  void drag_over(int x, int y);
  void drag_tick();
  void end_drag(bool drop);
  NodePosition position_at(int y, int row);

  // us_tree_view_keys.cpp
  void key_down(short& key, short& shift) override;
  void key_press(short& character) override;
  void key_up(short& key, short& shift) override { raise_key_up(key, shift); }
  bool wants_key(int key, short shift) const override;
  bool wants_characters() const override { return true; }
  void run(const TreeCommand& command);
  void move_mark(NodeId id, Choice how);
  void move_to_row(int64_t row, bool down, Choice how);
  void look_for(wchar_t character);

  // us_tree_view_edit.cpp
  bool editing() const { return edit_.hwnd() != nullptr; }
  void start_edit(NodeId id);
  bool take_edit();  // false while the program keeps the editor open
  void drop_edit();
  void place_editor();

  // us_tree_view_tips.cpp
  void watch_for_tip(NodeId id);
  void show_node_tip();
  void hide_node_tip();

  // us_tree_view_accessible.cpp
  void describe(AccessibleItem& item) const override;
  long accessible_count() const override { return store_.row_count(); }
  bool accessible_item(long child, AccessibleItem& item) const override;
  long accessible_at(POINT point) const override;
  long accessible_focus() const override;
  std::vector<long> accessible_selection() const override;
  void accessible_default_action(long child) override;
  bool accessible_select(long child, long flags) override;

  TreeStore store_;
  TreeChoice choice_{store_};
  TreeLink link_;
  std::unordered_map<NodeId, Variant> tags_;
  IAPP_ScrollBars bars_{*this};
  ChildEdit edit_{*this, *this};
  NodeRef edited_;
  bool taking_edit_ = false;
  TypeAhead type_ahead_;
  bool skip_character_ = false;  // of a key that was a command

  ItemMetrics metrics_;
  FixedRowHeights heights_{1};
  int row_height_ = 1;
  int top_ = 0;     // first row
  int left_ = 0;    // pixels scrolled sideways
  int widest_ = 0;  // pixels of the widest row that was shown
  bool laying_out_ = false;

  NodeRef hot_;
  NodeRef pressed_;  // under the press that holds the mouse
  int press_x_ = 0, press_y_ = 0, last_x_ = 0, last_y_ = 0;
  short press_button_ = 0, press_shift_ = 0;
  bool dragging_ = false, drag_refused_ = false;
  NodeRef drop_;  // the node a drag is over
  NodePosition drop_position_ = NodePosition::kLastChild;
  bool drop_allowed_ = false;
  PrivateTimer drag_timer_;
  DWORD over_since_ = 0;

  CTooltip node_tip_;
  PrivateTimer tip_timer_;
  NodeRef tip_node_;
};

/// Raises an event about a node; the view is released afterwards, whatever the handler left there.
template <class Raise>
void USTreeView::tell(NodeId id, Raise&& raise) {
  IDispatch* node = argument(id);
  raise(node);
  if (node != nullptr) node->Release();
}

}  // namespace kestrelon
