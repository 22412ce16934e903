#include "grid/paint/faces.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

#include "grid/paint/shorten.h"
#include "tests/kit/picture.h"

namespace kestrelon {
namespace {

using namespace grid_paint;

constexpr int kWide = 90;
constexpr int kHigh = 60;
using Draw = std::function<void(const Paper&)>;

// Every face must come out the same whether it is drawn at once or piece by piece.
std::vector<Draw> faces(const PaintLook& look, const Scale& scale) {
  const PixelRect area = {7, 5, 77, 49};
  std::vector<Draw> all;
  for (const HeaderState state :
       {HeaderState::kNormal, HeaderState::kOver, HeaderState::kDown, HeaderState::kDisabled})
    all.push_back([=](const Paper& p) { DrawHeaderCell(p, area, state, look, scale); });
  all.push_back([=](const Paper& p) { draw_header_divider(p, area, 1, look, scale); });
  all.push_back([=](const Paper& p) { DrawSortArrow(p, {10, 10, 17, 14}, true, 0xFF); });
  all.push_back([=](const Paper& p) { draw_progress(p, area, 37, look, scale); });
  all.push_back([=](const Paper& p) { draw_check_box(p, {9, 9, 48, 48}, true, look, scale); });
  all.push_back([=](const Paper& p) { draw_button(p, area, true, look, scale); });
  for (int i = 0; i < 3; ++i) {
    PaintLook other = look;
    other.focus_style = static_cast<FocusStyle>(i);
    other.highlight = static_cast<HighlightStyle>(i);
    if (!look.high_contrast) other.colors.selected1 = 0x102030;
    all.push_back([=](const Paper& p) { draw_focus(p, area, other, scale); });
    all.push_back([=](const Paper& p) { draw_highlight(p, area, other); });
  }
  return all;
}

TEST(GridFaces, PiecesMakeTheWhole) {
  for (const int dpi : {96, 144, 192, 288})
    for (const Draw& draw : faces({}, Scale{dpi})) {
      Picture whole(kWide, kHigh), pieces(kWide, kHigh);
      draw(Paper(whole.view(), whole.view().bounds()));
      for (int y = 0; y < kHigh; y += 13)
        for (int x = 0; x < kWide; x += 11) draw(Paper(pieces.view(), {x, y, x + 11, y + 13}));
      EXPECT_TRUE(whole == pieces) << dpi;
      EXPECT_FALSE(whole == Picture(kWide, kHigh)) << "nothing was drawn";
      EXPECT_TRUE(whole.margin_untouched());
    }
}

TEST(GridFaces, NothingIsDrawnOutsideThePicture) {
  Picture picture(kWide, kHigh);
  for (const Draw& draw : faces({}, Scale{96})) {
    draw(Paper(picture.view(), {-50, -50, 20, 20}));
    draw(Paper(picture.view(), {80, 50, 500, 500}));
    draw(Paper(picture.view(), {200, 200, 300, 300}));
    draw(Paper(picture.view(), {20, 20, 10, 10}));
  }
  EXPECT_TRUE(picture.margin_untouched());
}

int changed_pixels(const std::function<void(const Paper&)>& draw) {
  Picture picture(kWide, kHigh, 0x123456);
  draw(Paper(picture.view(), picture.view().bounds()));
  int changed = 0;
  for (int y = 0; y < kHigh; ++y)
    for (int x = 0; x < kWide; ++x) changed += picture.at(x, y) != 0x123456;
  return changed;
}

TEST(GridFaces, FocusStylesHaveTheirWeights) {
  PaintLook look;
  look.full_row_select = false;
  const PixelRect area = {10, 10, 50, 30};
  const auto weight = [&](FocusStyle style, int dpi) {
    look.focus_style = style;
    return changed_pixels([&](const Paper& p) { draw_focus(p, area, look, Scale{dpi}); });
  };
  EXPECT_EQ(weight(FocusStyle::kMedium, 96), 2 * 40 + 2 * 18);
  EXPECT_EQ(weight(FocusStyle::kHeavy, 96), 40 * 20 - 36 * 16);
  EXPECT_EQ(weight(FocusStyle::kLight, 96), (2 * 40 + 2 * 18) / 2);
  EXPECT_EQ(weight(FocusStyle::kMedium, 192), weight(FocusStyle::kHeavy, 96));
  look.full_row_select = true;
  EXPECT_EQ(weight(FocusStyle::kMedium, 96), 40 * 20 - 36 * 16) << "a second line inside";
}

TEST(GridFaces, BarsShowOnlyNumbers) {
  const PaintLook look;
  const auto drawn = [&](double value) {
    return changed_pixels([&](const Paper& p) {
      draw_progress(p, {10, 10, 60, 30}, value, look, Scale{96});
    });
  };
  EXPECT_EQ(drawn(-1), 0);
  EXPECT_EQ(drawn(std::nan("")), 0);
  EXPECT_EQ(drawn(0), 2 * 50 + 2 * 18) << "the frame alone";
  EXPECT_EQ(drawn(100), 50 * 20);
  EXPECT_EQ(drawn(std::numeric_limits<double>::infinity()), 50 * 20);
}

TEST(GridFaces, HeadingsThatDoNotReactLookAtRest) {
  PaintLook look;
  look.headers_react = false;
  Picture rest(kWide, kHigh), pressed(kWide, kHigh);
  DrawHeaderCell(Paper(rest.view(), rest.view().bounds()), {0, 0, 80, 40}, HeaderState::kNormal,
                 look, Scale{96});
  DrawHeaderCell(Paper(pressed.view(), pressed.view().bounds()), {0, 0, 80, 40}, HeaderState::kDown,
                 look, Scale{96});
  EXPECT_TRUE(rest == pressed);
}

TEST(GridFaces, HighContrastHasNoColorOfItsOwn) {
  const SystemColors system = {0x000000, 0xFFFFFF, 0x000001, 0xFFFFFE,
                               0x00FF00, 0x000002, 0x808080, 0xFFFF00};
  const PaintLook look = high_contrast({}, system);
  const auto allowed = [&](ColorRef c) {
    for (const ColorRef own :
         {system.window, system.window_text, system.face, system.face_text, system.highlight,
          system.highlight_text, system.gray_text, system.hot})
      if (c == own) return true;
    return false;
  };
  for (const int dpi : {96, 288})
    for (const Draw& draw : faces(look, Scale{dpi})) {
      Picture picture(kWide, kHigh);
      draw(Paper(picture.view(), picture.view().bounds()));
      int foreign = 0;
      for (int y = 0; y < kHigh; ++y)
        for (int x = 0; x < kWide; ++x) foreign += !allowed(to_color(picture.at(x, y)));
      EXPECT_LT(foreign, 39 * 39 / 2) << "only the edges of a tick are mixed";
    }
}

TEST(GridFaces, MixerTruncates) {
  EXPECT_EQ(mix_colors(0xFFFFFF, 0, 128), 0x808080u);
  EXPECT_EQ(mix_colors(0x010101, 0, 254), 0u);
  EXPECT_EQ(mix_colors(0x112233, 0x445566, 0), 0x445566u);
  EXPECT_EQ(mix_colors(0x112233, 0x445566, 255), 0x112233u);
  EXPECT_EQ(darkened(0x102850, 40), 0x000028u);
}

TEST(GridTexts, AreCutBehindWords) {
  const auto cut = [](std::wstring_view text, size_t fitting) {
    return text.substr(0, ShortenToWidth(text, fitting));
  };
  EXPECT_EQ(cut(L"Comercial de Peças Ltda", 15), L"Comercial de");
  EXPECT_EQ(cut(L"Comercial de Peças Ltda", 12), L"Comercial de");
  EXPECT_EQ(cut(L"Comercial de Peças Ltda", 13), L"Comercial de");
  EXPECT_EQ(cut(L"Comercial", 4), L"Come");
  EXPECT_EQ(cut(L"conta_corrente", 8), L"conta_co");
  EXPECT_EQ(cut(L"São João", 6), L"São");
  EXPECT_EQ(cut(L"12345678", 5), L"12345");
  EXPECT_EQ(cut(L"a-b c", 3), L"a-b");
  EXPECT_EQ(cut(L"   abc", 2), L"  ");
  EXPECT_EQ(cut(L"abc", 0), L"a");
  EXPECT_EQ(cut(L"abc", 3), L"abc");
  EXPECT_EQ(cut(L"", 0), L"");
  const wchar_t emoji[] = {0xD83D, 0xDE00, 0xD83D, 0xDE01, 0};
  EXPECT_EQ(ShortenToWidth(emoji, 3), 2u);
  EXPECT_EQ(ShortenToWidth(emoji, 1), 2u);
}

}  // namespace
}  // namespace kestrelon
