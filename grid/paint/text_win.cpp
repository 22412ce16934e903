#include "grid/paint/text_win.h"

#include <algorithm>

#include "frame/text.h"
#include "grid/layout/cell_rects.h"
#include "grid/paint/shorten.h"

namespace kestrelon::grid_paint {
namespace {

using grid_layout::across;
using grid_layout::down;

// No cell is as wide as this many characters; GDI's own limits lie above.
constexpr size_t kLongestLine = 4096;

struct Fit {
  int characters = 0;
  int width = 0;  // of the whole text
};

Fit fit_into(HDC dc, std::wstring_view text, int width) {
  Fit fit;
  SIZE size = {};
  GetTextExtentExPointW(dc, text.data(), static_cast<int>(text.size()), std::max(width, 0),
                        &fit.characters, nullptr, &size);
  fit.width = size.cx;
  return fit;
}

void put(HDC dc, const CellFont& font, std::wstring_view text, int width, const TextPlace& place) {
  const grid_layout::Size size = {width, font.height};
  PixelRect at = grid_layout::aligned(place.area, size, place.alignment);
  at.top = std::max(at.top, place.area.top);  // what is too high loses its lower part
  const RECT clip = to_rect(intersect(place.area, place.clip));
  if (clip.left >= clip.right || clip.top >= clip.bottom) return;
  const UINT flags = ETO_CLIPPED | (place.right_to_left ? ETO_RTLREADING : 0);
  // Not every system cuts the line of an underlined text to the rectangle.
  const int saved = font.lined ? SaveDC(dc) : 0;
  if (saved != 0) IntersectClipRect(dc, clip.left, clip.top, clip.right, clip.bottom);
  ExtTextOutW(dc, at.left, at.top, flags, &clip, text.data(), static_cast<UINT>(text.size()),
              nullptr);
  if (saved != 0) RestoreDC(dc, saved);
}

UINT wrapping_flags(const TextPlace& place) {
  constexpr UINT kAcross[] = {DT_LEFT, DT_CENTER, DT_RIGHT};
  return kAcross[across(place.alignment)] | DT_WORDBREAK | DT_NOPREFIX | DT_EDITCONTROL |
         (place.ellipsis ? DT_WORD_ELLIPSIS : 0) | (place.right_to_left ? DT_RTLREADING : 0);
}

}  // namespace

void draw_line(HDC dc, const CellFont& font, std::wstring_view text, const TextPlace& place) {
  text = text.substr(0, kLongestLine);
  const int room = place.area.right - place.area.left;
  if (text.empty() || room <= 0) return;
  const Fit fit = fit_into(dc, text, room);
  if (fit.width <= room || !place.ellipsis) return put(dc, font, text, fit.width, place);
  const int before = fit_into(dc, text, room - font.ellipsis_width).characters;
  std::wstring shown(text.substr(0, ShortenToWidth(text, static_cast<size_t>(before))));
  shown += kEllipsis;
  put(dc, font, shown, std::min(line_width(dc, shown), room), place);
}

void draw_lines(HDC dc, const CellFont& font, std::wstring_view text, const TextPlace& place,
                int max_lines) {
  const int width = place.area.right - place.area.left;
  const int room = place.area.bottom - place.area.top;
  if (text.empty() || width <= 0 || font.height <= 0) return;
  int lines = std::max(room / font.height, 1);
  if (max_lines >= 1) lines = std::min(lines, max_lines);
  if (lines == 1) {
    const size_t end = text.find_first_of(L"\r\n");
    if (end == std::wstring_view::npos) return draw_line(dc, font, text, place);
  }
  const int height = std::min(wrapped_height(dc, text, width, place.ellipsis), lines * font.height);
  PixelRect at = grid_layout::aligned(place.area, {width, height}, place.alignment);
  at.top = std::max(at.top, place.area.top);
  RECT rect = to_rect(at);
  const int saved = SaveDC(dc);
  const RECT clip = to_rect(intersect(place.area, place.clip));
  IntersectClipRect(dc, clip.left, clip.top, clip.right, clip.bottom);
  DrawTextUnicode(dc, text, -1, &rect, wrapping_flags(place));
  RestoreDC(dc, saved);
}

int wrapped_height(HDC dc, std::wstring_view text, int width, bool ellipsis) {
  RECT rect = {0, 0, std::max(width, 1), 0};
  const UINT flags =
      DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX | DT_EDITCONTROL | (ellipsis ? DT_WORD_ELLIPSIS : 0);
  // The last line counts whole, which it does not with the edit control's rule.
  return DrawTextUnicode(dc, text, -1, &rect, flags & ~static_cast<UINT>(DT_EDITCONTROL));
}

int line_width(HDC dc, std::wstring_view text) {
  SIZE size = {};
  GetTextExtentPoint32W(dc, text.data(), static_cast<int>(std::min(text.size(), kLongestLine)),
                        &size);
  return size.cx;
}

}  // namespace kestrelon::grid_paint
