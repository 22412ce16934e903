#include "controls/us_button/us_button_face.h"

#include "frame/kit/blit.h"
#include "frame/kit/gradient.h"
#include "frame/kit/lines.h"

namespace kestrelon {
namespace {

constexpr double kMiddle = 50;  // percent of a band
constexpr int kBandLight = 50;  // how far the ends of four-coloured bands go towards white, of 255

}  // namespace

DerivedColors derive_colors(ColorRef back, ColorRef fore, ColorRef mask) {
  return {back,
          ShiftColor(back, -0.05),
          PackRGB(72, 215, 251),
          fore,
          0xFFFFFF,
          0x99A8AC,
          PackRGB(217, 240, 252),
          mask,
          0xF0C797};
}

void paint_face(const PixelView& view, const FaceStops& stops, bool four_colors) {
  const int height = view.height;
  if (!four_colors) {
    DrawGradient(view, stops[0], stops[1], kMiddle, 0, 0, -1, height);
    return;
  }
  DrawGradient(view, stops[0], LightenColor(stops[1], kBandLight), kMiddle, 0, 0, -1, height / 2);
  DrawGradient(view, stops[2], LightenColor(stops[3], kBandLight), kMiddle, 0, height / 2, -1,
               height);
}

void paint_value_face(const PixelView& view, const DerivedColors& colors) {
  DrawGradient(view, ShiftColor(colors[kDerivedBack], -0.1), colors[kDerivedValueEnd], kMiddle, 0,
               0, -1, -1);
}

void paint_frame(const PixelView& view, ColorRef border, int shape) {
  const int right = view.width - 2, bottom = view.height - 2;
  DrawFrame(view, border, 0, 0, view.width, view.height);
  if (shape != 1 && shape != 3) {
    set_pixel(view, 1, 1, border);
    set_pixel(view, 1, bottom, border);
  }
  if (shape != 2 && shape != 3) {
    set_pixel(view, right, 1, border);
    set_pixel(view, right, bottom, border);
  }
}

void mix_picture(const PixelView& view, int x, int y, const PixelView& picture,
                 const PictureMix& mix) {
  const CopyArea whole{x, y, picture.width, picture.height, 0, 0};
  const CopyArea area = clip_copy(whole, view.bounds(), picture.bounds());
  if (mix.opacity == 1) {
    mix.has_key ? masked_blit(view, area, picture, mix.key) : blit(view, area, picture);
    return;
  }
  const uint32_t key = to_pixel(mix.key);
  for (int row = 0; row < area.height; ++row) {
    const uint32_t* const from = picture.row(area.from_y + row) + area.from_x;
    uint32_t* const to = view.row(area.y + row) + area.x;
    for (int i = 0; i < area.width; ++i) {
      if (mix.has_key && (from[i] & kColorBits) == key) continue;
      to[i] = to_pixel(BlendColor(to_color(to[i]), to_color(from[i]), mix.opacity));
    }
  }
}

}  // namespace kestrelon
