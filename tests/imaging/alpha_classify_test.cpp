#include "imaging/alpha_classify.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace kestrelon {
namespace {

using Pixel = std::array<uint8_t, 4>;

// The rule in its plainest form, one pixel after the other with counts.
AlphaType reference(std::vector<Pixel>& pixels, bool premultiply, ImageFormat& type) {
  int state = 0;
  size_t zeros = 0, fulls = 0;
  AlphaType noted = AlphaType::Simple;
  for (const Pixel& p : pixels) {
    const bool over = p[0] > p[3] || p[1] > p[3] || p[2] > p[3];
    if (p[3] == 0) {
      ++zeros;
      if (state == 0 && over) state = 1;
    } else if (p[3] == 255) {
      if (state == 1) {
        state = 2;
        break;
      }
      ++fulls;
    } else {
      if (state == 1 || over) {
        state = 2;
        break;
      }
      noted = AlphaType::Complex;
    }
  }
  if (zeros == pixels.size() || fulls == pixels.size()) {
    type = ImageFormat::Bitmap;
    if (premultiply) {
      for (Pixel& p : pixels) p[3] = 255;
    }
    return AlphaType::None;
  }
  type = state == 0 ? ImageFormat::BitmapPargb : ImageFormat::BitmapArgb;
  if (state == 0 || !premultiply) return noted;
  for (Pixel& p : pixels) {
    if (p[3] != 0 && p[3] != 255) noted = AlphaType::Complex;
    for (size_t c = 0; c < 3; ++c) p[c] = static_cast<uint8_t>(p[c] * p[3] / 255);
  }
  return noted;
}

void expect_as_reference(const std::vector<Pixel>& pixels, bool premultiply) {
  std::vector<Pixel> expected = pixels, actual = pixels;
  ImageFormat expected_type = ImageFormat::None, actual_type = ImageFormat::None;
  const AlphaType expected_alpha = reference(expected, premultiply, expected_type);
  const AlphaType actual_alpha =
      classify_alpha(actual.data()->data(), actual.size(), premultiply, actual_type);
  ASSERT_EQ(actual_alpha, expected_alpha);
  ASSERT_EQ(actual_type, expected_type);
  ASSERT_EQ(actual, expected);
}

constexpr std::array<Pixel, 6> kKinds = {{{0, 0, 0, 0},
                                          {0, 9, 0, 0},
                                          {10, 20, 30, 255},
                                          {10, 128, 30, 128},
                                          {10, 20, 129, 128},
                                          {254, 0, 0, 254}}};

// Every order of the kinds of pixel, with runs between them so that the events fall in different
// places of the vector blocks.
TEST(ClassifyAlpha, EveryOrderOfEventsGivesWhatThePlainScanGives) {
  for (size_t run : {1, 3, 4, 5}) {
    for (size_t code = 0; code < 6 * 6 * 6 * 6; ++code) {
      std::vector<Pixel> pixels;
      for (size_t rest = code, k = 0; k < 4; ++k, rest /= 6) {
        pixels.insert(pixels.end(), run, kKinds[rest % 6]);
      }
      for (bool premultiply : {false, true}) {
        expect_as_reference(pixels, premultiply);
        if (HasFatalFailure()) FAIL() << "run " << run << " code " << code;
      }
    }
  }
}

TEST(ClassifyAlpha, EachChannelAboveItsAlphaIsSeenAtEachPlaceOfABlock) {
  for (size_t place = 0; place < 9; ++place) {
    for (size_t channel = 0; channel < 3; ++channel) {
      std::vector<Pixel> pixels(9, Pixel{100, 100, 100, 100});
      pixels[place][channel] = 101;
      expect_as_reference(pixels, true);
    }
  }
}

TEST(ClassifyAlpha, TypeErrorMeansOpaqueWithoutALook) {
  std::vector<Pixel> pixels = {{200, 0, 0, 3}, {0, 0, 0, 0}};
  ImageFormat type = ImageFormat::Error;
  EXPECT_EQ(classify_alpha(pixels[0].data(), 2, true, type), AlphaType::None);
  EXPECT_EQ(type, ImageFormat::Bitmap);
  EXPECT_EQ(pixels[0], (Pixel{200, 0, 0, 255}));
  EXPECT_EQ(pixels[1], (Pixel{0, 0, 0, 255}));
}

}  // namespace
}  // namespace kestrelon
