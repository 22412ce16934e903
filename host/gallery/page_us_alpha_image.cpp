// USAlphaImage: sizes, mirrors, angles, shadows, opacity, tones and masks over a form that shows
// through.
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/gallery/sample_files.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.USAlphaImage";
constexpr int kRowWidth = look::kPageWidth;
constexpr int kPad = 8;

struct Setting {
  const wchar_t* name;
  Variant value;
};

struct Sample {
  const wchar_t* label;
  const wchar_t* file;
  std::vector<Setting> settings;
  long icon = 48;   // pixels wanted of an icon
  long height = 0;  // brings the picture to this height, ratio kept
};

Setting number(const wchar_t* name, long value) {
  return {name, Variant(value)};
}
Setting on(const wchar_t* name) {
  return {name, Variant(true)};
}

// Something worth seeing through: bands of two blues that grow lighter, crossed by stripes.
void paint_backdrop(HDC hdc, const RECT& area) {
  for (LONG x = area.left; x < area.right; x += 4) {
    const auto share = static_cast<int>((x - area.left) * 255 / (area.right - area.left));
    const RECT bar{x, area.top, std::min(x + 4, area.right), area.bottom};
    SetBkColor(hdc, RGB(214 - share / 4, 226 - share / 6, 240));
    ExtTextOutW(hdc, 0, 0, ETO_OPAQUE, &bar, nullptr, 0, nullptr);
  }
  const int saved = SaveDC(hdc);
  IntersectClipRect(hdc, area.left, area.top, area.right, area.bottom);
  SelectObject(hdc, GetStockObject(DC_PEN));
  SetDCPenColor(hdc, RGB(255, 255, 255));
  const LONG height = area.bottom - area.top;
  for (LONG x = area.left - height; x < area.right; x += 12)
    for (LONG i = 0; i < 4; ++i) {
      MoveToEx(hdc, static_cast<int>(x + i), area.bottom, nullptr);
      LineTo(hdc, static_cast<int>(x + i + height), area.top);
    }
  RestoreDC(hdc, saved);
}

void prepare(IDispatch* control, const Sample& sample) {
  put_property(control, L"AutoSize", Variant(false));
  for (const Setting& setting : sample.settings) put_property(control, setting.name, setting.value);
  call_method(control, L"LoadImage_FromFile",
              {Variant(sample_file(sample.file)), Variant(sample.icon), Variant(sample.icon),
               Variant(32L)});
  if (sample.height == 0) return;
  const long width = to_long(get_property(control, L"imageWidth")) * sample.height /
                     to_long(get_property(control, L"imageHeight"));
  call_method(control, L"ResizeImage", {Variant(sample.height), Variant(width)});
}

// A picture that has room to turn.
Sample turned(const wchar_t* label, const wchar_t* file, long degrees, long height) {
  return {label,
          file,
          {number(L"ScaleMethod", 3), on(L"RotateEnabled"), number(L"Rotation", degrees)},
          256,
          height};
}

void row(Page& page, int height, const std::vector<Sample>& samples) {
  const int top = page.y();
  page.paint(make_rect(look::kMargin, top, kRowWidth, height + 2 * kPad), paint_backdrop);
  const int step = kRowWidth / static_cast<int>(samples.size());
  int x = look::kMargin;
  for (const Sample& sample : samples) {
    page.control(kProgId, make_rect(x + kPad, top + kPad, step - 2 * kPad, height),
                 [&sample](IDispatch* control) { prepare(control, sample); });
    page.text(make_rect(x, top + height + 2 * kPad + 2, step, 14), sample.label,
              TextStyle::kCentred);
    x += step;
  }
  page.skip(height + 2 * kPad + 22);
}

void magnified(Page& page) {
  const Sample samples[] = {
      {L"", L"coins.ico", {number(L"ScaleMethod", 3)}},
      {L"", L"coins.ico", {on(L"RotateEnabled"), number(L"Rotation", 15)}},
      {L"",
       L"coins.ico",
       {on(L"ShadowEnabled"), number(L"ScaleMethod", 3), number(L"ShadowDepth", 3)}},
      {L"", L"coins-4bit.bmp", {number(L"MaskUsed", 2)}},
      {L"", L"coins-4bit.bmp", {number(L"MaskUsed", 2), {L"StretchQuality", Variant(false)}}},
  };
  int x = look::kMargin;
  for (const Sample& sample : samples) {
    page.picture(x, page.y(),
                 page.snapshot(kProgId, 52, 52, Situation::kAway,
                               [&](IDispatch* control) { prepare(control, sample); }),
                 3);
    x += 52 * 3 + 3;
  }
  page.skip(52 * 3 + 8);
}

}  // namespace

