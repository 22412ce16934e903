// The look: a body that may let through what lies behind, and a header with its parts.
#include "controls/us_group_box/us_group_box.h"

#include <algorithm>
#include "frame/kit/access_key.h"
#include "frame/kit/gradient.h"
#include "frame/kit/shape.h"
#include "frame/screen.h"
#include "frame/selected_font.h"
#include "frame/text.h"
#include "frame/translate_color.h"

namespace kestrelon {
namespace {

constexpr int kRound = 5;  // diameters of the corners, at 96 dpi

RECT as_rect(const PixelRect& area) {
  return {area.left, area.top, area.right, area.bottom};
}

// A line of points in a colour, for as long as the call takes.
void draw_line(HDC dc, std::span<const POINT> points, COLORREF color, int width) {
  const HPEN pen = CreatePen(PS_SOLID, width, color);
  const HGDIOBJ displaced = SelectObject(dc, pen);
  Polyline(dc, points.data(), static_cast<int>(points.size()));
  SelectObject(dc, displaced);
  DeleteObject(pen);
}

}  // namespace

// Never lower than a line of the font.
int USGroupBox::header_height() {
  if (!ShowHeader.get()) return 0;
  const HDC dc = GetDC(nullptr);
  const SelectedFont font(dc, Font.handle());
  TEXTMETRICW metrics{};
  GetTextMetricsW(dc, &metrics);
  ReleaseDC(nullptr, dc);
  const long wanted = std::clamp(HeaderHeight.get(), 0L, 2000L);
  return std::max(scale()(static_cast<int>(wanted)),
                  static_cast<int>(metrics.tmHeight) + 2 * scale().line());
}

GroupPlaces USGroupBox::places() {
  GroupHeader header;
  header.width = width();
  header.height = std::min(header_height(), height());
  header.box = CheckBoxMode.get();
  header.arrow = Collapsible.get();
  header.side = static_cast<int>(std::clamp<long>(Alignment.get(), 0, 2));
  header.scale = scale();
  if (image_of(images().number(HeaderImage.get())) != nullptr) {
    const SIZE size = image_size();
    header.image_width = scale()(static_cast<int>(size.cx));
    header.image_height = scale()(static_cast<int>(size.cy));
  }
  if (!surface()) return lay_out_group(header);
  const HDC dc = surface().dc();
  const SelectedFont font(dc, Font.handle());
  const std::wstring text = without_access_marks(Caption.get());
  SIZE size{};
  GetTextExtentPoint32W(dc, text.data(), static_cast<int>(text.size()), &size);
  header.caption_width = static_cast<int>(size.cx) + scale()(2);
  return lay_out_group(header);
}

USGroupBox::Colors USGroupBox::colors() const {
  if (high_contrast()) {
    const COLORREF back = GetSysColor(COLOR_BTNFACE);
    const COLORREF text = GetSysColor(Enabled.get() ? COLOR_BTNTEXT : COLOR_GRAYTEXT);
    return {GetSysColor(COLOR_BTNTEXT), text, back, back, back, back};
  }
  const bool on = Enabled.get();
  return {on ? TranslateColor(BorderColor.get()) : kDisabledBorder,
          on ? TranslateColor(ForeColor.get()) : kDisabledText,
          TranslateColor(GradientColor1.get()),
          TranslateColor(GradientColor2.get()),
          TranslateColor(GradientHeader1.get()),
          TranslateColor(GradientHeader2.get())};
}

void USGroupBox::draw_body(const Colors& now) {
  const PixelView view = surface().pixels();
  DrawGradient(view, now.body1, now.body2, 50, 0, 0, -1, -1);
}

void USGroupBox::draw_box(const PixelRect& area, const Colors& now) {
  if (area.empty()) return;
  const PixelView view = surface().pixels();
  const bool hot = hot_ == GroupPart::kBox && pointer_over() && Enabled.get();
  fill_rect(view, area, high_contrast() ? GetSysColor(COLOR_WINDOW) : 0xFFFFFF);
  const COLORREF line = hot ? now.text : BlendColor(now.border, now.text, 0.4);
  for (int i = 0; i < scale().line(); ++i)
    DrawFrame(view, line, area.left + i, area.top + i, area.right - i, area.bottom - i);
  if (!Value.get()) return;
  const int side = area.right - area.left;
  const auto at = [&](int x, int y) {
    return POINT{area.left + (side * x + 5) / 10, area.top + (side * y + 5) / 10};
  };
  const POINT tick[] = {at(2, 5), at(4, 7), at(8, 2)};
  draw_line(surface().dc(), tick, high_contrast() ? GetSysColor(COLOR_WINDOWTEXT) : now.text,
            scale().line(2));
}

// Points down while the group is folded, up while it is open.
void USGroupBox::draw_arrow(const PixelRect& area, const Colors& now) {
  if (area.empty()) return;
  const int x = (area.left + area.right) / 2, y = (area.top + area.bottom) / 2;
  const int reach = scale()(4), half = scale()(2);
  const int tip = Collapsed.get() ? half : -half;
  const bool hot = hot_ == GroupPart::kArrow && pointer_over() && Enabled.get();
  const COLORREF color = hot ? now.text : BlendColor(now.border, now.text, 0.6);
  for (int step = -1; step <= 1; step += 2) {
    const int end = y + tip - (tip < 0 ? -1 : 1) * (reach + 1);
    const POINT arrow[] = {{x, y + tip}, {x + step * (reach + 1), end}};
    draw_line(surface().dc(), arrow, color, scale().line(2));
  }
}

void USGroupBox::draw_caption(const PixelRect& area, const Colors& now) {
  if (area.empty() || Caption.get().empty()) return;
  const HDC dc = surface().dc();
  const SelectedFont font(dc, Font.handle());
  SetTextColor(dc, now.text);
  RECT place = as_rect(area);
  const UINT rtl = right_to_left() ? DT_RTLREADING : 0u;
  DrawTextUnicode(dc, Caption.get(), -1, &place,
                  DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | rtl);
}

void USGroupBox::draw_header(const GroupPlaces& at, const Colors& now) {
  if (at.header.empty()) return;
  const PixelView view = surface().pixels();
  DrawGradient(view, now.header1, now.header2, 50, 0, 0, -1, at.header.bottom - 1);
  const int line = scale().line();
  fill_rect(view, {0, at.header.bottom - line, view.width, at.header.bottom}, now.border);
  draw_box(at.box, now);
  if (const c32bppDIB* image = image_of(images().number(HeaderImage.get()));
      image != nullptr && !at.image.empty())
    render_to_dc(*image, surface().dc(), at.image.left, at.image.top,
                 at.image.right - at.image.left, at.image.bottom - at.image.top,
                 Enabled.get() ? 100 : 50, Enabled.get() ? GrayScale::None : GrayScale::NtscPal);
  draw_caption(at.caption, now);
  draw_arrow(at.arrow, now);
  if (!ShowFocusRect.get() || GetFocus() != window() || window() == nullptr || !focusable()) return;
  const int edge = scale()(3);
  draw_focus_rect(view, {edge, edge, view.width - edge, at.header.bottom - line - scale()(2)});
}

// What was drawn becomes opaque; the corners, and the body without a gradient, stay clear.
void USGroupBox::settle_alpha(int header) {
  const PixelView view = surface().pixels();
  const int round = RoundCorners.get() ? scale()(kRound) : 0;
  const int line = scale().line();
  std::vector<uint8_t> shape(static_cast<size_t>(view.width) * static_cast<size_t>(view.height));
  for (const PixelRect& part : round_rect_to_rects(view.width + 1, view.height + 1, round, round))
    for (int y = part.top; y < std::min(part.bottom, view.height); ++y)
      for (int x = part.left; x < std::min(part.right, view.width); ++x)
        shape[static_cast<size_t>(y) * static_cast<size_t>(view.width) + static_cast<size_t>(x)] =
            1;
  for (int y = 0; y < view.height; ++y) {
    uint32_t* const row = view.row(y);
    const uint8_t* const inside =
        shape.data() + static_cast<size_t>(y) * static_cast<size_t>(view.width);
    const bool body = !UseGradient.get() && y >= std::max(header, line) && y < view.height - line;
    for (int x = 0; x < view.width; ++x) {
      const bool clear = inside[x] == 0 || (body && x >= line && x < view.width - line);
      row[x] = clear ? 0 : row[x] | 0xFF000000u;
    }
  }
}

void USGroupBox::draw() {
  const PixelView view = surface().pixels();
  const Colors now = colors();
  const GroupPlaces at = places();
  draw_body(now);
  draw_header(at, now);
  const int line = scale().line(), round = RoundCorners.get() ? scale()(kRound) : 0;
  const HPEN pen = CreatePen(PS_INSIDEFRAME, line, now.border);
  const HGDIOBJ displaced = SelectObject(surface().dc(), pen);
  RoundRect(surface().dc(), 0, 0, view.width, view.height, round, round);
  SelectObject(surface().dc(), displaced);
  DeleteObject(pen);
  settle_alpha(at.header.bottom);
}

}  // namespace kestrelon
