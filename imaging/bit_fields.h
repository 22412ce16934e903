// Pixels whose channels are told by masks.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kestrelon {

/// The masks of the channels; 0 means that the channel is missing: colour 0, alpha 255.
struct ChannelMasks {
  uint32_t red, green, blue, alpha;
  bool operator==(const ChannelMasks&) const = default;
};

/// Turns rows of 16 or 32-bit pixels into image rows. Channels of less than 8 bits repeat their
/// high bits into the low ones, longer ones lose their low bits.
class BitFields {
 public:
  /// A mask with gaps, or one that does not fit into `bits` (16 or 32), is refused.
  static bool usable(const ChannelMasks& masks, int bits);

  explicit BitFields(const ChannelMasks& masks);
  /// `count` little-endian pixels of `bits` (16 or 32) bits; straight colours.
  void to_row(uint8_t* dst, const uint8_t* src, size_t count, int bits) const;

 private:
  struct Channel {
    uint32_t mask;
    int shift;           // to the right, onto bit 0
    uint8_t widen[256];  // channel value to 8 bits
    uint32_t value(uint32_t pixel) const { return widen[(pixel & mask) >> shift]; }
  };
  static Channel make_channel(uint32_t mask, uint8_t missing);
  template <class Pixel>
  void convert(uint8_t* dst, const uint8_t* src, size_t count) const;

  Channel red_, green_, blue_, alpha_;
};

}  // namespace kestrelon
