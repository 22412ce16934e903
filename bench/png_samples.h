// Pictures drawn for the PNG benchmarks: the same pixels on every run.
#pragma once

#include <cstdint>
#include <vector>

namespace kestrelon::bench {

/// Straight colour, rows from the top; `channels` bytes a pixel (3 red green blue, 4 with alpha).
struct Picture {
  uint32_t width;
  uint32_t height;
  uint32_t channels;
  std::vector<uint8_t> pixels;
};

/// Soft shapes under sensor noise, as a photograph has; with alpha, an ellipse with a soft edge.
Picture draw_photo(uint32_t width, uint32_t height, uint32_t channels);
/// Windows, text-like marks and flat areas.
Picture draw_screenshot(uint32_t width, uint32_t height);
/// A round symbol with a soft edge and a shadow, different for each `seed`.
Picture draw_icon(uint32_t size, uint32_t seed);

}  // namespace kestrelon::bench
