// The running system behind the utility class.
#pragma once

#include "services/kn_platform.h"

namespace kestrelon {

/// The one object for the whole process; it holds no state but a random sequence.
KnPlatform& system_platform();

}  // namespace kestrelon
