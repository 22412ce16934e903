// Where a control may find itself: in our container, in the system's own under a plain message
// loop, and there under a dialog's.
#pragma once

#include <memory>
#include <string>

#include "base/com_win.h"

namespace kestrelon {

enum class PlaceKind { kForm, kAxWindow, kDialog };
std::string place_name(PlaceKind kind);

class ProbePlace {
 public:
  virtual ~ProbePlace() = default;
  /// Runs messages as this kind of host does.
  virtual void run_for(DWORD milliseconds) = 0;
  /// Takes the control out, as a program does with a control it no longer wants.
  virtual void remove() = 0;
  /// A window beside the control that can have the focus, and the presses it has had.
  virtual HWND other_window() const = 0;
  virtual int presses_on_other() const = 0;
};

/// Shows the control at 10, 10 with 120 by 24 pixels in a window that is in front.
std::unique_ptr<ProbePlace> make_probe_place(PlaceKind kind, const ComPtr<IUnknown>& control);

}  // namespace kestrelon
