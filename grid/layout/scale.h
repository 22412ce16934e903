// Lengths told at 96 dpi, in the pixels of a screen.
#pragma once

#include "base/rounding.h"

namespace kestrelon::grid_layout {

struct Scale {
  int dpi = 96;

  /// Pixels for a length at 96 dpi, rounded half to even.
  int px(double at_96) const { return round_half_even(at_96 * dpi / 96.0); }
  /// The same for a line: one that is there at all never gets thinner than a pixel.
  int line(int at_96) const { return at_96 <= 0 ? 0 : px(at_96) < 1 ? 1 : px(at_96); }
};

}  // namespace kestrelon::grid_layout
