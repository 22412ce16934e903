// Shapes are told on a field of 32 by 32 and sampled four times a side, so that their edges are
// smooth at every size.
#include "host/gallery/ribbon_pictures.h"

#include <olectl.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

namespace kestrelon::host {
namespace {

constexpr int kSamples = 4;

struct Shape {
  std::function<bool(double, double)> inside;
  uint32_t top, bottom;  // 0xRRGGBB, from above to below
};

Shape box(double left, double top, double right, double bottom, uint32_t from, uint32_t to) {
  return {[=](double x, double y) { return x >= left && x < right && y >= top && y < bottom; },
          from, to};
}

Shape disc(double cx, double cy, double radius, uint32_t from, uint32_t to) {
  return {[=](double x, double y) { return std::hypot(x - cx, y - cy) < radius; }, from, to};
}

Shape ring(double cx, double cy, double outer, double inner, uint32_t color) {
  return {[=](double x, double y) {
            const double d = std::hypot(x - cx, y - cy);
            return d < outer && d >= inner;
          },
          color, color};
}

Shape line(double x1, double y1, double x2, double y2, double width, uint32_t color) {
  return {[=](double x, double y) {
            const double dx = x2 - x1, dy = y2 - y1, length = dx * dx + dy * dy;
            const double t = std::clamp(((x - x1) * dx + (y - y1) * dy) / length, 0.0, 1.0);
            return std::hypot(x - x1 - t * dx, y - y1 - t * dy) < width / 2;
          },
          color, color};
}

void sheet(std::vector<Shape>& out, double x, double y, double width, double height) {
  out.push_back(box(x, y, x + width, y + height, 0x7F97B5, 0x5D7797));
  out.push_back(box(x + 1, y + 1, x + width - 1, y + height - 1, 0xFFFFFF, 0xE4ECF6));
  for (double row = y + 5; row < y + height - 3; row += 4)
    out.push_back(box(x + 4, row, x + width - 4, row + 1.4, 0x9DB4D2, 0x9DB4D2));
}

std::vector<Shape> shapes_of(Glyph glyph) {
  std::vector<Shape> out;
  switch (glyph) {
    case Glyph::kPaste:
      out.push_back(box(4, 4, 24, 30, 0xD9A560, 0xA8722B));
      out.push_back(box(6, 6, 22, 28, 0xF0CF9A, 0xD9A560));
      out.push_back(box(9, 2, 19, 7, 0x9AA7B8, 0x66758A));
      sheet(out, 11, 10, 17, 20);
      break;
    case Glyph::kCopy:
      sheet(out, 4, 2, 18, 22);
      sheet(out, 10, 8, 18, 22);
      break;
    case Glyph::kNew:
      sheet(out, 5, 2, 20, 28);
      out.push_back(disc(24, 24, 7, 0x7BC043, 0x3C8A1E));
      out.push_back(box(23, 20, 25, 28, 0xFFFFFF, 0xFFFFFF));
      out.push_back(box(20, 23, 28, 25, 0xFFFFFF, 0xFFFFFF));
      break;
    case Glyph::kOpen:
      out.push_back(box(3, 6, 14, 12, 0xE7B84C, 0xC9942A));
      out.push_back(box(3, 9, 28, 27, 0xE7B84C, 0xC08A22));
      out.push_back({[](double x, double y) {
                       return y >= 14 && y < 27 && x >= 3 + (27 - y) * 0.35 &&
                              x < 27 + (27 - y) * 0.3;
                     },
                     0xFFE9A8, 0xF2C352});
      break;
    case Glyph::kSave:
      out.push_back(box(3, 3, 29, 29, 0x5B8DD6, 0x2A5CA8));
      out.push_back(box(9, 3, 23, 12, 0xF4F7FB, 0xCBD7E6));
      out.push_back(box(18, 4, 21, 11, 0x2A5CA8, 0x2A5CA8));
      out.push_back(box(7, 16, 25, 29, 0xFFFFFF, 0xE6EDF6));
      out.push_back(box(10, 19, 22, 20.5, 0x9DB4D2, 0x9DB4D2));
      out.push_back(box(10, 23, 22, 24.5, 0x9DB4D2, 0x9DB4D2));
      break;
    case Glyph::kPrint:
      sheet(out, 9, 2, 14, 12);
      out.push_back(box(3, 11, 29, 24, 0xC6CFDB, 0x8493A8));
      out.push_back(box(4, 12, 28, 14, 0xEEF2F7, 0xEEF2F7));
      out.push_back(disc(25, 17, 1.4, 0x54C24A, 0x54C24A));
      sheet(out, 8, 19, 16, 11);
      break;
    case Glyph::kPerson:
      out.push_back({[](double x, double y) {
                       return y < 30 && std::hypot((x - 16) / 12, (y - 31) / 14) < 1;
                     },
                     0x6FA3E0, 0x2F66AE});
      out.push_back(disc(16, 10, 7.5, 0xF6D3AE, 0xE2AA75));
      out.push_back({[](double x, double y) { return std::hypot(x - 16, y - 9) < 7.7 && y < 7.5; },
                     0x7A4E2A, 0x5E3A1C});
      break;
    case Glyph::kMail:
      out.push_back(box(2, 7, 30, 26, 0x8CA0BA, 0x63799A));
      out.push_back(box(3, 8, 29, 25, 0xFFFFFF, 0xDCE6F2));
      out.push_back(line(3.5, 8.5, 16, 18, 1.6, 0x7F97B5));
      out.push_back(line(28.5, 8.5, 16, 18, 1.6, 0x7F97B5));
      break;
    case Glyph::kChart:
      out.push_back(box(3, 3, 4.6, 29, 0x5D7797, 0x5D7797));
      out.push_back(box(3, 27.4, 30, 29, 0x5D7797, 0x5D7797));
      out.push_back(box(7, 17, 12, 27, 0x8FBCEB, 0x3F78BD));
      out.push_back(box(14, 10, 19, 27, 0xFFC766, 0xE08A1E));
      out.push_back(box(21, 5, 26, 27, 0x9AD46A, 0x4B9A2A));
      break;
    case Glyph::kFind:
      out.push_back(line(20, 20, 28, 28, 4.6, 0xB07A3A));
      out.push_back(disc(13, 13, 10, 0xDCEBFA, 0xA9CBEF));
      out.push_back(ring(13, 13, 10.6, 8, 0x5D7797));
      break;
    case Glyph::kHelp:
      out.push_back(disc(16, 16, 14, 0x6FA8EC, 0x2B62B4));
      out.push_back({[](double x, double y) {
                       const double d = std::hypot(x - 16, y - 12);
                       return d < 6.5 && d >= 3.2 && (y < 12 || x > 16);
                     },
                     0xFFFFFF, 0xFFFFFF});
      out.push_back(box(14.4, 15.4, 17.6, 20, 0xFFFFFF, 0xFFFFFF));
      out.push_back(disc(16, 24, 2.2, 0xFFFFFF, 0xFFFFFF));
      break;
  }
  return out;
}

double channel(uint32_t color, int shift) {
  return static_cast<double>(color >> shift & 0xFF);
}

// A pixel as 0xAARRGGBB, the mean of its samples.
uint32_t sample(const std::vector<Shape>& shapes, int column, int row, int size) {
  double sum[3] = {};
  int covered = 0;
  for (int i = 0; i < kSamples * kSamples; ++i) {
    const double x = (column + (i % kSamples + 0.5) / kSamples) * 32 / size;
    const double y = (row + (i / kSamples + 0.5) / kSamples) * 32 / size;
    for (auto shape = shapes.rbegin(); shape != shapes.rend(); ++shape) {
      if (!shape->inside(x, y)) continue;
      for (int c = 0; c < 3; ++c) {
        const double from = channel(shape->top, c * 8), to = channel(shape->bottom, c * 8);
        sum[c] += from + (to - from) * y / 32;
      }
      ++covered;
      break;
    }
  }
  if (covered == 0) return 0;
  uint32_t out = static_cast<uint32_t>(covered * 255 / (kSamples * kSamples)) << 24;
  for (int c = 0; c < 3; ++c)
    out |= static_cast<uint32_t>(std::lround(sum[c] / covered)) << (c * 8);
  return out;
}

HICON draw_icon(Glyph glyph, int size) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = size;
  info.bmiHeader.biHeight = -size;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  ICONINFO parts{};
  parts.fIcon = TRUE;
  parts.hbmColor = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  parts.hbmMask = CreateBitmap(size, size, 1, 1, nullptr);
  HICON out = nullptr;
  if (bits != nullptr && parts.hbmMask != nullptr) {
    const std::vector<Shape> shapes = shapes_of(glyph);
    auto* const pixels = static_cast<uint32_t*>(bits);
    for (int i = 0; i < size * size; ++i) pixels[i] = sample(shapes, i % size, i / size, size);
    out = CreateIconIndirect(&parts);
  }
  DeleteObject(parts.hbmColor);
  DeleteObject(parts.hbmMask);
  return out;
}

}  // namespace

ComPtr<IDispatch> glyph_picture(Glyph glyph, int size) {
  PICTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_ICON;
  description.icon.hicon = draw_icon(glyph, size);
  ComPtr<IDispatch> out;
  if (description.icon.hicon != nullptr)
    OleCreatePictureIndirect(&description, IID_IPictureDisp, TRUE, out.put_void());
  return out;
}

}  // namespace kestrelon::host
