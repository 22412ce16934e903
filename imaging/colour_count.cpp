#include "imaging/colour_count.h"

#include <algorithm>

namespace kestrelon {

ColourCount::ColourCount() : slots_(kSlots) {}

bool ColourCount::add(uint32_t colour, size_t limit) {
  Slot& slot = slots_[find(colour)];
  if (slot.colour == colour) return true;
  if (colours_.size() >= limit) return false;
  slot.colour = colour;
  colours_.push_back(colour);
  return true;
}

void ColourCount::sort() {
  std::ranges::sort(colours_);
  for (size_t i = 0; i < colours_.size(); ++i)
    slots_[find(colours_[i])].index = static_cast<uint8_t>(i);
}

}  // namespace kestrelon
