// From the store to the screen: the page, what has changed on it, scroll bars and scrolling.
#include "controls/us_flex_grid/us_flex_grid.h"
#include "frame/screen.h"
#include "frame/translate_color.h"

namespace kestrelon {
namespace {

constexpr UINT kAskSoon = 1;  // milliseconds

int bar_thickness(int metric) {
  return GetSystemMetrics(metric);
}

RECT rect_of(const PixelRect& area) {
  return {area.left, area.top, area.right, area.bottom};
}

grid_paint::SystemColors system_colors() {
  return {GetSysColor(COLOR_WINDOW),    GetSysColor(COLOR_WINDOWTEXT),
          GetSysColor(COLOR_BTNFACE),   GetSysColor(COLOR_BTNTEXT),
          GetSysColor(COLOR_HIGHLIGHT), GetSysColor(COLOR_HIGHLIGHTTEXT),
          GetSysColor(COLOR_GRAYTEXT),  GetSysColor(COLOR_HOTLIGHT)};
}

}  // namespace

grid_layout::GridMetrics USFlexGrid::metrics() {
  grid_layout::MetricsInput in;
  const double unit = store_.column_count() > 0 || ready_ ? pixels_per_unit() : 1;
  in.scale = {scale().dpi()};
  in.text_height = fonts_.header().height;
  in.has_caption = !Caption.get().empty();
  in.caption_height = static_cast<double>(CaptionHeight.get()) * unit;
  in.min_row_height = static_cast<double>(MinRowHeight.get()) * unit;
  in.min_vertical_offset = static_cast<int>(MinVerticalOffset.get());
  in.grid_line_width = static_cast<int>(GridLineWidth.get());
  in.headers = ColumnHeaders.get();
  in.small_headers = ColumnHeaderSmall.get();
  in.header_lines = ColumnHeaderLines.get();
  in.row_check_boxes = RowCheckBoxes.get();
  in.any_row_image = store_.has_row_images();
  in.image_width = images_.size().width;
  in.image_height = images_.size().height;
  in.display_ellipsis = DisplayEllipsis.get();
  return grid_layout::ComputeMetrics(in);
}

grid_paint::PaintLook USFlexGrid::paint_look() const {
  grid_paint::PaintLook look;
  grid_paint::GridColors& colors = look.colors;
  const auto plain = [](const Property<OLE_COLOR>& color) { return TranslateColor(color.get()); };
  colors.back = plain(BackColor);
  colors.background = plain(BackColorBackground);
  colors.even_rows = plain(BackColorEvenRows);
  colors.selected1 = plain(BackColorSelected1);
  colors.selected2 = plain(BackColorSelected2);
  colors.fore = plain(ForeColor);
  colors.fore_selected = plain(ForeColorSelected);
  colors.fore_header = plain(ForeColorHeader);
  colors.fore_header_over = plain(ForeColorHeaderOver);
  colors.header1 = plain(HeaderGradientColor1);
  colors.header2 = plain(HeaderGradientColor2);
  colors.caption1 = plain(CaptionGradientColor1);
  colors.caption2 = plain(CaptionGradientColor2);
  colors.grid = plain(GridColor);
  colors.border = plain(BorderColor);
  colors.focus = plain(FocusRectColor);
  colors.progress1 = plain(ProgressBarColor1);
  colors.progress2 = plain(ProgressBarColor2);
  colors.progress_border = plain(ProgressBarBorderColor);
  look.theme = Theme.get();
  look.even_rows = BackColorEvenRowsEnabled.get();
  look.alpha_blend_selection = AlphaBlendSelection.get();
  look.full_row_select = FocusRowHighlight.get();
  look.keep_text_color = FocusRowHighlightKeepTextForeColor.get();
  look.row_check_boxes = RowCheckBoxes.get();
  look.center_row_image = CenterRowImage.get();
  look.selection_on_images = ApplySelectionToImages.get();
  look.headers_react = headers_react();
  look.word_wrap = AllowWordWrap.get();
  look.enabled = Enabled.get();
  look.right_to_left = right_to_left();
  look.caption_wraps = CaptionWordWrap.get();
  look.caption_alignment = CaptionAlignment.get();
  look.header_lines = ColumnHeaderLines.get();
  look.highlight = static_cast<grid_paint::HighlightStyle>(FocusRowHighlightStyle.get());
  look.lines = grid_paint::grid_lines(GridLines.get());
  look.focus_mode = static_cast<grid_paint::FocusMode>(FocusRectMode.get());
  look.focus_style = static_cast<grid_paint::FocusStyle>(FocusRectStyle.get());
  return high_contrast() ? grid_paint::high_contrast(look, system_colors()) : look;
}

grid_paint::ContentsState USFlexGrid::contents_state() const {
  grid_paint::ContentsState state;
  state.back_color = BackColor.get();
  state.fore_color = ForeColor.get();
  state.font_name = font_name_;
  state.caption = Caption.get();
  state.translate = [](uint32_t color) -> ColorRef { return TranslateColor(color); };
  state.selection_shows = (MultiSelect.get() != Single_Select || FocusRowHighlight.get()) &&
                          (!FocusRectHide.get() || focus_within());
  state.hovered_column = hovered_;
  state.pressed_column = pressed_header_;
  state.pressed_row = pressed_button_.row;
  state.pressed_button = pressed_button_.column;
  state.sort_columns[0] = sort_.column1();
  state.sort_columns[1] = sort_.column2();
  state.expand_image = expand_image_;
  state.totals = {TotalLineVisibleOnly.get(), ExactRules.get()};
  return state;
}

const grid_layout::GridPage& USFlexGrid::page() {
  if (!page_valid_) lay_out_page();
  return page_;
}

void USFlexGrid::lay_out_page() {
  set_fonts();
  columns_ = grid_layout::source_columns(store_);
  const grid_layout::SourceRows rows(store_);
  const long style = window() != nullptr ? GetWindowLongW(window(), GWL_STYLE) : 0;
  grid_layout::PageInput in;
  in.metrics = metrics();
  // Bars that show now lie outside of the client area; the layout decides anew about them.
  in.width = width() + ((style & WS_VSCROLL) != 0 ? bar_thickness(SM_CXVSCROLL) : 0);
  in.height = height() + ((style & WS_HSCROLL) != 0 ? bar_thickness(SM_CYHSCROLL) : 0);
  in.border = BorderStyle.get() != No_Border;
  in.columns = columns_;
  in.rows = &rows;
  in.freeze_at = FreezeAtCol.get();
  in.total_line = TotalLineShow.get();
  const long bars = static_cast<long>(bars_.hWnd() != nullptr ? ScrollBars.get() : Scroll_None);
  in.horizontal_bar = bars == Scroll_Horizontal || bars == Scroll_Both;
  in.vertical_bar = bars == Scroll_Vertical || bars == Scroll_Both;
  in.bar_size = bar_thickness(SM_CXVSCROLL);
  in.row_numbers = ShowRowNumbers.get();
  in.numbers_vary = ShowRowNumbersVary.get();
  in.digit_width = fonts_.header().digit_width;
  in.first_row = first_row_;
  in.first_column = first_column_;
  page_ = grid_layout::lay_out(in);
  first_row_ = page_.first_row;
  first_column_ = page_.first_column;
  page_valid_ = true;
}

grid_layout::Shown USFlexGrid::shown_now(const grid_layout::GridPage& page) const {
  grid_layout::Shown now = grid_layout::shown_page(page);
  now.look = revision_;
  for (size_t i = 0; i < now.columns.size() && i < now.headers.size(); ++i) {
    const int column = now.columns[i].store;
    now.headers[i] = column == pressed_header_ ? 3 : column == hovered_ ? 2 : 1;
  }
  const bool marked = !FocusRectHide.get() || focus_within();
  for (grid_layout::ShownRow& row : now.rows) {
    const int record = store_.row_at(row.place.position);
    row.state =
        static_cast<uint32_t>(store_.row_info(record).flags & (kGridSelected | kGridChecked));
    if (row.place.position == pressed_button_.row) row.state |= 1;
  }
  if (marked)
    now.focus =
        grid_layout::focus_rect(page, static_cast<grid_layout::FocusMode>(FocusRectMode.get()),
                                caret().row, caret().column);
  return now;
}

// Something that the store or a property holds has changed; drawn when it is next shown.
void USFlexGrid::touch() {
  ++revision_;
  page_valid_ = false;
  if (redraw_ && paused_ == 0 && ready_) invalidate();
}

// The caret, the selection or the view has moved: only what differs is drawn, at once.
void USFlexGrid::show_change() {
  page_valid_ = false;
  if (!redraw_ || paused_ != 0 || !ready_ || !surface()) return;
  sync_bars();
  draw(false);
}

void USFlexGrid::about_to_show() {
  if (!redraw_ || paused_ != 0 || !ready_ || !surface()) return;
  if (revision_ == shown_revision_) return;
  sync_bars();
  draw(true);
}

void USFlexGrid::draw(bool on_demand) {
  const grid_layout::GridPage& now = page();
  const grid_paint::PaintLook look = paint_look();
  const grid_paint::ContentsState state = contents_state();
  const grid_paint::SourceContents contents(store_, *locale_, state);
  grid_layout::Shown next = shown_now(now);
  grid_paint::GridScene scene{now, look, contents, fonts_, &images_, next.focus};
  if (press_ == Press::kHeader && dragged_by_ != 0) {
    scene.dragged = press_at_.column;
    scene.dragged_by = dragged_by_;
  }
  const bool whole = shown_revision_ != revision_ || shown_.inner != next.inner;
  const grid_layout::Damage damage =
      whole ? grid_layout::Damage{} : grid_layout::damage_between(shown_, next);
  shown_ = std::move(next);
  shown_revision_ = revision_;
  if (whole) {
    grid_paint::DrawGrid(surface(), scene, look.colors.border);
    on_demand ? surface_drawn() : surface_changed();
    page_changed();
    return;
  }
  grid_paint::draw_damage(surface(), scene, damage);
  if (damage.move_by != 0) {
    PixelRect to = damage.moved;
    to.top += damage.move_by;
    to.bottom += damage.move_by;
    surface_changed(rect_of(to));
  }
  for (const PixelRect& area : damage.draw) surface_changed(rect_of(area));
  if (!damage.draw.empty()) page_changed();
}

void USFlexGrid::page_changed() {
  if (edit_pending_) place_editor();
  const bool at_end = store_.row_count() == 0 || page_.last_row == store_.row_count() - 1;
  if (!at_end || !user_mode() || asking_ || request_timer_.running()) return;
  request_timer_.start(kAskSoon, [this] {
    const Hold hold(*this);
    request_timer_.stop();
    ask_for_rows();
  });
}

// The end of the rows is in view. Asked outside of the paint, so that a handler may do anything.
void USFlexGrid::ask_for_rows() {
  asking_ = true;
  long last = store_.row_count() == 0 ? -1 : static_cast<long>(page().last_row);
  raise_request_row_data(last);
  asking_ = false;
}

void USFlexGrid::measure_row(int position) {
  set_fonts();
  if (!AllowWordWrap.get() || !surface()) return;
  const grid_layout::GridMetrics sizes = metrics();
  const grid_paint::PaintLook look = paint_look();
  const grid_paint::ContentsState state = contents_state();
  const grid_paint::SourceContents contents(store_, *locale_, state);
  const std::vector<grid_layout::Column> columns = grid_layout::source_columns(store_);
  const int height =
      grid_paint::MeasureRowHeight({surface().dc(), sizes, look, contents, fonts_, &images_},
                                   columns, position, static_cast<int>(MaxLineCount.get()));
  store_.set_row_height(store_.row_at(position), height);
}

// --- scrolling -----------------------------------------------------------------------------------

// Bars that come or go change the client area, which asks for this again; the layout counts bars
// that show, so the second answer is the first one.
void USFlexGrid::sync_bars() {
  if (syncing_ || bars_.hWnd() == nullptr || !ready_) return;
  syncing_ = true;
  const grid_layout::GridPage& now = page();
  const bool wanted[2] = {now.horizontal_bar, now.vertical_bar};
  const ScrollRange ranges[2] = {now.horizontal, now.vertical};
  const int values[2] = {now.first_column, now.first_row};
  const int page_size = std::max(grid_layout::RowsPerPage(now.rows_room(), now.metrics.row_h), 1);
  const int pages[2] = {1, page_size};
  const long style = GetWindowLongW(window(), GWL_STYLE);
  const bool shown[2] = {(style & WS_HSCROLL) != 0, (style & WS_VSCROLL) != 0};
  for (int bar = 0; bar < 2; ++bar) {
    if (bars_.Visible(bar) != wanted[bar] || shown[bar] != wanted[bar])
      bars_.set_Visible(bar, wanted[bar]);
    if (!wanted[bar]) continue;
    if (bars_.LargeChange(bar) != pages[bar]) bars_.set_LargeChange(bar, pages[bar]);
    if (bars_.Min(bar) != ranges[bar].min) bars_.set_Min(bar, ranges[bar].min);
    if (bars_.Max(bar) != ranges[bar].max) bars_.set_Max(bar, ranges[bar].max);
    if (bars_.Value(bar) != values[bar]) bars_.set_Value(bar, values[bar]);
  }
  page_valid_ = false;
  syncing_ = false;
}

void USFlexGrid::BarScroll(int bar) {
  if (ScrollTrack.get()) take_bar(bar);
}

void USFlexGrid::BarChange(int bar) {
  take_bar(bar);
}

// A step of one goes to the next row or column that shows.
void USFlexGrid::take_bar(int bar) {
  if (syncing_) return;
  const Hold hold(*this);
  if (edit_pending_ && !update_cell(false)) return;
  const int value = static_cast<int>(bars_.Value(bar));
  const grid_layout::GridPage& now = page();
  if (bar == SB_VERT) {
    const int step = value - now.first_row;
    const grid_layout::SourceRows rows(store_);
    scroll_to(step == 1 || step == -1 ? grid_layout::stepped_row(rows, now.first_row, step) : value,
              now.first_column);
  } else {
    const int step = value - now.first_column;
    const grid_layout::ColumnStrip strip{columns_, FreezeAtCol.get(), now.number_width,
                                         now.inner.right};
    scroll_to(now.first_row, step == 1 || step == -1
                                 ? grid_layout::stepped_column(strip, now.first_column, step)
                                 : value);
  }
}

bool USFlexGrid::scroll_to(int first_row, int first_column) {
  const int row_before = page().first_row, column_before = page().first_column;
  first_row_ = std::max(first_row, 0);
  first_column_ = std::max(first_column, 0);
  page_valid_ = false;
  if (page().first_row == row_before && page().first_column == column_before) return false;
  show_change();
  raise_scroll();
  return true;
}

bool USFlexGrid::mouse_wheel(bool horizontal, int delta, short) {
  constexpr int kRowsPerNotch = 3;
  const int notches = wheel_[horizontal ? 1 : 0].add(delta);
  if (notches == 0 || (edit_pending_ && !update_cell(false))) return true;
  const grid_layout::GridPage& now = page();
  if (horizontal) {
    const grid_layout::ColumnStrip strip{columns_, FreezeAtCol.get(), now.number_width,
                                         now.inner.right};
    scroll_to(now.first_row,
              grid_layout::stepped_column(strip, now.first_column, notches < 0 ? 1 : -1));
    return true;
  }
  const grid_layout::SourceRows rows(store_);
  const int to = grid_layout::stepped_row(rows, now.first_row, notches * kRowsPerNotch);
  if (to >= 0) scroll_to(to, now.first_column);
  return true;
}

}  // namespace kestrelon
