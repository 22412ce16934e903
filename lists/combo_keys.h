// What the keys of a combo box do: a function of key, modifiers and state alone.
#pragma once

namespace kestrelon {

enum class ComboAct {
  kNone,
  kToggle,  ///< opens or closes the list
  kUp,
  kDown,
  kPageUp,
  kPageDown,
  kHome,
  kEnd,
  kAccept,         ///< takes the item and closes; the key goes no further
  kAcceptAndPass,  ///< the same, and the key goes on
  kClose,          ///< closes and restores
  kCheck,
  kEmpty,
};

struct ComboState {
  bool open = false;
  bool editable = false;  ///< the text can be typed
  bool check_boxes = false;
  bool required = false;
  bool word_begun = false;  ///< a blank would lengthen what is being typed ahead
};

/// `key` is a virtual key code, `shift` as events report it.
ComboAct combo_act(int key, int shift, const ComboState& state);

}  // namespace kestrelon
