#include "grid/store/store_search.h"

#include "grid/values/row_matcher.h"

namespace kestrelon {

int find_item(const GridStore& store, const GridSearch& search) {
  if (search.column < 0 || search.column >= store.column_count()) return -1;
  const RowMatcher matcher(search.text, search.mode, search.match_case);
  return find_position(matcher, store.row_count(), search.start, [&](int position) {
    return store.text(store.row_at(position), search.column);
  });
}

bool filter_on(GridStore& store, const GridSearch& search) {
  const RowMatcher matcher(search.text, search.mode, search.match_case);
  const int count = store.row_count();
  if (!matcher.active() || search.column < 0 || search.column >= store.column_count()) return false;
  const int before = store.visible_count();
  const int start = search.start >= 0 && search.start < count ? search.start : 0;
  // What is hidden already need not be read.
  for (int at = store.next_visible(start); at >= 0; at = store.next_visible(at + 1))
    if (!matcher.matches(store.text(store.row_at(at), search.column)))
      store.set_row_visible(at, false);
  return store.visible_count() != before;
}

bool filter_off(GridStore& store, int start) {
  const int count = store.row_count();
  const int before = store.visible_count();
  if (before == count) return false;
  for (int at = start >= 0 && start < count ? start : 0; at < count; ++at)
    store.set_row_visible(at, true);
  return store.visible_count() != before;
}

bool leave_hidden_row(GridStore& store) {
  GridPlace place = store.mark(GridMark::Caret);
  if (place.row < 0 || store.row_info(store.row_at(place.row)).visible) return false;
  const int next = store.next_visible(place.row);
  place.row = next >= 0 ? next : store.previous_visible(place.row);
  store.set_mark(GridMark::Caret, place);
  return true;
}

}  // namespace kestrelon
