#include "imaging/gif_animation/gif_canvas.h"

#include "imaging/gif_animation/gif_layout.h"
#include "tests/imaging/gif_play.h"

namespace kestrelon::test {
namespace {

TEST(GifCanvas, DisposesOfFramesAsEachSays) {
  const auto dot = [](uint32_t x, uint8_t colour) { return frame_at(x, 0, 1, 1, {colour}); };
  const auto shown = play(screen_of(3, 1) + frame_at(0, 0, 3, 1, {1, 1, 1}) +  // stays
                          control(kClear, 0) + dot(0, 2) +                     // leaves a hole
                          control(kRestore, 0) + frame_at(0, 0, 3, 1, {3, 3, 3}) +
                          control(kRestore | kTransparent, 2) + frame_at(0, 0, 2, 1, {2, 3}) +
                          dot(2, 2) + kTrailer);
  ASSERT_EQ(shown.size(), 5u);
  EXPECT_EQ(shown[0], (Pixels{kRed, kRed, kRed}));
  EXPECT_EQ(shown[1], (Pixels{kGreen, kRed, kRed}));
  EXPECT_EQ(shown[2], (Pixels{kBlue, kBlue, kBlue}));
  EXPECT_EQ(shown[3], (Pixels{0, kBlue, kRed}));
  EXPECT_EQ(shown[4], (Pixels{0, kRed, kGreen}));
}

TEST(GifCanvas, GoesBackAndTellsWhetherThePictureDiffers) {
  const GifFile file =
      read_file_of(screen_of(2, 1) + frame_at(0, 0, 2, 1, {1, 1}) + control(kTransparent, 2) +
                   frame_at(0, 0, 2, 1, {2, 1}) + control(kRestore, 0) + frame_at(0, 0, 1, 1, {3}) +
                   frame_at(1, 0, 1, 1, {2}) + kTrailer);
  GifCanvas canvas;
  ASSERT_TRUE(canvas.open(file));
  EXPECT_EQ(canvas.shown(), GifCanvas::kNothing);
  EXPECT_TRUE(canvas.show(0));
  EXPECT_FALSE(canvas.show(0));
  EXPECT_FALSE(canvas.show(1));  // all of it transparent or the same colour
  EXPECT_TRUE(canvas.show(3));
  const Pixels last = pixels(canvas.image());
  EXPECT_EQ(last, (Pixels{kRed, kGreen}));
  EXPECT_TRUE(canvas.show(2));
  EXPECT_EQ(pixels(canvas.image()), (Pixels{kBlue, kRed}));
  EXPECT_TRUE(canvas.show(3));
  EXPECT_EQ(pixels(canvas.image()), last);
}

TEST(GifCanvas, ShowsColoursThatChangedInTheFile) {
  GifFile file = read_file_of(screen_of(2, 1) + frame_at(0, 0, 2, 1, {1, 1}) +
                              frame_at(0, 0, 1, 1, {2}) + kTrailer);
  GifCanvas canvas;
  ASSERT_TRUE(canvas.open(file));
  canvas.show(1);
  file.table(0)[3 * 1 + 2] = 255;  // red becomes magenta, also where the first frame drew it
  canvas.recompose();
  EXPECT_EQ(pixels(canvas.image()), (Pixels{kGreen, 0xFFFF00FF}));
  EXPECT_EQ(canvas.shown(), 1u);
}

TEST(GifCanvas, LeavesWhatBrokenFramesDoNotReach) {
  const Bytes start = screen_of(2, 1) + frame_at(0, 0, 2, 1, {1, 1});
  const auto second = [&](const Bytes& bytes) {
    const auto shown = play(start + bytes + kTrailer);
    return shown.size() == 2 ? shown[1] : Pixels{};
  };
  EXPECT_EQ(second(frame_at(0, 0, 2, 1, {2})), (Pixels{kGreen, kRed}));
  EXPECT_EQ(second(frame_at(0, 0, 0, 1, {2})), (Pixels{kRed, kRed}));
  EXPECT_EQ(second(frame_at(0, 0, 1, 0, {2})), (Pixels{kRed, kRed}));
  // Codes of three bits: 4 clears, 7 stands for nothing.
  const Bytes head = wire({{44, 1}, {0, 4}, {2, 2}, {1, 2}, {0, 1}});
  EXPECT_EQ(second(head + Bytes{2, 1, 4 | 7 << 3, 0}), (Pixels{kRed, kRed}));
  for (const uint8_t code_size : {0, 9, 255})
    EXPECT_EQ(second(head + Bytes{code_size, 1, 4, 0}), (Pixels{kRed, kRed}));
}

c32bppDIB& two_by_one(c32bppDIB& image) {
  image.InitializeDIB(2, 1);
  set_pixel(image, 0, 0, kRed);
  set_pixel(image, 1, 0, kBlue);
  return image;
}

TEST(GifLayout, SizesTheCanvasByItsRule) {
  c32bppDIB canvas;
  canvas.InitializeDIB(40, 20);
  const auto size = [&](GifScale rule, int32_t width, int32_t height) {
    const GifSize found = scaled_size(canvas, rule, width, height);
    return std::pair(found.width, found.height);
  };
  using Size = std::pair<int, int>;
  for (const GifScale rule : {GifScale::Clip, GifScale::ActualSize, static_cast<GifScale>(9)}) {
    EXPECT_EQ(size(rule, 10, 10), Size(40, 20));
    EXPECT_EQ(size(rule, 100, 100), Size(40, 20));
  }
  EXPECT_EQ(size(GifScale::Always, 100, 100), Size(100, 50));
  EXPECT_EQ(size(GifScale::Always, 100, 10), Size(20, 10));
  EXPECT_EQ(size(GifScale::Always, 1, 100), Size(1, 1));
  EXPECT_EQ(size(GifScale::Stretch, 7, 90), Size(7, 90));
  EXPECT_EQ(size(GifScale::ShrinkToFit, 100, 100), Size(40, 20));
  EXPECT_EQ(size(GifScale::ShrinkToFit, 100, 10), Size(20, 10));
  const c32bppDIB none;
  EXPECT_EQ(scaled_size(none, GifScale::Stretch, 5, 5), GifSize{});
}

TEST(GifLayout, DrawsMirroredAtItsPlaceOverTheBackground) {
  c32bppDIB canvas, out;
  two_by_one(canvas);
  out.InitializeDIB(4, 2);
  constexpr uint32_t kPaper = 0xFFEEEEEE;
  draw_canvas(canvas, {{1, 1, 2, 1}, false, false, kPaper}, out.view());
  EXPECT_EQ(pixels(out), (Pixels{kPaper, kPaper, kPaper, kPaper, kPaper, kRed, kBlue, kPaper}));
  draw_canvas(canvas, {{1, 0, 2, 1}, true, false, 0}, out.view());
  EXPECT_EQ(pixels(out), (Pixels{0, kBlue, kRed, 0, 0, 0, 0, 0}));
  draw_canvas(canvas, {{-1, 0, 2, 1}, false, false, 0}, out.view());
  EXPECT_EQ(pixels(out), (Pixels{kBlue, 0, 0, 0, 0, 0, 0, 0}));
  draw_canvas(canvas, {{INT32_MAX, INT32_MIN, 2, 1}, false, false, 0}, out.view());
  EXPECT_EQ(pixels(out), Pixels(8, 0));
  c32bppDIB tall;
  tall.InitializeDIB(1, 2);
  set_pixel(tall, 0, 0, kRed);
  draw_canvas(tall, {{0, 0, 1, 2}, false, true, 0}, out.view());
  EXPECT_EQ(pixel(out, 0, 1), kRed);
  EXPECT_EQ(pixel(out, 0, 0), 0u);
}

TEST(GifLayout, OutlinesItsEdgesOnly) {
  c32bppDIB out;
  const c32bppDIB none;
  const GifLook look{{}, false, false, 0, true};
  out.InitializeDIB(9, 5);
  draw_canvas(none, look, out.view());
  size_t inside = 0, edge = 0;
  for (int32_t y = 0; y < 5; ++y)
    for (int32_t x = 0; x < 9; ++x)
      (x % 8 == 0 || y % 4 == 0 ? edge : inside) += pixel(out, x, y) != 0;
  EXPECT_EQ(inside, 0u);
  EXPECT_EQ(edge, 12u);
  out.InitializeDIB(1, 1);
  draw_canvas(none, look, out.view());
  EXPECT_EQ(pixel(out, 0, 0) >> 24, 255u);
}

#if !defined(_WIN32)
Pixels flattened_away(Pixels pixels) {
  for (uint32_t& pixel : pixels)
    if (pixel >> 24 == 0) pixel = 0;  // the colour below no alpha is anyone's
  return pixels;
}

void expect_as_coalesced(const Workshop& shop, const std::string& name, const std::string& about) {
  ASSERT_TRUE(shop.run("convert " + name + " -alpha set -coalesce -depth 8 RGBA:all.raw")) << about;
  const Bytes raw = shop.read("all.raw");
  const auto shown = play(shop.read(name));
  ASSERT_FALSE(shown.empty()) << about;
  const size_t frame_bytes = shown[0].size() * 4;
  ASSERT_EQ(raw.size(), shown.size() * frame_bytes) << about;
  for (size_t i = 0; i < shown.size(); ++i) {
    Pixels expected;
    for (size_t at = i * frame_bytes; at < (i + 1) * frame_bytes; at += 4)
      expected.push_back(static_cast<uint32_t>(raw[at + 3]) << 24 |
                         static_cast<uint32_t>(raw[at]) << 16 |
                         static_cast<uint32_t>(raw[at + 1]) << 8 | raw[at + 2]);
    EXPECT_TRUE(shown[i] == flattened_away(expected)) << about << ", frame " << i + 1;
  }
}

// Frames of noise and of discs with a transparent corner, at places of their own; every way of
// disposal follows every other. `first` turns the order.
std::string scene(size_t first) {
  static constexpr const char* kOrder[] = {"none",       "none",     "background",
                                           "background", "previous", "previous",
                                           "none",       "previous", "background"};
  static constexpr const char* kPictures[] = {"noise.png", "disc.png", "tall.png"};
  std::string out = "-delay 7 ";
  for (size_t i = 0; i < 10; ++i) {
    const std::string place = std::to_string(i * 7 % 31) + "+" + std::to_string(i * 5 % 19);
    out += std::string("-dispose ") + kOrder[(first + i) % 9] + " -page 60x50+" + place + " " +
           kPictures[i % 3] + " ";
  }
  return out;
}

TEST(GifCanvas, AgreesWithImageMagickFrameByFrame) {
  if (!Workshop::has("convert")) GTEST_SKIP() << "needs ImageMagick";
  const Workshop shop;
  ASSERT_TRUE(
      shop.run("convert -size 30x24 -seed 5 plasma:red-blue noise.png && "
               "convert -size 17x31 -seed 6 plasma: tall.png && "
               "convert -size 21x21 xc:none -fill green -draw 'circle 10,10 3,10' disc.png"));
  for (const char* command :
       {"0", "3", "6 -interlace GIF", "1 -colors 2 +dither", "2 -monochrome", "4 -colors 5 +map",
        "5 -layers optimize", "7 -coalesce -layers optimize-plus"}) {
    const auto first = static_cast<size_t>(command[0] - '0');
    ASSERT_TRUE(shop.run("convert " + scene(first) + (command + 1) + " x.gif")) << command;
    expect_as_coalesced(shop, "x.gif", command);
  }
}

TEST(GifCanvas, HoldsWhatLiesBeyondTheScreenItWasPromised) {
  if (!Workshop::has("convert")) GTEST_SKIP() << "needs ImageMagick";
  const Workshop shop;
  ASSERT_TRUE(
      shop.run("convert -dispose previous -page 60x50+0+0 -size 20x20 plasma:red-blue "
               "-page 60x50+40+30 -size 20x20 plasma: x.gif"));
  Bytes bytes = shop.read("x.gif");
  const auto whole = play(bytes);
  bytes[6] = 3;
  bytes[8] = 2;
  EXPECT_EQ(play(bytes), whole);
}
#endif

}  // namespace
}  // namespace kestrelon::test
