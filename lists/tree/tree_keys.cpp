#include "lists/tree/tree_keys.h"

namespace kestrelon {
namespace {

// Virtual key codes of the platform.
constexpr int kBack = 8, kLeft = 37, kRight = 39, kMultiply = 106, kAdd = 107, kSubtract = 109;
constexpr int k8 = 56, kPlus = 187, kMinus = 189;

TreeAct act_of(ListAct act) {
  switch (act) {
    case ListAct::kUp:
      return TreeAct::kUp;
    case ListAct::kDown:
      return TreeAct::kDown;
    case ListAct::kPageUp:
      return TreeAct::kPageUp;
    case ListAct::kPageDown:
      return TreeAct::kPageDown;
    case ListAct::kHome:
      return TreeAct::kHome;
    case ListAct::kEnd:
      return TreeAct::kEnd;
    case ListAct::kCheck:
      return TreeAct::kCheck;
    case ListAct::kToggle:
      return TreeAct::kToggle;
    case ListAct::kSelectAll:
      return TreeAct::kSelectAll;
    case ListAct::kEdit:
      return TreeAct::kEdit;
    default:
      return TreeAct::kNone;
  }
}

}  // namespace

TreeCommand tree_command(int key, int shift, const ListKeySettings& settings) {
  if ((shift & kAltMask) != 0) return {};
  if (key == kAdd || (key == kPlus && shift == kShiftMask)) return {TreeAct::kExpand};
  if (key == kSubtract || (key == kMinus && shift == 0)) return {TreeAct::kCollapse};
  if (key == kMultiply || (key == k8 && shift == kShiftMask)) return {TreeAct::kExpandAll};
  ListKeySettings plain = settings;
  plain.allow_drag = false;
  if (key == kLeft || key == kRight || key == kBack) {
    const bool into = (key == kRight) != settings.mirrored;
    const TreeAct act = key == kBack ? TreeAct::kParent : into ? TreeAct::kInto : TreeAct::kOut;
    constexpr int kAnyMove = 38;  // how an arrow moves the mark with these modifiers
    return {act, list_command(kAnyMove, shift, plain).how};
  }
  const ListCommand command = list_command(key, shift, plain);
  return {act_of(command.act), command.how};
}

}  // namespace kestrelon
