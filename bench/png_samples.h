// Pictures drawn for the PNG benchmarks: the same pixels on every run.
#pragma once

#include <algorithm>
#include <cmath>
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

class Noise {
 public:
  explicit Noise(uint32_t seed) : state_(seed * 2654435761u + 1) {}
  uint32_t next() {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 17;
    return state_ ^= state_ << 5;
  }

 private:
  uint32_t state_;
};

inline uint8_t byte_of(double value) {
  return static_cast<uint8_t>(std::clamp(value, 0.0, 255.0));
}

inline Picture blank(uint32_t width, uint32_t height, uint32_t channels) {
  return {width, height, channels, std::vector<uint8_t>(size_t{width} * height * channels)};
}

/// Soft shapes under sensor noise, as a photograph has; with alpha, an ellipse with a soft edge.
inline Picture draw_photo(uint32_t width, uint32_t height, uint32_t channels) {
  Picture p = blank(width, height, channels);
  Noise noise(7);
  uint8_t* out = p.pixels.data();
  for (uint32_t y = 0; y < height; ++y) {
    const double v = y * 2000.0 / width, sv = std::sin(v / 97), cv = std::cos(v / 31);
    for (uint32_t x = 0; x < width; ++x, out += channels) {
      const double u = x * 2000.0 / width;
      const double shape = 110 + 60 * std::sin(u / 141 + sv * 2) + 35 * cv * std::sin(u / 23);
      const double grain = static_cast<double>(noise.next() % 5) - 2;
      out[0] = byte_of(shape + grain);
      out[1] = byte_of(shape * 0.85 + 20 + grain + static_cast<double>(noise.next() & 1));
      out[2] = byte_of(shape * 0.6 + v / 20 + static_cast<double>(noise.next() % 3));
      if (channels == 4) {
        const double dx = 2.0 * x / width - 1, dy = 2.0 * y / height - 1;
        out[3] = byte_of((1.1 - std::sqrt(dx * dx + dy * dy)) * 600);
      }
    }
  }
  return p;
}

inline void fill(Picture& p, uint32_t x0, uint32_t y0, uint32_t x1, uint32_t y1, uint32_t rgb) {
  for (uint32_t y = y0; y < std::min(y1, p.height); ++y) {
    for (uint32_t x = x0; x < std::min(x1, p.width); ++x) {
      uint8_t* out = &p.pixels[(size_t{y} * p.width + x) * p.channels];
      for (uint32_t c = 0; c < 3; ++c) out[c] = static_cast<uint8_t>(rgb >> (16 - 8 * c));
    }
  }
}

/// Windows, text-like marks and flat areas.
inline Picture draw_screenshot(uint32_t width, uint32_t height) {
  Picture p = blank(width, height, 3);
  Noise noise(3);
  for (uint32_t y = 0; y < height; ++y) fill(p, 0, y, width, y + 1, 0x203040 + (y * 90 / height));
  for (int window = 0; window < 14; ++window) {
    const uint32_t x = noise.next() % (width * 3 / 4), y = noise.next() % (height * 3 / 4);
    const uint32_t w = 300 + noise.next() % 900, h = 200 + noise.next() % 700;
    fill(p, x, y, x + w, y + h, 0xF4F6FA);
    for (uint32_t i = 0; i < 28; ++i) fill(p, x, y + i, x + w, y + i + 1, 0xBFDBFF + i * 0x010100);
    for (uint32_t line = y + 40; line + 20 < y + h; line += 20) {
      for (uint32_t at = x + 10; at + 10 < x + w; at += 8) {
        const uint32_t glyph = noise.next() % 60;
        for (uint32_t k = 0; k < 12; ++k) {
          const uint32_t ink = (glyph * 2654435761u >> k) & 7;
          if (glyph > 10)
            fill(p, at + (ink & 3), line + k, at + (ink & 3) + 2, line + k + 1, 0x1E395B);
        }
      }
    }
  }
  return p;
}

/// A round symbol with a soft edge and a shading, different for each `seed`.
inline Picture draw_icon(uint32_t size, uint32_t seed) {
  Picture p = blank(size, size, 4);
  Noise noise(seed);
  const uint32_t hue = noise.next();
  uint8_t* out = p.pixels.data();
  for (uint32_t y = 0; y < size; ++y) {
    for (uint32_t x = 0; x < size; ++x, out += 4) {
      const double dx = 2.0 * x / size - 1, dy = 2.0 * y / size - 1;
      const double r = std::sqrt(dx * dx + dy * dy);
      const double shade = 1.2 - 0.5 * dy - 0.3 * r + (std::abs(dx + dy) < 0.2 ? 0.4 : 0.0);
      for (int c = 0; c < 3; ++c) out[c] = byte_of(((hue >> (8 * c)) & 255) * shade);
      out[3] = byte_of((0.92 - r) * 255 * 6);
    }
  }
  return p;
}

}  // namespace kestrelon::bench
