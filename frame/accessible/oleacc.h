// The system's accessibility library, loaded when a reader first asks for something.
#pragma once

#include <windows.h>

#include <oleacc.h>

namespace kestrelon {

/// A function of oleacc.dll; null where the system has none. The library stays loaded.
template <class Function>
Function* oleacc_function(const char* name) {
  static const HMODULE library = LoadLibraryW(L"oleacc.dll");
  return library == nullptr
             ? nullptr
             : reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

}  // namespace kestrelon
