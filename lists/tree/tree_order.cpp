// Links between nodes: where they stand, how they move, how they are sorted.
#include <algorithm>
#include <cstring>

#include "lists/tree/tree_store.h"

namespace kestrelon {
namespace {

struct SortKey {
  uint64_t start = 0;  // its first bytes, which decide most comparisons
  uint32_t at = 0;
  uint32_t length = 0;
  NodeId id = kNoNode;
};

uint64_t start_of(const uint8_t* bytes, size_t length) {
  uint64_t start = 0;
  for (size_t i = 0; i < sizeof start; ++i) start = start << 8 | (i < length ? bytes[i] : 0);
  return start;
}

int compare(const SortKey& a, const SortKey& b, const std::vector<uint8_t>& bytes) {
  if (a.start != b.start) return a.start < b.start ? -1 : 1;
  const uint32_t common = std::min(a.length, b.length);
  const int order = common == 0 ? 0 : std::memcmp(&bytes[a.at], &bytes[b.at], common);
  if (order != 0) return order;
  return a.length < b.length ? -1 : a.length > b.length ? 1 : 0;
}

}  // namespace

// Where a node goes: its parent, and the child that will follow it (none: the end).
bool TreeStore::resolve(NodeId target, NodePosition position, NodeId& parent,
                        NodeId& before) const {
  if (target != kNoNode && !has(target)) return false;
  const bool beside = position == NodePosition::kBefore || position == NodePosition::kAfter;
  parent = beside && target != kNoNode ? nodes_[target].parent : target;
  before = kNoNode;
  if (position == NodePosition::kFirstChild) before = nodes_[parent].first;
  if (position == NodePosition::kBefore) before = target == kNoNode ? nodes_[parent].first : target;
  if (position == NodePosition::kAfter && target != kNoNode) before = nodes_[target].next;
  return true;
}

void TreeStore::link(NodeId id, NodeId parent, NodeId before) {
  TreeNode& of = nodes_[id];
  TreeNode& above = nodes_[parent];
  const NodeId after = before == kNoNode ? above.last : nodes_[before].previous;
  of.parent = parent;
  of.next = before;
  of.previous = after;
  (after == kNoNode ? above.first : nodes_[after].next) = id;
  (before == kNoNode ? above.last : nodes_[before].previous) = id;
  ++above.children;
  count_check(parent, of.check, 1);
}

void TreeStore::unlink(NodeId id) {
  TreeNode& of = nodes_[id];
  TreeNode& above = nodes_[of.parent];
  (of.previous == kNoNode ? above.first : nodes_[of.previous].next) = of.next;
  (of.next == kNoNode ? above.last : nodes_[of.next].previous) = of.previous;
  --above.children;
  count_check(of.parent, of.check, -1);
  of.parent = of.next = of.previous = kNoNode;
}

bool TreeStore::move(NodeId id, NodeId target, NodePosition position) {
  NodeId parent, before;
  settle();
  if (!has(id) || !resolve(target, position, parent, before)) return false;
  if (target == id || is_below(parent, id)) return false;
  const NodeId former = nodes_[id].parent;
  if (before == id) before = nodes_[id].next;
  hide_branch(id, true);
  unlink(id);
  link(id, parent, before);
  nodes_[parent].set(NodeFlag::kMayHaveChildren, false);
  if (nodes_[id].level != nodes_[parent].level + 1) level_branch(id);
  show_branch(id);
  mark_unsorted(parent);
  parents_follow(former);
  parents_follow(parent);
  return true;
}

void TreeStore::adopt(std::span<const NodeId> children, std::span<const NodeId> parents) {
  for (size_t i = 0; i < std::min(children.size(), parents.size()); ++i) {
    unlink(children[i]);
    link(children[i], known(parents[i]), kNoNode);
    mark_unsorted(known(parents[i]));
  }
  for (const NodeId id : children)
    if (nodes_[id].parent == kNoNode) level_branch(id);
  rows_lost();
}

void TreeStore::level_branch(NodeId id) {
  for (NodeId at = id; at != kNoNode;) {
    nodes_[at].level = nodes_[nodes_[at].parent].level + 1;
    at = nodes_[at].first != kNoNode ? nodes_[at].first : behind_branch(at, id);
  }
}

bool TreeStore::is_below(NodeId id, NodeId ancestor) const {
  while (has(id) && id != ancestor) id = nodes_[id].parent;
  return has(id);
}

int32_t TreeStore::index(NodeId id) const {
  if (!has(id)) return -1;
  int32_t position = 0;
  for (id = previous_sibling(id); id != kNoNode; id = nodes_[id].previous) ++position;
  return position;
}

const TreeNode& TreeStore::settled(NodeId id) const {
  settle();
  return id == kNoNode ? nodes_[0] : node(id);
}

NodeId TreeStore::next(NodeId id) const {
  if (id != kNoNode && !has(id)) return kNoNode;
  settle();
  return nodes_[id].first != kNoNode ? nodes_[id].first : behind_branch(id);
}

NodeId TreeStore::next_after_branch(NodeId id) const {
  settle();
  return has(id) ? behind_branch(id) : kNoNode;
}

// The next node behind a branch, within another branch if one is given.
NodeId TreeStore::behind_branch(NodeId id, NodeId within) const {
  for (; id != within && id != kNoNode; id = nodes_[id].parent)
    if (nodes_[id].next != kNoNode) return nodes_[id].next;
  return kNoNode;
}

void TreeStore::set_sorted(bool sorted) {
  if (sorted_ == sorted) return;
  settle();
  sorted_ = sorted;
  if (!sorted) return;
  for (NodeId id = 0; id < nodes_.size(); ++id)
    if (nodes_[id].children > 1) mark_unsorted(id);
}

void TreeStore::mark_unsorted(NodeId parent) {
  if (!sorted_ || nodes_[parent].has(NodeFlag::kUnsorted)) return;
  nodes_[parent].set(NodeFlag::kUnsorted, true);
  unsorted_.push_back(parent);
}

void TreeStore::settle() const {
  if (unsorted_.empty()) return;
  for (const NodeId parent : std::exchange(unsorted_, {})) {
    // A record freed since then has lost the mark.
    if (!nodes_[parent].has(NodeFlag::kUnsorted)) continue;
    nodes_[parent].set(NodeFlag::kUnsorted, false);
    sort_links(parent, false);
  }
}

void TreeStore::sort_children(NodeId id, bool descending) {
  if (id != kNoNode && !has(id)) return;
  settle();
  sort_links(id, descending);
}

void TreeStore::sort_links(NodeId parent, bool descending) const {
  std::vector<SortKey> keys;
  std::vector<uint8_t> bytes;
  keys.reserve(nodes_[parent].children);
  for (NodeId id = nodes_[parent].first; id != kNoNode; id = nodes_[id].next) {
    SortKey key{0, static_cast<uint32_t>(bytes.size()), 0, id};
    collation_->append_key(text(id), bytes);
    key.length = static_cast<uint32_t>(bytes.size()) - key.at;
    key.start = start_of(bytes.data() + key.at, key.length);
    keys.push_back(key);
  }
  std::stable_sort(keys.begin(), keys.end(), [&](const SortKey& a, const SortKey& b) {
    return descending ? compare(b, a, bytes) < 0 : compare(a, b, bytes) < 0;
  });
  NodeId previous = kNoNode;
  for (const SortKey& key : keys) {
    (previous == kNoNode ? nodes_[parent].first : nodes_[previous].next) = key.id;
    nodes_[key.id].previous = previous;
    nodes_[key.id].next = kNoNode;
    previous = key.id;
  }
  nodes_[parent].last = previous;
  if (shows_children(parent)) rows_lost();
}

}  // namespace kestrelon
