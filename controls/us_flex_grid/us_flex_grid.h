// USFlexGrid: the data grid. Its rows are in grid/store, its sizes in grid/layout, its looks in
// grid/paint; here they meet the window, the user and the program.
#pragma once

#include "controls/us_flex_grid/bound_editor.h"
#include "controls/us_flex_grid/grid_children.h"
#include "controls/us_flex_grid/grid_images.h"
#include "frame/clipboard.h"
#include "frame/control_frame.h"
#include "frame/hover.h"
#include "frame/inner/child_edit.h"
#include "frame/kit/scroll_math.h"
#include "frame/scroll/scroll_bars.h"
#include "frame/tooltip.h"
#include "grid/layout/hit_test.h"
#include "grid/layout/source_rows.h"
#include "grid/paint/grid_painter_win.h"
#include "grid/paint/measure_win.h"
#include "grid/paint/source_contents.h"
#include "grid/store/grid_store.h"
#include "grid/store/store_sort.h"
#include "us_flex_grid_glue.h"

namespace kestrelon {

/// A registered window message; the grid's window answers 1 while its store is sound. It reads the
/// whole store.
inline constexpr wchar_t kGridFaultMessage[] = L"Kestrelon2012.GridFault";

class USFlexGrid final : public USFlexGridGlue<USFlexGrid, ControlFrame>,
                         private ScrollBarsOwner,
                         private ChildEditOwner,
                         private BoundEditorOwner {
 public:
  USFlexGrid();

  // In the order of the property bag.
  Property<ENUM_THEME> Theme{*this, L"Theme", Windows_8, &USFlexGrid::theme_changed};
  Property<OLE_COLOR> BorderColor{*this, L"BorderColor", 0xDBC9BA, &USFlexGrid::changed};
  FontProperty Font{*this, L"Font", &USFlexGrid::fonts_changed};
  FontProperty FontHeader{*this, L"FontHeader", &USFlexGrid::fonts_changed};
  Property<bool> ApplySelectionToImages{*this, L"ApplySelectionToImages", false,
                                        &USFlexGrid::changed};
  Property<OLE_COLOR> BackColor{*this, L"BackColor", 0x80000005, &USFlexGrid::look_changed};
  Property<OLE_COLOR> BackColorBackground{*this, L"BackColorBackground", 0xFFFFFF,
                                          &USFlexGrid::changed};
  Property<OLE_COLOR> BackColorEdit{*this, L"BackColorEdit", 0xD7FCFE};
  Property<OLE_COLOR> BackColorSelected1{*this, L"BackColorSelected1", 0xFDF4E2,
                                         &USFlexGrid::changed};
  Property<OLE_COLOR> BackColorSelected2{*this, L"BackColorSelected2", 0xFDF4E2,
                                         &USFlexGrid::changed};
  Property<OLE_COLOR> ForeColor{*this, L"ForeColor", 0, &USFlexGrid::look_changed};
  Property<OLE_COLOR> ForeColorEdit{*this, L"ForeColorEdit", 0x80};
  Property<OLE_COLOR> ForeColorHeader{*this, L"ForeColorHeader", 0x917069, &USFlexGrid::changed};
  Property<OLE_COLOR> ForeColorHeaderOver{*this, L"ForeColorHeaderOver", 0x917069,
                                          &USFlexGrid::changed};
  Property<OLE_COLOR> ForeColorSelected{*this, L"ForeColorSelected", 0x80, &USFlexGrid::changed};
  Property<OLE_COLOR> BackColorEvenRows{*this, L"BackColorEvenRows", 0xF9F9F9,
                                        &USFlexGrid::changed};
  Property<bool> BackColorEvenRowsEnabled{*this, L"BackColorEvenRowsEnabled", true,
                                          &USFlexGrid::changed};
  Property<OLE_COLOR> HeaderGradientColor1{*this, L"HeaderGradientColor1", 0xFDF7F2,
                                           &USFlexGrid::changed};
  Property<OLE_COLOR> HeaderGradientColor2{*this, L"HeaderGradientColor2", 0xF9F3EF,
                                           &USFlexGrid::changed};
  Property<OLE_COLOR> CaptionGradientColor1{*this, L"CaptionGradientColor1", 0xFDF7F2,
                                            &USFlexGrid::changed};
  Property<OLE_COLOR> CaptionGradientColor2{*this, L"CaptionGradientColor2", 0xF9F3EF,
                                            &USFlexGrid::changed};
  Property<OLE_COLOR> GridColor{*this, L"GridColor", 0xF7EADF, &USFlexGrid::changed};
  Property<OLE_COLOR> ProgressBarColor1{*this, L"ProgressBarColor1", 0xFFFFFF,
                                        &USFlexGrid::changed};
  Property<OLE_COLOR> ProgressBarColor2{*this, L"ProgressBarColor2", 0xE7A665,
                                        &USFlexGrid::changed};
  Property<OLE_COLOR> ProgressBarBorderColor{*this, L"ProgressBarBorderColor", 0xDBC9BA,
                                             &USFlexGrid::changed};
  Property<bool> AlphaBlendSelection{*this, L"AlphaBlendSelection", false, &USFlexGrid::changed};
  Property<GRID_BORDER_STYLE> BorderStyle{*this, L"BorderStyle", Fixed_Single,
                                          &USFlexGrid::changed};
  Property<bool> DisplayEllipsis{*this, L"DisplayEllipsis", true, &USFlexGrid::changed};
  Property<GRID_FOCUSRECT> FocusRectMode{*this, L"FocusRectMode", Focus_Row, &USFlexGrid::changed};
  Property<OLE_COLOR> FocusRectColor{*this, L"FocusRectColor", 0xE7A665, &USFlexGrid::changed};
  Property<GRID_FOCUSRECT_STYLE> FocusRectStyle{*this, L"FocusRectStyle", Focus_Light,
                                                &USFlexGrid::changed};
  Property<GRID_LINES> GridLines{*this, L"GridLines", Both_Lines, &USFlexGrid::changed};
  Property<long> GridLineWidth{*this, L"GridLineWidth", 1, &USFlexGrid::changed};
  Property<bool> ColumnHeaders{
      *this, {L"ColumnHeaders", L"ShowColumnHeaders"}, true, &USFlexGrid::changed};
  Property<bool> CenterRowImage{*this, L"CenterRowImage", true, &USFlexGrid::changed};
  Property<GRID_SCROLLBAR_ORIENTATION> ScrollBars{*this, L"ScrollBars", Scroll_Both,
                                                  &USFlexGrid::changed};
  Property<long> MinVerticalOffset{*this, L"MinVerticalOffset", 2, &USFlexGrid::changed};
  Property<short> ColumnHeaderLines{*this, L"ColumnHeaderLines", 2, &USFlexGrid::changed};
  Property<std::wstring> Caption{*this, L"Caption", L"", &USFlexGrid::changed};
  Property<bool> CaptionWordWrap{*this, L"CaptionWordWrap", false, &USFlexGrid::changed};
  Property<float> CaptionHeight{*this, L"CaptionHeight", 0, &USFlexGrid::changed};
  Property<GRID_CAPTION_ALIGNMENT> CaptionAlignment{*this, L"CaptionAlignment", AlignToCenter,
                                                    &USFlexGrid::changed};
  Property<bool> ColumnHeaderSmall{*this, L"ColumnHeaderSmall", true, &USFlexGrid::changed};
  Property<bool> TotalLineShow{*this, L"TotalLineShow", false, &USFlexGrid::changed};
  Property<bool> FocusRowHighlightKeepTextForeColor{*this, L"FocusRowHighlightKeepTextForeColor",
                                                    true, &USFlexGrid::changed};
  Property<bool> ShowRowNumbers{*this, L"ShowRowNumbers", false, &USFlexGrid::changed};
  Property<bool> ShowRowNumbersVary{*this, L"ShowRowNumbersVary", true, &USFlexGrid::changed};
  Property<bool> AllowColumnResizing{*this, L"AllowColumnResizing", false};
  Property<bool> AllowRowResizing{*this, L"AllowRowResizing", false};
  Property<bool> AllowWordWrap{*this, L"AllowWordWrap", false, &USFlexGrid::changed};
  Property<bool> RowCheckBoxes{*this, {L"CheckBoxes", L"Checkboxes"}, false, &USFlexGrid::changed};
  Property<bool> AllowColumnSwap{*this, {L"AllowColumnSwap", L"ColumnSwap"}, false};
  Property<bool> AllowColumnDrag{*this, {L"AllowColumnDrag", L"ColumnDrag"}, false};
  Property<bool> AllowColumnSort{*this, {L"AllowColumnSort", L"ColumnSort"}, false};
  Property<bool> AllowEdit{
      *this, {L"AllowEdit", L"Editable"}, false, &USFlexGrid::key_wishes_changed};
  Property<bool> AllowDelete{*this, L"AllowDelete", false};
  Property<bool> AllowInsert{*this, L"AllowInsert", false};
  Property<GRID_EDIT_TRIGGER> EditTrigger{*this, L"EditTrigger", OnF2OrDblClick,
                                          &USFlexGrid::key_wishes_changed};
  Property<GRID_EDIT_MOVE> EditMove{*this, L"EditMove", DontMove};
  Property<bool> FocusRowHighlight{
      *this, {L"FocusRowHighlight", L"FullRowSelect"}, true, &USFlexGrid::changed};
  Property<GRID_FOCUS_ROW_HIGHLIGHT_STYLE> FocusRowHighlightStyle{
      *this, L"FocusRowHighlightStyle", Vertical_Gradient, &USFlexGrid::changed};
  Property<bool> FocusRectHide{
      *this, {L"FocusRectHide", L"HideSelection"}, false, &USFlexGrid::changed};
  Property<bool> AllowColumnHover{*this, {L"AllowColumnHover", L"HotHeaderTracking"}, true};
  Property<GRID_MULTISELECT> MultiSelect{*this, L"MultiSelect", Single_Select,
                                         &USFlexGrid::changed};
  Property<bool> ScrollTrack{*this, L"ScrollTrack", true};
  Property<bool> AutoToolTips{*this, L"AutoToolTips", true};
  Property<bool> Enabled{*this, L"Enabled", true, &USFlexGrid::enabled_changed};
  Property<short> FreezeAtCol{*this, L"FreezeAtCol", -1, &USFlexGrid::changed};
  Property<std::wstring> HeaderFormatString{*this, L"HeaderFormatString", L""};
  Property<long> CacheIncrement{*this, L"CacheIncrement", 10};
  Property<long> MaxLineCount{*this, L"MaxLineCount", 0, &USFlexGrid::changed};
  Property<long> SearchColumn{*this, L"SearchColumn", 0};
  Property<float> MinRowHeight{*this, L"MinRowHeight", 0, &USFlexGrid::changed};
  Property<bool> ExactRules{*this, L"ExactRules", false, &USFlexGrid::rules_changed};
  Property<bool> TotalLineVisibleOnly{*this, L"TotalLineVisibleOnly", false, &USFlexGrid::changed};
  Property<bool> AllowClipboard{*this, L"AllowClipboard", false};

  // us_flex_grid.cpp
  long h_dc() { return static_cast<long>(reinterpret_cast<LONG_PTR>(surface().dc())); }
  void refresh();
  void window_update() { update_now(); }
  bool redraw() const { return redraw_; }
  void set_redraw(bool value);
  ComPtr<IDispatch> image_list() const { return images_.list(); }
  void set_image_list(IDispatch* list);
  Variant expand_row_image() const { return images_.shown(expand_image_); }
  void set_expand_row_image(const VARIANT& image);
  long task_bar_set_progress_state(long window, ENUM_TASKBAR flags);
  long task_bar_set_progress_value(long window, long percent);
  long task_bar_set_overlay_icon(long window, long icon, const std::wstring& description);
  long task_bar_set_thumbnail_clip(long window, long left, long top, long right, long bottom);
  long task_bar_set_thumbnail_tooltip(long window, const std::wstring& tip);
  long task_bar_thumb_bar_add_buttons(long window, long buttons, const VARIANT& icons);
  float visible_height();
  float visible_width();
  bool vertical_scroll_bar_visible() { return page().vertical_bar; }
  bool horizontal_scroll_bar_visible() { return page().horizontal_bar; }
  float row_number_width() { return static_cast<float>(page().number_width); }
  long row_first_visible() { return store_.row_count() == 0 ? -1 : page().first_row; }
  long row_last_visible() { return page().last_row; }

  // us_flex_grid_columns.cpp
  long add_column(const std::wstring& caption, double width, GRID_ALIGNMENT alignment,
                  GRID_DATA_TYPE type, const std::wstring& format, const std::wstring& filter,
                  GRID_ALIGNMENT image_alignment, bool word_wrap, long index, bool visible,
                  bool locked);
  std::wstring header_format_string() const;
  void set_header_format_string(const std::wstring& text);
  void bind_control(long column, IDispatch* control, long move_control);
  long cols() const { return store_.column_count(); }
  GRID_ALIGNMENT col_alignment(long column) const;
  void set_col_alignment(long column, GRID_ALIGNMENT value);
  std::wstring col_format(long column) const;
  void set_col_format(long column, const std::wstring& value);
  std::wstring col_heading(long column) const;
  void set_col_heading(long column, const std::wstring& value);
  GRID_ALIGNMENT col_image_alignment(long column) const;
  void set_col_image_alignment(long column, GRID_ALIGNMENT value);
  std::wstring col_input_filter(long column) const;
  void set_col_input_filter(long column, const std::wstring& value);
  bool col_locked(long column) const;
  void set_col_locked(long column, bool value);
  std::wstring col_tag(long column) const;
  void set_col_tag(long column, const std::wstring& value);
  GRID_DATA_TYPE col_type(long column) const;
  void set_col_type(long column, GRID_DATA_TYPE value);
  bool col_visible(long column) const;
  void set_col_visible(long column, bool value);
  float col_width(long column) const;
  void set_col_width(long column, float value);
  bool col_word_wrap(long column) const;
  void set_col_word_wrap(long column, bool value);
  void columns_force_fit();
  void set_column_width_auto_size(long column);
  void restore_column_order();
  double total_columns(long column) const;
  long total_line_col_alignment(long column) const;
  void set_total_line_col_alignment(long column, long value);
  bool total_line_col_invisible(long column) const;
  void set_total_line_col_invisible(long column, bool value);
  OLE_COLOR total_line_fore_color(long column) const;
  void set_total_line_fore_color(long column, OLE_COLOR value);
  std::wstring total_line_caption(long column) const;
  void set_total_line_caption(long column, const std::wstring& value);
  bool total_line_col_avg(long column) const;
  void set_total_line_col_avg(long column, bool value);

  // us_flex_grid_layouts.cpp
  void load_column_widths_from_registry(const std::wstring& name, VARIANT* error,
                                        const VARIANT& application);
  void load_column_widths_from_file(const std::wstring& name, VARIANT* error);
  void save_column_widths_to_registry(const std::wstring& name, VARIANT* error,
                                      const VARIANT& application);
  void save_column_widths_to_file(const std::wstring& name, VARIANT* error);
  void load_column_order_from_registry(const std::wstring& name, VARIANT* error,
                                       const VARIANT& application);
  void load_column_order_from_file(const std::wstring& name, VARIANT* error);
  void save_column_order_to_registry(const std::wstring& name, VARIANT* error,
                                     const VARIANT& application);
  void save_column_order_to_file(const std::wstring& name, VARIANT* error);

  // us_flex_grid_rows.cpp
  long add_item(const std::wstring& item, long row, bool checked, bool mark_as_new, bool locked,
                bool visible, long data);
  void remove_row(long row);
  void delete_selected();
  void clear();
  void clear_ex(bool force_fit);
  void clear_all();
  long rows() const { return store_.row_count(); }
  long list_count() const { return store_.row_count(); }
  bool row_added(long row) const { return row_bit(row, kGridAddedNew); }
  bool row_changed(long row) const { return row_bit(row, kGridChanged); }
  void set_row_changed(long row, bool value) { set_row_bit(row, kGridChanged, value); }
  bool row_checked(long row) const { return row_bit(row, kGridChecked); }
  void set_row_checked(long row, bool value) { set_row_bit(row, kGridChecked, value); }
  bool row_locked(long row) const { return row_bit(row, kGridRowLocked); }
  void set_row_locked(long row, bool value) { set_row_bit(row, kGridRowLocked, value); }
  bool row_selected(long row) const { return row_bit(row, kGridSelected); }
  void set_row_selected(long row, bool value) { set_row_bit(row, kGridSelected, value); }
  long row_data(long row) const;
  void set_row_data(long row, long value);
  bool row_group_header(long row) const;
  void set_row_group_header(long row, bool value);
  long row_height(long row) const;
  void set_row_height(long row, long value);
  Variant row_image(long row) const;
  void set_row_image(long row, const VARIANT& image);
  std::wstring row_tag(long row) const;
  void set_row_tag(long row, const std::wstring& value);
  bool row_visible(long row) const;
  void set_row_visible(long row, bool value);
  OLE_COLOR row_back_color(long row) const { return cell_back_color(row, first_column()); }
  void set_row_back_color(long row, OLE_COLOR value);
  OLE_COLOR row_fore_color(long row) const { return cell_fore_color(row, first_column()); }
  void set_row_fore_color(long row, OLE_COLOR value);
  bool row_font_bold(long row) const { return cell_bit(row, first_column(), kGridBold); }
  void set_row_font_bold(long row, bool value) { set_row_font(row, kGridBold, value); }
  bool row_font_italic(long row) const { return cell_bit(row, first_column(), kGridItalic); }
  void set_row_font_italic(long row, bool value) { set_row_font(row, kGridItalic, value); }
  bool row_font_underline(long row) const { return cell_bit(row, first_column(), kGridUnderline); }
  void set_row_font_underline(long row, bool value) { set_row_font(row, kGridUnderline, value); }
  bool row_font_strikethrough(long row) const {
    return cell_bit(row, first_column(), kGridStrikethrough);
  }
  void set_row_font_strikethrough(long row, bool value) {
    set_row_font(row, kGridStrikethrough, value);
  }

  // us_flex_grid_cells.cpp
  GRID_ALIGNMENT cell_alignment(long row, long column) const;
  void set_cell_alignment(long row, long column, GRID_ALIGNMENT value);
  OLE_COLOR cell_back_color(long row, long column) const;
  void set_cell_back_color(long row, long column, OLE_COLOR value);
  OLE_COLOR cell_fore_color(long row, long column) const;
  void set_cell_fore_color(long row, long column, OLE_COLOR value);
  std::wstring cell_font_name(long row, long column) const;
  void set_cell_font_name(long row, long column, const std::wstring& value);
  bool cell_hand_pointer(long row, long column) const;
  void set_cell_hand_pointer(long row, long column, bool value);
  Variant cell_image(long row, long column) const;
  void set_cell_image(long row, long column, const VARIANT& image);
  bool cell_changed(long row, long column) const { return cell_bit(row, column, kGridChanged); }
  void set_cell_changed(long row, long column, bool value) {
    set_cell_bit(row, column, kGridChanged, value);
  }
  bool cell_checked(long row, long column) const;
  void set_cell_checked(long row, long column, bool value);
  bool cell_font_bold(long row, long column) const { return cell_bit(row, column, kGridBold); }
  void set_cell_font_bold(long row, long column, bool value) {
    set_cell_bit(row, column, kGridBold, value);
  }
  bool cell_font_italic(long row, long column) const { return cell_bit(row, column, kGridItalic); }
  void set_cell_font_italic(long row, long column, bool value) {
    set_cell_bit(row, column, kGridItalic, value);
  }
  bool cell_font_underline(long row, long column) const {
    return cell_bit(row, column, kGridUnderline);
  }
  void set_cell_font_underline(long row, long column, bool value) {
    set_cell_bit(row, column, kGridUnderline, value);
  }
  bool cell_font_strikethrough(long row, long column) const {
    return cell_bit(row, column, kGridStrikethrough);
  }
  void set_cell_font_strikethrough(long row, long column, bool value) {
    set_cell_bit(row, column, kGridStrikethrough, value);
  }
  bool cell_word_wrap(long row, long column) const { return cell_bit(row, column, kGridWordWrap); }
  void set_cell_word_wrap(long row, long column, bool value) {
    set_cell_bit(row, column, kGridWordWrap, value);
  }
  ComPtr<IPictureDisp> cell_picture(long row, long column) const;
  void set_cell_picture(long row, long column, IPictureDisp* picture);
  ComPtr<IPictureDisp> cell_picture_get(long row, long column) const {
    return cell_picture(row, column);
  }
  short cell_progress_value(long row, long column) const;
  void set_cell_progress_value(long row, long column, short value);
  bool cells_changed() const { return store_.cells_changed(); }
  void set_cells_changed(bool value) { store_.set_cells_changed(value); }
  std::wstring cell_tag(long row, long column) const;
  void set_cell_tag(long row, long column, const std::wstring& value);
  long cell_data(long row, long column) const;
  void set_cell_data(long row, long column, long value);
  std::wstring cell_text(long row, long column) const;
  void set_cell_text(long row, long column, const std::wstring& value);
  Variant cell_value(long row, long column) const;
  void set_cell_value(long row, long column, const VARIANT& value);
  void format_cells(long row_from, long row_to, long column_from, long column_to,
                    GRID_CELL_FORMAT mode, const std::wstring& value, GRID_ALIGNMENT alignment);
  void format_cells_alignment(long row_from, long row_to, long column_from, long column_to,
                              GRID_ALIGNMENT alignment);
  void reset_cell_looks();

  // us_flex_grid_move.cpp
  long row() const { return caret().row; }
  void set_row(long value) { row_col_set(value, -1); }
  long col() const { return caret().column; }
  void set_col(long value) { row_col_set(-1, value); }
  void row_col_set(long row, long column);
  void select_all_rows(bool visible_only);
  void unselect_all_rows();
  void selected_clear_all() { store_.select_range(false); }
  long selected_count() const { return store_.selected_count(); }
  long checked_count() const { return store_.checked_count(); }
  long mouse_row() const { return mouse_at_.row; }
  long mouse_col() const { return mouse_at_.column; }

  // us_flex_grid_edit.cpp
  bool edit_pending() const { return edit_pending_; }
  void force_cell_edit(long row, long column, bool blank);
  bool update_cell(bool allow_move);

  // us_flex_grid_values.cpp
  void sort(long column1, long type1, long column2, long type2);
  long find_item(const std::wstring& text, long column, GRID_SEARCH_MODE mode, bool match_case,
                 long start);
  void filter_on(const std::wstring& text, long column, GRID_SEARCH_MODE mode, bool match_case,
                 long start);
  void filter_off(long start);
  void export_grid_to_csv(const std::wstring& name, bool visible_columns, bool visible_rows,
                          bool boolean_as_text, long options);
  void fill_grid_from_query(IDispatch* records, bool add_columns, bool size_columns,
                            bool fit_columns);

 private:
  enum class Press { kNone, kCells, kRowCheck, kButton, kHeader, kColumnEdge, kRowEdge };

  /// Drawing waits until the last of these has gone.
  class Pause {
   public:
    explicit Pause(USFlexGrid& grid) : grid_(grid) { ++grid_.paused_; }
    ~Pause() {
      if (--grid_.paused_ == 0) grid_.touch();
    }
    Pause(const Pause&) = delete;

   private:
    USFlexGrid& grid_;
  };

  // us_flex_grid.cpp
  void take_ambient_defaults() override;
  void init_properties() override { ready(); }
  void properties_read() override;
  void resized() override;
  void rescaled() override { fonts_changed(); }
  void window_created() override;
  void terminate() override;
  void closing() override;
  void ambient_changed(DISPID) override { fonts_changed(); }
  void got_focus() override;
  void lost_focus() override;
  bool takes_drops() const override { return true; }
  void drag(Drag& step) override;
  FontProperty* font_property() override { return &Font; }
  const Property<bool>* enabled_property() const override { return &Enabled; }
  bool answer_check(UINT message, LRESULT& result) const;
  void ready();
  void set_fonts();
  void changed();
  void fonts_changed();
  void look_changed();
  void rules_changed();
  void enabled_changed();
  void theme_changed();
  double pixels_per_unit() const;
  double unit_text_height(FontProperty& font);

  // us_flex_grid_view.cpp
  void about_to_show() override;
  void touch();
  void show_change();
  void draw(bool on_demand);
  const grid_layout::GridPage& page();
  void lay_out_page();
  grid_layout::GridMetrics metrics();
  grid_paint::PaintLook paint_look() const;
  grid_paint::ContentsState contents_state() const;
  grid_layout::Shown shown_now(const grid_layout::GridPage& page) const;
  void measure_row(int position);
  void sync_bars();
  void page_changed();
  void ask_for_rows();
  // ScrollBarsOwner
  void BarScroll(int bar) override;
  void BarChange(int bar) override;
  void BarMouseWheel(int, long& amount) override { amount = 0; }
  void take_bar(int bar);
  bool mouse_wheel(bool horizontal, int delta, short shift) override;
  bool scroll_to(int first_row, int first_column);

  // us_flex_grid_columns.cpp
  int column_of(long column) const { return store_.resolve_column(static_cast<int>(column)); }
  int first_column() const { return store_.column_count() > 0 ? store_.column_at(0) : -1; }
  template <class Change>
  void change_column(long column, Change change);
  template <class Change>
  void change_total(long column, Change change);
  void rebuild_columns();
  void columns_moved(long to, long from);
  void size_column(int column);

  // us_flex_grid_rows.cpp
  int row_of(long row) const;
  template <class Change>
  void change_row(long row, Change change);
  bool row_bit(long row, int16_t bit) const;
  void set_row_bit(long row, int16_t bit, bool value);
  void set_row_font(long row, int16_t bit, bool value);
  void rows_changed();
  void forget_mouse();

  // us_flex_grid_cells.cpp
  std::optional<GridCellId> cell_id(long row, long column) const;
  template <class Change>
  void change_cell(long row, long column, Change change);
  template <class Change>
  void change_look(long row, long column, Change change);
  const GridLook* look_of(long row, long column) const;
  bool cell_bit(long row, long column, int16_t bit) const;
  void set_cell_bit(long row, long column, int16_t bit, bool value);

  // us_flex_grid_move.cpp
  const GridPlace& caret() const { return store_.mark(GridMark::Caret); }
  bool can_stand(int row) const;
  bool can_stand_column(int position) const;
  int next_row(int from, int step, int count) const;
  int next_column(int from, int step) const;
  void move_caret(GridPlace place);
  bool show_cell(GridPlace place);
  void select_by_caret(short shift);
  void user_moved(GridPlace place, short shift);

  // us_flex_grid_keys.cpp
  bool wants_key(int key, short shift) const override;
  bool wants_characters() const override { return true; }
  void key_down(short& key, short& shift) override;
  void key_press(short& character) override;
  void key_up(short& key, short& shift) override { raise_key_up(key, shift); }
  bool grid_key(short key, short shift);
  bool edit_key(short key, short shift);
  bool move_key(short key, short shift);
  void edge_key(bool last, short shift);
  void insert_row();
  void delete_row();
  void blank_cell();
  void space_key(short shift);
  void search_key(wchar_t character);

  // us_flex_grid_mouse.cpp
  void mouse_down(short button, short shift, float x, float y) override;
  void mouse_move(short button, short shift, float x, float y) override;
  void mouse_up(short button, short shift, float x, float y) override;
  void click() override;
  void double_click() override;
  void window_message_after(UINT message, WPARAM wparam, LPARAM lparam) override;
  bool window_message_before(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;
  long mouse_pointer() const override { return pointer_; }
  grid_layout::GridHit hit_at(float x, float y);
  grid_layout::CellParts parts_of(GridPlace place);
  void set_pointer(long pointer, bool hand);
  bool over_hand(const grid_layout::GridHit& at) const;
  bool stands_over(GridPlace place);
  bool has_expand_mark(GridPlace place, const PixelRect& text);
  const grid_paint::CellFont& font_of(const grid_paint::CellFacts& facts);
  /// The lines of a cell that wraps, in pixels within a width; -1 for a cell of one line.
  int lines_height(const grid_paint::CellFacts& facts, int width);
  void toggle_row_height(int position);
  void press_cells(const grid_layout::GridHit& hit, short button, short shift, int x, int y);
  void hover(const grid_layout::GridHit& hit);
  void drag_to(short shift, int x, int y);
  void drag_rows(int y);
  void auto_scroll();
  void release(Press press, short shift, int x, int y);
  void release_header(int x, int y);
  void release_cell(short shift, int x, int y);
  void end_press();
  bool headers_react() const;
  void toggle_row_check(int position);
  void toggle_boolean(GridPlace place);

  // us_flex_grid_edit.cpp
  bool start_edit(GridPlace place);
  bool ask_before_edit(GridPlace place);
  bool store_edit(std::wstring text);
  void after_edit_move();

  // us_flex_grid_editor.cpp
  HWND focus_target() override;
  bool edit_message(ChildEdit&, UINT message, WPARAM wparam, LPARAM lparam,
                    LRESULT& result) override;
  void edit_changed(ChildEdit&) override;
  UINT bound_key_message() const override;
  void bound_left(HWND to) override;
  void bound_gone() override;
  IDispatch* bound_to(GridPlace place) const;
  bool open_editor();
  void take_bound(GridPlace place);
  void open_bound(GridPlace place);
  bool needs_tall_box(std::wstring_view text, int16_t flags) const;
  void open_box(GridPlace place);
  void place_editor();
  void place_box(const PixelRect& seen);
  void place_tall_box(const PixelRect& seen, const PixelRect& area);
  bool in_editor(int x, int y) const;
  bool line_key(short key) const;
  void type_into_editor(wchar_t character);
  void close_editor(bool keep_focus);
  bool filter_passes(wchar_t character) const;
  void want_focus_back();
  bool take_editor_message(UINT message, WPARAM wparam, LPARAM lparam);
  bool forward_composition(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result);

  // us_flex_grid_clipboard.cpp
  bool clipboard_key(short key);
  void copy_selection();
  void paste_cells();
  bool paste_cell(GridPlace place, std::wstring_view text);

  // us_flex_grid_tips.cpp
  void watch_for_tip(GridPlace place);
  void show_cell_tip();
  void hide_cell_tip();

  // us_flex_grid_accessible.cpp
  GridChildren children() const;
  void describe(AccessibleItem& item) const override;
  void describe_heading(const GridChild& at, AccessibleItem& item) const;
  void describe_row(const GridChild& at, AccessibleItem& item) const;
  void describe_cell(const GridChild& at, AccessibleItem& item) const;
  long row_state(int position) const;
  std::wstring shown_text(int position, int column) const;
  long accessible_count() const override;
  bool accessible_item(long child, AccessibleItem& item) const override;
  long accessible_at(POINT point) const override;
  long accessible_focus() const override;
  std::vector<long> accessible_selection() const override;
  void accessible_default_action(long child) override;
  bool accessible_select(long child, long flags) override;
  bool accessible_set_value(long child, const std::wstring& text) override;
  long accessible_navigate(long child, long direction) const override;

  std::unique_ptr<LocaleRules> locale_ = system_locale_rules();
  GridStore store_;
  StoreSort sort_{store_};
  GridImages images_;
  grid_paint::GridFonts fonts_;
  bool fonts_set_ = false;
  std::wstring font_name_;
  IAPP_ScrollBars bars_{*this};
  ChildEdit box_{*this, *this};
  std::wstring box_text_;  // what the box holds while nothing was typed
  bool tall_box_ = false;
  BoundEditor bound_{*this};
  WheelNotches wheel_[2];

  grid_layout::GridPage page_;
  bool page_valid_ = false;
  grid_layout::Shown shown_;
  uint64_t revision_ = 1;        // of all that `Shown` does not tell by itself
  uint64_t shown_revision_ = 0;  // of what the surface shows
  std::vector<grid_layout::Column> columns_;
  int first_row_ = 0, first_column_ = 0;
  int default_row_height_ = 0;
  bool redraw_ = true;
  int paused_ = 0;
  bool syncing_ = false;
  bool ready_ = false;
  int32_t expand_image_ = 0;
  PrivateTimer request_timer_;
  bool asking_ = false;

  Hover hover_;
  Press press_ = Press::kNone;
  GridPlace press_at_;
  int press_x_ = 0, press_y_ = 0, last_y_ = 0;
  short press_shift_ = 0;
  int press_size_ = 0;
  int dragged_by_ = 0;
  int hovered_ = -1, pressed_header_ = -1;  // columns
  GridPlace mouse_at_;
  GridPlace pressed_button_;
  long pointer_ = 0;
  bool hand_ = false;  // the pointer is over a cell that it can press
  PrivateTimer scroll_timer_;

  bool edit_pending_ = false;
  bool committing_ = false;
  bool in_event_edit_ = false;  // BeforeEdit is being asked
  bool caret_keys_ = true;      // Left and Right may leave the box
  bool gave_focus_back_ = false;
  CTooltip cell_tip_;
  PrivateTimer tip_timer_;
  GridPlace tip_at_;
  std::wstring search_text_;
  DWORD search_tick_ = 0;
};

}  // namespace kestrelon
