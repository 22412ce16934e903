// Where the marks of USCheckBox stand in their strip: pure arithmetic in pixels.
#pragma once

namespace kestrelon::check_layout {

inline constexpr int kStep = 13;  // side of a mark and step of the strip, down and across

/// How a stored value is drawn; -1 (a Boolean true) counts as checked, other unknown values as
/// unchecked.
enum class Mark { kUnchecked, kChecked, kGrayed };
Mark mark_of(int value);

/// First row in the strip of the picture for a mark in a state (0 normal, 1 hover, 2 pressed).
/// `over` is the pointer over the control, which turns the normal state into hover.
int strip_row(Mark mark, bool enabled, int state, bool over);

}  // namespace kestrelon::check_layout
