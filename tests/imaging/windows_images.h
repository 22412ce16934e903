// What the tests of the Windows side of the image engine share.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "base/file_bytes.h"
#include "imaging/dib_win.h"

namespace kestrelon {

/// A file of resources/samples; empty if there is none.
inline std::vector<uint8_t> sample(const std::string& name) {
  const std::string path = KESTRELON_SOURCE_DIR "/resources/samples/" + name;
  return read_file(std::wstring(path.begin(), path.end()), 1 << 20)
      .value_or(std::vector<uint8_t>());
}

inline uint32_t stored(const c32bppDIB& image, int x, int y) {
  uint32_t pixel;
  std::memcpy(&pixel, image.row(y) + x * 4, 4);
  return pixel;
}

/// Fills `image` with a premultiplied pattern that no mirror, turn or shift repeats.
inline void paint(c32bppDIB& image, int width, int height, bool opaque = false) {
  ASSERT_TRUE(image.InitializeDIB(width, height));
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      image.SetPixel(x, y, RGB(x * 37 % 256, y * 53 % 256, (x + 2 * y) * 29 % 256),
                     opaque ? 255 : (x * 91 + y * 17) % 256);
  image.set_alpha(opaque ? AlphaType::None : AlphaType::Complex);
}

/// The largest difference of a byte; the first `bytes` of each pixel count.
inline int largest_difference(const c32bppDIB& a, const c32bppDIB& b, size_t bytes = 4) {
  if (a.Width() != b.Width() || a.Height() != b.Height()) return 256;
  int most = 0;
  for (size_t i = 0; i < a.pixel_count() * 4; ++i)
    if (i % 4 < bytes) most = std::max(most, std::abs(a.bits()[i] - b.bits()[i]));
  return most;
}

inline bool keeps_invariant(const c32bppDIB& image) {
  for (size_t i = 0; i < image.pixel_count(); ++i)
    for (int c = 0; c < 3; ++c)
      if (image.bits()[i * 4 + c] > image.bits()[i * 4 + 3]) return false;
  return true;
}

/// A GDI object, deleted at the end.
template <class Handle>
struct GdiObject {
  explicit GdiObject(Handle handle) : value(handle) {}
  ~GdiObject() { DeleteObject(value); }
  GdiObject(const GdiObject&) = delete;
  GdiObject& operator=(const GdiObject&) = delete;
  Handle value;
};

}  // namespace kestrelon
