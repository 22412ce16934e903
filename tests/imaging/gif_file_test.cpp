#include "imaging/gif_animation/gif_file.h"

#include "tests/imaging/gif_play.h"

namespace kestrelon::test {
namespace {

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

}  // namespace
}  // namespace kestrelon::test
