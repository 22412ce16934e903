// The sample pictures that the gallery shows, through the readers of the chain but for PNG.
#include <gtest/gtest.h>

#include "imaging/bmp_parser.h"
#include "imaging/gif_parser.h"
#include "imaging/ico_parser.h"
#include "imaging/tga_parser.h"
#include "tests/imaging/pictures.h"

namespace kestrelon::test {
namespace {

const std::filesystem::path kSamples =
    std::filesystem::path(KESTRELON_SOURCE_DIR) / "resources/samples";

bool read_sample(const std::filesystem::path& path, c32bppDIB& out) {
  const Bytes bytes = read_file(path);
  const std::string kind = path.extension().string();
  if (kind == ".gif") return cGIFparser::LoadStream(bytes, out);
  if (kind == ".ico" || kind == ".cur") return cICOparser::LoadStream(bytes, {}, out);
  if (kind == ".bmp") return cBMPparser::LoadStream(bytes, out);
  return cTGAparser::LoadStream(bytes, out);
}

TEST(Samples, KeepTheirAlpha) {
  const auto alpha = [](const char* name) {
    c32bppDIB image;
    EXPECT_TRUE(read_sample(kSamples / name, image)) << name;
    return image.Alpha();
  };
  EXPECT_EQ(alpha("kestrel.bmp"), AlphaType::None);
  EXPECT_EQ(alpha("disc.gif"), AlphaType::Simple);
  EXPECT_EQ(alpha("disc.bmp"), AlphaType::Complex);
  EXPECT_EQ(alpha("disc.tga"), AlphaType::Complex);
  EXPECT_EQ(alpha("invoice.ico"), AlphaType::Complex);
  EXPECT_EQ(alpha("pointer.cur"), AlphaType::Complex);
}

TEST(Samples, StandTheSameWayUpInEveryFormat) {
  for (const char* name : {"kestrel", "disc"}) {
    c32bppDIB bitmap, tga;
    ASSERT_TRUE(read_sample(kSamples / (std::string(name) + ".bmp"), bitmap));
    ASSERT_TRUE(read_sample(kSamples / (std::string(name) + ".tga"), tga));
    EXPECT_TRUE(pixels(bitmap) == pixels(tga)) << name;
  }
}

#if !defined(_WIN32)
std::vector<std::filesystem::path> samples() {
  std::vector<std::filesystem::path> out;
  for (const auto& entry : std::filesystem::directory_iterator(kSamples)) {
    const std::string kind = entry.path().extension().string();
    if (kind == ".gif" || kind == ".ico" || kind == ".cur" || kind == ".bmp" || kind == ".tga")
      out.push_back(entry.path());
  }
  return out;
}

TEST(Samples, LookAsImageMagickShowsThem) {
  if (!Workshop::has("convert")) GTEST_SKIP() << "needs ImageMagick";
  const Workshop shop;
  size_t tried = 0;
  for (const auto& path : samples()) {
    c32bppDIB image;
    ASSERT_TRUE(read_sample(path, image)) << path;
    ASSERT_TRUE(image.has_image()) << path;
    // The reader takes 32 pixels, which is the third picture of the icons and the cursor's first.
    const std::string kind = path.extension().string();
    const std::string frame = kind == ".ico" ? "[2]" : "[0]";
    auto expected = shop.reference((kind == ".cur" ? "cur:" : "") + path.string() + frame);
    for (uint32_t& p : expected) {
      const uint32_t alpha = p >> 24;
      uint32_t stored = alpha << 24;
      for (int shift = 0; shift < 24; shift += 8)
        stored |= (p >> shift & 255) * alpha / 255 << shift;
      p = stored;
    }
    EXPECT_EQ(pixels(image), expected) << path;
    ++tried;
  }
  EXPECT_GE(tried, 15u);
}
#endif

}  // namespace
}  // namespace kestrelon::test
