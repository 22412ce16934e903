#include "controls/us_check_box/us_check_box_layout.h"

namespace kestrelon::check_layout {

Mark mark_of(int value) {
  switch (value) {
    case 1:
    case -1:
      return Mark::kChecked;
    case 2:
      return Mark::kGrayed;
    default:
      return value > 65534 ? Mark::kChecked : Mark::kUnchecked;
  }
}

int strip_row(Mark mark, bool enabled, int state, bool over) {
  if (!enabled) {
    switch (mark) {
      case Mark::kChecked:
        return 169;
      case Mark::kGrayed:
        return 182;
      default:
        return 156;
    }
  }
  const bool hovered = state == 0 && over;
  int base = 0;
  if (mark == Mark::kChecked)
    base = hovered ? 26 : 52;  // the hover picture stands above the others
  if (mark == Mark::kGrayed) base = 117;
  return base + (hovered ? 1 : state) * kStep;
}

}  // namespace kestrelon::check_layout
