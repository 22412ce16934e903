// Where the parts of a text box are: pure arithmetic in pixels.
#pragma once

#include "frame/kit/pixel_view.h"
#include "frame/kit/scale.h"

namespace kestrelon {

enum class TextBoxPart { kNone, kClear, kUp, kDown };

struct TextBoxPlaces {
  PixelRect edit{};   // the edit window
  PixelRect clear{};  // the cross; empty without one
  PixelRect up{}, down{};
  PixelRect button{};  // the inner button; empty without one
};

struct TextBoxShape {
  int width = 0, height = 0;
  int line_height = 0;  // of the font
  bool multiline = false, button = false, clear = false, spin = false;
  Scale scale;
};

TextBoxPlaces lay_out_text_box(const TextBoxShape& shape);
TextBoxPart part_at(const TextBoxPlaces& places, int x, int y);

}  // namespace kestrelon
