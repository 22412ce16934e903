// IClassFactory for every class of the table.
#pragma once

#include <ocidl.h>

#include "server/class_table.h"

namespace kestrelon {

/// A factory with one reference for the caller.
IClassFactory* make_class_factory(const ServerClass& entry);

}  // namespace kestrelon