void build_us_alpha_image_page(Page& page) {
  constexpr const wchar_t* kPhoto = L"kestrel.png";
  constexpr const wchar_t* kDisc = L"disc.png";
  constexpr const wchar_t* kIcon = L"calendar.ico";
  constexpr const wchar_t* kOpaque = L"coins-4bit.bmp";
  page.title(L"USAlphaImage", L"Imagem com transparência sobre o que estiver atrás.");
  page.section(L"Tamanho (ScaleMethod)");
  row(page, 84,
      {{L"Scaled", kPhoto, {}},
       {L"Stretch", kPhoto, {number(L"ScaleMethod", 1)}},
       {L"ScaleDown Only, maior", kPhoto, {number(L"ScaleMethod", 2)}},
       {L"ScaleDown Only, menor", kIcon, {number(L"ScaleMethod", 2)}},
       {L"ActualSize", kPhoto, {number(L"ScaleMethod", 3)}}});
  page.section(L"Espelhamento e ângulo");
  row(page, 84,
      {{L"Mirror None", kIcon, {}, 256},
       {L"Horizontal", kIcon, {number(L"Mirror", 1)}, 256},
       {L"Vertical", kIcon, {number(L"Mirror", 2)}, 256},
       {L"All", kIcon, {number(L"Mirror", 3)}, 256},
       turned(L"30°", kPhoto, 30, 52),
       turned(L"90°", kIcon, 90, 72),
       turned(L"-45°", kIcon, -45, 58)});
  page.section(L"Sombra");
  row(page, 84,
      {{L"sem", kIcon, {number(L"ScaleMethod", 3)}},
       {L"ShadowDepth 0",
        kIcon,
        {number(L"ScaleMethod", 3), on(L"ShadowEnabled"), number(L"ShadowDepth", 0)}},
       {L"2", kIcon, {number(L"ScaleMethod", 3), on(L"ShadowEnabled")}},
       {L"6",
        kIcon,
        {number(L"ScaleMethod", 3), on(L"ShadowEnabled"), number(L"ShadowDepth", 6),
         number(L"ShadowOffsetX", 5), number(L"ShadowOffsetY", 5)}},
       {L"10, opaca",
        kIcon,
        {number(L"ScaleMethod", 3), on(L"ShadowEnabled"), number(L"ShadowDepth", 10),
         number(L"ShadowOpacity", 100)}},
       {L"ShadowColor",
        kIcon,
        {number(L"ScaleMethod", 3), on(L"ShadowEnabled"), number(L"ShadowDepth", 4),
         number(L"ShadowColor", 0x2020D0), number(L"ShadowOpacity", 90)}},
       {L"girada",
        kIcon,
        {number(L"ScaleMethod", 3), on(L"ShadowEnabled"), number(L"ShadowDepth", 4),
         on(L"RotateEnabled"), number(L"Rotation", 45)}}});
  page.section(L"Opacidade e luz");
  row(page, 72,
      {{L"Opacity 100", kDisc, {}},
       {L"75", kDisc, {number(L"Opacity", 75)}},
       {L"50", kDisc, {number(L"Opacity", 50)}},
       {L"25", kDisc, {number(L"Opacity", 25)}},
       {L"IntensityOffset -40", kDisc, {{L"IntensityOffset", Variant(-40.0f)}}},
       {L"40", kDisc, {{L"IntensityOffset", Variant(40.0f)}}},
       {L"InversedImage", kDisc, {on(L"InversedImage")}}});
  page.section(L"Tons de cinza");
  std::vector<Sample> grays;
  constexpr const wchar_t* kGrays[] = {L"nenhum", L"NTSC PAL", L"CCIR 709", L"Simple Avg", L"Red",
                                       L"Green",  L"Blue",     L"RedGreen", L"BlueGreen"};
  for (long i = 0; i < 9; ++i) grays.push_back({kGrays[i], kPhoto, {number(L"grayScale", i)}});
  row(page, 52, grays);
  page.section(L"Cor transparente de um bitmap opaco");
  row(page, 64,
      {{L"No Mask", kOpaque, {}},
       {L"Use TopLeft", kOpaque, {number(L"MaskUsed", 2)}},
       {L"Use MaskColor", kOpaque, {number(L"MaskUsed", 1), number(L"MaskColor", 0x71CCF0)}},
       {L"e InversedImage", kOpaque, {number(L"MaskUsed", 2), on(L"InversedImage")}},
       {L"e sombra",
        kOpaque,
        {number(L"MaskUsed", 2), on(L"ShadowEnabled"), number(L"ShadowDepth", 3)}},
       {L"e opacidade", kOpaque, {number(L"MaskUsed", 2), number(L"Opacity", 50)}},
       {L"e ângulo",
        kOpaque,
        {number(L"MaskUsed", 2), on(L"RotateEnabled"), number(L"Rotation", 20)}}});
  page.section(
      L"Três vezes ampliados: inteira, girada, com sombra, máscara suave e sem StretchQuality");
  magnified(page);
}

}  // namespace kestrelon::host
