#include "lists/list_keys.h"

namespace kestrelon {

namespace {

// Virtual key codes of the platform.
constexpr int kSpace = 32, kPrior = 33, kNext = 34, kEnd = 35, kHome = 36;
constexpr int kLeft = 37, kUp = 38, kRight = 39, kDown = 40, kA = 65, kF2 = 113;

Choice choice_of_move(int shift, SelectMode mode) {
  if (mode == SelectMode::kSingle) return Choice::kPlain;
  const bool extend = (shift & kShiftMask) != 0, control = (shift & kControlMask) != 0;
  if (extend) return control ? Choice::kExtendKeep : Choice::kExtend;
  // Where every click toggles, a key that moved would toggle all it passes.
  return control || mode == SelectMode::kLatch ? Choice::kMark : Choice::kPlain;
}

ListAct move_of(int key, bool mirrored) {
  switch (key) {
    case kUp:
      return ListAct::kUp;
    case kDown:
      return ListAct::kDown;
    case kPrior:
      return ListAct::kPageUp;
    case kNext:
      return ListAct::kPageDown;
    case kHome:
      return ListAct::kHome;
    case kEnd:
      return ListAct::kEnd;
    case kLeft:
      return mirrored ? ListAct::kScrollRight : ListAct::kScrollLeft;
    case kRight:
      return mirrored ? ListAct::kScrollLeft : ListAct::kScrollRight;
    default:
      return ListAct::kNone;
  }
}

ListAct act_with_alt(int key, const ListKeySettings& settings) {
  if (!settings.allow_drag) return ListAct::kNone;
  if (key == kUp) return ListAct::kMoveItemUp;
  return key == kDown ? ListAct::kMoveItemDown : ListAct::kNone;
}

}  // namespace

ListCommand list_command(int key, int shift, const ListKeySettings& settings) {
  if ((shift & kAltMask) != 0) return {act_with_alt(key, settings), Choice::kPlain};
  if (key == kSpace) return {settings.check_boxes ? ListAct::kCheck : ListAct::kToggle};
  if (key == kF2 && shift == 0 && settings.allow_edit) return {ListAct::kEdit};
  if (key == kA && shift == kControlMask && settings.mode != SelectMode::kSingle)
    return {ListAct::kSelectAll};
  return {move_of(key, settings.mirrored), choice_of_move(shift, settings.mode)};
}

Choice choice_of_click(int shift, SelectMode mode) {
  if (mode == SelectMode::kSingle) return Choice::kPlain;
  const bool control = (shift & kControlMask) != 0;
  if ((shift & kShiftMask) != 0) return control ? Choice::kExtendKeep : Choice::kExtend;
  return control || mode == SelectMode::kLatch ? Choice::kToggle : Choice::kPlain;
}

}  // namespace kestrelon
