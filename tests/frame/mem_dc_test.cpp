#include "frame/mem_dc.h"

#include <gtest/gtest.h>

#include "base/com_win.h"
#include "frame/kit/lines.h"
#include "tests/frame/gdi_handles.h"

namespace kestrelon {
namespace {

ComPtr<IPicture> picture_of(PICTDESC description) {
  ComPtr<IPicture> picture;
  OleCreatePictureIndirect(&description, IID_IPicture, TRUE, picture.put_void());
  return picture;
}

// A bitmap picture whose pixels tell where they stand; magenta on its diagonal.
ComPtr<IPicture> bitmap_picture(int width, int height) {
  DibSection pixels;
  pixels.create(width, height);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      pixels.pixels().row(y)[x] = x == y ? 0xFF00FF : uint32_t(y + 1) << 8 | uint32_t(x + 1);
  const HDC screen = GetDC(nullptr), dc = CreateCompatibleDC(screen);
  PICTDESC description = {};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_BITMAP;
  description.bmp.hbitmap = CreateCompatibleBitmap(screen, width, height);
  const HGDIOBJ old = SelectObject(dc, description.bmp.hbitmap);
  BitBlt(dc, 0, 0, width, height, pixels.dc(), 0, 0, SRCCOPY);
  SelectObject(dc, old);
  DeleteDC(dc);
  ReleaseDC(nullptr, screen);
  return picture_of(description);
}

uint32_t color_at(const DibSection& picture, int x, int y) {
  return picture.pixels().row(y)[x] & kColorBits;
}

TEST(MemDC, OnlyGrowsAndGrowingEmptiesIt) {
  pcMemDC strip;
  EXPECT_EQ(strip.hDc(), nullptr);
  strip.set_Width(10);  // nothing to show yet, but remembered
  strip.set_Height(4);
  ASSERT_NE(strip.hDc(), nullptr);
  strip.pixels().row(1)[1] = 7;
  const HDC before = strip.hDc();
  for (const int width : {10, 9, 0, -5}) strip.set_Width(width);
  EXPECT_EQ(strip.Width(), 10);
  EXPECT_EQ(strip.hDc(), before);
  EXPECT_EQ(strip.pixels().row(1)[1], 7u);
  strip.set_Height(5);
  EXPECT_EQ(strip.Width(), 10);
  EXPECT_EQ(strip.pixels().row(1)[1], 0u);
}

TEST(MemDC, ASurfaceThatCannotBeMadeLeavesNoneAtAll) {
  pcMemDC strip;
  strip.set_Width(10);
  strip.set_Height(10);
  strip.set_Height(INT32_MAX);
  EXPECT_EQ(strip.Width(), 0);
  EXPECT_EQ(strip.Height(), 0);
  EXPECT_EQ(strip.hDc(), nullptr);
  strip.set_Width(3);
  strip.set_Height(3);
  EXPECT_NE(strip.hDc(), nullptr);
}

TEST(MemDC, CopiesBitmapPicturesAndLeavesOtherKindsAlone) {
  pcMemDC strip;
  ASSERT_TRUE(strip.CreateFromPicture(bitmap_picture(6, 4).get()));
  EXPECT_EQ(strip.Width(), 6);
  EXPECT_EQ(strip.Height(), 4);
  EXPECT_EQ(strip.pixels().row(3)[5] & kColorBits, 0x000406u);
  EXPECT_FALSE(strip.CreateFromPicture(nullptr));
  PICTDESC icon = {};
  icon.cbSizeofstruct = sizeof icon;
  icon.picType = PICTYPE_ICON;
  icon.icon.hicon = CopyIcon(LoadIconW(nullptr, reinterpret_cast<LPCWSTR>(IDI_APPLICATION)));
  EXPECT_FALSE(strip.CreateFromPicture(picture_of(icon).get()));
  EXPECT_EQ(strip.Width(), 6);
  ASSERT_TRUE(strip.CreateFromPicture(bitmap_picture(3, 3).get()));  // keeps its size
  EXPECT_EQ(strip.Width(), 6);
  EXPECT_EQ(strip.pixels().row(2)[1] & kColorBits, 0x000302u);
}

TEST(MemDC, DrawsPartsOrAllWithAndWithoutItsMask) {
  pcMemDC strip;
  ASSERT_TRUE(strip.CreateFromPicture(bitmap_picture(6, 4).get()));
  for (const bool mask : {false, true}) {
    DibSection target;
    ASSERT_TRUE(target.create(10, 10));
    fill_rect(target.pixels(), target.pixels().bounds(), 0x111111);
    strip.Draw(target.dc(), 1, 0, 0, -1, 2, 3, mask);  // the whole size, from the second column
    EXPECT_EQ(color_at(target, 2, 3), 0x000102u);
    EXPECT_EQ(color_at(target, 6, 6), 0x000406u);
    EXPECT_EQ(color_at(target, 2, 4), mask ? 0x111111u : 0xFF00FFu);
    EXPECT_EQ(color_at(target, 7, 3), 0x111111u);  // beyond the source
    EXPECT_EQ(color_at(target, 2, 2), 0x111111u);
    strip.Draw(target.dc(), 2, 1, 2, 1, 0, 0, mask);
    EXPECT_EQ(color_at(target, 0, 0), 0x000203u);
    EXPECT_EQ(color_at(target, 2, 0), 0x111111u);
    strip.Draw(target.dc(), 0, 0, INT32_MAX, INT32_MAX, 9, 9, mask);
    EXPECT_EQ(color_at(target, 9, 9), mask ? 0x111111u : 0xFF00FFu);
  }
}

TEST(MemDC, StretchesTheWholeWhenNoSourceSizeIsGiven) {
  pcMemDC strip;
  ASSERT_TRUE(strip.CreateFromPicture(bitmap_picture(3, 2).get()));
  DibSection target;
  ASSERT_TRUE(target.create(9, 9));
  strip.StretchDraw(target.dc(), 0, 0, 9, 6, 0, 0, 0, 0);
  EXPECT_EQ(color_at(target, 4, 1), 0x000102u);
  EXPECT_EQ(color_at(target, 8, 5), 0x000203u);
  EXPECT_EQ(color_at(target, 0, 6), 0u);
}

TEST(MemDC, ComesAndGoesWithoutTraces) {
  const ComPtr<IPicture> picture = bitmap_picture(26, 195);
  DibSection target;
  target.create(20, 20);
  const auto once = [&] {
    pcMemDC strip;
    strip.CreateFromPicture(picture.get());
    strip.Draw(target.dc(), 0, 0, 13, 13, 0, 0, true);
  };
  once();
  const size_t before = free_gdi_handles();
  for (int i = 0; i < 200; ++i) once();
  EXPECT_EQ(free_gdi_handles(), before);
  once();
  EXPECT_EQ(color_at(target, 1, 0), 0x000102u);
}

}  // namespace
}  // namespace kestrelon
