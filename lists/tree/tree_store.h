// The nodes of a tree: records in one array with links between siblings, texts in an arena, the
// visible rows as one array of numbers. Nothing here recurses: a depth of ten thousand is as safe
// as one of ten.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "lists/collation.h"
#include "lists/text_arena.h"
#include "lists/text_match.h"
#include "lists/tree/key_map.h"
#include "lists/tree/tree_node.h"

namespace kestrelon {

/// The numbers of ENUM_TREE_POSITION.
enum class NodePosition { kLastChild = 0, kFirstChild = 1, kBefore = 2, kAfter = 3 };

/// Every member takes any number for a node: one that is none reads empty and changes nothing.
class TreeStore {
 public:
  static constexpr uint32_t kMaxNodes = 2'000'000;

  explicit TreeStore(const Collation& collation = folded_collation());

  // --- nodes -----------------------------------------------------------------------------------
  uint32_t count() const { return count_; }
  bool has(NodeId id) const {
    return id != kNoNode && id < nodes_.size() && nodes_[id].has(NodeFlag::kAlive);
  }
  /// A blank record for none.
  const TreeNode& node(NodeId id) const;
  /// Adds a node at a place beside or under `target` (kNoNode: at the root). kNoNode when the
  /// target is unknown, the key is taken or the tree is full.
  NodeId add(std::wstring_view text, std::wstring_view key, NodeId target, NodePosition position);
  void reserve(uint32_t nodes, bool keys);
  /// With all below it.
  void remove(NodeId id);
  void clear();
  /// False, and nothing changed, where the target is unknown or lies in the node's own branch.
  bool move(NodeId id, NodeId target, NodePosition position);
  /// Gives many nodes other parents at once: `parents[i]` becomes that of `children[i]`, in this
  /// order; all of them must be children of the root, and no cycle may come about.
  void adopt(std::span<const NodeId> children, std::span<const NodeId> parents);

  NodeRef ref(NodeId id) const;
  NodeId find(const NodeRef& ref) const;
  /// The same as one positive number; 0 for none.
  int32_t handle(NodeId id) const;
  NodeId find_handle(int32_t handle) const;
  NodeId find_key(std::wstring_view key) const;

  // --- contents --------------------------------------------------------------------------------
  std::wstring_view text(NodeId id) const;
  void set_text(NodeId id, std::wstring_view text);
  std::wstring_view key(NodeId id) const;
  /// False when another node has the key.
  bool set_key(NodeId id, std::wstring_view key);
  /// The record to be written; only what has no meaning for the store (data, images, colours).
  TreeNode* contents(NodeId id) { return has(id) ? &nodes_[id] : nullptr; }
  /// True when that changed something. Not for the flags of the store's own.
  bool set_flag(NodeId id, NodeFlag flag, bool value);
  /// The texts from the first level down to the node.
  std::wstring full_path(NodeId id, std::wstring_view separator) const;
  /// Tagged nodes that have gone since the last call; the owner drops what it kept for them.
  std::vector<NodeId> take_released() { return std::exchange(released_, {}); }

  // --- structure; links are in the order that is shown ------------------------------------------
  NodeId parent(NodeId id) const { return node(id).parent; }
  NodeId first_child(NodeId id = kNoNode) const { return settled(id).first; }
  NodeId last_child(NodeId id = kNoNode) const { return settled(id).last; }
  NodeId next_sibling(NodeId id) const { return settled(id).next; }
  NodeId previous_sibling(NodeId id) const { return settled(id).previous; }
  uint32_t child_count(NodeId id = kNoNode) const { return nodes_[known(id)].children; }
  /// The position among its siblings, -1 for none: a walk.
  int32_t index(NodeId id) const;
  bool is_below(NodeId id, NodeId ancestor) const;
  /// The next node in the order of the whole tree, hidden ones included; kNoNode asks for the
  /// first.
  NodeId next(NodeId id = kNoNode) const;
  /// The next node that is not below this one.
  NodeId next_after_branch(NodeId id) const;

