#include "imaging/bit_fields.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace kestrelon {

bool BitFields::usable(const ChannelMasks& masks, int bits) {
  const uint32_t room = bits == 16 ? 0xFFFFu : 0xFFFFFFFFu;
  for (const uint32_t mask : {masks.red, masks.green, masks.blue, masks.alpha}) {
    if ((mask & ~room) != 0) return false;
    if (mask != 0 && std::popcount(mask) + std::countl_zero(mask) + std::countr_zero(mask) != 32)
      return false;
  }
  return true;
}

BitFields::BitFields(const ChannelMasks& masks)
    : red_(make_channel(masks.red, 0)),
      green_(make_channel(masks.green, 0)),
      blue_(make_channel(masks.blue, 0)),
      alpha_(make_channel(masks.alpha, 255)) {}

BitFields::Channel BitFields::make_channel(uint32_t mask, uint8_t missing) {
  Channel channel{};
  channel.widen[0] = missing;
  if (mask == 0) return channel;
  const int width = std::min(std::popcount(mask), 8);
  channel.shift = 32 - std::countl_zero(mask) - width;
  channel.mask = mask >> channel.shift << channel.shift;
  for (uint32_t value = 0; value < 1u << width; ++value) {
    uint32_t wide = value << (8 - width);
    for (int filled = width; filled < 8; filled *= 2) wide |= wide >> filled;
    channel.widen[value] = static_cast<uint8_t>(wide);
  }
  return channel;
}

template <class Pixel>
void BitFields::convert(uint8_t* dst, const uint8_t* src, size_t count) const {
  for (size_t i = 0; i < count; ++i) {
    Pixel pixel;
    std::memcpy(&pixel, src + i * sizeof(Pixel), sizeof(Pixel));
    const uint32_t out = alpha_.value(pixel) << 24 | red_.value(pixel) << 16 |
                         green_.value(pixel) << 8 | blue_.value(pixel);
    std::memcpy(dst + i * 4, &out, 4);
  }
}

void BitFields::to_row(uint8_t* dst, const uint8_t* src, size_t count, int bits) const {
  bits == 16 ? convert<uint16_t>(dst, src, count) : convert<uint32_t>(dst, src, count);
}

}  // namespace kestrelon
