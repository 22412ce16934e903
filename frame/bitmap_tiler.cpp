#include "frame/bitmap_tiler.h"

#include <shlwapi.h>

#include <algorithm>

#include "frame/kit/blit.h"
#include "frame/mem_dc.h"

namespace kestrelon {
namespace {

ComPtr<IPicture> load_picture(const std::wstring& file_name) {
  ComPtr<IStream> stream;
  ComPtr<IPicture> picture;
  if (SUCCEEDED(SHCreateStreamOnFileEx(file_name.c_str(), STGM_READ | STGM_SHARE_DENY_WRITE, 0,
                                       FALSE, nullptr, stream.put())))
    OleLoadPicture(stream.get(), 0, FALSE, IID_IPicture, picture.put_void());
  return picture;
}

}  // namespace

void IAPP_BitMapTiler::set_Picture(IPicture* picture) {
  const ComPtr<IPicture> kept(picture);  // may be the one that is released here
  picture_ = kept;
  tile_.reset();
  last_failure_.clear();
  if (picture == nullptr) return;
  if (file_name_.empty()) file_name_ = L"PICTURE";
  const HBITMAP bitmap = bitmap_of(picture);
  if (bitmap == nullptr) return fail(L"Unable to allocate memory for picture object.");
  copy_bitmap(bitmap);
}

void IAPP_BitMapTiler::set_FileName(std::wstring file_name) {
  file_name_ = std::move(file_name);
  const ComPtr<IPicture> picture =
      file_name_.empty() ? ComPtr<IPicture>() : load_picture(file_name_);
  set_Picture(picture.get());
  if (!picture && !file_name_.empty()) fail(L"Load Picture Failed: " + file_name_);
}

void IAPP_BitMapTiler::copy_bitmap(HBITMAP bitmap) {
  BITMAP facts = {};
  if (GetObjectW(bitmap, sizeof facts, &facts) == 0 || !tile_.create(facts.bmWidth, facts.bmHeight))
    return fail(L"Unable to allocate memory for picture object.");
  const HDC source = CreateCompatibleDC(nullptr);
  if (source == nullptr) return fail(L"Unable to create compatible DC");
  if (const HGDIOBJ previous = SelectObject(source, bitmap)) {
    BitBlt(tile_.dc(), 0, 0, tile_.width(), tile_.height(), source, 0, 0, SRCCOPY);
    SelectObject(source, previous);
  } else {
    fail(L"Unable to select bitmap into DC");
  }
  DeleteDC(source);
}

void IAPP_BitMapTiler::fail(std::wstring text) {
  last_failure_ = std::move(text);
  tile_.reset();
}

void IAPP_BitMapTiler::TileArea(HDC target, int x, int y, int width, int height) const {
  if (!tile_ || width <= 0 || height <= 0) return;
  // Only what can be seen is put together, and given to the target in one piece.
  RECT clip = {};
  if (GetClipBox(target, &clip) == ERROR) return;
  const auto end = [](int start, int size) {
    return static_cast<int>(std::min<int64_t>(int64_t{start} + size, INT32_MAX));
  };
  const PixelRect area = intersect({x, y, end(x, width), end(y, height)},
                                   {clip.left, clip.top, clip.right, clip.bottom});
  const auto origin = [](int start, int offset, int size) {
    return static_cast<int>((int64_t{start} + offset) % size);
  };
  DibSection tiled;
  if (area.empty() || !tiled.create(area.right - area.left, area.bottom - area.top)) return;
  const PixelView pixels = tiled.pixels();
  tile_area(pixels, pixels.bounds(), tile_.pixels(), origin(area.left, x_origin_, tile_.width()),
            origin(area.top, y_origin_, tile_.height()));
  BitBlt(target, area.left, area.top, tiled.width(), tiled.height(), tiled.dc(), 0, 0, SRCCOPY);
}

}  // namespace kestrelon
