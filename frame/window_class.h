// Window classes of the library. They die with the module.
#pragma once

#include <windows.h>

namespace kestrelon {

/// The class of a name, registered at its first use; 0 when the system refuses. `name` must live as
/// long as the module.
ATOM window_class(const wchar_t* name, WNDPROC procedure, UINT style);

/// For the end of the module.
void unregister_window_classes();

}  // namespace kestrelon
