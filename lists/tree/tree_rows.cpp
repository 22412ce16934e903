// The visible rows. One change between two looks at them is made in place; of several the rows are
// made anew at the next look, so that filling or emptying a large tree costs one pass.
#include <algorithm>

#include "lists/tree/tree_store.h"

namespace kestrelon {

bool TreeStore::shows_children(NodeId id) const {
  return id == kNoNode || (nodes_[id].has(NodeFlag::kShown) && nodes_[id].has(NodeFlag::kExpanded));
}

// True when the rows are right and may be changed in place; else they are given up.
bool TreeStore::first_change() {
  rows_valid_ = rows_valid_ && !changed_since_read_;
  changed_since_read_ = true;
  return rows_valid_;
}

NodeId TreeStore::next_visible(NodeId id, NodeId within) const {
  const TreeNode& of = nodes_[id];
  const bool inner = of.first != kNoNode && (id == kNoNode || of.has(NodeFlag::kExpanded));
  return inner ? of.first : behind_branch(id, within);
}

// Puts what shows of a branch, from `first` on, at a row.
void TreeStore::insert_rows(size_t at, NodeId first, NodeId within) {
  std::vector<NodeId> shown;
  for (NodeId each = first; each != kNoNode; each = next_visible(each, within)) {
    nodes_[each].set(NodeFlag::kShown, true);
    shown.push_back(each);
  }
  rows_.insert(rows_.begin() + static_cast<ptrdiff_t>(at), shown.begin(), shown.end());
  numbered_ = std::min(numbered_, at);
}

// A node that has been linked, with what shows below it. New rows at the end cost nothing else.
void TreeStore::show_branch(NodeId id) {
  if (!rows_valid_ || !shows_children(nodes_[id].parent)) return;
  const NodeId behind = behind_branch(id);
  if (behind != kNoNode && !first_change()) return;
  insert_rows(behind == kNoNode ? rows_.size() : number_of(behind), id, id);
}

void TreeStore::hide_branch(NodeId id, bool itself) {
  if (!rows_valid_ || !nodes_[id].has(NodeFlag::kShown) || !first_change()) return;
  const NodeId behind = behind_branch(id);
  const size_t end = behind == kNoNode ? rows_.size() : number_of(behind);
  const size_t begin = number_of(id) + (itself ? 0 : 1);
  for (size_t row = begin; row < end; ++row) nodes_[rows_[row]].set(NodeFlag::kShown, false);
  rows_.erase(rows_.begin() + static_cast<ptrdiff_t>(begin),
              rows_.begin() + static_cast<ptrdiff_t>(end));
  numbered_ = std::min(numbered_, begin);
}

// The row of a visible node; rows are numbered as far as somebody asked.
size_t TreeStore::number_of(NodeId id) const {
  const size_t row = nodes_[id].row;
  if (row < numbered_ && rows_[row] == id) return row;
  while (numbered_ < rows_.size()) {
    const NodeId at = rows_[numbered_];
    nodes_[at].row = static_cast<uint32_t>(numbered_++);
    if (at == id) return numbered_ - 1;
  }
  return rows_.size();
}

void TreeStore::make_rows() const {
  for (const NodeId id : rows_) nodes_[id].set(NodeFlag::kShown, false);
  rows_.clear();
  for (NodeId id = next_visible(kNoNode, kNoNode); id != kNoNode; id = next_visible(id, kNoNode)) {
    nodes_[id].set(NodeFlag::kShown, true);
    nodes_[id].row = static_cast<uint32_t>(rows_.size());
    rows_.push_back(id);
  }
  numbered_ = rows_.size();
  rows_valid_ = true;
}

void TreeStore::read_rows() const {
  settle();
  if (!rows_valid_) make_rows();
  changed_since_read_ = false;
}

bool TreeStore::expand(NodeId id, bool expanded) {
  if (!has(id) || nodes_[id].has(NodeFlag::kExpanded) == expanded) return false;
  if (!expanded) {
    hide_branch(id, false);
    nodes_[id].set(NodeFlag::kExpanded, false);
    return true;
  }
  nodes_[id].set(NodeFlag::kExpanded, true);
  if (rows_valid_ && shows_children(id) && nodes_[id].first != kNoNode && first_change())
    insert_rows(number_of(id) + 1, nodes_[id].first, id);
  return true;
}

void TreeStore::expand_all(NodeId id, bool expanded) {
  if (id != kNoNode && !has(id)) return;
  for (NodeId at = id == kNoNode ? nodes_[0].first : id; at != kNoNode;) {
    if (nodes_[at].first != kNoNode) nodes_[at].set(NodeFlag::kExpanded, expanded);
    at = nodes_[at].first != kNoNode ? nodes_[at].first : behind_branch(at, id);
  }
  rows_lost();
}

void TreeStore::reveal(NodeId id) {
  if (!has(id)) return;
  for (id = nodes_[id].parent; id != kNoNode; id = nodes_[id].parent) expand(id, true);
}

int32_t TreeStore::row_count() const {
  read_rows();
  return static_cast<int32_t>(rows_.size());
}

NodeId TreeStore::node_at(int32_t row) const {
  return row >= 0 && row < row_count() ? rows_[static_cast<size_t>(row)] : kNoNode;
}

int32_t TreeStore::row_of(NodeId id) const {
  if (!has(id)) return -1;
  read_rows();
  return nodes_[id].has(NodeFlag::kShown) ? static_cast<int32_t>(number_of(id)) : -1;
}

}  // namespace kestrelon
