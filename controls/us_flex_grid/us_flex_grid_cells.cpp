// Members that read and change cells.
#include "controls/us_flex_grid/us_flex_grid.h"

namespace kestrelon {
namespace {

constexpr int kOverflow = 6;  // the number of Basic's error for too many looks

void demand(bool room) {
  if (!room) throw ComError(numbered_error(kOverflow));
}

Variant variant_of(const GridValue& value) {
  Variant out;
  if (const auto* text = std::get_if<std::wstring>(&value))
    return Variant(std::wstring_view(*text));
  if (const auto* number = std::get_if<double>(&value)) return Variant(*number);
  if (const auto* flag = std::get_if<bool>(&value)) return Variant(*flag);
  V_VT(&out) = VT_DATE;
  V_DATE(&out) = std::get<GridDate>(value).value;
  return out;
}

GridValue value_of(const VARIANT& given) {
  Variant plain;
  VariantCopyInd(&plain, const_cast<VARIANT*>(&given));
  switch (V_VT(&plain)) {
    case VT_BOOL:
      return V_BOOL(&plain) != VARIANT_FALSE;
    case VT_DATE:
      return GridDate{V_DATE(&plain)};
    case VT_I1:
    case VT_I2:
    case VT_I4:
    case VT_UI1:
    case VT_UI2:
    case VT_UI4:
    case VT_I8:
    case VT_UI8:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_R8:
    case VT_CY:
    case VT_DECIMAL:
      if (plain.change(VT_R8)) return V_R8(&plain);
      break;
    case VT_EMPTY:
    case VT_NULL:
      return std::wstring();
    default:
      break;
  }
  if (!plain.change(VT_BSTR)) throw ComError(DISP_E_TYPEMISMATCH);
  return to_wstring(V_BSTR(&plain));
}

}  // namespace

std::optional<GridCellId> USFlexGrid::cell_id(long row, long column) const {
  return store_.resolve(static_cast<int>(row), static_cast<int>(column));
}

template <class Change>
void USFlexGrid::change_cell(long row, long column, Change change) {
  const auto id = cell_id(row, column);
  if (!id) return;
  change(id->row, id->column);
  touch();
}

template <class Change>
void USFlexGrid::change_look(long row, long column, Change change) {
  const auto id = cell_id(row, column);
  if (!id) return;
  const int position = store_.resolve_row(static_cast<int>(row));
  demand(store_.change_look({position, position, id->column, id->column}, change));
  touch();
}

const GridLook* USFlexGrid::look_of(long row, long column) const {
  const auto id = cell_id(row, column);
  return id ? &store_.look(store_.cell(id->row, id->column).style) : nullptr;
}

bool USFlexGrid::cell_bit(long row, long column, int16_t bit) const {
  const auto id = cell_id(row, column);
  return id && (store_.cell(id->row, id->column).flags & bit) != 0;
}
void USFlexGrid::set_cell_bit(long row, long column, int16_t bit, bool value) {
  change_cell(row, column, [&](int r, int c) { store_.set_cell_bit(r, c, bit, value); });
}

GRID_ALIGNMENT USFlexGrid::cell_alignment(long row, long column) const {
  const auto id = cell_id(row, column);
  return id ? static_cast<GRID_ALIGNMENT>(store_.cell(id->row, id->column).alignment)
            : AlignToLeftTop;
}
void USFlexGrid::set_cell_alignment(long row, long column, GRID_ALIGNMENT value) {
  change_cell(row, column,
              [&](int r, int c) { store_.set_alignment(r, c, static_cast<GridAlignment>(value)); });
}

OLE_COLOR USFlexGrid::cell_back_color(long row, long column) const {
  const GridLook* const look = look_of(row, column);
  return look == nullptr ? 0 : look->back_color;
}
void USFlexGrid::set_cell_back_color(long row, long column, OLE_COLOR value) {
  change_look(row, column, [&](GridLook& look) { look.back_color = value; });
}

OLE_COLOR USFlexGrid::cell_fore_color(long row, long column) const {
  const GridLook* const look = look_of(row, column);
  return look == nullptr ? 0 : look->fore_color;
}
void USFlexGrid::set_cell_fore_color(long row, long column, OLE_COLOR value) {
  change_look(row, column, [&](GridLook& look) { look.fore_color = value; });
}

std::wstring USFlexGrid::cell_font_name(long row, long column) const {
  const GridLook* const look = look_of(row, column);
  return look == nullptr ? std::wstring() : look->font_name;
}
void USFlexGrid::set_cell_font_name(long row, long column, const std::wstring& value) {
  change_look(row, column, [&](GridLook& look) { look.font_name = value; });
}

bool USFlexGrid::cell_hand_pointer(long row, long column) const {
  const GridLook* const look = look_of(row, column);
  return look != nullptr && look->hand_pointer;
}
void USFlexGrid::set_cell_hand_pointer(long row, long column, bool value) {
  change_look(row, column, [&](GridLook& look) { look.hand_pointer = value; });
}

Variant USFlexGrid::cell_image(long row, long column) const {
  const GridLook* const look = look_of(row, column);
  return images_.shown(look == nullptr ? 0 : look->image);
}
void USFlexGrid::set_cell_image(long row, long column, const VARIANT& image) {
  const auto number = static_cast<int16_t>(images_.number_of(image));
  change_look(row, column, [&](GridLook& look) { look.image = number; });
}

bool USFlexGrid::cell_checked(long row, long column) const {
  const auto id = cell_id(row, column);
  return id && store_.checked(id->row, id->column);
}
void USFlexGrid::set_cell_checked(long row, long column, bool value) {
  change_cell(row, column, [&](int r, int c) { store_.set_checked(r, c, value); });
}

ComPtr<IPictureDisp> USFlexGrid::cell_picture(long row, long column) const {
  const auto id = cell_id(row, column);
  if (!id) return nullptr;
  return ComPtr<IPictureDisp>(
      static_cast<IPictureDisp*>(store_.picture(id->row, id->column).get()));
}
void USFlexGrid::set_cell_picture(long row, long column, IPictureDisp* picture) {
  GridObject object;
  if (picture != nullptr) {
    picture->AddRef();
    object = GridObject(picture, [](void* held) { static_cast<IPictureDisp*>(held)->Release(); });
  }
  change_cell(row, column, [&](int r, int c) { store_.set_picture(r, c, std::move(object)); });
}

short USFlexGrid::cell_progress_value(long row, long column) const {
  const auto id = cell_id(row, column);
  return id ? store_.progress(id->row, id->column) : short{0};
}
void USFlexGrid::set_cell_progress_value(long row, long column, short value) {
  change_cell(row, column, [&](int r, int c) { store_.set_progress(r, c, value); });
}

std::wstring USFlexGrid::cell_tag(long row, long column) const {
  const auto id = cell_id(row, column);
  return id ? std::wstring(store_.cell_tag(id->row, id->column)) : std::wstring();
}
void USFlexGrid::set_cell_tag(long row, long column, const std::wstring& value) {
  if (const auto id = cell_id(row, column)) store_.set_cell_tag(id->row, id->column, value);
}

long USFlexGrid::cell_data(long row, long column) const {
  const auto id = cell_id(row, column);
  return id ? static_cast<long>(store_.cell_data(id->row, id->column)) : 0L;
}
void USFlexGrid::set_cell_data(long row, long column, long value) {
  if (const auto id = cell_id(row, column))
    store_.set_cell_data(id->row, id->column, static_cast<int32_t>(value));
}

std::wstring USFlexGrid::cell_text(long row, long column) const {
  const auto id = cell_id(row, column);
  return id ? std::wstring(store_.text(id->row, id->column)) : std::wstring();
}
void USFlexGrid::set_cell_text(long row, long column, const std::wstring& value) {
  const int position = store_.resolve_row(static_cast<int>(row));
  change_cell(row, column, [&](int r, int c) {
    store_.set_text(r, c, value);
    measure_row(position);
  });
}

Variant USFlexGrid::cell_value(long row, long column) const {
  const auto id = cell_id(row, column);
  if (!id) return {};
  return variant_of(kestrelon::cell_value(store_.text(id->row, id->column),
                                          store_.checked(id->row, id->column),
                                          store_.column(id->column).type, *locale_));
}
void USFlexGrid::set_cell_value(long row, long column, const VARIANT& value) {
  set_cell_text(row, column, text_of_value(value_of(value), *locale_));
}

void USFlexGrid::format_cells(long row_from, long row_to, long column_from, long column_to,
                              GRID_CELL_FORMAT mode, const std::wstring& value,
                              GRID_ALIGNMENT alignment) {
  const GridRange range{static_cast<int>(row_from), static_cast<int>(row_to),
                        static_cast<int>(column_from), static_cast<int>(column_to)};
  demand(store_.format_cells(range, static_cast<GridCellFormat>(mode), value,
                             static_cast<GridAlignment>(alignment)));
  touch();
}

void USFlexGrid::format_cells_alignment(long row_from, long row_to, long column_from,
                                        long column_to, GRID_ALIGNMENT alignment) {
  format_cells(row_from, row_to, column_from, column_to, Format_Alignment, L"", alignment);
}

void USFlexGrid::reset_cell_looks() {
  demand(store_.reset_looks());
  touch();
}

}  // namespace kestrelon
