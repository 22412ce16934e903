// Picture places against an independent statement of each, and the face against its formula.
#include "controls/us_button/us_button_layout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "controls/us_button/us_button_face.h"
#include "frame/kit/theme.h"

namespace kestrelon {
namespace {

using namespace button_layout;

Content content(PicturePlace place, int text_width, int text_height, int picture_width,
                int picture_height) {
  return {text_width > 0, true, text_width, text_height, picture_width, picture_height, place};
}

struct Span {
  int from, size;
  int to() const { return from + size; }
};

// One axis on which picture and text lie one after the other, centred together.
void expect_centred_row(Span first, Span second, int gap, int whole) {
  EXPECT_EQ(second.from, first.to() + gap);
  EXPECT_EQ(first.from, (whole - first.size - gap - second.size) / 2);
}
Span across(const PixelRect& r) {
  return {r.left, r.right - r.left};
}
Span down(const PixelRect& r) {
  return {r.top, r.bottom - r.top};
}

TEST(ButtonLayout, PutsThePictureBesideTheCaption) {
  for (const int width : {120, 121})
    for (const int height : {40, 41})
      for (const int side : {16, 17})
        for (const int text : {30, 31}) {
          const auto left =
              arrange(width, height, content(PicturePlace::kLeftOfCaption, text, 13, side, side));
          expect_centred_row(across(left.picture), across(left.text), 2, width);
          EXPECT_EQ(left.picture.top, (height - side) / 2);
          EXPECT_EQ(left.text.top, (height - 13) / 2);
          const auto right =
              arrange(width, height, content(PicturePlace::kRightOfCaption, text, 13, side, side));
          expect_centred_row(across(right.text), across(right.picture), 2, width);
          const auto top =
              arrange(width, height, content(PicturePlace::kTopOfCaption, text, 13, side, side));
          expect_centred_row(down(top.picture), down(top.text), 0, height);
          EXPECT_EQ(top.picture.left, (width - side) / 2);
          EXPECT_EQ(top.text.left, (width - text) / 2);
          const auto bottom =
              arrange(width, height, content(PicturePlace::kBottomOfCaption, text, 13, side, side));
          expect_centred_row(down(bottom.text), down(bottom.picture), 0, height);
        }
}

TEST(ButtonLayout, PutsThePictureAtAnEdgeAndTheTextInTheRest) {
  const auto at = [](PicturePlace place) {
    return arrange(101, 61, content(place, 31, 13, 17, 15));
  };
  const auto left = at(PicturePlace::kLeftEdge);
  EXPECT_EQ(left.picture, (PixelRect{4, 23, 21, 38}));
  EXPECT_EQ(left.text.left, 23 + (97 - 54) / 2);
  const auto right = at(PicturePlace::kRightEdge);
  EXPECT_EQ(right.picture, (PixelRect{80, 23, 97, 38}));
  EXPECT_EQ(right.text.right, 78 - (78 - 31 - 4) / 2);
  const auto top = at(PicturePlace::kTopEdge);
  EXPECT_EQ(top.picture, (PixelRect{42, 4, 59, 19}));
  EXPECT_EQ(top.text.top, 19 + (61 - 32 - 4) / 2);
  const auto bottom = at(PicturePlace::kBottomEdge);
  EXPECT_EQ(bottom.picture, (PixelRect{42, 42, 59, 57}));
  EXPECT_EQ(bottom.text.bottom, 42 - (29 - 4) / 2);
  EXPECT_EQ(at(PicturePlace::kBehindText).picture, (PixelRect{42, 23, 59, 38}));
}

TEST(ButtonLayout, MovesTextIntoAGapOnlyWhenHalfOfItExceedsOnePixel) {
  // Text right of a picture at the left edge: 4 + 16 + 2 + text width, up to width - 4.
  const auto text_left = [](int gap) {
    return arrange(22 + 30 + gap + 4, 30, content(PicturePlace::kLeftEdge, 30, 13, 16, 16))
        .text.left;
  };
  EXPECT_EQ(text_left(3), 22);  // half of 3 is 1
  EXPECT_EQ(text_left(4), 24);
  EXPECT_EQ(text_left(-9), 22);  // what does not fit runs out at the right
}

TEST(ButtonLayout, CentresThePictureWhereThereIsNoText) {
  for (int place = 0; place <= 8; ++place) {
    const auto picture_place = static_cast<PicturePlace>(place);
    const auto placed = arrange(51, 40, content(picture_place, 0, 0, 16, 17));
    EXPECT_TRUE(placed.text.empty());
    const bool at_edge = place == 1 || place == 3 || place == 5 || place == 7;
    const PixelRect middle{17, 11, 33, 28};
    EXPECT_EQ(placed.picture == middle, !at_edge) << place;
  }
  EXPECT_EQ(arrange(51, 40, content(PicturePlace::kLeftEdge, 0, 0, 16, 17)).picture.left, 4);
  EXPECT_EQ(arrange(51, 40, content(static_cast<PicturePlace>(99), 0, 0, 16, 17)).picture.left, 0);
}

TEST(ButtonLayout, AlignsTextAndKeepsItsSize) {
  const PixelRect text{40, 10, 71, 23};
  EXPECT_EQ(align_text(text, 0, 6, 120), (PixelRect{6, 10, 37, 23}));
  EXPECT_EQ(align_text(text, 2, 6, 120), (PixelRect{83, 10, 114, 23}));
  EXPECT_EQ(align_text(text, 1, 6, 120), text);
  EXPECT_EQ(align_text(text, 7, 6, 120), text);
}

// A surface to paint on.
struct Canvas {
  Canvas(int width, int height)
      : pixels(static_cast<size_t>(width) * static_cast<size_t>(height), 0x123456) {
    view = {pixels.data(), width, height, width};
  }
  ColorRef at(int x, int y) const { return to_color(view.row(y)[x] & kColorBits); }
  std::vector<uint32_t> pixels;
  PixelView view;
};

// The gradient as it is defined, in exact arithmetic rounded once: the upper half over the absolute
// row, the lower over the band.
ColorRef expected_row(ColorRef first, ColorRef last, int y, int y1, int y2) {
  const auto channel = [](ColorRef c, int i) { return static_cast<int>(c >> (8 * i) & 255); };
  double middle_row = static_cast<float>(y1 + 50.0 * (y2 - y1 - 1) / 100);
  if (middle_row == 0) middle_row = 1;
  ColorRef out = 0;
  for (int i = 0; i < 3; ++i) {
    const double a = channel(first, i), b = channel(last, i);
    const double middle = std::nearbyint(a + 0.5 * (b - a));
    const double value = y > middle_row
                             ? middle + (y - middle_row) / (y2 - middle_row) * (b - middle)
                             : a + y / middle_row * (middle - a);
    out |= static_cast<ColorRef>(std::nearbyint(value)) << (8 * i);
  }
  return out;
}

ColorRef towards_white(ColorRef c) {
  ColorRef out = 0;
  for (int i = 0; i < 24; i += 8) {
    const unsigned v = c >> i & 255;
    out |= (50 + v * 205 / 255) << i;
  }
  return out;
}

FaceStops theme_stops(int theme, const std::wstring& prefix) {
  FaceStops out{};
  for (const ThemeEntry& entry : theme::kButton)
    for (size_t i = 0; i < 4; ++i)
      if (entry.property == prefix + std::to_wstring(i + 1))
        out[i] = entry.values[static_cast<size_t>(theme)];
  return out;
}

TEST(ButtonFace, FollowsTheFormulaRowByRowInAllThemesAndStates) {
  for (int theme = 0; theme < 3; ++theme)
    for (const wchar_t* prefix : {L"GradientColor", L"GradientColorOver", L"GradientColorDown"})
      for (const int height : {15, 24, 25, 60, 61}) {
        const FaceStops stops = theme_stops(theme, prefix);
        Canvas two(20, height), four(20, height);
        paint_face(two.view, stops, false);
        paint_face(four.view, stops, true);
        const int middle = height / 2;
        for (int y = 0; y < height; ++y) {
          const int last = height - 1;  // the end is cut to the last row before anything else
          EXPECT_EQ(two.at(y % 20, y), expected_row(stops[0], stops[1], y, 0, last));
          const ColorRef in_band =
              y < middle ? expected_row(stops[0], towards_white(stops[1]), y, 0, middle)
                         : expected_row(stops[2], towards_white(stops[3]), y, middle, last);
          EXPECT_EQ(four.at(19, y), in_band) << theme << ' ' << height << ' ' << y;
        }
      }
}

TEST(ButtonFace, ClosesItsRoundCornersOnly) {
  for (int shape = 0; shape <= 4; ++shape) {
    Canvas canvas(20, 16);
    paint_frame(canvas.view, 0x0000FF, shape);
    const bool left = shape != 1 && shape != 3, right = shape != 2 && shape != 3;
    EXPECT_EQ(canvas.at(1, 1) == 0xFF, left) << shape;
    EXPECT_EQ(canvas.at(1, 14) == 0xFF, left);
    EXPECT_EQ(canvas.at(18, 1) == 0xFF, right);
    EXPECT_EQ(canvas.at(18, 14) == 0xFF, right);
    EXPECT_EQ(canvas.at(0, 7), 0xFFu);
    EXPECT_EQ(canvas.at(19, 15), 0xFFu);
    EXPECT_NE(canvas.at(2, 2), 0xFFu);
  }
}

TEST(ButtonFace, MixesPicturesByKeyAndOpacity) {
  Canvas face(4, 2), picture(3, 2);
  face.pixels.assign(8, to_pixel(0x6496C8));
  picture.pixels.assign(6, to_pixel(0x0A1E32));
  picture.pixels[1] = to_pixel(0xC0C0C0);
  PictureMix mix{true, 0xC0C0C0, 0.2};
  mix_picture(face.view, 2, 1, picture.view, mix);
  EXPECT_EQ(face.at(1, 1), 0x6496C8u);
  EXPECT_EQ(face.at(2, 1), 0x527EAAu);  // a fifth of the way, channel by channel
  EXPECT_EQ(face.at(3, 1), 0x6496C8u);  // the key
  mix.opacity = 1;
  mix_picture(face.view, -2, 0, picture.view, mix);
  EXPECT_EQ(face.at(0, 0), 0x0A1E32u);
  EXPECT_EQ(face.at(1, 0), 0x6496C8u);
}

}  // namespace
}  // namespace kestrelon
