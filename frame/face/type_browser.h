// What designers browse, read from the type library: the pages that properties have and the choices
// of enumerations.
#pragma once

#include <ocidl.h>

#include <string>
#include <vector>

#include "base/com_win.h"

namespace kestrelon {

/// One member of an enumeration as designers show it ("Office Blue").
struct EnumChoice {
  std::wstring name;
  long value = 0;
};

/// A property that can be read without arguments.
struct BrowsedProperty {
  DISPID id = DISPID_UNKNOWN;
  std::wstring type;  ///< the name of its declared type; empty for one the language has
};

/// In the order of the interface. Empty without type information.
std::vector<BrowsedProperty> browsed_properties(const IID& interface_id);

/// The choices of a property, in order; empty for one that is no enumeration.
std::vector<EnumChoice> property_choices(const IID& interface_id, DISPID id);

/// The system's page for a declared type (colours, fonts, pictures); null for others.
const CLSID* stock_page(const std::wstring& type);

}  // namespace kestrelon
