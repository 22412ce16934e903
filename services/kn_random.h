// Random numbers of the utility class: for display, not for secrets.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "services/kn_platform.h"

namespace kestrelon {

/// 0 to `bound`, both included, every value equally likely.
uint32_t random_up_to(KnPlatform& platform, uint32_t bound);

/// 0 to 2,147,483,647.
int32_t random_number(KnPlatform& platform);

/// `groups` random numbers from 0 to `bound`, each filled with zeros to the width of the bound. ""
/// when `groups` is not positive, `bound` is negative or the text would be longer than 16 million
/// characters.
std::wstring random_groups(KnPlatform& platform, std::wstring_view delimiter, int32_t groups,
                           int32_t bound);

}  // namespace kestrelon
