#include "imaging/codecs.h"

#include <gtest/gtest.h>

#include <vector>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {
namespace {

// The chain must find the right reader for what each writer made.
TEST(Codecs, WhatIsSavedComesBackThroughTheReaderChain) {
  c32bppDIB image;
  image.InitializeDIB(24, 24);
  image.CreateCheckerBoard(5, 0x3060C0, 0xF0E010);
  std::vector<uint8_t> bytes;
  auto comes_back = [&](ImageFormat type) {
    c32bppDIB back;
    ASSERT_TRUE(back.LoadPicture_Stream(bytes));
    EXPECT_EQ(back.ImageType(), type);
    EXPECT_EQ(back.GetPixel(0, 0), 0x3060C0);
    EXPECT_EQ(back.GetPixel(5, 0), 0xF0E010);
    EXPECT_EQ(back.GetPixel(23, 23), image.GetPixel(23, 23));
    // Cut short, it is no image or a part of one, never an error.
    c32bppDIB cut;
    cut.LoadPicture_Stream(bytes, {}, 0, 40);
  };
  ASSERT_TRUE(image.SaveToStream_Bitmap(bytes));
  comes_back(ImageFormat::Bitmap);
  ASSERT_TRUE(image.SaveToStream_GIF(bytes));
  comes_back(ImageFormat::Gif);
  ASSERT_TRUE(image.SaveToStream_TGA(bytes));
  comes_back(ImageFormat::Tga);
  ASSERT_TRUE(image.SaveToStream_JPG(bytes, 90));
  EXPECT_EQ(bytes[0], 0xFF);
  c32bppDIB none;
  EXPECT_FALSE(none.LoadPicture_Stream(bytes));  // no reader of ours for JPEG
  std::vector<IconSize> sizes;
  EXPECT_FALSE(none.SourceIconSizes(sizes));
}

}  // namespace
}  // namespace kestrelon
