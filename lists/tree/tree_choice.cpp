#include "lists/tree/tree_choice.h"

#include <algorithm>

namespace kestrelon {

bool TreeChoice::set_mode(SelectMode mode) {
  mode_ = mode;
  if (mode != SelectMode::kSingle || store_.selected_count() < 2) return false;
  return select_alone(current());
}

bool TreeChoice::select_alone(NodeId id) {
  const bool alone = store_.selected_count() == (id == kNoNode ? 0u : 1u) &&
                     (id == kNoNode || store_.node(id).has(NodeFlag::kSelected));
  if (alone) return false;
  store_.clear_selection();
  store_.set_flag(id, NodeFlag::kSelected, true);
  return true;
}

bool TreeChoice::set_current(NodeId id) {
  if (id != kNoNode && !store_.has(id)) return false;
  const bool moved = current() != id;
  current_ = anchor_ = store_.ref(id);
  return select_alone(id) || moved;
}

bool TreeChoice::set_selected(NodeId id, bool selected) {
  if (!store_.has(id)) return false;
  if (mode_ == SelectMode::kSingle) {
    if (selected) return set_current(id);
    return current() == id && set_current(kNoNode);
  }
  return store_.set_flag(id, NodeFlag::kSelected, selected);
}

bool TreeChoice::select_all() {
  if (mode_ == SelectMode::kSingle) return false;
  bool changed = false;
  for (int32_t row = 0; row < store_.row_count(); ++row)
    if (const NodeId id = store_.node_at(row); selectable(id))
      changed |= store_.set_flag(id, NodeFlag::kSelected, true);
  return changed;
}

void TreeChoice::select_rows(NodeId from, NodeId to) {
  const int32_t last = store_.row_of(to);
  int32_t first = store_.row_of(from);
  if (first < 0) first = last;  // the anchor is hidden
  for (int32_t row = std::min(first, last); row <= std::max(first, last); ++row)
    if (const NodeId id = store_.node_at(row); selectable(id))
      store_.set_flag(id, NodeFlag::kSelected, true);
}

bool TreeChoice::choose(NodeId id, Choice how) {
  if (!selectable(id)) return false;
  if (mode_ == SelectMode::kSingle) how = Choice::kPlain;
  const bool moved = current() != id;
  current_ = store_.ref(id);
  switch (how) {
    case Choice::kPlain:
      anchor_ = current_;
      return select_alone(id) || moved;
    case Choice::kToggle:
      anchor_ = current_;
      store_.set_flag(id, NodeFlag::kSelected, !store_.node(id).has(NodeFlag::kSelected));
      return true;
    case Choice::kExtend:
      store_.clear_selection();
      [[fallthrough]];
    case Choice::kExtendKeep:
      if (store_.find(anchor_) == kNoNode) anchor_ = current_;
      select_rows(store_.find(anchor_), id);
      return true;
    case Choice::kMark:
      return moved;
  }
  return moved;
}

bool TreeChoice::leave(NodeId id) {
  const NodeId mark = current();
  if (mark == kNoNode || !store_.is_below(mark, id)) return false;
  NodeId next = store_.next_sibling(id);
  if (next == kNoNode) next = store_.previous_sibling(id);
  if (next == kNoNode) next = store_.parent(id);
  current_ = anchor_ = store_.ref(next);
  if (mode_ == SelectMode::kSingle) select_alone(next);
  return true;
}

bool TreeChoice::collapsed(NodeId id) {
  if (!store_.has(id)) return false;
  bool hidden = false;
  const NodeId behind = store_.next_after_branch(id);
  if (store_.selected_count() > 0)
    for (NodeId at = store_.next(id); at != behind && at != kNoNode; at = store_.next(at))
      hidden |= store_.set_flag(at, NodeFlag::kSelected, false);
  const NodeId mark = current();
  const bool moved = mark != kNoNode && mark != id && store_.is_below(mark, id);
  if (moved) current_ = anchor_ = store_.ref(id);
  if (hidden || (moved && mode_ == SelectMode::kSingle))
    store_.set_flag(id, NodeFlag::kSelected, true);
  return hidden || moved;
}

}  // namespace kestrelon
