#include "services/kn_random.h"
#include "base/decimal.h"

#include <limits>

namespace kestrelon {

uint32_t random_up_to(KnPlatform& platform, uint32_t bound) {
  // Smallest mask of ones that covers the bound; what exceeds the bound is drawn again.
  uint32_t mask = bound;
  for (const unsigned shift : {1u, 2u, 4u, 8u, 16u}) mask |= mask >> shift;
  uint32_t number;
  do number = platform.random_bits() & mask;
  while (number > bound);
  return number;
}

int32_t random_number(KnPlatform& platform) {
  return static_cast<int32_t>(random_up_to(platform, std::numeric_limits<int32_t>::max()));
}

std::wstring random_groups(KnPlatform& platform, std::wstring_view delimiter, int32_t groups,
                           int32_t bound) {
  constexpr uint64_t kLongest = 16'000'000;
  if (groups <= 0 || bound < 0) return {};
  const size_t width = decimal_text(bound).size();
  const uint64_t group_size = static_cast<uint64_t>(width) + delimiter.size();
  if (group_size > kLongest || group_size * static_cast<uint64_t>(groups) > kLongest) return {};
  std::wstring text;
  text.reserve(static_cast<size_t>(group_size * static_cast<uint64_t>(groups)));
  for (int32_t i = 0; i < groups; ++i) {
    if (i > 0) text += delimiter;
    const std::wstring number = decimal_text(random_up_to(platform, static_cast<uint32_t>(bound)));
    text.append(width - number.size(), L'0');
    text += number;
  }
  return text;
}

}  // namespace kestrelon
