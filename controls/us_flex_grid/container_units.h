// The units in which containers measure.
#pragma once

namespace kestrelon {

/// Pixels in one unit of a container's ScaleMode at `dpi`; one without a fixed size counts as
/// twips.
constexpr double pixels_per_unit(long scale_mode, double dpi) {
  switch (scale_mode) {
    case 2:
      return dpi / 72;
    case 3:
      return 1;
    case 4:
      return dpi / 12;  // characters, across
    case 5:
      return dpi;
    case 6:
      return dpi / 25.4;
    case 7:
      return dpi / 2.54;
    default:
      return dpi / 1440;
  }
}

}  // namespace kestrelon
