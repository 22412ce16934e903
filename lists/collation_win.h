// The order of Brazilian Portuguese, whatever language the machine speaks.
#pragma once

#include "lists/collation.h"

namespace kestrelon {

const Collation& language_collation();

}  // namespace kestrelon
