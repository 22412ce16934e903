// What the keys of a list do: a function of key, modifiers and settings alone.
#pragma once

namespace kestrelon {

/// Numbered as the public enumeration has it.
enum class SelectMode {
  kSingle = 0,
  kStandard = 1,  ///< a click chooses one, Ctrl toggles, Shift extends
  kLatch = 2,     ///< each click toggles
};

/// How an item is chosen.
enum class Choice {
  kPlain,       ///< as a click without modifiers
  kToggle,      ///< with Ctrl
  kExtend,      ///< with Shift: from the anchor, in place of what was selected
  kExtendKeep,  ///< with Ctrl and Shift: from the anchor, beside what was selected
  kMark,        ///< the mark alone moves
};

enum class ListAct {
  kNone,
  kUp,
  kDown,
  kPageUp,
  kPageDown,
  kHome,
  kEnd,
  kScrollLeft,
  kScrollRight,
  kCheck,   ///< the check box of the marked item
  kToggle,  ///< the selection of the marked item
  kSelectAll,
  kEdit,
  kMoveItemUp,
  kMoveItemDown,
};

struct ListCommand {
  ListAct act = ListAct::kNone;
  Choice how = Choice::kPlain;  ///< for those that move the mark
};

/// Modifiers as events report them.
inline constexpr int kShiftMask = 1, kControlMask = 2, kAltMask = 4;

struct ListKeySettings {
  SelectMode mode = SelectMode::kSingle;
  bool check_boxes = false;
  bool allow_edit = false;
  bool allow_drag = false;
  bool mirrored = false;
};

/// `key` is a virtual key code. kNone: the key is not the list's.
ListCommand list_command(int key, int shift, const ListKeySettings& settings);

/// How a press of the left button chooses.
Choice choice_of_click(int shift, SelectMode mode);

}  // namespace kestrelon
