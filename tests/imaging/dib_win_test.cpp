#include "imaging/dib_win.h"

#include <stdexcept>

#include "imaging/codecs.h"
#include "imaging/draw_text_win.h"
#include "imaging/region_win.h"
#include "imaging/zlib_api.h"
#include "imaging/zlib_inflater.h"
#include "tests/imaging/windows_images.h"
#include "tests/library_path.h"

namespace kestrelon {
namespace {

// In memory before anything looks for it, as it is when it stands beside the program.
const HMODULE zlib_dll = [] {
  std::wstring path = library_path();
  path.resize(path.rfind(L'\\') + 1);
  return LoadLibraryW((path + L"zlibwapi.dll").c_str());
}();

TEST(DibSection, SharesItsPixelsWithGdi) {
  WindowsImage image;
  ASSERT_TRUE(image.InitializeDIB(7, 5));
  EXPECT_EQ(GetObjectType(reinterpret_cast<HGDIOBJ>(image.handle())), DWORD{OBJ_BITMAP});
  {
    const BitmapDc dc(bitmap_of(image));
    ASSERT_TRUE(dc);
    SetPixel(dc.get(), 2, 0, RGB(1, 2, 3));
    GdiFlush();
  }
  EXPECT_EQ(stored(image, 2, 0) & 0xFFFFFF, 0x010203u);  // the top row
  c32bppDIB heap;
  ASSERT_TRUE(heap.InitializeDIB(7, 5));
  EXPECT_EQ(bitmap_of(heap), nullptr);
  image.SwapDIBs(heap);
  EXPECT_EQ(bitmap_of(image), nullptr);
  EXPECT_NE(bitmap_of(heap), nullptr);
  EXPECT_FALSE(image.InitializeDIB(1 << 15, 1 << 15));
}

// Draws one image through each kind of device context; the pixels must be those our own engine
// puts on a host.
class RenderToDc : public testing::Test {
 protected:
  void SetUp() override {
    paint(image_, 24, 16);
    paint(canvas_, 40, 30, true);
    canvas_.CopyImageTo(expected_);
    args_.destX = 9, args_.destY = 8;
    args_.Opacity = 70;
    args_.grayScale = GrayScale::NtscPal;  // AlphaBlend cannot
    image_.set_isGDIplusEnabled(false);
    image_.set_HighQualityInterpolation(false);
    RenderArguments host = args_;
    host.destHostDIB = &expected_;
    ASSERT_TRUE(image_.Render(nullptr, host));
  }

