// Late-bound properties with arguments, such as the text of a cell.
#pragma once

#include <vector>

#include "host/late_bound.h"

namespace kestrelon::host {

void put_indexed(IDispatch* object, const wchar_t* name, std::vector<Variant> arguments,
                 const Variant& value);

}  // namespace kestrelon::host
