// What the registry holds about the library, written and removed as one.
#pragma once

#include <windows.h>

namespace kestrelon {

enum class RegistrationScope {
  kMachine,  ///< HKEY_CLASSES_ROOT, as regsvr32 expects
  kUser,     ///< HKEY_CURRENT_USER\Software\Classes
};

/// Writes the keys of all classes and the type library. On failure removes what it wrote.
HRESULT register_server(RegistrationScope scope);

/// Removes all of it; what is missing already is no failure.
HRESULT unregister_server(RegistrationScope scope);

}  // namespace kestrelon
