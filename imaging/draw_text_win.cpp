#include "imaging/draw_text_win.h"

#include <algorithm>
#include <cstring>

#include "imaging/dib_win.h"
#include "imaging/premultiply.h"

namespace kestrelon {
namespace {

// A copy of a font whose letters have gray edges: those of a colour screen fit no alpha channel.
class SmoothFont {
 public:
  explicit SmoothFont(HFONT font) {
    LOGFONTW facts = {};
    if (GetObjectW(font, sizeof facts, &facts) == 0) return;
    if (facts.lfQuality != NONANTIALIASED_QUALITY) facts.lfQuality = ANTIALIASED_QUALITY;
    font_ = CreateFontIndirectW(&facts);
  }
  ~SmoothFont() {
    if (font_ != nullptr) DeleteObject(font_);
  }
  SmoothFont(const SmoothFont&) = delete;
  SmoothFont& operator=(const SmoothFont&) = delete;
  HFONT get() const { return font_; }

 private:
  HFONT font_ = nullptr;
};

// White letters on the black image `mask`.
bool draw_mask(c32bppDIB& mask, std::wstring_view text, HFONT font, UINT format) {
  const BitmapDc memory(bitmap_of(mask));
  if (!memory) return false;
  const HGDIOBJ previous = SelectObject(memory.get(), font);
  SetBkMode(memory.get(), TRANSPARENT);
  SetTextColor(memory.get(), RGB(255, 255, 255));
  RECT area = {0, 0, mask.Width(), mask.Height()};
  DrawTextW(memory.get(), text.data(), static_cast<int>(text.size()), &area,
            format & ~static_cast<UINT>(DT_CALCRECT | DT_MODIFYSTRING));
  SelectObject(memory.get(), previous);
  GdiFlush();
  return true;
}

// Turns what the letters cover into their alpha and colours it. Answers whether anything is partly
// covered, or covered at all.
AlphaType colour_mask(c32bppDIB& mask, COLORREF color, uint32_t opacity) {
  const uint32_t channels[3] = {GetBValue(color), GetGValue(color), GetRValue(color)};
  uint8_t* pixel = mask.bits();
  AlphaType kind = AlphaType::None;
  for (size_t i = 0; i < mask.pixel_count(); ++i, pixel += 4) {
    const uint32_t alpha = div255(pixel[1] * opacity);
    if (alpha == 255) kind = std::max(kind, AlphaType::Simple);
    if (alpha != 0 && alpha != 255) kind = AlphaType::Complex;
    for (int c = 0; c < 3; ++c) pixel[c] = premultiply_byte(channels[c], alpha);
    pixel[3] = static_cast<uint8_t>(alpha);
  }
  return kind;
}

}  // namespace

bool draw_text(c32bppDIB& image, std::wstring_view text, HFONT font,
               const TextPlacement& placement) {
  const SmoothFont smooth(font);
  if (!image.has_image() || smooth.get() == nullptr) return false;
  ImageRect area = placement.area;
  if (area.width <= 0) area.width = std::max(image.Width() - area.x, 0);
  if (area.height <= 0) area.height = std::max(image.Height() - area.y, 0);
  const ImageRect visible =
      clip_to(area.x, area.y, area.width, area.height, image.Width(), image.Height());
  if (visible.empty() || text.empty() || placement.opacity <= 0) return true;
  // Letters are set in the whole area, so that its alignment counts, as far as memory allows.
  WindowsImage letters;
  if (!letters.InitializeDIB(area.width, area.height) ||
      !draw_mask(letters, text, smooth.get(), placement.format)) {
    return false;
  }
  const auto opacity = static_cast<uint32_t>(std::min(placement.opacity, 100) * 255 / 100);
  const AlphaType kind = colour_mask(letters, placement.color, opacity);
  if (kind == AlphaType::None) return true;
  RenderArguments args;
  args.destX = area.x;
  args.destY = area.y;
  args.destHostDIB = &image;
  if (!letters.Render(nullptr, args)) return false;
  if (image.Alpha() != AlphaType::None) image.set_alpha(std::max(image.Alpha(), kind));
  return true;
}

bool draw_text(c32bppDIB& image, std::wstring_view text, IFont* font,
               const TextPlacement& placement) {
  HFONT handle = nullptr;
  return font != nullptr && SUCCEEDED(font->get_hFont(&handle)) &&
         draw_text(image, text, handle, placement);
}

}  // namespace kestrelon
