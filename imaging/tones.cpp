#include "imaging/tones.h"

#include <cmath>
#include <cstdlib>

#include "base/rounding.h"

namespace kestrelon {

GrayFormula gray_formula(GrayScale formula) {
  switch (formula) {
    case GrayScale::None:
      return {1, 1, 1};
    case GrayScale::Ccir709:
      return {0.213f, 0.715f, 0.072f};
    case GrayScale::SimpleAvg:
      return {0.333f, 0.334f, 0.333f};
    case GrayScale::RedMask:
      return {0.8f, 0.1f, 0.1f};
    case GrayScale::GreenMask:
      return {0.1f, 0.8f, 0.1f};
    case GrayScale::BlueMask:
      return {0.1f, 0.1f, 0.8f};
    case GrayScale::RedGreenMask:
      return {0.45f, 0.45f, 0.1f};
    case GrayScale::BlueGreenMask:
      return {0.1f, 0.45f, 0.45f};
    case GrayScale::NtscPal:
      break;
  }
  return {0.299f, 0.587f, 0.114f};
}

GrayWeights gray_weights(GrayScale formula) {
  const GrayFormula f = gray_formula(formula);
  const float weights[3] = {f.blue, f.green, f.red};
  GrayWeights out;
  for (size_t c = 0; c < 3; ++c) {
    // Both lines are exact: a weight is a multiple of 2^-27 near a whole number of thousandths.
    const double thousandths = static_cast<double>(weights[c]) * 1000;
    out.thousandths[c] = static_cast<int16_t>(std::lround(thousandths));
    out.deviation[c] =
        static_cast<int16_t>(std::lround((thousandths - out.thousandths[c]) * 0x1p27));
  }
  return out;
}

LightTable light_table(double percent) {
  const float adjustment = static_cast<float>(percent / 100 * 255);
  LightTable table;
  table.lighter = percent > 0;
  for (uint32_t alpha = 0; alpha < 256; ++alpha) {
    const int32_t product = round_half_even(static_cast<double>(adjustment) * alpha);
    const auto delta = static_cast<uint32_t>(std::abs(product / 255));
    table.delta[alpha] = delta * 0x00010101u;
  }
  return table;
}

}  // namespace kestrelon
