#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {
namespace {

using Pixel = std::array<int, 4>;

Pixel stored(const c32bppDIB& image, int32_t x, int32_t y) {
  const uint8_t* p = image.view().pixel(x, y);
  return {p[0], p[1], p[2], p[3]};
}

TEST(DibLifecycle, SizesAndTypesFollowEachStep) {
  c32bppDIB image;
  EXPECT_EQ(image.ImageType(), ImageFormat::Error);
  ASSERT_TRUE(image.InitializeDIB(3, -2));
  EXPECT_EQ(image.Height(), 2);
  EXPECT_EQ(image.Alpha(), AlphaType::Simple);
  image.set_image_type(ImageFormat::Png);
  image.set_original_bytes({1, 2});
  // Refused sizes change nothing; impossible ones leave no image.
  EXPECT_FALSE(image.InitializeDIB(3, 0));
  EXPECT_FALSE(image.InitializeDIB(-3, 2));
  EXPECT_EQ(image.ImageType(), ImageFormat::Png);
  EXPECT_FALSE(image.InitializeDIB(INT32_MAX, INT32_MIN));
  EXPECT_FALSE(image.has_image());
  EXPECT_EQ(image.ImageType(), ImageFormat::Error);
  std::vector<uint8_t> bytes{9};
  EXPECT_FALSE(image.GetOrginalFormat(bytes));
  EXPECT_TRUE(bytes.empty());
}

TEST(DibLifecycle, SwapMovesTheImageAndLeavesTheSettings) {
  c32bppDIB a, b;
  a.InitializeDIB(2, 1);
  a.set_original_bytes({7});
  a.set_HighQualityInterpolation(true);
  a.SwapDIBs(b);
  EXPECT_FALSE(a.has_image());
  EXPECT_TRUE(a.HighQualityInterpolation());
  EXPECT_EQ(b.Width(), 2);
  EXPECT_EQ(b.original_bytes().size(), 1u);
  EXPECT_EQ(a.ImageType(), ImageFormat::Error);
}

TEST(DibFlags, FollowThePlatform) {
  struct Bridge : ImagingBridge {
    Bridge(PlatformFacts f, bool library) : given(f), has_library(library) {
      set_imaging_bridge(this);
    }
    ~Bridge() override { set_imaging_bridge(nullptr); }
    PlatformFacts facts() const override { return given; }
    bool library_ok() override { return has_library; }
    PlatformFacts given;
    bool has_library;
  };
  using Family = PlatformFacts::Family;
  struct Case {
    PlatformFacts facts;
    bool library;
    int32_t flags;
  };
  for (const Case& c :
       {Case{{Family::WindowsNt, 6, 1, 0}, true, 75}, Case{{Family::WindowsNt, 5, 0, 0}, false, 73},
        Case{{Family::WindowsNt, 4, 0, 5}, true, 96}, Case{{Family::WindowsNt, 4, 0, 6}, true, 66},
        Case{{Family::Windows9x, 4, 10, 0}, true, 18},
        Case{{Family::Windows9x, 4, 0, 0}, true, 32}}) {
    Bridge bridge(c.facts, c.library);
    c32bppDIB image;
    EXPECT_EQ(image.system_flags(), c.flags);
    EXPECT_EQ(image.HighQualityInterpolation(), (c.flags & 2) != 0);
    image.set_isAlphaBlendFriendly(true);
    EXPECT_EQ(image.isAlphaBlendFriendly(), (c.flags & 24) != 0);
    image.set_KeepGDIplusActive(true);
    EXPECT_EQ(image.KeepGDIplusActive(), image.isGDIplusEnabled());
  }
}

TEST(DibPixels, GetUndoesPremultiplicationOfPartialAlphaOnly) {
  c32bppDIB image;
  image.InitializeDIB(2, 2);
  image.bits()[0] = 10, image.bits()[1] = 20, image.bits()[2] = 128, image.bits()[3] = 128;
  int32_t alpha = -1;
  // The first row in memory is the bottom one.
  EXPECT_EQ(image.GetPixel(0, 1, &alpha), (19 << 16) | (39 << 8) | 255);
  EXPECT_EQ(alpha, 128);
  EXPECT_EQ(image.GetPixel(0, 1, &alpha, true), (10 << 16) | (20 << 8) | 128);
  EXPECT_EQ(image.GetPixel(0, 0, &alpha), 0);
  for (const auto& [x, y] : {std::pair{-1, 0}, {2, 0}, {0, 2}, {0, -1}})
    EXPECT_EQ(image.GetPixel(x, y), -1);
}

TEST(DibPixels, SetKeepsColoursAtOrBelowAlpha) {
  c32bppDIB image;
  image.InitializeDIB(2, 2);
  EXPECT_NE(image.SetPixel(0, 0, 0xFFFFFF, 128, true), 0);
  EXPECT_EQ(stored(image, 0, 0), (Pixel{128, 128, 128, 128}));
  EXPECT_EQ(image.Alpha(), AlphaType::Complex);
  image.SetPixel(1, 0, 0x0A80FF, 128, true);  // blue 10, green 128, red above the alpha
  EXPECT_EQ(stored(image, 1, 0), (Pixel{10, 128, 128, 128}));
  image.SetPixel(1, 1, 0x0A80FF, 100, false);
  EXPECT_EQ(stored(image, 1, 1), (Pixel{3, 50, 100, 100}));
  EXPECT_EQ(image.SetPixel(1, 1, 0x0A80FF, 0),
            reinterpret_cast<intptr_t>(image.view().pixel(1, 1)));
  EXPECT_EQ(stored(image, 1, 1), (Pixel{}));
  image.EraseDIB();
  image.SetPixel(0, 0, 0x123456);
  EXPECT_EQ(stored(image, 0, 0), (Pixel{0x12, 0x34, 0x56, 255}));
  EXPECT_EQ(image.Alpha(), AlphaType::Simple);
  for (int32_t alpha : {-1, 256}) EXPECT_EQ(image.SetPixel(0, 0, 0, alpha), 0);
  EXPECT_EQ(image.SetPixel(0, 2, 0), 0);
}

TEST(DibBits, EveryLayoutComesBackThroughTheOtherDirection) {
  c32bppDIB image;
  image.InitializeDIB(5, 3);
  for (size_t i = 0; i < 60; ++i) image.bits()[i] = static_cast<uint8_t>(i % 4 == 3 ? 255 : i * 4);
  const ImageRect area{1, 1, 99, 0};  // clipped to 4 by 2
  for (int bits = 0; bits < 16; ++bits) {
    BitsFormat format;
    format.bgr = bits & 1;
    format.with_alpha = bits & 2;
    format.dword_aligned = bits & 4;
    format.bottom_up = bits & 8;
    format.premultiplied = false;
    std::vector<uint8_t> out;
    ASSERT_TRUE(image.GetDIBbits(out, format, area));
    const size_t length = format.with_alpha ? 16 : 12;
    ASSERT_EQ(out.size(), length * 2);
    const size_t top = format.bottom_up ? length : 0;
    EXPECT_EQ(out[top + (format.bgr ? 0 : 2)], stored(image, 1, 1)[0]);
    c32bppDIB back;
    back.InitializeDIB(5, 3);
    ASSERT_TRUE(back.SetDIBbits(out, format, area));
    for (int32_t y = 0; y < 3; ++y) {
      for (int32_t x = 0; x < 5; ++x) {
        Pixel expected = x >= 1 && y >= 1 ? stored(image, x, y) : Pixel{};
        if (!format.with_alpha) expected[3] = 0;
        ASSERT_EQ(stored(back, x, y), expected) << bits;
      }
    }
    out.pop_back();
    EXPECT_FALSE(back.SetDIBbits(out, format, area));
  }
}

TEST(DibBits, RowsArePaddedPartialAlphaUndoneAndTransparentPixelsZero) {
  c32bppDIB image;
  image.InitializeDIB(3, 1);
  const uint8_t pixels[] = {50, 60, 70, 100, 9, 9, 9, 0, 1, 2, 3, 255};
  std::copy(std::begin(pixels), std::end(pixels), image.bits());
  BitsFormat format;
  format.with_alpha = false;
  format.premultiplied = false;
  std::vector<uint8_t> out;
  ASSERT_TRUE(image.GetDIBbits(out, format));
  EXPECT_EQ(out, (std::vector<uint8_t>{127, 153, 178, 0, 0, 0, 1, 2, 3, 0, 0, 0}));
  format.dword_aligned = false;
  ASSERT_TRUE(image.GetDIBbits(out, format));
  EXPECT_EQ(out.size(), 9u);
  for (const ImageRect& bad : {ImageRect{-1, 0, 1, 1}, ImageRect{0, -1, 1, 1},
                               ImageRect{3, 0, 1, 1}, ImageRect{0, 0, -1, 1}})
    EXPECT_FALSE(image.GetDIBbits(out, format, bad));
  ASSERT_TRUE(image.GetAlphaMask(out, true, false));
  EXPECT_EQ(out, (std::vector<uint8_t>{100, 0, 255, 0}));
  ASSERT_TRUE(image.GetAlphaMask(out, false, false, {1, 0, 9, 9}));
  EXPECT_EQ(out, (std::vector<uint8_t>{0, 255}));
  EXPECT_FALSE(c32bppDIB().GetAlphaMask(out, false, false));
}

TEST(PngProperties, LiveInAStoreMadeOnDemand) {
  c32bppDIB image;
  EXPECT_EQ(image.PngPropertyGet(PngProperty::DefaultBkgColor), PngPropertyValue(-1));
  EXPECT_EQ(image.PngPropertyGet(PngProperty::DateTimeModified), PngPropertyValue(0.0));
  EXPECT_EQ(image.PngPropertyGet(PngProperty::FilterMethod), PngPropertyValue(std::wstring()));
  EXPECT_TRUE(image.PngPropertySet(PngProperty::Title, std::nullopt));
  EXPECT_EQ(image.png_properties(), nullptr);
  EXPECT_TRUE(image.PngPropertySet(PngProperty::Comment, std::wstring(L"late")));
  EXPECT_TRUE(image.PngPropertySet(PngProperty::Title, std::wstring(L"a")));
  EXPECT_TRUE(image.PngPropertySet(PngProperty::Title, std::wstring(L"b")));
  EXPECT_FALSE(image.PngPropertySet(PngProperty::Title, 5));
  EXPECT_FALSE(image.PngPropertySet(static_cast<PngProperty>(3), std::wstring(L"x")));
  EXPECT_TRUE(image.PngPropertySet(PngProperty::Miscellaneous, std::wstring(L"1"), L"K1"));
  EXPECT_TRUE(image.PngPropertySet(PngProperty::Miscellaneous, std::wstring(L"2"), L"K2"));
  ASSERT_EQ(image.png_properties()->entries().size(), 4u);
  EXPECT_EQ(image.png_properties()->entries()[0].id, PngProperty::Title);
  EXPECT_EQ(image.PngPropertyGet(PngProperty::Title), PngPropertyValue(std::wstring(L"b")));
  EXPECT_EQ(image.PngPropertyGet(PngProperty::Miscellaneous, L"K2"),
            PngPropertyValue(std::wstring(L"2")));
  image.PngPropertySet(PngProperty::Miscellaneous, std::nullopt, L"K1");
  EXPECT_EQ(image.png_properties()->entries().size(), 3u);
  image.PngPropertySet(PngProperty::FilterMethod, 99);
  EXPECT_EQ(image.png_properties()->filter(), PngFilter::Default);
  image.PngPropertySet(PngProperty::ClearProps, std::nullopt);
  EXPECT_EQ(image.png_properties(), nullptr);
}

}  // namespace
}  // namespace kestrelon
