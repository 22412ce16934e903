// Where the marks of USOptionButton stand in their strip: pure arithmetic in pixels.
#pragma once

namespace kestrelon::option_layout {

inline constexpr int kMark = 12;  // side of a picture; they follow at steps of 13

/// First row of the picture for a state (0 normal, 1 hover, 2 pressed). `over` is the pointer over
/// the control, which turns the normal state into hover.
constexpr int strip_row(bool chosen, bool enabled, int state, bool over) {
  const int base = chosen ? 52 : 2;
  if (!enabled) return base + 39;
  return base + (state == 0 && over ? 1 : state) * 13;
}

}  // namespace kestrelon::option_layout
