// State to pixels. A panel is drawn by itself, over the ground behind it.
#include "chrome/band.h"
#include "chrome/us_status_bar/us_status_bar.h"
#include "frame/selected_font.h"
#include "frame/text.h"

namespace kestrelon {
namespace {

constexpr int kDisabledImage = 50;  // percent
constexpr OLE_COLOR kLockOff = 0xB0B0B0;
constexpr OLE_COLOR kProgressColors[] = {0xC56A31, 0x76AE83, 0x22C203};  // by theme
constexpr ColorRef kSample = 0xD0D0D0;
constexpr UINT kTextFlags = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS;

}  // namespace

int USStatusBar::text_width(const std::wstring& text, bool bold) {
  if (text.empty()) return 0;
  const SelectedFont font(surface().dc(), Font.handle(), false, bold);
  RECT measured{};
  DrawTextUnicode(surface().dc(), text, -1, &measured, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
  return static_cast<int>(measured.right);
}

COLORREF USStatusBar::ink_of(long index) const {
  const StatusPanel& panel = at(index);
  if (!live(static_cast<int>(index)))
    return high_contrast() ? GetSysColor(COLOR_GRAYTEXT) : kDisabledText;
  if (panel.is_lock() && !lock_on(index)) return shown_color(kLockOff, COLOR_GRAYTEXT);
  return shown_color(
      panel.fore_color == StatusPanel::kBarColor ? ForeColor.get() : panel.fore_color,
      COLOR_BTNTEXT);
}

void USStatusBar::draw() {
  ensure_layout();
  paint_ground(0, width());
  if (SimpleMode.get()) {
    const PixelRect room{bar_.room.left + scale()(4), bar_.room.top, bar_.room.right,
                         bar_.room.bottom};
    const COLORREF ink = Enabled.get()     ? shown_color(ForeColor.get(), COLOR_BTNTEXT)
                         : high_contrast() ? GetSysColor(COLOR_GRAYTEXT)
                                           : kDisabledText;
    paint_text(SimpleText.get(), room, kTextFlags, ink, false);
  } else if (panels.size() == 0 && !user_mode()) {
    paint_sample();
  }
  clock_text_.resize(panels.size());
  for (long i = 1; i <= panel_count(); ++i) paint_panel(i);
  paint_grip();
  stale_.reset();
}

void USStatusBar::paint_ground(int left, int right) {
  const PixelView view = surface().pixels();
  fill_band(view, {left, 0, right, height()}, GradientColor1.get(), GradientColor2.get(),
            COLOR_BTNFACE);
  const COLORREF line = Enabled.get()     ? shown_color(BorderColor.get(), COLOR_BTNTEXT)
                        : high_contrast() ? GetSysColor(COLOR_GRAYTEXT)
                                          : kDisabledBorder;
  fill_rect(view, {left, 0, right, scale().line()}, line);
}

void USStatusBar::paint_panel(long index) {
  const PixelRect area = area_of(index);
  if (area.empty() || !known(index)) return;
  const PixelView view = surface().pixels();
  const StatusPanel& panel = at(index);
  const int line = scale().line(), gap = scale()(2);
  paint_ground(area.left, std::min(area.right + gap, width()));
  // The line that parts the panel from the next, within the gap.
  const bool disabled = !Enabled.get();
  fill_rect(view, {area.right, area.top + gap, area.right + line, area.bottom - gap},
            high_contrast() ? GetSysColor(COLOR_BTNTEXT)
            : disabled      ? kDisabledBorder
                            : TranslateColor(BorderColor.get()));
  if (!high_contrast())
    fill_rect(view, {area.right + line, area.top + gap, area.right + 2 * line, area.bottom - gap},
              0xFFFFFF);
  const std::wstring text = text_of(index);
  if (panel.is_clock() && static_cast<size_t>(index) <= clock_text_.size())
    clock_text_[static_cast<size_t>(index - 1)] = text;
  if (panel.style == Panel_Progress) return paint_progress(index, area);
  const status_bar::Face face = status_bar::face(area, content_of(index), scale());
  const c32bppDIB* const image = image_of(images().number(panel.image));
  const bool dim = !live(static_cast<int>(index));
  if (image != nullptr && !face.image.empty()) {
    const int saved = SaveDC(surface().dc());
    IntersectClipRect(surface().dc(), area.left, area.top, area.right, area.bottom);
    render_to_dc(*image, surface().dc(), face.image.left, face.image.top,
                 face.image.right - face.image.left, face.image.bottom - face.image.top,
                 dim ? kDisabledImage : 100, dim ? GrayScale::NtscPal : GrayScale::None);
    RestoreDC(surface().dc(), saved);
  }
  paint_text(text, face.text, kTextFlags, ink_of(index), panel.bold);
}

void USStatusBar::paint_text(const std::wstring& text, const PixelRect& area, UINT flags,
                             COLORREF color, bool bold) {
  if (text.empty() || area.empty()) return;
  const SelectedFont font(surface().dc(), Font.handle(), false, bold);
  SetTextColor(surface().dc(), color);
  RECT place{area.left, area.top, area.right, area.bottom};
  DrawTextUnicode(surface().dc(), text, -1, &place,
                  flags | (right_to_left() ? UINT{DT_RTLREADING} : 0u));
}

// The bar lies within the panel, its text over it.
void USStatusBar::paint_progress(long index, const PixelRect& area) {
  const PixelView view = surface().pixels();
  const StatusPanel& panel = at(index);
  const int line = scale().line(), inset = scale()(3);
  const PixelRect frame{area.left + inset, area.top + inset, area.right - inset,
                        area.bottom - inset};
  if (frame.empty()) return;
  const bool dim = !live(static_cast<int>(index));
  const long number = Theme.get() < 0 || Theme.get() > 2 ? 2 : static_cast<long>(Theme.get());
  const ColorRef border =
      dim && !high_contrast() ? kDisabledBorder : shown_color(BorderColor.get(), COLOR_BTNTEXT);
  fill_rect(view, frame, border);
  const PixelRect inside{frame.left + line, frame.top + line, frame.right - line,
                         frame.bottom - line};
  fill_rect(view, inside, shown_color(0xFFFFFF, COLOR_WINDOW));
  const int filled = status_bar::filled_width(panel.value, panel.most, inside.right - inside.left);
  const ColorRef full = high_contrast() ? GetSysColor(COLOR_HIGHLIGHT)
                        : dim           ? kDisabledText
                                        : kProgressColors[number];
  const PixelRect done{inside.left, inside.top, inside.left + filled, inside.bottom};
  fill_band(view, done, LightenColor(full, 110), full, COLOR_HIGHLIGHT);
  paint_text(panel.caption, inside, kTextFlags | DT_CENTER, shown_color(0, COLOR_WINDOWTEXT),
             panel.bold);
}

// Three diagonals of dots, each lit from the upper left.
void USStatusBar::paint_grip() {
  if (bar_.grip.empty()) return;
  const PixelView view = surface().pixels();
  const int dot = scale()(2), step = scale()(4), edge = scale()(3), light = scale().line();
  const COLORREF mark = shown_color(BorderColor.get(), COLOR_BTNTEXT);
  for (int row = 0; row < 3; ++row)
    for (int column = 0; column <= row; ++column) {
      const int x = bar_.grip.right - edge - dot - column * step;
      const int y = bar_.grip.bottom - edge - dot - (2 - row) * step;
      if (!high_contrast())
        fill_rect(view, {x + light, y + light, x + dot + light, y + dot + light}, 0xFFFFFF);
      fill_rect(view, {x, y, x + dot, y + dot}, mark);
    }
}

void USStatusBar::paint_sample() {
  const PixelRect room = bar_.room;
  const int third = (room.right - room.left) / 3, bar = std::max(scale()(5), 1);
  const int top = (room.top + room.bottom - bar) / 2;
  for (int i = 0; i < 3; ++i) {
    const int left = room.left + i * third + scale()(4);
    fill_rect(surface().pixels(), {left, top, left + third * (i == 0 ? 70 : 40) / 100, top + bar},
              kSample);
  }
}

}  // namespace kestrelon
