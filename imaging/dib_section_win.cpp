#include "imaging/dib_section_win.h"

#include <utility>

namespace kestrelon {
namespace {

class DibSectionStore final : public PixelStore {
 public:
  DibSectionStore(HBITMAP bitmap, uint8_t* bits) : bitmap_(bitmap), bits_(bits) {}
  ~DibSectionStore() override { DeleteObject(bitmap_); }
  DibSectionStore(const DibSectionStore&) = delete;
  DibSectionStore& operator=(const DibSectionStore&) = delete;
  uint8_t* bits() override { return bits_; }
  intptr_t handle() override { return reinterpret_cast<intptr_t>(bitmap_); }

 private:
  HBITMAP bitmap_;
  uint8_t* bits_;
};

}  // namespace

std::unique_ptr<PixelStore> make_dib_section_store(int32_t width, int32_t height) {
  // The most that the 32-bit size field of a DIB can name.
  if (width <= 0 || height <= 0 || int64_t{width} * height > INT32_MAX / 4) return nullptr;
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  const HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  if (bitmap == nullptr) return nullptr;
  return std::make_unique<DibSectionStore>(bitmap, static_cast<uint8_t*>(bits));
}

HBITMAP bitmap_of(const c32bppDIB& image) {
  // An image on the heap has some other value for a handle, so ask GDI whose pixels it knows.
  const auto bitmap = reinterpret_cast<HBITMAP>(image.handle());
  DIBSECTION facts = {};
  if (bitmap == nullptr || GetObjectW(bitmap, sizeof facts, &facts) != sizeof facts) return nullptr;
  return facts.dsBm.bmBits == image.bits() ? bitmap : nullptr;
}

BitmapDc::BitmapDc(HBITMAP bitmap) {
  select(bitmap);
}

bool BitmapDc::make() {
  if (dc_ == nullptr) dc_ = CreateCompatibleDC(nullptr);
  return dc_ != nullptr;
}

bool BitmapDc::select(HBITMAP bitmap) {
  deselect();
  if (bitmap == nullptr || !make()) return false;
  previous_ = SelectObject(dc_, bitmap);
  return previous_ != nullptr;
}

void BitmapDc::deselect() {
  if (previous_ != nullptr) SelectObject(dc_, std::exchange(previous_, nullptr));
}

void BitmapDc::reset() {
  deselect();
  if (dc_ != nullptr) DeleteDC(std::exchange(dc_, nullptr));
}

}  // namespace kestrelon
