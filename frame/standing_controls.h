// The controls that stand on a control, as seen from below.
#pragma once

#include <windows.h>
//
#include <ocidl.h>

#include <vector>

#include "base/com_win.h"

namespace kestrelon {

/// A control that stands on another, as its container knows it.
struct StandingControl {
  ComPtr<IUnknown> object;
  HWND window = nullptr;
  long tab_index = 0;
};

/// The controls of a container whose windows stand in a window, in tab order. Empty where the
/// container does not tell.
std::vector<StandingControl> standing_controls(IOleClientSite* site, HWND parent);

/// While a control's window bars input, its mouse and key messages pass by the container's filter,
/// which would hand them to windowless controls on it.
void set_input_barred(HWND window, bool barred);
bool input_barred(HWND window);

}  // namespace kestrelon
