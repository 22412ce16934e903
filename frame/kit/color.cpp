#include "frame/kit/color.h"

#include "base/rounding.h"

namespace kestrelon {
namespace {

template <class Change>
ColorRef each_channel(ColorRef color, Change change) {
  const Channels c = SplitRGB(color);
  return PackRGB(change(c.r), change(c.g), change(c.b));
}

}  // namespace

ColorRef LightenColor(ColorRef color, int a) {
  return each_channel(color, [a](int32_t c) {
    const int64_t lighter = a + int64_t{c} * (255 - int64_t{a}) / 255;
    return static_cast<int32_t>(std::min<int64_t>(lighter, 255));
  });
}

ColorRef ShiftColor(ColorRef color, double f) {
  return each_channel(color, [f](int32_t c) {
    const int32_t shifted = round_half_even(c + f * 255.0);
    return f < 0 ? std::max(shifted, 0) : std::min(shifted, 255);
  });
}

ColorRef BlendColor(ColorRef from, ColorRef to, double f) {
  const Channels a = SplitRGB(from);
  const Channels b = SplitRGB(to);
  return PackRGB(round_half_even(a.r + f * (b.r - a.r)), round_half_even(a.g + f * (b.g - a.g)),
                 round_half_even(a.b + f * (b.b - a.b)));
}

}  // namespace kestrelon
