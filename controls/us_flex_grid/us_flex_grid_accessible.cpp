// The grid as screen readers see it: headings, then each visible row followed by its cells, made
// when they are asked for, so that a million rows cost nothing before.
#include "base/decimal.h"
#include "controls/us_flex_grid/grid_children.h"
#include "controls/us_flex_grid/us_flex_grid.h"

namespace kestrelon {
namespace {

RECT rect_of(const PixelRect& area) {
  return {area.left, area.top, area.right, area.bottom};
}

constexpr long kHidden = STATE_SYSTEM_OFFSCREEN | STATE_SYSTEM_INVISIBLE;

}  // namespace

void USFlexGrid::describe(AccessibleItem& item) const {
  item.role = ROLE_SYSTEM_TABLE;
  item.state = STATE_SYSTEM_FOCUSABLE;
  if (MultiSelect.get() != Single_Select)
    item.state |= STATE_SYSTEM_MULTISELECTABLE | STATE_SYSTEM_EXTSELECTABLE;
  name_after(item, Caption.get());
  if (caret().row >= 0 && caret().column >= 0) item.value = cell_text(-1, -1);
}

GridChildren USFlexGrid::children() const {
  GridChildren out;
  for (int i = 0; i < store_.column_count(); ++i)
    if (store_.column(store_.column_at(i)).visible) out.columns.push_back(i);
  out.rows = store_.visible_count();
  return out;
}

long USFlexGrid::accessible_count() const {
  return children().count();
}

bool USFlexGrid::accessible_item(long child, AccessibleItem& item) const {
  if (child == CHILDID_SELF) return ControlFrame::accessible_item(child, item);
  const GridChild at = children().at(child);
  switch (at.kind) {
    case GridChild::kHeading:
      describe_heading(at, item);
      return true;
    case GridChild::kRow:
      describe_row(at, item);
      return true;
    case GridChild::kCell:
      describe_cell(at, item);
      return true;
    default:
      return false;
  }
}

void USFlexGrid::describe_heading(const GridChild& at, AccessibleItem& item) const {
  const int column = store_.column_at(at.column);
  item.role = ROLE_SYSTEM_COLUMNHEADER;
  item.name = store_.column(column).heading;
  if (AllowColumnSort.get()) item.default_action = L"Classificar";
  if (sort_.column1() == column || sort_.column2() == column)
    item.value = store_.column(column).sort_state == GridSortState::Ascending ? L"crescente"
                                                                              : L"decrescente";
  const grid_layout::GridPage& now = const_cast<USFlexGrid&>(*this).page();
  const grid_layout::PlacedColumn* const place = now.column(at.column);
  if (place == nullptr || now.header.empty())
    item.state |= kHidden;
  else
    item.place = {place->left, now.header.top, place->right(), now.header.bottom};
}

void USFlexGrid::describe_row(const GridChild& at, AccessibleItem& item) const {
  const int position = store_.visible_at(at.rank);
  const GridRowInfo info = store_.row_info(store_.row_at(position));
  item.role = ROLE_SYSTEM_ROW;
  item.name = L"Linha " + decimal_text(at.rank + 1);
  for (const int column : children().columns) {
    if (!item.value.empty()) item.value += L"; ";
    item.value += shown_text(position, store_.column_at(column));
  }
  item.description = decimal_text(at.rank + 1) + L" de " + decimal_text(store_.visible_count());
  item.default_action = L"Selecionar";
  item.state |= row_state(position);
  if (info.has(kGridChecked)) item.state |= STATE_SYSTEM_CHECKED;
  const grid_layout::GridPage& now = const_cast<USFlexGrid&>(*this).page();
  const grid_layout::PlacedRow* const place = now.row(position);
  if (place == nullptr)
    item.state |= kHidden;
  else
    item.place = {now.inner.left, place->top, now.columns_right, place->bottom()};
}

// Selected, and able to be so.
long USFlexGrid::row_state(int position) const {
  if (!can_stand(position)) return STATE_SYSTEM_UNAVAILABLE;
  long state = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
  if (store_.row_info(store_.row_at(position)).has(kGridSelected)) state |= STATE_SYSTEM_SELECTED;
  return state;
}

void USFlexGrid::describe_cell(const GridChild& at, AccessibleItem& item) const {
  const int position = store_.visible_at(at.rank), column = store_.column_at(at.column);
  const GridColumn& spec = store_.column(column);
  item.role = ROLE_SYSTEM_CELL;
  item.name = spec.heading;
  item.value = shown_text(position, column);
  item.description = L"Linha " + decimal_text(at.rank + 1);
  item.state |= row_state(position);
  if (position == caret().row && at.column == caret().column && focus_within())
    item.state |= STATE_SYSTEM_FOCUSED;
  if (spec.locked || !AllowEdit.get()) item.state |= STATE_SYSTEM_READONLY;
  item.default_action = AllowEdit.get() && !spec.locked ? L"Editar" : L"Selecionar";
  if (spec.type == GridDataType::Boolean) {
    const bool checked = store_.checked(store_.row_at(position), column);
    item.value = checked ? L"Sim" : L"Não";
    if (checked) item.state |= STATE_SYSTEM_CHECKED;
    item.default_action = checked ? L"Desmarcar" : L"Marcar";
  }
  if (spec.type == GridDataType::Button) item.default_action = L"Pressionar";
  const grid_layout::GridPage& now = const_cast<USFlexGrid&>(*this).page();
  const grid_layout::PlacedRow* const row = now.row(position);
  const grid_layout::PlacedColumn* const place = now.column(at.column);
  if (row == nullptr || place == nullptr)
    item.state |= kHidden;
  else
    item.place = rect_of(grid_layout::cell_rect(*place, *row));
}

std::wstring USFlexGrid::shown_text(int position, int column) const {
  const grid_paint::ContentsState state = contents_state();
  const grid_paint::SourceContents contents(store_, *locale_, state);
  grid_paint::CellFacts facts;
  contents.cell(position, column, facts);
  return std::wstring(facts.text);
}

long USFlexGrid::accessible_at(POINT point) const {
  auto& self = const_cast<USFlexGrid&>(*this);
  const grid_layout::GridHit hit =
      self.hit_at(static_cast<float>(point.x), static_cast<float>(point.y));
  const GridChildren all = children();
  if (hit.row >= 0) return all.cell(store_.visible_before(hit.row), hit.column);
  const bool heading =
      hit.part == grid_layout::GridPart::kHeader || hit.part == grid_layout::GridPart::kColumnEdge;
  return heading && hit.column >= 0 ? all.heading(hit.column) : CHILDID_SELF;
}

long USFlexGrid::accessible_focus() const {
  if (caret().row < 0 || caret().row >= store_.row_count()) return CHILDID_SELF;
  if (!store_.row_info(store_.row_at(caret().row)).visible) return CHILDID_SELF;
  return children().cell(store_.visible_before(caret().row), caret().column);
}

std::vector<long> USFlexGrid::accessible_selection() const {
  std::vector<long> out;
  if (store_.selected_count() == 0) return out;
  const GridChildren all = children();
  for (int rank = 0; rank < store_.visible_count(); ++rank)
    if (store_.row_info(store_.row_at(store_.visible_at(rank))).has(kGridSelected))
      out.push_back(all.cell(rank, -1));
  return out;
}

void USFlexGrid::accessible_default_action(long child) {
  const GridChild at = children().at(child);
  if (at.kind == GridChild::kNone) return;
  if (at.kind == GridChild::kHeading) {
    if (AllowColumnSort.get()) sort(store_.column_at(at.column), -1, -1, -1);
    return;
  }
  const int position = store_.visible_at(at.rank);
  user_moved({position, at.kind == GridChild::kCell ? at.column : caret().column}, 0);
  if (at.kind != GridChild::kCell || caret() != GridPlace{position, at.column}) return;
  long row = position, column = store_.column_at(at.column);
  const GridDataType type = store_.column(static_cast<int>(column)).type;
  if (type == GridDataType::Boolean) return toggle_boolean(caret());
  if (type == GridDataType::Button) return raise_cell_button_click(row, column);
  start_edit(caret());
}

bool USFlexGrid::accessible_select(long child, long flags) {
  const GridChild at = children().at(child);
  if (at.kind != GridChild::kRow && at.kind != GridChild::kCell) return false;
  const int position = store_.visible_at(at.rank);
  if (!can_stand(position) || (edit_pending_ && !update_cell(false))) return false;
  const bool removes = (flags & SELFLAG_REMOVESELECTION) != 0;
  const bool adds = (flags & SELFLAG_ADDSELECTION) != 0 && MultiSelect.get() != Single_Select;
  if (removes || adds) {
    set_row_selected(position, adds);
    raise_selection_changed();
    return true;
  }
  user_moved({position, at.kind == GridChild::kCell ? at.column : caret().column}, 0);
  return true;
}

bool USFlexGrid::accessible_set_value(long child, const std::wstring& text) {
  const GridChild at = children().at(child);
  if (at.kind != GridChild::kCell || !AllowEdit.get()) return false;
  if (edit_pending_ && !update_cell(false)) return false;
  const GridPlace place{store_.visible_at(at.rank), at.column};
  return can_stand(place.row) && can_stand_column(place.column) && paste_cell(place, text);
}

// Up and down stay in the column, left and right in the row.
long USFlexGrid::accessible_navigate(long child, long direction) const {
  const GridChildren all = children();
  const GridChild at = all.at(child);
  const long stride = all.stride();
  if (direction == NAVDIR_UP && at.kind != GridChild::kNone)
    return at.rank > 0 ? child - stride : at.kind == GridChild::kCell ? all.heading(at.column) : 0;
  if (direction == NAVDIR_DOWN && at.kind != GridChild::kNone) {
    if (at.kind == GridChild::kHeading) return all.rows > 0 ? all.cell(0, at.column) : 0;
    return at.rank + 1 < all.rows ? child + stride : 0;
  }
  return ControlFrame::accessible_navigate(child, direction);
}

}  // namespace kestrelon
