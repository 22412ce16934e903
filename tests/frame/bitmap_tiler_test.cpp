#include "frame/bitmap_tiler.h"

#include <gtest/gtest.h>

#include <fstream>

#include "frame/kit/blit.h"
#include "frame/kit/lines.h"

namespace kestrelon {
namespace {

constexpr wchar_t kFile[] = L"kestrelon-tile.bmp";

// A 3 by 2 bitmap file of 24 bits whose pixels tell where they stand.
void write_tile() {
  const unsigned char file[] = {
      'B', 'M', 78, 0, 0, 0,  0, 0, 0, 0, 54, 0,  0, 0, 40, 0, 0, 0, 3, 0, 0, 0, 2,
      0,   0,   0,  1, 0, 24, 0, 0, 0, 0, 0,  24, 0, 0, 0,  0, 0, 0, 0, 0, 0, 0, 0,
      0,   0,   0,  0, 0, 0,  0, 0, 1, 2, 0,  2,  2, 0, 3,  2, 0, 0, 0, 0,  // the lower row first
      1,   1,   0,  2, 1, 0,  3, 1, 0, 0, 0,  0};
  std::ofstream("kestrelon-tile.bmp", std::ios::binary)
      .write(reinterpret_cast<const char*>(file), sizeof file);
}

class Tiler : public testing::Test {
 protected:
  void SetUp() override {
    write_tile();
    tiler_.set_FileName(kFile);
    ASSERT_TRUE(target_.create(10, 8));
  }
  void TearDown() override { DeleteFileW(kFile); }
  uint32_t at(int x, int y) const { return target_.pixels().row(y)[x] & kColorBits; }

  IAPP_BitMapTiler tiler_;
  DibSection target_;
};

TEST_F(Tiler, TakesFilesAndPictures) {
  EXPECT_EQ(tiler_.FileName(), kFile);
  EXPECT_EQ(tiler_.BitmapWidth(), 3);
  EXPECT_EQ(tiler_.BitmapHeight(), 2);
  IAPP_BitMapTiler other;
  other.set_Picture(tiler_.Picture());
  EXPECT_EQ(other.FileName(), L"PICTURE");
  EXPECT_EQ(other.BitmapWidth(), 3);
  EXPECT_NE(other.PicturehDc(), tiler_.PicturehDc());
  other.set_Picture(other.Picture());  // its own, once more
  EXPECT_EQ(other.BitmapWidth(), 3);
}

TEST_F(Tiler, FillsFromTheGridsOriginWithinTheArea) {
  for (const auto& [x_offset, y_offset] :
       {std::pair{0, 0}, {3, 2}, {1, 1}, {-4, -1}, {INT32_MAX, 0}}) {
    fill_rect(target_.pixels(), target_.pixels().bounds(), 0);
    tiler_.set_XOriginOffset(x_offset);
    tiler_.set_YOriginOffset(y_offset);
    tiler_.TileArea(target_.dc(), 1, 2, 7, 5);
    for (int y = 0; y < 8; ++y)
      for (int x = 0; x < 10; ++x) {
        const int column = static_cast<int>(((x + int64_t{x_offset}) % 3 + 3) % 3);
        const int row = static_cast<int>(((y + int64_t{y_offset}) % 2 + 2) % 2);
        const bool inside = x >= 1 && x < 8 && y >= 2 && y < 7;
        const uint32_t want = inside ? uint32_t(row + 1) << 8 | uint32_t(column + 1) : 0;
        ASSERT_EQ(at(x, y), want) << x << ',' << y << " offset " << x_offset;
      }
  }
}

TEST_F(Tiler, HugeAreasAreCutToTheTargetAndItsClip) {
  IntersectClipRect(target_.dc(), 2, 2, 5, 5);
  tiler_.TileArea(target_.dc(), -2000000000, -1000000000, INT32_MAX, INT32_MAX);
  tiler_.TileArea(target_.dc(), 0, 0, INT32_MAX, -1);
  EXPECT_EQ(at(1, 2), 0u);
  EXPECT_EQ(at(2, 2), 0x000103u);
  EXPECT_EQ(at(4, 4), 0x000102u);
  EXPECT_EQ(at(5, 4), 0u);
}

TEST_F(Tiler, FailuresAreSilentAndLeaveNoPicture) {
  tiler_.set_FileName(L"no-such-file.bmp");
  EXPECT_EQ(tiler_.FileName(), L"no-such-file.bmp");
  EXPECT_EQ(tiler_.last_failure(), L"Load Picture Failed: no-such-file.bmp");
  EXPECT_EQ(tiler_.BitmapWidth(), 0);
  EXPECT_EQ(tiler_.PicturehDc(), nullptr);
  tiler_.TileArea(target_.dc(), 0, 0, 10, 8);
  EXPECT_EQ(at(0, 0), 0u);
  PICTDESC description = {};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_ICON;
  description.icon.hicon = CopyIcon(LoadIconW(nullptr, reinterpret_cast<LPCWSTR>(IDI_APPLICATION)));
  ComPtr<IPicture> icon;
  ASSERT_EQ(OleCreatePictureIndirect(&description, IID_IPicture, TRUE, icon.put_void()), S_OK);
  tiler_.set_FileName(kFile);
  tiler_.set_Picture(icon.get());
  EXPECT_FALSE(tiler_.last_failure().empty());
  EXPECT_EQ(tiler_.BitmapHeight(), 0);
}

}  // namespace
}  // namespace kestrelon
