// Animations of a few pixels, read and played.
#pragma once

#include <gtest/gtest.h>

#include "imaging/gif_animation/gif_canvas.h"
#include "tests/imaging/gif_bytes.h"

namespace kestrelon::test {

using Pixels = std::vector<uint32_t>;

inline GifFile read_file_of(const Bytes& bytes) {
  GifFile file;
  EXPECT_TRUE(file.read(bytes));
  return file;
}

/// What each frame leaves on the canvas.
inline std::vector<Pixels> play(const Bytes& bytes) {
  GifFile file;
  GifCanvas canvas;
  std::vector<Pixels> out;
  if (!file.read(bytes) || !canvas.open(file)) return out;
  for (size_t i = 0; i < file.frames().size(); ++i) {
    canvas.show(i);
    out.push_back(pixels(canvas.image()));
  }
  return out;
}

/// Bits of a graphic control.
constexpr uint32_t kClear = 2 * 4, kRestore = 3 * 4, kTransparent = 1;

}  // namespace kestrelon::test
