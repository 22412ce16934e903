// The colours of a ribbon that no property holds, for each theme and for high contrast.
#pragma once

#include "chrome/us_ribbon/ribbon_shapes.h"

namespace kestrelon::ribbon {

struct BoxColors {
  ColorRef border;
  Gradient inside;
};

struct Palette {
  Gradient strip;       ///< behind the tabs
  BoxColors body;       ///< the panel of categories
  ColorRef body_light;  ///< the line inside its border
  BoxColors category, category_hot;
  ColorRef category_light;  ///< the line inside a category's border
  ColorRef caption_back, caption_back_hot;
  BoxColors tab, tab_hot;  ///< the selected tab, the one under the pointer
  BoxColors hot, pressed, checked;
  ColorRef mark, mark_light;  ///< launchers and scroll arrows
  ColorRef disabled_text;
  bool frames = true;  ///< categories have frames and round corners; otherwise a line behind each
  // In high contrast these stand for the properties and for text on what is lit.
  bool system = false;
  ColorRef text = 0, lit_text = 0;
};

/// `theme` as ENUM_THEME counts; an unknown one is drawn as the last.
const Palette& theme_palette(int theme);
/// Made of the system's colours.
Palette contrast_palette();

}  // namespace kestrelon::ribbon
