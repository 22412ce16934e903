// Members that make, change and remove rows.
#include "controls/us_flex_grid/us_flex_grid.h"

namespace kestrelon {
namespace {

constexpr int kOverflow = 6;  // the number of Basic's error for too many looks

}  // namespace

int USFlexGrid::row_of(long row) const {
  const int position = store_.resolve_row(static_cast<int>(row));
  return position < 0 ? -1 : store_.row_at(position);
}

template <class Change>
void USFlexGrid::change_row(long row, Change change) {
  const int record = row_of(row);
  if (record < 0) return;
  change(record);
  touch();
}

long USFlexGrid::add_item(const std::wstring& item, long row, bool checked, bool mark_as_new,
                          bool locked, bool visible, long data) {
  if (store_.column_count() == 0)
    add_column(L"", 500, AlignToLeftCenter, TypeString, L"", L"", AlignToLeftCenter, false, 0, true,
               false);
  GridNewRow spec;
  spec.position = static_cast<int>(row);
  spec.checked = checked;
  spec.added_new = mark_as_new;
  spec.locked = locked;
  spec.visible = visible;
  spec.data = static_cast<int32_t>(data);
  const int position = store_.add_item(item, spec);
  if (position == GridStore::kNoRoomForLook) throw ComError(numbered_error(kOverflow));
  if (AllowWordWrap.get()) measure_row(position);
  rows_changed();
  return position;
}

void USFlexGrid::rows_changed() {
  forget_mouse();
  touch();
  raise_row_count_changed();
}

// What the mouse holds is gone or somewhere else.
void USFlexGrid::forget_mouse() {
  mouse_at_ = {};
  pressed_button_ = {};
  if (press_ == Press::kCells || press_ == Press::kButton || press_ == Press::kRowEdge) end_press();
}

void USFlexGrid::remove_row(long row) {
  if (store_.row_count() == 0) return;
  const int position = row < 0 ? caret().row : store_.resolve_row(static_cast<int>(row));
  if (position < 0) return;
  const bool selected = row_bit(position, kGridSelected);
  if (edit_pending_ && store_.mark(GridMark::Edit).row == position) close_editor(true);
  store_.remove_row(position);
  bool selection_told = false;
  if (selected && store_.row_count() > 0) {
    if (MultiSelect.get() == Single_Select) {
      const int next = std::min(position, store_.row_count() - 1);
      store_.set_row_bit(store_.row_at(next), kGridSelected, true);
    } else {
      selection_told = true;
    }
  }
  if (selection_told) raise_selection_changed();
  rows_changed();
}

void USFlexGrid::delete_selected() {
  if (MultiSelect.get() == Single_Select) return remove_row(-1);
  close_editor(true);
  if (store_.remove_selected() == 0) return;
  if (store_.row_count() > 0) store_.set_mark(GridMark::Caret, {0, 0});
  raise_selection_changed();
  rows_changed();
}

void USFlexGrid::clear() {
  close_editor(true);
  store_.clear();
  first_row_ = first_column_ = 0;
  forget_mouse();
  touch();
}

void USFlexGrid::clear_ex(bool force_fit) {
  if (store_.row_count() == 0) return;
  clear();
  if (force_fit) columns_force_fit();
}

void USFlexGrid::clear_all() {
  close_editor(true);
  store_.clear_all();
  sort_.reset();
  hovered_ = pressed_header_ = -1;
  end_press();
  clear();
}

bool USFlexGrid::row_bit(long row, int16_t bit) const {
  const int record = row_of(row);
  return record >= 0 && store_.row_info(record).has(bit);
}
void USFlexGrid::set_row_bit(long row, int16_t bit, bool value) {
  change_row(row, [&](int record) { store_.set_row_bit(record, bit, value); });
}

long USFlexGrid::row_data(long row) const {
  const int record = row_of(row);
  return record < 0 ? 0L : static_cast<long>(store_.row_data(record));
}
void USFlexGrid::set_row_data(long row, long value) {
  const int record = row_of(row);
  if (record >= 0) store_.set_row_data(record, static_cast<int32_t>(value));
}

bool USFlexGrid::row_group_header(long row) const {
  const int record = row_of(row);
  return record >= 0 && store_.row_info(record).group_header;
}
void USFlexGrid::set_row_group_header(long row, bool value) {
  change_row(row, [&](int record) { store_.set_group_header(record, value); });
}

long USFlexGrid::row_height(long row) const {
  const int record = row_of(row);
  return record < 0 ? 0L : static_cast<long>(store_.row_info(record).height);
}
void USFlexGrid::set_row_height(long row, long value) {
  const int position = store_.resolve_row(static_cast<int>(row));
  if (position < 0) return;
  if (value < 0) {
    measure_row(position);
  } else {
    store_.set_row_height(store_.row_at(position), static_cast<int>(value));
  }
  touch();
}

Variant USFlexGrid::row_image(long row) const {
  const int record = row_of(row);
  return images_.shown(record < 0 ? 0 : store_.row_info(record).image);
}
void USFlexGrid::set_row_image(long row, const VARIANT& image) {
  const int32_t number = images_.number_of(image);
  change_row(row, [&](int record) { store_.set_row_image(record, number); });
}

std::wstring USFlexGrid::row_tag(long row) const {
  const int record = row_of(row);
  return record < 0 ? std::wstring() : std::wstring(store_.row_tag(record));
}
void USFlexGrid::set_row_tag(long row, const std::wstring& value) {
  const int record = row_of(row);
  if (record >= 0) store_.set_row_tag(record, value);
}

bool USFlexGrid::row_visible(long row) const {
  const int record = row_of(row);
  return record >= 0 && store_.row_info(record).visible;
}
void USFlexGrid::set_row_visible(long row, bool value) {
  const int position = store_.resolve_row(static_cast<int>(row));
  if (position >= 0 && store_.set_row_visible(position, value)) touch();
}

void USFlexGrid::set_row_back_color(long row, OLE_COLOR value) {
  const int position = store_.resolve_row(static_cast<int>(row));
  if (position < 0) return;
  store_.change_look({position, position, 0, -1}, [&](GridLook& look) { look.back_color = value; });
  touch();
}

void USFlexGrid::set_row_fore_color(long row, OLE_COLOR value) {
  const int position = store_.resolve_row(static_cast<int>(row));
  if (position < 0) return;
  store_.change_look({position, position, 0, -1}, [&](GridLook& look) { look.fore_color = value; });
  touch();
}

void USFlexGrid::set_row_font(long row, int16_t bit, bool value) {
  change_row(row, [&](int record) {
    for (int i = 0; i < store_.column_count(); ++i)
      if (store_.column(i).type != GridDataType::ProgressBar)
        store_.set_cell_bit(record, i, bit, value);
  });
}

}  // namespace kestrelon
