// A text that does not fit shows whole in a tip, once the pointer has rested on its cell.
#include "controls/us_flex_grid/us_flex_grid.h"

namespace kestrelon {
namespace {

constexpr UINT kRest = 1500;  // milliseconds
constexpr OLE_COLOR kTipBack = 0x80000018;

}  // namespace

void USFlexGrid::watch_for_tip(GridPlace place) {
  hide_cell_tip();
  if (place.row < 0 || place.column < 0 || !AutoToolTips.get() || edit_pending_ || !user_mode())
    return;
  const int record = store_.row_at(place.row), column = store_.column_at(place.column);
  if (store_.column(column).type == GridDataType::Boolean || store_.text(record, column).empty())
    return;
  tip_at_ = place;
  tip_timer_.start(kRest, [this] { show_cell_tip(); });
}

void USFlexGrid::show_cell_tip() {
  const Hold hold(*this);
  tip_timer_.stop();
  const GridPlace at = tip_at_;
  // The rows may have moved under a pointer that rests.
  if (at != mouse_at_ || edit_pending_ || window() == nullptr || !pointer_over_window()) return;
  if (!stands_over(at)) return;
  const grid_paint::ContentsState state = contents_state();
  const grid_paint::SourceContents contents(store_, *locale_, state);
  grid_paint::CellFacts facts;
  contents.cell(at.row, store_.column_at(at.column), facts);
  const PixelRect text = parts_of(at).text;
  cell_tip_.set_TipText(std::wstring(facts.text));
  cell_tip_.BackColor = kTipBack;
  POINT place{text.left, text.top};
  if (!cell_tip_.Create(window()) || !ClientToScreen(window(), &place)) return;
  cell_tip_.show_at(place);
}

void USFlexGrid::hide_cell_tip() {
  tip_timer_.stop();
  tip_at_ = {};
  cell_tip_.Destroy();
}

// Whether a cell's text needs more room than its cell gives.
bool USFlexGrid::stands_over(GridPlace place) {
  const grid_layout::GridPage& now = page();
  const grid_layout::PlacedColumn* const column = now.column(place.column);
  if (now.row(place.row) == nullptr || column == nullptr || !surface()) return false;
  const grid_paint::ContentsState state = contents_state();
  const grid_paint::SourceContents contents(store_, *locale_, state);
  grid_paint::CellFacts facts;
  contents.cell(place.row, column->store, facts);
  const PixelRect room = parts_of(place).text;
  const int right = std::min(room.right, now.inner.right);
  const int lines = lines_height(facts, right - room.left);
  if (lines >= 0) return lines > room.bottom - room.top - 2 * now.metrics.vertical_offset;
  const grid_paint::FontInUse in_use(surface().dc(), font_of(facts));
  return grid_paint::line_width(surface().dc(), facts.text) > right - room.left;
}

const grid_paint::CellFont& USFlexGrid::font_of(const grid_paint::CellFacts& facts) {
  return fonts_.cell(facts.font_name,
                     {facts.bold, facts.italic, facts.underline, facts.strikethrough});
}

int USFlexGrid::lines_height(const grid_paint::CellFacts& facts, int width) {
  const bool several =
      AllowWordWrap.get() && (facts.wrap || facts.text.find(L'\r') != std::wstring_view::npos);
  if (!several) return -1;
  const grid_paint::FontInUse in_use(surface().dc(), font_of(facts));
  return grid_paint::wrapped_height(surface().dc(), facts.text, width, false);
}

// As the painter shows it.
bool USFlexGrid::has_expand_mark(GridPlace place, const PixelRect& text) {
  if (!surface()) return false;
  const int column = store_.column_at(place.column);
  if (store_.column(column).type == GridDataType::Boolean) return false;
  const grid_paint::ContentsState state = contents_state();
  const grid_paint::SourceContents contents(store_, *locale_, state);
  grid_paint::CellFacts facts;
  contents.cell(place.row, column, facts);
  return lines_height(facts, text.right - text.left) > grid_layout::text_room(page().metrics, text);
}

}  // namespace kestrelon
