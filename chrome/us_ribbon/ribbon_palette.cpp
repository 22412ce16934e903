#include "chrome/us_ribbon/ribbon_palette.h"

#include <windows.h>

namespace kestrelon::ribbon {
namespace {

// The amber of lit and pressed buttons in both Office themes, as buttons have it.
constexpr BoxColors kAmber{0x78A8C1, {{0xDBFDFF, 0xBBF2FF, 0x49D3FF, 0x92E6FF}, 40}};
constexpr BoxColors kAmberDown{0x55708B, {{0x79C0FF, 0x79B8FC, 0x42AEFE, 0x70D8FE}, 40}};
constexpr BoxColors kAmberChecked{0x6B8FAC, {{0xA4D6FF, 0x8ECAFE, 0x62BEFE, 0x9CE6FE}, 40}};
constexpr Gradient kTabGlowBlue{{0xFFE4C8, 0xFADCC4, 0xDDEBE6, 0xA8E4FF}, 45};
constexpr Gradient kTabGlowSilver{{0xEAE3DE, 0xE6DFDA, 0xDDE9EC, 0xA8E4FF}, 45};

constexpr Palette kBlue{
    .strip = Gradient::plain(0xFFDBBF),
    .body = {0xE3B28D, {{0xF5E8DE, 0xF1DFD1, 0xEDD9C9, 0xFFF2E7}, 16}},
    .body_light = 0xFAF3EC,
    .category = {0xDAC3A9, {{0xF7ECE2, 0xF2E3D6, 0xEFDDCE, 0xFCF0E6}, 16}},
    .category_hot = {0xE3B28D, {{0xFFF8F2, 0xFCF0E6, 0xF9E9DB, 0xFFF8F2}, 16}},
    .category_light = 0xFDF7F2,
    .caption_back = 0xF1D8C2,
    .caption_back_hot = 0xFFE0C8,
    .tab = {0xE3B28D, Gradient::smooth(0xFFF9F4, 0xF6E9DF)},
    .tab_hot = {0xE8BB99, kTabGlowBlue},
    .hot = kAmber,
    .pressed = kAmberDown,
    .checked = kAmberChecked,
    .mark = 0xB08A66,
    .mark_light = 0xFFF8F2,
    .disabled_text = 0xA8998D,
};

constexpr Palette kSilver{
    .strip = Gradient::plain(0xDDD4D0),
    .body = {0xBEBEBE, {{0xF7F4F1, 0xEFEBE8, 0xEAE4DF, 0xF8F5F2}, 16}},
    .body_light = 0xFDFCFB,
    .category = {0xC6C0BB, {{0xF8F5F3, 0xF0ECE9, 0xEBE6E2, 0xF7F4F2}, 16}},
    .category_hot = {0xB0A8A2, {{0xFFFEFD, 0xFAF8F6, 0xF6F3F1, 0xFFFEFD}, 16}},
    .category_light = 0xFDFCFB,
    .caption_back = 0xE3DCD8,
    .caption_back_hot = 0xEEE6E0,
    .tab = {0xBEBEBE, Gradient::smooth(0xFFFFFF, 0xF8F5F2)},
    .tab_hot = {0xB8B2AE, kTabGlowSilver},
    .hot = kAmber,
    .pressed = kAmberDown,
    .checked = kAmberChecked,
    .mark = 0x7E736B,
    .mark_light = 0xFFFFFF,
    .disabled_text = 0x9A9A9A,
};

constexpr Palette kFlat{
    .strip = Gradient::smooth(0xFFFFFF, 0xFDFAF7),
    .body = {0xDBC9BA, Gradient::smooth(0xFEF9F4, 0xF5EAE0)},
    .body_light = 0xFFFDFB,
    .category = {0xDBC9BA, Gradient::smooth(0xFEF9F4, 0xF5EAE0)},
    .category_hot = {0xDBC9BA, Gradient::smooth(0xFFFDFB, 0xFAF2EA)},
    .category_light = 0xFFFDFB,
    .caption_back = 0,
    .caption_back_hot = 0,
    .tab = {0xDBC9BA, Gradient::plain(0xFEF9F4)},
    .tab_hot = {0xE8DCD2, Gradient::smooth(0xFFFFFF, 0xFBF1E6)},
    .hot = {0xE0B080, Gradient::smooth(0xFDF5E8, 0xFAE8CC)},
    .pressed = {0xB17F3C, Gradient::smooth(0xF7E8CA, 0xEBCD98)},
    .checked = {0xD09A5C, Gradient::smooth(0xFBF0DD, 0xF3DDB6)},
    .mark = 0x9A8370,
    .mark_light = 0xFFFFFF,
    .disabled_text = 0xA8A099,
    .frames = false,
};

constexpr const Palette* kPalettes[] = {&kBlue, &kSilver, &kFlat};

BoxColors box(int border, int inside) {
  return {GetSysColor(border), Gradient::plain(GetSysColor(inside))};
}

}  // namespace

const Palette& theme_palette(int theme) {
  return *kPalettes[theme >= 0 && theme < 3 ? theme : 2];
}

Palette contrast_palette() {
  Palette out{};
  out.strip = Gradient::plain(GetSysColor(COLOR_BTNFACE));
  out.body = out.category = out.category_hot = out.tab = box(COLOR_BTNTEXT, COLOR_BTNFACE);
  out.tab_hot = out.hot = out.pressed = out.checked = box(COLOR_BTNTEXT, COLOR_HIGHLIGHT);
  out.body_light = out.category_light = out.mark_light = GetSysColor(COLOR_BTNFACE);
  out.caption_back = out.caption_back_hot = GetSysColor(COLOR_BTNFACE);
  out.mark = out.text = GetSysColor(COLOR_BTNTEXT);
  out.lit_text = GetSysColor(COLOR_HIGHLIGHTTEXT);
  out.disabled_text = GetSysColor(COLOR_GRAYTEXT);
  out.frames = false;
  out.system = true;
  return out;
}

}  // namespace kestrelon::ribbon
