// A control without keys whose colours come in themes.
#pragma once

#include "frame/display_control.h"

namespace kestrelon {

class ThemedDisplay : public DisplayControl {
 public:
  // In the order of the property bag, behind those of the base.
  Property<ENUM_THEME> Theme{*this, L"Theme", Windows_8, &ThemedDisplay::theme_changed};

 protected:
  using DisplayControl::DisplayControl;
  /// A theme has been chosen by the program or in the designer; never when a form is read.
  virtual void theme_changed() = 0;
};

}  // namespace kestrelon
