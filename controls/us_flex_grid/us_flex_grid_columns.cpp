// Members that make and change columns and their totals.
#include "controls/us_flex_grid/us_flex_grid.h"
#include "grid/store/header_format.h"
#include "grid/values/total_line.h"

namespace kestrelon {

template <class Change>
void USFlexGrid::change_column(long column, Change change) {
  const int index = column_of(column);
  if (index < 0) return;
  change(store_.edit_column(index));
  touch();
}

template <class Change>
void USFlexGrid::change_total(long column, Change change) {
  const int index = column_of(column);
  if (index < 0) return;
  change(store_.edit_total_line(index));
  touch();
}

long USFlexGrid::add_column(const std::wstring& caption, double width, GRID_ALIGNMENT alignment,
                            GRID_DATA_TYPE type, const std::wstring& format,
                            const std::wstring& filter, GRID_ALIGNMENT image_alignment,
                            bool word_wrap, long index, bool visible, bool locked) {
  GridNewColumn spec;
  spec.heading = caption;
  spec.width = width;
  spec.alignment = static_cast<GridAlignment>(alignment);
  spec.type = static_cast<GridDataType>(type);
  spec.format = format;
  spec.input_filter = filter;
  spec.image_alignment = static_cast<GridAlignment>(image_alignment);
  spec.word_wrap = word_wrap;
  spec.position = static_cast<int>(index);
  spec.visible = visible;
  spec.locked = locked;
  store_.set_scale(pixels_per_unit());
  const int made = store_.add_column(std::move(spec));
  touch();
  return made;
}

std::wstring USFlexGrid::header_format_string() const {
  if (!HeaderFormatString.get().empty()) return HeaderFormatString.get();
  return build_header_format(store_, ExactRules.get());
}

void USFlexGrid::set_header_format_string(const std::wstring& text) {
  HeaderFormatString.put(text);
  if (user_mode()) rebuild_columns();
}

void USFlexGrid::rebuild_columns() {
  const Pause pause(*this);
  close_editor(true);
  store_.clear_all();
  sort_.reset();
  store_.set_scale(pixels_per_unit());
  for (GridNewColumn& spec : parse_header_format(HeaderFormatString.get()))
    store_.add_column(std::move(spec));
  first_row_ = first_column_ = 0;
  forget_mouse();
}

void USFlexGrid::bind_control(long column, IDispatch* control, long move_control) {
  const int index = column_of(column);
  if (index < 0) return;
  GridObject object;
  if (control != nullptr) {
    control->AddRef();
    object = GridObject(control, [](void* held) { static_cast<IDispatch*>(held)->Release(); });
  }
  GridColumn& target = store_.edit_column(index);
  target.move_control = static_cast<int16_t>(move_control);
  std::swap(target.bound_control, object);  // the former one goes last
}

GRID_ALIGNMENT USFlexGrid::col_alignment(long column) const {
  const int index = column_of(column);
  return index < 0 ? AlignToLeftTop : static_cast<GRID_ALIGNMENT>(store_.column(index).alignment);
}
void USFlexGrid::set_col_alignment(long column, GRID_ALIGNMENT value) {
  change_column(column, [&](GridColumn& to) { to.alignment = static_cast<GridAlignment>(value); });
}

std::wstring USFlexGrid::col_format(long column) const {
  const int index = column_of(column);
  return index < 0 ? std::wstring() : store_.column(index).format;
}
void USFlexGrid::set_col_format(long column, const std::wstring& value) {
  change_column(column, [&](GridColumn& to) { to.format = value; });
}

std::wstring USFlexGrid::col_heading(long column) const {
  const int index = column_of(column);
  return index < 0 ? std::wstring() : store_.column(index).heading;
}
void USFlexGrid::set_col_heading(long column, const std::wstring& value) {
  change_column(column, [&](GridColumn& to) { to.heading = value; });
}

GRID_ALIGNMENT USFlexGrid::col_image_alignment(long column) const {
  const int index = column_of(column);
  return index < 0 ? AlignToLeftTop
                   : static_cast<GRID_ALIGNMENT>(store_.column(index).image_alignment);
}
void USFlexGrid::set_col_image_alignment(long column, GRID_ALIGNMENT value) {
  change_column(column,
                [&](GridColumn& to) { to.image_alignment = static_cast<GridAlignment>(value); });
}

std::wstring USFlexGrid::col_input_filter(long column) const {
  const int index = column_of(column);
  return index < 0 ? std::wstring() : store_.column(index).input_filter;
}
void USFlexGrid::set_col_input_filter(long column, const std::wstring& value) {
  change_column(column, [&](GridColumn& to) { to.input_filter = value; });
}

bool USFlexGrid::col_locked(long column) const {
  const int index = column_of(column);
  return index >= 0 && store_.column(index).locked;
}
void USFlexGrid::set_col_locked(long column, bool value) {
  change_column(column, [&](GridColumn& to) { to.locked = value; });
}

std::wstring USFlexGrid::col_tag(long column) const {
  const int index = column_of(column);
  return index < 0 ? std::wstring() : store_.column(index).tag;
}
void USFlexGrid::set_col_tag(long column, const std::wstring& value) {
  change_column(column, [&](GridColumn& to) { to.tag = value; });
}

GRID_DATA_TYPE USFlexGrid::col_type(long column) const {
  const int index = column_of(column);
  return index < 0 ? TypeString : static_cast<GRID_DATA_TYPE>(store_.column(index).type);
}
void USFlexGrid::set_col_type(long column, GRID_DATA_TYPE value) {
  change_column(column, [&](GridColumn& to) { to.type = static_cast<GridDataType>(value); });
}

bool USFlexGrid::col_visible(long column) const {
  const int index = column_of(column);
  return index >= 0 && store_.column(index).visible;
}
void USFlexGrid::set_col_visible(long column, bool value) {
  change_column(column, [&](GridColumn& to) { to.visible = value; });
}

float USFlexGrid::col_width(long column) const {
  const int index = column_of(column);
  return index < 0 ? 0.0f : store_.column(index).width;
}
void USFlexGrid::set_col_width(long column, float value) {
  const int index = column_of(column);
  if (index < 0) return;
  store_.set_column_width(index, static_cast<double>(value));
  touch();
}

bool USFlexGrid::col_word_wrap(long column) const {
  const int index = column_of(column);
  return index >= 0 && (store_.column(index).flags & kGridWordWrap) != 0;
}
void USFlexGrid::set_col_word_wrap(long column, bool value) {
  change_column(column, [&](GridColumn& to) { to.flags = value ? kGridWordWrap : int16_t{0}; });
}

void USFlexGrid::columns_force_fit() {
  store_.fit_columns(static_cast<double>(visible_width()));
  touch();
}

void USFlexGrid::set_column_width_auto_size(long column) {
  if (column >= 0) {
    if (column < store_.column_count()) size_column(static_cast<int>(column));
  } else {
    for (int i = 0; i < store_.column_count(); ++i) size_column(i);
  }
  touch();
}

void USFlexGrid::size_column(int column) {
  set_fonts();
  const grid_layout::GridMetrics sizes = metrics();
  const grid_paint::PaintLook look = paint_look();
  const grid_paint::ContentsState state = contents_state();
  const grid_paint::SourceContents contents(store_, *locale_, state);
  const std::vector<grid_layout::Column> columns = grid_layout::source_columns(store_);
  const int first = grid_layout::next_visible_column(columns, 0);
  const bool leads = first < store_.column_count() && store_.column_at(first) == column;
  const HDC dc = CreateCompatibleDC(nullptr);
  const int width = grid_paint::auto_column_width({dc, sizes, look, contents, fonts_, &images_},
                                                  column, store_.row_count(), leads);
  DeleteDC(dc);
  store_.set_column_width_pixels(column, width);
}

void USFlexGrid::restore_column_order() {
  store_.restore_column_order();
  columns_moved(0, 0);
}

void USFlexGrid::columns_moved(long to, long from) {
  touch();
  raise_column_order_changed(to, from);
}

double USFlexGrid::total_columns(long column) const {
  const int index = column_of(column);
  return index < 0 ? 0.0 : store_.total(index, TotalLineVisibleOnly.get());
}

long USFlexGrid::total_line_col_alignment(long column) const {
  const int index = column_of(column);
  return index < 0 ? 0L : static_cast<long>(store_.total_line(index).alignment);
}
void USFlexGrid::set_total_line_col_alignment(long column, long value) {
  change_total(column, [&](GridTotalLine& to) { to.alignment = static_cast<int32_t>(value); });
}

bool USFlexGrid::total_line_col_invisible(long column) const {
  const int index = column_of(column);
  return index >= 0 && store_.total_line(index).invisible;
}
void USFlexGrid::set_total_line_col_invisible(long column, bool value) {
  change_total(column, [&](GridTotalLine& to) { to.invisible = value; });
}

OLE_COLOR USFlexGrid::total_line_fore_color(long column) const {
  const int index = column_of(column);
  return index < 0 ? 0 : store_.total_line(index).fore_color;
}
void USFlexGrid::set_total_line_fore_color(long column, OLE_COLOR value) {
  change_total(column, [&](GridTotalLine& to) { to.fore_color = value; });
}

std::wstring USFlexGrid::total_line_caption(long column) const {
  const int index = column_of(column);
  return index < 0 ? std::wstring() : store_.total_line(index).caption;
}
void USFlexGrid::set_total_line_caption(long column, const std::wstring& value) {
  change_total(column, [&](GridTotalLine& to) { to.caption = value; });
}

bool USFlexGrid::total_line_col_avg(long column) const {
  const int index = column_of(column);
  return index >= 0 && store_.total_line(index).average;
}
void USFlexGrid::set_total_line_col_avg(long column, bool value) {
  change_total(column, [&](GridTotalLine& to) { to.average = value; });
}

}  // namespace kestrelon
