// What the keys of a tree do: a function of key, modifiers and settings alone.
#pragma once

#include "lists/list_keys.h"

namespace kestrelon {

enum class TreeAct {
  kNone,
  kUp,
  kDown,
  kPageUp,
  kPageDown,
  kHome,
  kEnd,
  kInto,  ///< expands, then enters the branch
  kOut,   ///< collapses, then goes to the parent
  kParent,
  kExpand,
  kCollapse,
  kExpandAll,  ///< all below
  kCheck,
  kToggle,
  kSelectAll,
  kEdit,
};

struct TreeCommand {
  TreeAct act = TreeAct::kNone;
  Choice how = Choice::kPlain;  ///< for those that move the mark
};

/// `key` is a virtual key code. kNone: the key is not the tree's.
TreeCommand tree_command(int key, int shift, const ListKeySettings& settings);

}  // namespace kestrelon
