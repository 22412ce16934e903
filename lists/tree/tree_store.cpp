#include "lists/tree/tree_store.h"

#include <algorithm>

namespace kestrelon {
namespace {

constexpr int kIdBits = 21;  // of a handle; the rest but the sign is the generation
constexpr uint32_t kIdMask = (1u << kIdBits) - 1;
constexpr uint32_t kGenerationMask = (1u << (31 - kIdBits)) - 1;
static_assert(TreeStore::kMaxNodes <= kIdMask);

const TreeNode kBlank;

}  // namespace

TreeStore::TreeStore(const Collation& collation) : nodes_(1), collation_(&collation) {}

const TreeNode& TreeStore::node(NodeId id) const {
  return has(id) ? nodes_[id] : kBlank;
}

NodeId TreeStore::add(std::wstring_view text, std::wstring_view key, NodeId target,
                      NodePosition position) {
  NodeId parent, before;
  if (!resolve(target, position, parent, before) || count_ >= kMaxNodes) return kNoNode;
  if (!key.empty() && find_key(key) != kNoNode) return kNoNode;
  const TextRef ref = texts_.add(text);
  const NodeId id = take_record();
  TreeNode& added = nodes_[id];
  added.text_at = ref.at;
  added.text_length = ref.length;
  added.level = nodes_[parent].level + 1;
  if (three_states_ && nodes_[parent].check == kChecked && parent != kNoNode)
    added.check = kChecked;
  set_key_of(id, key);
  link(id, parent, before);
  nodes_[parent].set(NodeFlag::kMayHaveChildren, false);
  show_branch(id);
  mark_unsorted(parent);
  return id;
}

void TreeStore::reserve(uint32_t nodes, bool keys) {
  nodes = std::min(nodes, kMaxNodes - count_);
  nodes_.reserve(nodes_.size() + nodes);
  if (keys) keys_.reserve(size_t{count_} + nodes);
}

void TreeStore::remove(NodeId id) {
  if (!has(id)) return;
  const NodeId parent = nodes_[id].parent;
  hide_branch(id, true);
  unlink(id);
  // Children before parents, each by its links alone.
  NodeId at = id;
  for (;;) {
    while (nodes_[at].first != kNoNode) at = nodes_[at].first;
    const NodeId up = nodes_[at].parent, next = nodes_[at].next;
    free_record(at);
    if (at == id) break;
    nodes_[up].first = next;
    at = next != kNoNode ? next : up;
  }
  parents_follow(parent);
  compact_if_wasteful();
}

void TreeStore::clear() {
  for (NodeId id = 1; id < nodes_.size(); ++id)
    if (nodes_[id].has(NodeFlag::kTagged)) released_.push_back(id);
  base_generation_ = ++newest_generation_;
  nodes_ = std::vector<TreeNode>(1);
  texts_.clear();
  keys_.clear();
  unsorted_.clear();
  rows_ = {};
  rows_valid_ = true;
  changed_since_read_ = false;
  numbered_ = 0;
  free_first_ = free_last_ = kNoNode;
  count_ = selected_ = 0;
}

NodeId TreeStore::take_record() {
  NodeId id = free_first_;
  if (id == kNoNode) {
    id = static_cast<NodeId>(nodes_.size());
    nodes_.emplace_back().generation = base_generation_;
  } else {
    free_first_ = nodes_[id].next;
    if (free_first_ == kNoNode) free_last_ = kNoNode;
    nodes_[id].next = kNoNode;
  }
  nodes_[id].set(NodeFlag::kAlive, true);
  ++count_;
  return id;
}

void TreeStore::free_record(NodeId id) {
  TreeNode& gone = nodes_[id];
  drop_key(id);
  texts_.release({gone.text_at, gone.text_length});
  if (gone.has(NodeFlag::kSelected)) --selected_;
  if (gone.has(NodeFlag::kTagged)) released_.push_back(id);
  const uint32_t generation = gone.generation + 1;
  newest_generation_ = std::max(newest_generation_, generation);
  gone = {};
  gone.generation = generation;
  (free_last_ == kNoNode ? free_first_ : nodes_[free_last_].next) = id;
  free_last_ = id;
  --count_;
}

NodeRef TreeStore::ref(NodeId id) const {
  return has(id) ? NodeRef{id, nodes_[id].generation} : NodeRef{};
}

NodeId TreeStore::find(const NodeRef& ref) const {
  return has(ref.id) && nodes_[ref.id].generation == ref.generation ? ref.id : kNoNode;
}

int32_t TreeStore::handle(NodeId id) const {
  if (!has(id)) return 0;
  return static_cast<int32_t>((nodes_[id].generation & kGenerationMask) << kIdBits | id);
}

NodeId TreeStore::find_handle(int32_t handle) const {
  const NodeId id = static_cast<uint32_t>(handle) & kIdMask;
  return handle > 0 && this->handle(id) == handle ? id : kNoNode;
}

NodeId TreeStore::find_key(std::wstring_view key) const {
  if (key.empty()) return kNoNode;
  return keys_.find(hash_key(key), [&](NodeId id) { return this->key(id) == key; });
}

std::wstring_view TreeStore::text(NodeId id) const {
  const TreeNode& of = node(id);
  return texts_.view({of.text_at, of.text_length});
}

void TreeStore::set_text(NodeId id, std::wstring_view text) {
  if (!has(id)) return;
  TreeNode& of = nodes_[id];
  const TextRef ref = texts_.replace({of.text_at, of.text_length}, text);
  of.text_at = ref.at;
  of.text_length = ref.length;
  mark_unsorted(of.parent);
  compact_if_wasteful();
}

std::wstring_view TreeStore::key(NodeId id) const {
  const TreeNode& of = node(id);
  return texts_.view({of.key_at, of.key_length});
}

bool TreeStore::set_key(NodeId id, std::wstring_view key) {
  if (!has(id)) return false;
  if (this->key(id) == key) return true;
  if (find_key(key) != kNoNode) return false;
  drop_key(id);
  set_key_of(id, key);
  compact_if_wasteful();
  return true;
}

void TreeStore::set_key_of(NodeId id, std::wstring_view key) {
  if (key.empty()) return;
  TreeNode& of = nodes_[id];
  const TextRef ref = texts_.add(key);
  of.key_at = ref.at;
  of.key_length = ref.length;
  of.key_hash = hash_key(this->key(id));
  keys_.insert(of.key_hash, id);
}

void TreeStore::drop_key(NodeId id) {
  TreeNode& of = nodes_[id];
  if (of.key_length == 0) return;
  keys_.erase(of.key_hash, id);
  texts_.release({of.key_at, of.key_length});
  of.key_length = 0;
}

void TreeStore::compact_if_wasteful() {
  if (!texts_.wasteful()) return;
  TextArena kept;
  for (NodeId id = 1; id < nodes_.size(); ++id) {
    TreeNode& of = nodes_[id];
    of.text_at = kept.add(texts_.view({of.text_at, of.text_length})).at;
    of.key_at = kept.add(texts_.view({of.key_at, of.key_length})).at;
  }
  texts_.swap(kept);
}

bool TreeStore::set_flag(NodeId id, NodeFlag flag, bool value) {
  if (!has(id) || nodes_[id].has(flag) == value) return false;
  nodes_[id].set(flag, value);
  if (flag == NodeFlag::kSelected) selected_ += value ? 1 : UINT32_MAX;
  return true;
}

bool TreeStore::clear_selection() {
  if (selected_ == 0) return false;
  for (TreeNode& of : nodes_) of.set(NodeFlag::kSelected, false);
  selected_ = 0;
  return true;
}

std::wstring TreeStore::full_path(NodeId id, std::wstring_view separator) const {
  std::vector<NodeId> branch;
  for (; has(id); id = nodes_[id].parent) branch.push_back(id);
  std::wstring path;
  while (!branch.empty()) {
    path += text(branch.back());
    branch.pop_back();
    if (!branch.empty()) path += separator;
  }
  return path;
}

std::vector<NodeId> TreeStore::all_where(const std::function<bool(const TreeNode&)>& wanted) const {
  std::vector<NodeId> all;
  for (NodeId id = next(); id != kNoNode; id = next(id))
    if (wanted(nodes_[id])) all.push_back(id);
  return all;
}

NodeId TreeStore::find_text(const TextMatcher& matcher, NodeId after) const {
  if (matcher.matches_nothing()) return kNoNode;
  NodeId id = next(after);
  while (id != kNoNode && !matcher.matches(text(id))) id = next(id);
  return id;
}

}  // namespace kestrelon
