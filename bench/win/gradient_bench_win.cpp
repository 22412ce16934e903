// The scan-line gradient of the kit against a plain GDI implementation that makes a pen for each
// row, and a small face on which fixed costs show. Medians of one process; only the ratios mean
// something.
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "frame/dib_section.h"
#include "frame/kit/gradient.h"

namespace {

using namespace kestrelon;

constexpr ColorRef kFrom = 0xFFEFE3, kTo = 0xF2CEB3;

void kit_gradient(const DibSection& surface) {
  DrawGradient(surface.pixels(), kFrom, kTo, 50, 0, 0, -1, -1);
}

void pen_gradient(const DibSection& surface) {
  const int last = surface.height() - 1;
  const float middle = std::max(0.5f * static_cast<float>(last - 1), 1.0f);
  const ColorRef half = BlendColor(kFrom, kTo, 0.5);
  for (int y = 0; y <= last; ++y) {
    const ColorRef color =
        static_cast<float>(y) > middle
            ? BlendColor(half, kTo, (y - double{middle}) / (last - double{middle}))
            : BlendColor(kFrom, half, y / double{middle});
    const HPEN pen = CreatePen(PS_SOLID, 1, color);
    const HGDIOBJ old = SelectObject(surface.dc(), pen);
    MoveToEx(surface.dc(), 0, y, nullptr);
    LineTo(surface.dc(), surface.width(), y);
    SelectObject(surface.dc(), old);
    DeleteObject(pen);
  }
}

bool same(const DibSection& a, const DibSection& b) {
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x)
      if ((a.pixels().row(y)[x] ^ b.pixels().row(y)[x]) & kColorBits) return false;
  return true;
}

template <class Draw>
double median_microseconds(Draw draw) {
  using Clock = std::chrono::steady_clock;
  std::vector<double> times(41);
  draw();
  for (double& time : times) {
    const auto start = Clock::now();
    draw();
    time = std::chrono::duration<double, std::micro>(Clock::now() - start).count();
  }
  std::nth_element(times.begin(), times.begin() + 20, times.end());
  return times[20];
}

}  // namespace

int main() {
  for (const auto& [width, height] : {std::pair(1000, 600), std::pair(200, 30)}) {
    DibSection by_kit, by_pens;
    if (!by_kit.create(width, height) || !by_pens.create(width, height)) return 1;
    const double kit = median_microseconds([&] { kit_gradient(by_kit); });
    const double pens = median_microseconds([&] { pen_gradient(by_pens); });
    if (!same(by_kit, by_pens)) {
      std::printf("gradient %d x %d: the pictures differ\n", width, height);
      return 1;
    }
    std::printf("gradient %d x %d: kit %.0f us, a pen per row %.0f us, %.1f times faster\n", width,
                height, kit, pens, pens / kit);
  }
}
