#include "host/gallery/picture.h"

// gdiplus.h needs these.
#include <objidl.h>
#include <propidl.h>

#include <algorithm>
#include <stdexcept>
namespace Gdiplus {
using std::max;
using std::min;
}  // namespace Gdiplus
#include <gdiplus.h>

namespace kestrelon::host {
namespace {

// A memory device context with a bitmap in it.
class BitmapContext {
 public:
  explicit BitmapContext(HBITMAP bitmap)
      : dc_(CreateCompatibleDC(nullptr)), before_(SelectObject(dc_, bitmap)) {}
  BitmapContext(const BitmapContext&) = delete;
  BitmapContext& operator=(const BitmapContext&) = delete;
  ~BitmapContext() {
    SelectObject(dc_, before_);
    DeleteDC(dc_);
  }
  HDC get() const { return dc_; }

 private:
  HDC dc_;
  HGDIOBJ before_;
};

class GdiplusSession {
 public:
  GdiplusSession() {
    Gdiplus::GdiplusStartupInput input;
    if (Gdiplus::GdiplusStartup(&token_, &input, nullptr) != Gdiplus::Ok)
      throw std::runtime_error("gdiplus does not start");
  }
  GdiplusSession(const GdiplusSession&) = delete;
  GdiplusSession& operator=(const GdiplusSession&) = delete;
  ~GdiplusSession() { Gdiplus::GdiplusShutdown(token_); }

 private:
  ULONG_PTR token_ = 0;
};

// {557CF406-1A04-11D3-9A73-0000F81EF32E}: the system's PNG encoder.
constexpr CLSID kPngEncoder = {
    0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};

}  // namespace

Picture::Picture(int width, int height) : width_(width), height_(height) {
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  if (!bitmap) throw std::runtime_error("no memory for a picture");
  bitmap_ = std::shared_ptr<HBITMAP__>(bitmap, [](HBITMAP handle) { DeleteObject(handle); });
  const BitmapContext context(bitmap);
  PatBlt(context.get(), 0, 0, width, height, WHITENESS);
}

void Picture::draw(HDC hdc, int x, int y, int scale) const {
  if (!bitmap_) return;
  const BitmapContext context(handle());
  SetStretchBltMode(hdc, COLORONCOLOR);
  StretchBlt(hdc, x, y, width_ * scale, height_ * scale, context.get(), 0, 0, width_, height_,
             SRCCOPY);
}

void Picture::take(HDC source, int x, int y) {
  const BitmapContext context(handle());
  BitBlt(context.get(), 0, 0, width_, height_, source, x, y, SRCCOPY);
}

Picture Picture::part(const RECT& area) const {
  Picture out(area.right - area.left, area.bottom - area.top);
  const BitmapContext context(handle());
  out.take(context.get(), area.left, area.top);
  return out;
}

Picture client_picture(HWND window) {
  RECT client = {};
  GetClientRect(window, &client);
  Picture out(std::max<int>(1, client.right), std::max<int>(1, client.bottom));
  // Without DCX_CLIPCHILDREN: the children's pixels belong to the picture.
  HDC hdc = GetDCEx(window, nullptr, DCX_CACHE);
  out.take(hdc, 0, 0);
  ReleaseDC(window, hdc);
  return out;
}

void save_png(const Picture& picture, const std::wstring& path) {
  const GdiplusSession session;
  Gdiplus::Bitmap bitmap(picture.handle(), nullptr);
  if (bitmap.Save(path.c_str(), &kPngEncoder, nullptr) != Gdiplus::Ok)
    throw std::runtime_error("the picture cannot be written");
}

}  // namespace kestrelon::host