  // --- order -----------------------------------------------------------------------------------
  /// Keeps children in the order of their texts from now on, wherever they are added.
  void set_sorted(bool sorted);
  void sort_children(NodeId id, bool descending);

  // --- selection and checks ---------------------------------------------------------------------
  uint32_t selected_count() const { return selected_; }
  bool clear_selection();
  /// All with a flag, or a state of check, in the order of the tree.
  std::vector<NodeId> all_where(const std::function<bool(const TreeNode&)>& wanted) const;
  /// With three states a check spreads to all below and the parents follow; else it is the node's
  /// alone. True when that changed something.
  bool set_check(NodeId id, uint8_t state);
  bool three_states() const { return three_states_; }
  /// Makes the parents follow at once.
  void set_three_states(bool on);

  // --- visible rows ----------------------------------------------------------------------------
  bool expand(NodeId id, bool expanded);
  /// All that have children, below a node (and itself) or everywhere.
  void expand_all(NodeId id, bool expanded);
  /// Opens all above a node.
  void reveal(NodeId id);
  int32_t row_count() const;
  NodeId node_at(int32_t row) const;
  /// -1 for what is not visible.
  int32_t row_of(NodeId id) const;

  /// The first node behind `after` in the order of the tree that matches; no turn at the end.
  NodeId find_text(const TextMatcher& matcher, NodeId after = kNoNode) const;

 private:
  NodeId known(NodeId id) const { return has(id) ? id : kNoNode; }
  const TreeNode& settled(NodeId id) const;
  NodeId take_record();
  void free_record(NodeId id);
  void set_key_of(NodeId id, std::wstring_view key);
  void drop_key(NodeId id);
  void compact_if_wasteful();
  bool resolve(NodeId target, NodePosition position, NodeId& parent, NodeId& before) const;
  void link(NodeId id, NodeId parent, NodeId before);
  void unlink(NodeId id);
  void level_branch(NodeId id);
  // tree_order.cpp
  void settle() const;
  void mark_unsorted(NodeId parent);
  void sort_links(NodeId parent, bool descending) const;

  // tree_checks.cpp
  void count_check(NodeId parent, uint8_t state, int by);
  bool put_check(NodeId id, uint8_t state);
  void check_branch(NodeId id, uint8_t state);
  void parents_follow(NodeId parent);
  uint8_t check_of_children(const TreeNode& parent) const;

  // tree_rows.cpp
  bool first_change();
  bool shows_children(NodeId id) const;
  void insert_rows(size_t at, NodeId first, NodeId within);
  void show_branch(NodeId id);
  void hide_branch(NodeId id, bool itself);
  NodeId next_visible(NodeId id, NodeId within) const;
  NodeId behind_branch(NodeId id, NodeId within = kNoNode) const;
  size_t number_of(NodeId id) const;
  void make_rows() const;
  void read_rows() const;
  void rows_lost() const { rows_valid_ = false; }

  // Records are changed by reading where children wait to be sorted or rows to be numbered.
  mutable std::vector<TreeNode> nodes_;  // [0]: the root
  TextArena texts_;                      // and keys
  KeyMap keys_;
  const Collation* collation_;
  NodeId free_first_ = kNoNode, free_last_ = kNoNode;  // longest free is taken first
  uint32_t newest_generation_ = 1;                     // of any record so far
  uint32_t base_generation_ = 1;                       // of records made from now on
  uint32_t count_ = 0;
  uint32_t selected_ = 0;
  bool sorted_ = false;
  bool three_states_ = false;
  mutable std::vector<NodeId> unsorted_;
  std::vector<NodeId> released_;

  mutable std::vector<NodeId> rows_;
  mutable bool rows_valid_ = true;
  mutable bool changed_since_read_ = false;
  mutable size_t numbered_ = 0;  // rows whose nodes know their number
};

}  // namespace kestrelon
