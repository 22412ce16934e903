#include "lists/combo_keys.h"

#include "lists/list_keys.h"

namespace kestrelon {

namespace {

// Virtual key codes of the platform.
constexpr int kTab = 9, kEnter = 13, kEscape = 27, kSpace = 32, kPrior = 33, kNext = 34, kEnd = 35,
              kHome = 36, kUp = 38, kDown = 40, kDelete = 46, kF4 = 115;

ComboAct move(int key, const ComboState& state) {
  // In the field Home and End belong to the text, as long as no list is open.
  const bool text_keys = state.editable && !state.open;
  switch (key) {
    case kUp:
      return ComboAct::kUp;
    case kDown:
      return ComboAct::kDown;
    case kPrior:
      return ComboAct::kPageUp;
    case kNext:
      return ComboAct::kPageDown;
    case kHome:
      return text_keys ? ComboAct::kNone : ComboAct::kHome;
    case kEnd:
      return text_keys ? ComboAct::kNone : ComboAct::kEnd;
    default:
      return ComboAct::kNone;
  }
}

}  // namespace

ComboAct combo_act(int key, int shift, const ComboState& state) {
  if ((shift & kAltMask) != 0)
    return key == kUp || key == kDown ? ComboAct::kToggle : ComboAct::kNone;
  switch (key) {
    case kF4:
      return ComboAct::kToggle;
    case kEnter:
      return state.open ? ComboAct::kAccept : ComboAct::kNone;
    case kTab:
      return state.open ? ComboAct::kAcceptAndPass : ComboAct::kNone;
    case kEscape:
      return state.open ? ComboAct::kClose : ComboAct::kNone;
    case kSpace:
      return state.open && state.check_boxes && !state.word_begun ? ComboAct::kCheck
                                                                  : ComboAct::kNone;
    case kDelete:
      return state.editable || state.required ? ComboAct::kNone : ComboAct::kEmpty;
    default:
      return (shift & ~kShiftMask) == 0 && (shift == 0 || !state.editable) ? move(key, state)
                                                                           : ComboAct::kNone;
  }
}

}  // namespace kestrelon
