#include "imaging/picture_convert_win.h"

#include <olectl.h>

#include "base/com_win.h"
#include "tests/imaging/windows_images.h"

namespace kestrelon {
namespace {

struct IconOwner {
  explicit IconOwner(HICON icon) : value(icon) {}
  ~IconOwner() { DestroyIcon(value); }
  IconOwner(const IconOwner&) = delete;
  IconOwner& operator=(const IconOwner&) = delete;
  HICON value;
};

// A DIB section of 3 by 2 pixels: red, green, blue over white, gray, black.
HBITMAP small_bitmap(WORD depth, bool top_down) {
  BITMAPINFO info = {};
  info.bmiHeader = {
      sizeof(BITMAPINFOHEADER), 3, top_down ? -2 : 2, 1, depth, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  const HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  const uint32_t rows[2][3] = {{0xFF0000, 0x00FF00, 0x0000FF}, {0xFFFFFF, 0x808080, 0x000000}};
  for (int y = 0; y < 2; ++y) {
    const int row_bytes = (3 * depth / 8 + 3) & ~3;
    auto* const row = static_cast<uint8_t*>(bits) + (top_down ? y : 1 - y) * row_bytes;
    for (int x = 0; x < 3; ++x) std::memcpy(row + x * depth / 8, &rows[y][x], depth / 8);
  }
  return bitmap;
}

TEST(ConvertBitmap, AnyDepthAndOrderComesRightWayUpAndOpaque) {
  for (const WORD depth : {24, 32}) {
    for (const bool top_down : {false, true}) {
      const GdiObject bitmap(small_bitmap(depth, top_down));
      WindowsImage image;
      ASSERT_TRUE(load_handle(image, bitmap.value));
      EXPECT_EQ(image.ImageType(), ImageFormat::Bitmap);
      EXPECT_EQ(image.Alpha(), AlphaType::None);
      EXPECT_EQ(stored(image, 0, 0), 0xFFFF0000u) << depth << top_down;
      EXPECT_EQ(stored(image, 2, 0), 0xFF0000FFu);
      EXPECT_EQ(stored(image, 1, 1), 0xFF808080u);
      EXPECT_EQ(stored(image, 2, 1), 0xFF000000u);
    }
  }
}

TEST(ConvertBitmap, AlphaOf32BitsIsClassified) {
  WindowsImage source, image;
  paint(source, 9, 6);
  ASSERT_TRUE(load_handle(image, bitmap_of(source)));
  EXPECT_EQ(image.ImageType(), ImageFormat::BitmapPargb);
  EXPECT_EQ(image.Alpha(), AlphaType::Complex);
  EXPECT_EQ(largest_difference(image, source), 0);
  source.bits()[0] = 255;  // above its alpha
  source.bits()[3] = 128;
  ASSERT_TRUE(load_handle(image, bitmap_of(source)));
  EXPECT_EQ(image.ImageType(), ImageFormat::BitmapArgb);
  EXPECT_EQ(image.bits()[0], 128);
}

TEST(ConvertIcon, ComesBackFromTheIconItMade) {
  WindowsImage source, image;
  paint(source, 20, 12);
  const IconOwner icon(make_icon(source));
  ASSERT_NE(icon.value, nullptr);
  ASSERT_TRUE(load_handle(image, icon.value));
  EXPECT_EQ(image.ImageType(), ImageFormat::IconArgb);
  EXPECT_EQ(image.Alpha(), AlphaType::Complex);
  EXPECT_TRUE(keeps_invariant(image));
  EXPECT_LE(largest_difference(image, source), 1);

  const IconOwner cursor(make_icon(source, true, {3, 4}));
  ICONINFO facts = {};
  ASSERT_TRUE(GetIconInfo(cursor.value, &facts));
  const GdiObject color(facts.hbmColor), mask(facts.hbmMask);
  EXPECT_EQ(facts.xHotspot, 3u);
  EXPECT_EQ(facts.yHotspot, 4u);
  ASSERT_TRUE(load_handle(image, cursor.value));
  EXPECT_EQ(image.ImageType(), ImageFormat::CursorArgb);
  image.DestroyDIB();
  EXPECT_EQ(make_icon(image), nullptr);
}

// Rows of the masks are padded to 16 bits: pixel (0, 0) cut out, (1, 0) white, all else black.
TEST(ConvertIcon, MasksCutWhereThereIsNoAlpha) {
  const uint8_t cut[16] = {0x80}, white[16] = {0x40};
  const IconOwner mono(CreateIcon(nullptr, 8, 8, 1, 1, cut, white));
  WindowsImage image;
  ASSERT_TRUE(load_handle(image, mono.value));
  EXPECT_EQ(image.ImageType(), ImageFormat::Icon);
  EXPECT_EQ(image.Alpha(), AlphaType::Simple);
  EXPECT_EQ(stored(image, 0, 0), 0u);
  EXPECT_EQ(stored(image, 1, 0), 0xFFFFFFFFu);
  EXPECT_EQ(stored(image, 7, 7), 0xFF000000u);

  uint8_t colors[8 * 8 * 4] = {};
  colors[4] = colors[5] = colors[6] = 255;  // pixel (1, 0), without alpha as old icons have it
  const IconOwner deep(CreateIcon(nullptr, 8, 8, 1, 32, cut, colors));
  ASSERT_TRUE(load_handle(image, deep.value));
  EXPECT_EQ(stored(image, 0, 0), 0u);
  EXPECT_EQ(stored(image, 1, 0), 0xFFFFFFFFu);
  EXPECT_EQ(stored(image, 7, 7), 0xFF000000u);
}

HENHMETAFILE drawn_metafile() {
  const RECT frame = {0, 0, 2540, 1270};  // an inch by half an inch
  const HDC dc = CreateEnhMetaFileW(nullptr, nullptr, &frame, nullptr);
  const GdiObject brush(CreateSolidBrush(RGB(200, 30, 10)));
  const RECT left = {0, 0, GetDeviceCaps(dc, LOGPIXELSX) / 2, GetDeviceCaps(dc, LOGPIXELSY)};
  FillRect(dc, &left, brush.value);
  return CloseEnhMetaFile(dc);
}

TEST(ConvertMetafile, WhatIsNotDrawnOnIsTransparent) {
  const HENHMETAFILE metafile = drawn_metafile();
  WindowsImage image;
  ASSERT_TRUE(load_handle(image, metafile));
  DeleteEnhMetaFile(metafile);
  EXPECT_EQ(image.ImageType(), ImageFormat::Emf);
  EXPECT_EQ(image.Alpha(), AlphaType::Simple);
  EXPECT_EQ(image.Width(), 96);
  EXPECT_EQ(image.Height(), 48);
  EXPECT_EQ(stored(image, 5, 5), 0xFFC81E0Au);
  EXPECT_EQ(stored(image, image.Width() - 5, 5), 0u);
  EXPECT_TRUE(keeps_invariant(image));
}

TEST(ConvertPicture, TakesEveryKindOfPictureObject) {
  WindowsImage image;
  EXPECT_FALSE(load_std_picture(image, static_cast<IPicture*>(nullptr)));
  ComPtr<IPicture> empty;
  ASSERT_EQ(OleCreatePictureIndirect(nullptr, IID_IPicture, TRUE, empty.put_void()), S_OK);
  EXPECT_FALSE(load_std_picture(image, empty.get()));

  PICTDESC description = {};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_BITMAP;
  description.bmp.hbitmap = small_bitmap(24, false);
  ComPtr<IPicture> picture;
  ASSERT_EQ(OleCreatePictureIndirect(&description, IID_IPicture, TRUE, picture.put_void()), S_OK);
  ASSERT_TRUE(load_std_picture(image, picture.as<IDispatch>().get()));
  EXPECT_EQ(stored(image, 1, 0), 0xFF00FF00u);

  description.picType = PICTYPE_ICON;
  WindowsImage source;
  paint(source, 16, 16);
  description.icon.hicon = make_icon(source);
  ASSERT_EQ(OleCreatePictureIndirect(&description, IID_IPicture, TRUE, picture.put_void()), S_OK);
  ASSERT_TRUE(load_std_picture(image, picture.get()));
  EXPECT_LE(largest_difference(image, source), 1);
}

TEST(ConvertHandle, RefusesWhatIsNoPicture) {
  WindowsImage image;
  paint(image, 3, 3);
  for (const HANDLE handle : {HANDLE{nullptr}, HANDLE{GetStockObject(WHITE_BRUSH)},
                              reinterpret_cast<HANDLE>(INT_PTR{0x1234567})}) {
    EXPECT_FALSE(load_handle(image, handle));
    EXPECT_FALSE(image.has_image());
  }
}

TEST(PlatformDecoder, ReadsJpegAndRefusesHugeSizes) {
  WindowsImage image, bitmap;
  std::vector<uint8_t> jpeg = sample("kestrel.jpg");
  image.set_isGDIplusEnabled(false);
  ASSERT_TRUE(image.LoadPicture_Stream(jpeg));
  EXPECT_EQ(image.ImageType(), ImageFormat::Bitmap);
  EXPECT_EQ(image.Alpha(), AlphaType::None);
  for (size_t size = 0; size < jpeg.size(); size += 97) {
    const std::vector<uint8_t> cut(jpeg.begin(), jpeg.begin() + static_cast<ptrdiff_t>(size));
    const bool loaded = image.LoadPicture_Stream(cut);
    ASSERT_EQ(loaded, image.ImageType() != ImageFormat::Error);
  }
  // The frame header: length, precision, then both sizes.
  const uint8_t frame[] = {0xFF, 0xC0, 0x00, 0x11, 0x08};
  const auto found = std::search(jpeg.begin(), jpeg.end(), std::begin(frame), std::end(frame));
  ASSERT_NE(found, jpeg.end());
  std::fill(found + 5, found + 9, uint8_t{0xFF});
  EXPECT_FALSE(image.LoadPicture_Stream(jpeg));
}

}  // namespace
}  // namespace kestrelon
