#include "imaging/gdi_plus_win.h"

#include "tests/imaging/windows_images.h"

namespace kestrelon {
namespace {

DrawRequest whole(const c32bppDIB& image) {
  DrawRequest request;
  request.source = &image;
  request.dest_width = image.Width();
  request.dest_height = image.Height();
  request.area = {0, 0, image.Width(), image.Height()};
  return request;
}

TEST(GdiPlus, DrawsOnAHostAsOurOwnEngineDoes) {
  WindowsImage image;
  paint(image, 24, 16);
  ASSERT_TRUE(image.isGDIplusEnabled());
  struct Case {
    int32_t sign_x, sign_y, opacity;
    GrayScale gray;
    float light;
  };
  for (const Case& c : {Case{1, 1, 100, GrayScale::None, 0},
                        {1, 1, 60, GrayScale::None, 0},
                        {-1, 1, 100, GrayScale::None, 0},
                        {1, -1, 100, GrayScale::None, 0},
                        {-1, -1, 30, GrayScale::Ccir709, 0},
                        {1, 1, 100, GrayScale::None, 25},
                        {1, 1, 100, GrayScale::None, -40}}) {
    WindowsImage by_library, by_engine;
    paint(by_library, 40, 30);
    paint(by_engine, 40, 30);
    DrawRequest request = whole(image);
    request.host = &by_library;
    request.dest_x = 5, request.dest_y = 7;
    request.dest_width *= c.sign_x, request.dest_height *= c.sign_y;
    request.opacity = c.opacity;
    request.gray_scale = c.gray;
    request.light = c.light;
    ASSERT_TRUE(cGDIPlus::render(request));
    RenderArguments args;
    args.destX = 5, args.destY = 7;
    args.destWidth = 24 * c.sign_x, args.destHeight = 16 * c.sign_y;
    args.Opacity = c.opacity;
    args.grayScale = c.gray;
    args.LightAdjustment = c.light;
    args.destHostDIB = &by_engine;
    WindowsImage own;
    image.CopyImageTo(own);
    own.set_isGDIplusEnabled(false);
    own.set_HighQualityInterpolation(false);
    ASSERT_TRUE(own.Render(nullptr, args));
    EXPECT_LE(largest_difference(by_library, by_engine), 4)
        << c.sign_x << c.sign_y << " " << c.opacity << " " << c.light;
  }
}

TEST(GdiPlus, TurnsClockwiseAboutTheCentre) {
  WindowsImage image, canvas;
  ASSERT_TRUE(image.InitializeDIB(20, 20));
  for (int y = 0; y < 10; ++y)
    for (int x = 0; x < 10; ++x) image.SetPixel(x, y, 0x0000FF);  // red in the top left quarter
  ASSERT_TRUE(canvas.InitializeDIB(40, 40));
  DrawRequest request = whole(image);
  request.host = &canvas;
  request.dest_x = request.dest_y = 10;
  request.degrees = 90;
  ASSERT_TRUE(cGDIPlus::render(request));
  EXPECT_EQ(stored(canvas, 25, 15), 0xFFFF0000u);  // top right now
  EXPECT_EQ(stored(canvas, 15, 15), 0u);
  EXPECT_EQ(stored(canvas, 15, 25), 0u);
}

TEST(GdiPlus, DrawsOnADeviceContext) {
  WindowsImage image, canvas, expected;
  paint(image, 24, 16, true);
  ASSERT_TRUE(canvas.InitializeDIB(60, 40));
  {
    const BitmapDc dc(bitmap_of(canvas));
    RenderArguments args;
    args.destX = 3, args.destY = 2;
    args.destWidth = 48, args.destHeight = 32;
    args.SetHalfTone = false;
    EXPECT_TRUE(render_to_dc(image, dc.get(), args));
    GdiFlush();
  }
  for (int y = 0; y < 16; ++y)
    for (int x = 0; x < 24; ++x)
      ASSERT_EQ(stored(canvas, 3 + x * 2, 2 + y * 2) & 0xFFFFFF, stored(image, x, y) & 0xFFFFFF)
          << x << " " << y;
}

TEST(GdiPlus, FilesComeBackAsTheyWereSaved) {
  WindowsImage image, back;
  paint(image, 33, 21);
  std::vector<uint8_t> file;
  ASSERT_TRUE(cGDIPlus::SaveToPNG(image, file));
  ASSERT_TRUE(back.LoadPicture_Stream(file));
  EXPECT_EQ(back.ImageType(), ImageFormat::Png);
  EXPECT_LE(largest_difference(back, image), 1);
  back.DestroyDIB();
  ASSERT_TRUE(cGDIPlus::load(file, back));
  EXPECT_TRUE(keeps_invariant(back));
  EXPECT_LE(largest_difference(back, image), 2);

  image.CreateCheckerBoard(16, RGB(200, 100, 50), RGB(20, 40, 60));
  ASSERT_TRUE(cGDIPlus::SaveToJPG(image, 95, 0xFFFFFF, file));
  ASSERT_TRUE(back.LoadPicture_Stream(file));
  EXPECT_NEAR(GetRValue(back.GetPixel(8, 8)), 200, 12);
  EXPECT_NEAR(GetBValue(back.GetPixel(24, 8)), 60, 12);
}

TEST(GdiPlus, RefusesBrokenFiles) {
  WindowsImage image;
  const std::vector<uint8_t> noise(300, 0x5A);
  EXPECT_FALSE(cGDIPlus::load(noise, image));
  EXPECT_FALSE(cGDIPlus::load({}, image));
  std::vector<uint8_t> out;
  EXPECT_FALSE(cGDIPlus::SaveToPNG(image, out));
  EXPECT_FALSE(cGDIPlus::SaveToJPG(image, 50, 0, out));
}

TEST(GdiPlus, IsAskedFirstForPngOnlyWhereTheProcessSaysSo) {
  // Our own reader says of RGBA that its alpha may lie between, the library's pixels are looked at.
  WindowsImage image, back;
  paint(image, 9, 9, true);
  std::vector<uint8_t> file;
  ASSERT_TRUE(cGDIPlus::SaveToPNG(image, file));
  ASSERT_EQ(file[25], 6);  // colour type
  for (const bool first : {false, true, false}) {
    set_platform_png_first(first);
    EXPECT_EQ(platform_png_first(), first);
    ASSERT_TRUE(back.LoadPicture_Stream(file));
    EXPECT_EQ(back.Alpha(), first ? AlphaType::None : AlphaType::Complex);
    EXPECT_EQ(back.ImageType(), ImageFormat::Png);
    EXPECT_EQ(largest_difference(back, image), 0);
  }
}

TEST(GdiPlus, TokensAreGivenAndTakenBack) {
  const intptr_t token = c32bppDIB::CreateGDIplusToken();
  EXPECT_NE(token, 0);
  c32bppDIB::DestroyGDIplusToken(token);
  c32bppDIB::DestroyGDIplusToken(0);
  EXPECT_TRUE(static_cast<bool>(GdiPlusSession()));
}

}  // namespace
}  // namespace kestrelon
