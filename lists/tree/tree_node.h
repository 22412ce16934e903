// One node of a tree: what the store keeps of it beside its texts.
#pragma once

#include <cstdint>

#include "lists/list_entry.h"

namespace kestrelon {

/// The number of a node's record. 0 is the root that nobody sees; as a link, or where a node is
/// asked for, it is none.
using NodeId = uint32_t;
inline constexpr NodeId kNoNode = 0;

enum class NodeFlag : uint16_t {
  kExpanded = 1,
  kMayHaveChildren = 2,  ///< shows the expander although none are loaded
  kSelected = 4,
  kDisabled = 8,
  kBold = 16,
  kNoCheckBox = 32,
  kTagged = 64,  ///< the owner keeps something for it; see TreeStore::take_released
  // The store's own:
  kAlive = 256,
  kShown = 512,      ///< stands among the visible rows
  kUnsorted = 1024,  ///< its children wait to be sorted
};

enum : uint8_t { kUnchecked = 0, kChecked = 1, kGrayed = 2 };

/// Fixed size, since a tree holds a hundred thousand of them. Links are numbers, so that records
/// may move in memory and a depth of any size needs no recursion.
struct TreeNode {
  NodeId parent = kNoNode;
  NodeId first = kNoNode;
  NodeId last = kNoNode;
  NodeId next = kNoNode;
  NodeId previous = kNoNode;
  uint32_t children = 0;
  uint32_t checked_children = 0;  ///< of them, so that a parent's state costs no walk
  uint32_t grayed_children = 0;
  uint32_t generation = 0;  ///< how many nodes have had this record
  uint32_t row = 0;         ///< valid only as TreeRows says
  int32_t level = -1;
  uint32_t text_at = 0;
  uint32_t key_at = 0;
  uint32_t key_hash = 0;
  int32_t data = 0;
  int32_t image = 0;  ///< as ListEntry::image, and the two below; 0 as the first
  int32_t image_selected = 0;
  int32_t image_expanded = 0;
  uint32_t fore_color = kNoColor;
  uint32_t back_color = kNoColor;
  uint16_t text_length = 0;
  uint16_t key_length = 0;
  uint16_t flags = 0;
  uint8_t check = kUnchecked;

  bool has(NodeFlag flag) const { return (flags & static_cast<uint16_t>(flag)) != 0; }
  void set(NodeFlag flag, bool value) {
    const auto bit = static_cast<uint16_t>(flag);
    flags = static_cast<uint16_t>(value ? flags | bit : flags & ~bit);
  }
  /// Whether it shows an expander.
  bool expandable() const { return children > 0 || has(NodeFlag::kMayHaveChildren); }
};

static_assert(sizeof(TreeNode) <= 128);

/// A node as a program holds it: of a node that has gone it finds nothing, even when the record
/// serves another by now.
struct NodeRef {
  NodeId id = kNoNode;
  uint32_t generation = 0;
  bool operator==(const NodeRef&) const = default;
};

}  // namespace kestrelon
