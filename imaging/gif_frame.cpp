#include "imaging/gif_frame.h"

#include <string_view>

namespace kestrelon::gif {

bool is_signature(std::span<const char, 6> signature) {
  char lower[6];
  std::ranges::transform(signature, lower, [](unsigned char c) {
    return static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
  });
  const std::string_view name(lower, sizeof lower);
  return name == "gif89a" || name == "gif87a";
}

Palette make_palette(const FrameSource& frame) {
  static constexpr uint8_t kFallback[] = {0, 0, 0, 255, 255, 255};
  const std::span<const uint8_t> table = frame.table.empty() ? kFallback : frame.table;
  Palette palette;
  palette.fill(kOpaque);
  const size_t entries = table.size() / 3;
  for (size_t i = 0; i < entries; ++i)
    palette[i] = opaque_pixel(table[3 * i], table[3 * i + 1], table[3 * i + 2]);
  if (frame.transparent >= 0 && static_cast<size_t>(frame.transparent) < entries)
    palette[static_cast<size_t>(frame.transparent)] = 0;
  return palette;
}

}  // namespace kestrelon::gif
