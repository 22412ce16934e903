// Pictures in memory: taken from windows, enlarged, written as PNG.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

namespace kestrelon::host {

/// An owned 32-bit bitmap. Copies share it.
class Picture {
 public:
  Picture() = default;
  /// White, of this size in pixels; throws std::runtime_error when the system refuses.
  Picture(int width, int height);

  int width() const { return width_; }
  int height() const { return height_; }
  HBITMAP handle() const { return bitmap_.get(); }
  explicit operator bool() const { return bitmap_ != nullptr; }

  /// Draws at (x, y), each pixel as a square of `scale` pixels.
  void draw(HDC hdc, int x, int y, int scale = 1) const;
  Picture part(const RECT& area) const;
  /// Copies pixels of a device context from (x, y) on.
  void take(HDC source, int x, int y);

 private:
  int width_ = 0;
  int height_ = 0;
  std::shared_ptr<HBITMAP__> bitmap_;
};

/// What the client area of a window shows, with its child windows.
Picture client_picture(HWND window);

/// Throws std::runtime_error when the file cannot be written.
void save_png(const Picture& picture, const std::wstring& path);

}  // namespace kestrelon::host
