#include "imaging/jpeg_size.h"

#include "base/byte_reader.h"
#include "imaging/jpeg_format.h"

namespace kestrelon {
namespace {

bool is_frame(uint8_t marker) {
  // C0 to CF but for the tables DHT (C4) and DAC (CC) and the extension C8.
  return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

bool stands_alone(uint8_t marker) {
  return marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8);
}

}  // namespace

std::optional<ImageRect> jpeg_size(std::span<const uint8_t> file) {
  ByteReader reader(file);
  if (reader.u16be() != jpeg::kStart) return {};
  while (reader.ok()) {
    if (reader.u8() != 0xFF) return {};
    uint8_t marker = 0xFF;
    while (reader.ok() && marker == 0xFF) marker = reader.u8();
    if (stands_alone(marker)) continue;
    const uint16_t length = reader.u16be();
    if (length < 2 || marker == 0xDA) return {};
    if (!is_frame(marker)) {
      reader.skip(length - 2u);
      continue;
    }
    reader.skip(1);  // bits a sample
    const int32_t height = reader.u16be(), width = reader.u16be();
    if (!reader.ok() || width == 0) return {};
    return ImageRect{0, 0, width, height};
  }
  return {};
}

}  // namespace kestrelon
