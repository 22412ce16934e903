// The row loops as the product runs them, beside what the system offers for the same: AlphaBlend
// and StretchBlt, from one DIB section to another. Both take turns, so that a slow moment of the
// machine meets both. There is no fine clock of processor time here, so the least of many short
// rounds by the wall clock counts, which other work of the machine disturbs least.
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>
#include <random>

#include "frame/dib_section.h"
#include "imaging/dib_win.h"
#include "imaging/row_kernels.h"

namespace {

using namespace kestrelon;
using Work = std::function<void()>;
using Clock = std::chrono::steady_clock;

double microseconds(const Work& work, int repeats) {
  const auto start = Clock::now();
  for (int i = 0; i < repeats; ++i) work();
  return std::chrono::duration<double, std::micro>(Clock::now() - start).count() / repeats;
}

void report(const char* name, double pixels, const Work& ours, const char* peer,
            const Work& theirs) {
  const auto repeats_of = [](const Work& work) {
    return std::clamp(static_cast<int>(1000 / microseconds(work, 3)), 1, 1000);
  };
  const int our_repeats = repeats_of(ours), their_repeats = repeats_of(theirs);
  double us = HUGE_VAL, them = HUGE_VAL;
  for (int round = 0; round < 40; ++round) {
    us = std::min(us, microseconds(ours, our_repeats));
    them = std::min(them, microseconds(theirs, their_repeats));
  }
  std::printf("%-34s %9.1f Mpixel/s %9.2f us   %6.2f x %s (%.1f Mpixel/s)\n", name, pixels / us, us,
              them / us, peer, pixels / them);
}

void fill(uint8_t* pixels, size_t count, unsigned seed) {
  std::mt19937 random(seed);
  for (uint8_t* p = pixels; p < pixels + count * 4; p += 4) {
    p[3] = static_cast<uint8_t>(random());
    for (int c = 0; c < 3; ++c) p[c] = static_cast<uint8_t>(random() % (p[3] + 1u));
  }
}

// An image of ours and a bitmap of the same pixels for the system; the image draws with the
// library's own engine alone.
struct Source {
  WindowsImage image;
  DibSection bitmap;

  Source(int width, int height, bool smooth) {
    image.InitializeDIB(width, height);
    fill(image.bits(), image.pixel_count(), 1);
    image.set_alpha(AlphaType::Complex);
    image.set_isGDIplusEnabled(false);
    image.set_isAlphaBlendFriendly(false);
    image.set_HighQualityInterpolation(smooth);
    bitmap.create(width, height);
    for (int y = 0; y < height; ++y)
      std::copy_n(image.row(y), size_t{4} * static_cast<size_t>(width),
                  reinterpret_cast<uint8_t*>(bitmap.pixels().row(y)));
  }
};

struct Size {
  int width, height;
  double pixels() const { return 1.0 * width * height; }
};

void over(Size from, Size to, int opacity) {
  const Source source(from.width, from.height, false);
  DibSection target;
  target.create(to.width, to.height);
  char name[64];
  const bool scaled = from.width != to.width;
  std::snprintf(name, sizeof name, "%s at %d %%, %dx%d", scaled ? "nearest, over" : "over", opacity,
                to.width, to.height);
  const BLENDFUNCTION blend = {AC_SRC_OVER, 0, static_cast<BYTE>(opacity * 255 / 100),
                               AC_SRC_ALPHA};
  report(
      name, to.pixels(),
      [&] { render_to_dc(source.image, target.dc(), 0, 0, to.width, to.height, opacity); },
      "AlphaBlend",
      [&] {
        AlphaBlend(target.dc(), 0, 0, to.width, to.height, source.bitmap.dc(), 0, 0, from.width,
                   from.height, blend);
      });
}

void scale(Size from, double factor, bool smooth) {
  const Source source(from.width, from.height, smooth);
  const Size to{static_cast<int>(std::lround(from.width * factor)),
                static_cast<int>(std::lround(from.height * factor))};
  WindowsImage dest;
  DibSection target;
  dest.InitializeDIB(to.width, to.height);
  target.create(to.width, to.height);
  SetStretchBltMode(target.dc(), smooth ? HALFTONE : COLORONCOLOR);
  char name[64];
  std::snprintf(name, sizeof name, "%s x%g, %dx%d", smooth ? "bilinear" : "nearest", factor,
                from.width, from.height);
  report(
      name, to.pixels(), [&] { source.image.CopyImageTo(dest, to.width, to.height); },
      smooth ? "StretchBlt, halftone" : "StretchBlt",
      [&] {
        StretchBlt(target.dc(), 0, 0, to.width, to.height, source.bitmap.dc(), 0, 0, from.width,
                   from.height, SRCCOPY);
      });
}

}  // namespace

int main() {
  std::printf("row loops: %s, %u-bit\n", row_kernels().name,
              static_cast<unsigned>(sizeof(void*) * 8));
  constexpr Size kScreen{1920, 1080};
  over(kScreen, kScreen, 100);
  over(kScreen, kScreen, 60);
  for (const int size : {16, 24, 32, 48, 64}) {
    over({size, size}, {size, size}, 100);
    over({size, size}, {size, size}, 60);
  }
  over({48, 48}, {32, 32}, 100);
  over({512, 512}, {300, 300}, 100);
  for (const bool smooth : {true, false}) {
    for (const double factor : {0.37, 0.873, 2.7}) scale(kScreen, factor, smooth);
    scale({48, 48}, 0.5, smooth);
    scale({32, 32}, 1.5, smooth);
  }
  return 0;
}
