// Every class the library can create: the one list that the factory, the registration and the tests
// read.
#pragma once

#include <span>

#include "base/automation_win.h"

namespace kestrelon {

enum class ClassKind {
  kControl,  ///< for a container: Control, ToolboxBitmap32, MiscStatus, Verb, categories
  kPage,     ///< a property page: created by its id, in no type library
  kService,  ///< created by name from a script or program; never marked safe for scripting
};

struct ServerClass {
  const ClassInfo& info;
  ClassKind kind;
  const wchar_t* description;  ///< Brazilian Portuguese, as registries and object browsers show it
  int toolbox_bitmap;          ///< resource number, 0 for a service
  DWORD misc_status;           ///< OLEMISC_... of a control
  /// A new object with one reference, held by its own IUnknown.
  AutomationObject* (*create)();
};

std::span<const ServerClass> server_classes();

/// The class of an id, or null.
const ServerClass* find_class(const CLSID& clsid);

}  // namespace kestrelon
