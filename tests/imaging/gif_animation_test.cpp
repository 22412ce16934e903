#include <gtest/gtest.h>

#include <cmath>

#include "imaging/gif_animation/gif_canvas.h"
#include "imaging/gif_animation/gif_layout.h"
#include "imaging/gif_reader.h"
#include "tests/imaging/gif_bytes.h"

namespace kestrelon::test {
namespace {

using Pixels = std::vector<uint32_t>;

GifFile read_file_of(const Bytes& bytes) {
  GifFile file;
  EXPECT_TRUE(file.read(bytes));
  return file;
}

/// What each frame leaves on the canvas.
std::vector<Pixels> play(const Bytes& bytes) {
  GifFile file;
  GifCanvas canvas;
  std::vector<Pixels> out;
  if (!file.read(bytes) || !canvas.open(file)) return out;
  for (size_t i = 0; i < file.frames().size(); ++i) {
    canvas.show(i);
    out.push_back(pixels(canvas.image()));
  }
  return out;
}

constexpr uint32_t kClear = 2 * 4, kRestore = 3 * 4, kTransparent = 1;

TEST(GifFile, TellsWhatStandsInTheBlocks) {
  const Bytes comment = {33, 254, 2, 'h', 'i', 0};
  const GifFile file =
      read_file_of(screen_of(4, 3) + netscape(7) + comment +
                   control(kRestore | kTransparent, 2, 12) + frame_at(1, 1, 2, 1, {1, 2}) +
                   frame_at(0, 0, 1, 1, {3}, 0x80, {9, 9, 9, 1, 2, 3}) + control(5 * 4, 0, 65535) +
                   control(kRestore, 9, 3) + frame_at(2, 0, 2, 3, Bytes(6, 1), 0x40) + kTrailer);
  EXPECT_EQ(file.width(), 4);
  EXPECT_EQ(file.height(), 3);
  EXPECT_EQ(file.loops(), 7);
  ASSERT_EQ(file.frames().size(), 3u);
  const GifFrame& first = file.frames()[0];
  EXPECT_EQ(first.delay, 120);
  EXPECT_EQ(first.disposal, GifDisposal::Clear);  // nothing lies below the first
  EXPECT_TRUE(first.uses_transparency);
  EXPECT_EQ(first.transparent_index, 2);
  const GifFrame& second = file.frames()[1];
  EXPECT_EQ(second.delay, 0);  // a control serves one frame
  EXPECT_FALSE(second.uses_transparency);
  EXPECT_EQ(second.local_entries, 2);
  EXPECT_EQ(file.frames()[2].disposal, GifDisposal::Restore);
  EXPECT_EQ(file.frames()[2].delay, 30);  // the last control before a frame holds
  const GifFile odd = read_file_of(screen_of(1, 1) + control(5 * 4, 0, 65535) +
                                   frame_at(0, 0, 1, 1, {1}) + kTrailer);
  EXPECT_EQ(odd.frames()[0].disposal, GifDisposal::None);
  EXPECT_EQ(odd.frames()[0].delay, 655350);
}

TEST(GifFile, EndsAtTheTrailerAndAtWhatIsNoBlock) {
  const Bytes start = screen_of(2, 1) + frame_at(0, 0, 2, 1, {1, 2});
  EXPECT_EQ(play(start + kTrailer).size(), 1u);
  EXPECT_EQ(play(start + kTrailer + frame_at(0, 0, 1, 1, {3}) + kTrailer).size(), 1u);
  EXPECT_EQ(play(start + Bytes{0} + frame_at(0, 0, 1, 1, {3}) + kTrailer).size(), 1u);
  EXPECT_EQ(play(start + Bytes{7}).size(), 1u);
  EXPECT_TRUE(play(start).empty());  // the bytes end before the walk
  EXPECT_TRUE(play(screen_of(2, 1) + kTrailer).empty());
  EXPECT_TRUE(play({}).empty());
  EXPECT_EQ(play(screen(kTable, "gif87A", 2, 1) + frame_at(0, 0, 1, 1, {1}) + kTrailer).size(), 1u);
  EXPECT_TRUE(play(screen(kTable, "GIF90a", 2, 1) + frame_at(0, 0, 1, 1, {1}) + kTrailer).empty());
}

TEST(GifFile, DropsAFrameWithoutData) {
  const Bytes empty = wire({{44, 1}, {50, 2}, {50, 2}, {9, 2}, {9, 2}, {0, 1}, {2, 1}, {0, 1}});
  const GifFile file = read_file_of(screen_of(2, 1) + control(0, 0, 9) + empty +
                                    frame_at(0, 0, 1, 1, {1}) + kTrailer);
  ASSERT_EQ(file.frames().size(), 1u);
  EXPECT_EQ(file.width(), 2);
  EXPECT_EQ(file.frames()[0].delay, 0);  // its control went with it
}

TEST(GifFile, ExtendsTheCanvasToEveryFrame) {
  const auto shown =
      play(screen_of(2, 1) + frame_at(0, 0, 1, 1, {1}) + frame_at(2, 1, 1, 2, {2, 3}) + kTrailer);
  ASSERT_EQ(shown.size(), 2u);
  EXPECT_EQ(shown[0], (Pixels{kRed, 0, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(shown[1], (Pixels{kRed, 0, 0, 0, 0, kGreen, 0, 0, kBlue}));
}

TEST(GifFile, DeclinesACanvasThatCannotBeMeant) {
  GifFile file;
  const Bytes dot = frame_at(0, 0, 1, 1, {1}) + kTrailer;
  EXPECT_FALSE(file.read(screen_of(65535, 65535) + dot));
  EXPECT_FALSE(file.read(screen_of(4000, 4000) + dot));
  EXPECT_TRUE(file.read(screen_of(1024, 1024) + dot));
  EXPECT_FALSE(file.read(screen_of(1, 1) + frame_at(65535, 65535, 65535, 65535, {1}) + kTrailer));
  // Bytes enough to mean it, but more pixels than any canvas has.
  Bytes comment = {33, 254};
  for (int i = 0; i < 60; ++i) comment = comment + Bytes(1, 255) + Bytes(255, 'x');
  EXPECT_FALSE(file.read(screen_of(6000, 6000) + comment + Bytes{0} + dot));
  EXPECT_TRUE(file.frames().empty());
  EXPECT_TRUE(file.bytes().empty());
  EXPECT_EQ(file.width(), 0);
}

TEST(GifFile, FindsTheTableOfEachFrame) {
  const Bytes local = {1, 1, 1, 2, 2, 2}, other = {3, 3, 3, 4, 4, 4};
  const auto tables = [](const Bytes& bytes) {
    const GifFile file = read_file_of(bytes);
    std::vector<int> out;
    for (size_t i = 0; i < file.frames().size(); ++i)
      out.push_back(file.table(i).empty() ? -1 : file.table(i)[5]);
    return out;
  };
  const Bytes plain = frame_at(0, 0, 1, 1, {1});
  const Bytes with_local = frame_at(0, 0, 1, 1, {1}, 0x80, local);
  const Bytes with_other = frame_at(0, 0, 1, 1, {1}, 0x80, other);
  EXPECT_EQ(tables(screen_of(1, 1) + plain + plain + with_local + with_other + plain + with_local +
                   kTrailer),
            (std::vector<int>{0, 0, 2, 4, 0, 2}));
  // Without a table of the file's own, that of the frame before serves.
  EXPECT_EQ(
      tables(screen_of(1, 1, {}) + plain + with_local + plain + with_other + plain + kTrailer),
      (std::vector<int>{-1, 2, 2, 4, 4}));
  GifFile file = read_file_of(screen_of(1, 1) + plain + plain + with_local + with_local + kTrailer);
  EXPECT_EQ(file.table_groups().size(), 3u);  // equal tables at two places are two
  file.table(1)[3] = 77;
  EXPECT_EQ(file.table(0)[3], 77);
  EXPECT_EQ(file.bytes()[16], 77);
}

TEST(GifTableCache, PutsAllTablesBack) {
  const Bytes bytes = screen_of(1, 1) + frame_at(0, 0, 1, 1, {1}) +
                      frame_at(0, 0, 1, 1, {1}, 0x80, {1, 1, 1, 2, 2, 2}) + kTrailer;
  GifFile file = read_file_of(bytes);
  GifTableCache cache;
  EXPECT_FALSE(cache.restore(file));
  cache.store(file);
  for (size_t i = 0; i < 2; ++i) std::ranges::fill(file.table(i), uint8_t{9});
  EXPECT_NE(Bytes(file.bytes().begin(), file.bytes().end()), bytes);
  EXPECT_TRUE(cache.restore(file));
  EXPECT_EQ(Bytes(file.bytes().begin(), file.bytes().end()), bytes);
  EXPECT_TRUE(cache);
  cache.release();
  EXPECT_FALSE(cache.restore(file));
}

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

Bytes busy_file() {
  return screen_of(7, 5) + netscape(2) + control(kClear | kTransparent, 3, 4) +
         frame_at(1, 1, 5, 3, {1, 2, 3, 1, 2, 0, 0, 1, 1, 2, 3, 3, 1, 0, 2}, 0x40) +
         control(kRestore, 0, 5) + frame_at(0, 0, 2, 2, {0, 1, 1, 0}, 0x80, {7, 7, 7, 8, 8, 8}) +
         control(kTransparent, 1, 6) + frame_at(3, 2, 4, 3, Bytes(12, 2)) + kTrailer;
}

TEST(GifFile, IsFalseForEveryCutAndKeepsNothing) {
  const Bytes whole = busy_file();
  ASSERT_EQ(play(whole).size(), 3u);
  for (size_t length = 0; length < whole.size(); ++length) {
    GifFile file = read_file_of(whole);
    EXPECT_FALSE(file.read(Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(length))));
    EXPECT_TRUE(file.frames().empty() && file.bytes().empty() && file.table_groups().empty());
  }
}

TEST(GifFile, StandsEveryFlippedBit) {
  Bytes bytes = busy_file();
  size_t read = 0;
  for (size_t bit = 0; bit < std::min<size_t>(bytes.size(), 200) * 8; ++bit) {
    const auto mask = static_cast<uint8_t>(1 << bit % 8);
    bytes[bit / 8] ^= mask;
    read += !play(bytes).empty();
    bytes[bit / 8] ^= mask;
  }
  EXPECT_GT(read, 100u);  // colours, sizes and codes may change without breaking the file
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
