// A type library as text: everything a client's binary depends on, one fact a line.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string>

namespace kestrelon {

/// Types in their order with GUIDs and flags; members with ids, kinds, arguments and types;
/// enumeration members with values. Helpstrings are left out: they may improve. UTF-8, lines ended
/// by \n.
std::string describe_type_library(ITypeLib& library);

}  // namespace kestrelon
