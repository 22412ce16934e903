// Colour arithmetic on plain 0x00BBGGRR values. Every result is exact before it is rounded once.
#pragma once

#include <cstdint>

#include "frame/kit/pixel_view.h"

namespace kestrelon {

struct Channels {
  int32_t r = 0, g = 0, b = 0;
};

constexpr Channels SplitRGB(ColorRef color) {
  return {static_cast<int32_t>(color & 0xFF), static_cast<int32_t>(color >> 8 & 0xFF),
          static_cast<int32_t>(color >> 16 & 0xFF)};
}

/// Does not clamp: a channel beyond 0..255 runs into its neighbours. Callers clamp.
constexpr ColorRef PackRGB(int32_t r, int32_t g, int32_t b) {
  return static_cast<uint32_t>(r) + static_cast<uint32_t>(g) * 256u +
         static_cast<uint32_t>(b) * 65536u;
}

/// Towards white by a/255, per channel a + c * (255 - a) / 255, truncated, at most 255.
ColorRef LightenColor(ColorRef color, int a);

/// Adds f * 255 to each channel, rounded half to even; darker for a negative f, which stops at 0,
/// lighter otherwise, which stops at 255.
ColorRef ShiftColor(ColorRef color, double f);

/// The colour f of the way from `from` to `to`, per channel rounded half to even. f is not limited:
/// callers stay within 0 to 1.
ColorRef BlendColor(ColorRef from, ColorRef to, double f);

/// Limits a value to [low, high]; note the order of the arguments.
constexpr float ClampSingle(float value, float high, float low) {
  return value > high ? high : value < low ? low : value;
}

}  // namespace kestrelon
