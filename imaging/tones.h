// Gray formulas and the light step: from the arguments of a caller to the tables of the row loops.
#pragma once

#include <cstdint>

#include "imaging/row_kernels.h"

namespace kestrelon {

/// `ENUM_GRAY_SCALE_FORMULAS`.
enum class GrayScale : int32_t {
  None = -1,
  NtscPal = 0,
  Ccir709 = 1,
  SimpleAvg = 2,
  RedMask = 3,
  GreenMask = 4,
  BlueMask = 5,
  RedGreenMask = 6,
  BlueGreenMask = 7,
};

/// Weights of a formula in single precision.
struct GrayFormula {
  float red, green, blue;
};

/// The weights of `formula`; an unknown value has those of NtscPal.
GrayFormula gray_formula(GrayScale formula);
/// The same for the row loops: gray is blue * wB + green * wG + red * wR without rounding errors,
/// then the nearest whole number, halves to even.
GrayWeights gray_weights(GrayScale formula);
/// The step of `percent` (-100 to 100): each alpha moves colour by alpha * (percent / 100 * 255) /
/// 255, the product rounded and the quotient truncated.
LightTable light_table(double percent);

}  // namespace kestrelon