  WindowsImage image_, canvas_, expected_;
  RenderArguments args_;
};

TEST_F(RenderToDc, WritesIntoTheMemoryOfADibSection) {
  for (size_t i = 0; i < canvas_.pixel_count(); ++i) canvas_.bits()[i * 4 + 3] = 77;
  const BitmapDc dc(bitmap_of(canvas_));
  EXPECT_TRUE(render_to_dc(image_, dc.get(), args_));
  EXPECT_EQ(largest_difference(canvas_, expected_, 3), 0);
  for (size_t i = 0; i < canvas_.pixel_count(); ++i) ASSERT_EQ(canvas_.bits()[i * 4 + 3], 77);
}

TEST_F(RenderToDc, FollowsTheOriginAndAnyClip) {
  const BitmapDc dc(bitmap_of(canvas_));
  SetViewportOrgEx(dc.get(), 4, 3, nullptr);
  args_.destX -= 4, args_.destY -= 3;
  IntersectClipRect(dc.get(), 0, 0, 20, 9);
  ExcludeClipRect(dc.get(), 8, 6, 11, 8);  // no rectangle any more
  EXPECT_TRUE(render_to_dc(image_, dc.get(), args_));
  GdiFlush();
  WindowsImage before;
  paint(before, 40, 30, true);
  for (int y = 0; y < 30; ++y) {
    for (int x = 0; x < 40; ++x) {
      const int lx = x - 4, ly = y - 3;
      const bool inside =
          lx >= 0 && lx < 20 && ly >= 0 && ly < 9 && !(lx >= 8 && lx < 11 && ly >= 6 && ly < 8);
      const uint32_t wanted = stored(inside ? expected_ : before, x, y);
      ASSERT_EQ(stored(canvas_, x, y) & 0xFFFFFF, wanted & 0xFFFFFF) << x << " " << y;
    }
  }
}

TEST_F(RenderToDc, ReadsBackWhatItCannotReach) {
  const HDC screen = GetDC(nullptr);
  const GdiObject bitmap(CreateCompatibleBitmap(screen, 40, 30));
  ReleaseDC(nullptr, screen);
  {
    const BitmapDc from(bitmap_of(canvas_)), to(bitmap.value);
    BitBlt(to.get(), 0, 0, 40, 30, from.get(), 0, 0, SRCCOPY);
    EXPECT_TRUE(render_to_dc(image_, to.get(), args_));
  }
  WindowsImage back;
  ASSERT_TRUE(load_handle(back, bitmap.value));
  EXPECT_EQ(largest_difference(back, expected_, 3), 0);
}

TEST_F(RenderToDc, NothingVisibleIsNoFailure) {
  const BitmapDc dc(bitmap_of(canvas_));
  args_.destX = 4000;
  EXPECT_TRUE(render_to_dc(image_, dc.get(), args_));
  IntersectClipRect(dc.get(), 0, 0, 0, 0);
  args_.destX = 0;
  EXPECT_TRUE(render_to_dc(image_, dc.get(), args_));
  EXPECT_FALSE(render_to_dc(image_, nullptr, args_));
}

TEST_F(RenderToDc, ASurfaceMayLieEitherWayUp) {
  BITMAPINFO info = {};
  info.bmiHeader = {sizeof(BITMAPINFOHEADER), 40, -30, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  const GdiObject top_down(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  {
    const BitmapDc from(bitmap_of(canvas_)), to(top_down.value);
    BitBlt(to.get(), 0, 0, 40, 30, from.get(), 0, 0, SRCCOPY);
    EXPECT_TRUE(render_to_dc(image_, to.get(), args_));
  }
  WindowsImage back;
  ASSERT_TRUE(load_handle(back, top_down.value));
  EXPECT_EQ(largest_difference(back, expected_, 3), 0);
}

// The system rounds where our arithmetic truncates.
TEST_F(RenderToDc, AlphaBlendServesPlainDrawings) {
  args_.grayScale = GrayScale::None;
  canvas_.CopyImageTo(expected_);
  RenderArguments host = args_;
  host.destHostDIB = &expected_;
  image_.Render(nullptr, host);
  const BitmapDc dc(bitmap_of(canvas_));
  EXPECT_TRUE(render_to_dc(image_, dc.get(), args_));
  GdiFlush();
  EXPECT_LE(largest_difference(canvas_, expected_, 3), 2);
}

TEST(ImageRegion, JoinsMoreRectanglesThanOneCallTakes) {
  WindowsImage image;
  ASSERT_TRUE(image.InitializeDIB(100, 100));
  for (int y = 0; y < 100; ++y)
    for (int x = y % 2; x < 100; x += 2) image.SetPixel(x, y, 0xFFFFFF);
  const GdiObject region(image_region(image, RegionStyle::Shaped, 10, -20));
  ASSERT_NE(region.value, nullptr);
  EXPECT_EQ(GetRegionData(region.value, 0, nullptr), sizeof(RGNDATAHEADER) + 5000 * sizeof(RECT));
  for (int y = 0; y < 100; ++y)
    for (int x = 0; x < 100; ++x)
      ASSERT_EQ(PtInRegion(region.value, x + 10, y - 20), x % 2 == y % 2) << x << " " << y;
  image.EraseDIB();
  const GdiObject nothing(image_region(image, RegionStyle::Shaped));
  RECT box;
  EXPECT_EQ(GetRgnBox(nothing.value, &box), NULLREGION);
  EXPECT_EQ(image_region(image, static_cast<RegionStyle>(3)), nullptr);
}

TEST(DrawText, BlendsSmoothLettersAndKeepsTheInvariant) {
  const GdiObject font(CreateFontW(-24, 0, 0, 0, FW_BOLD, FALSE, FALSE, FALSE, DEFAULT_CHARSET, 0,
                                   0, CLEARTYPE_QUALITY, 0, L"Arial"));
  WindowsImage image;
  ASSERT_TRUE(image.InitializeDIB(120, 40));
  ASSERT_TRUE(draw_text(image, L"Kestrel", font.value, {{4, 4, 0, 0}, RGB(255, 128, 0)}));
  EXPECT_TRUE(keeps_invariant(image));
  EXPECT_EQ(image.Alpha(), AlphaType::Complex);
  int full = 0, partly = 0;
  for (int y = 0; y < 40; ++y) {
    for (int x = 0; x < 120; ++x) {
      int32_t alpha = 0;
      const int32_t color = image.GetPixel(x, y, &alpha);
      if (alpha == 255) {
        ++full;
        ASSERT_EQ(color, RGB(255, 128, 0));
      } else if (alpha != 0) {
        ++partly;
      }
      if (x < 4 || y < 4) {
        ASSERT_EQ(alpha, 0);
      }
    }
  }
  EXPECT_GT(full, 200);
  EXPECT_GT(partly, 100);

  WindowsImage opaque;
  paint(opaque, 120, 40, true);
  ASSERT_TRUE(draw_text(opaque, L"Kestrel", font.value, {{}, 0, 50}));
  EXPECT_EQ(opaque.Alpha(), AlphaType::None);
  for (size_t i = 0; i < opaque.pixel_count(); ++i) ASSERT_EQ(opaque.bits()[i * 4 + 3], 255);
}

TEST(DrawText, HasBoundsAndFailures) {
  WindowsImage image, before;
  paint(image, 30, 10);
  image.CopyImageTo(before);
  const auto font = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
  EXPECT_TRUE(draw_text(image, L"x", font, {{500, 0, 0, 0}}));
  EXPECT_TRUE(draw_text(image, L"", font, {}));
  EXPECT_TRUE(draw_text(image, L"x", font, {{}, 0, 0}));
  EXPECT_EQ(largest_difference(image, before), 0);
  EXPECT_FALSE(draw_text(image, L"x", static_cast<HFONT>(nullptr), {}));
  EXPECT_FALSE(draw_text(image, L"x", static_cast<IFont*>(nullptr), {}));
  image.DestroyDIB();
  EXPECT_FALSE(draw_text(image, L"x", font, {}));
}

TEST(ResourceImage, IsReadAsAFile) {
  WindowsImage image;
  EXPECT_FALSE(load_resource_image(image, 32000, RT_RCDATA));
  const std::wstring comctl = L"comctl32.dll";
  const HMODULE module = LoadLibraryW(comctl.c_str());
  // A cursor resource is no file of its own: declined, without an image left behind.
  EXPECT_FALSE(load_resource_image(image, module, MAKEINTRESOURCEW(102), RT_GROUP_CURSOR));
  EXPECT_EQ(image.ImageType(), ImageFormat::Error);
  FreeLibrary(module);
}

TEST(MessageHook, HearsOfAReaderThatBreaks) {
  std::wstring heard;
  set_message_hook([&](const std::wstring& text) { heard = text; });
  ImageCodecs broken = image_codecs();
  broken.read_png = [](std::span<const uint8_t>, c32bppDIB&) -> bool {
    throw std::runtime_error("no palette");
  };
  const ImageCodecs own = set_image_codecs(broken);
  WindowsImage image;
  EXPECT_TRUE(image.LoadPicture_Stream(sample("disc.gif")));  // the chain goes on
  set_image_codecs(own);
  set_message_hook({});
  EXPECT_EQ(heard, L"no palette");
}

TEST(Zlib, IsFoundBesideTheLibrary) {
  WindowsImage image;
  ASSERT_NE(zlib_dll, nullptr);
  EXPECT_TRUE(image.isZlibEnabled());
}

// The entries of the library have their own calling convention and sizes.
TEST(Zlib, InflatesInPiecesWhatItCompressed) {
  const WindowsImage started;
  const ZlibApi* zlib = find_zlib();
  ASSERT_TRUE(zlib && zlib->compress2 && zlib->inflate_init && zlib->inflate && zlib->inflate_end);
  std::vector<uint8_t> plain(200000), packed(300000), got;
  for (size_t i = 0; i < plain.size(); ++i) plain[i] = static_cast<uint8_t>(i * i >> 7);
  auto size = static_cast<unsigned long>(packed.size());
  ASSERT_EQ(zlib->compress2(packed.data(), &size, plain.data(),
                            static_cast<unsigned long>(plain.size()), 9),
            kZlibOk);
  const std::span<const uint8_t> segments[] = {{packed.data(), 1000},
                                               {packed.data() + 1000, size - 1000}};
  ZlibInflater inflater(*zlib, segments, plain.size(), 0);
  for (auto run = inflater.next(); !run.empty(); run = inflater.next())
    got.insert(got.end(), run.begin(), run.end());
  EXPECT_TRUE(inflater.ends_well());
  EXPECT_EQ(got, plain);
}

}  // namespace
}  // namespace kestrelon
