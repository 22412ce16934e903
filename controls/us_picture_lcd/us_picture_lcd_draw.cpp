// From the text in places to pixels.
#include "controls/us_picture_lcd/lcd_text.h"
#include "controls/us_picture_lcd/us_picture_lcd.h"
#include "frame/kit/gradient.h"
#include "frame/screen.h"
#include "frame/selected_font.h"
#include "frame/text.h"
#include "frame/translate_color.h"

namespace kestrelon {
namespace {

constexpr int kPadding = 5;  // between border and contents, at 96 dpi

RECT as_rect(const PixelRect& area) {
  return {area.left, area.top, area.right, area.bottom};
}

// A font of the look of another, of a height in pixels.
class FontOfHeight {
 public:
  FontOfHeight(HFONT like, int height) {
    LOGFONTW description{};
    GetObjectW(like, sizeof description, &description);
    description.lfHeight = -std::max(1, height);
    description.lfWidth = 0;
    font_ = CreateFontIndirectW(&description);
  }
  ~FontOfHeight() { DeleteObject(font_); }
  FontOfHeight(const FontOfHeight&) = delete;
  FontOfHeight& operator=(const FontOfHeight&) = delete;
  HFONT get() const { return font_; }

 private:
  HFONT font_ = nullptr;
};

}  // namespace

USPictureLCD::Colors USPictureLCD::colors() const {
  if (high_contrast()) {
    const COLORREF back = GetSysColor(COLOR_WINDOW);
    const COLORREF text = GetSysColor(Enabled.get() ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT);
    return {back, back, GetSysColor(COLOR_WINDOWTEXT), text, text, 0};
  }
  const COLORREF top = TranslateColor(GradientColor1.get());
  const COLORREF bottom = TranslateColor(GradientColor2.get());
  const float ghost = static_cast<float>(std::clamp(GhostOpacity.get(), 0L, 100L)) / 100;
  if (!Enabled.get()) return {top, bottom, kDisabledBorder, kDisabledText, kDisabledText, ghost};
  return {top,
          bottom,
          TranslateColor(BorderColor.get()),
          TranslateColor(ForeColor1.get()),
          TranslateColor(ForeColor2.get()),
          ghost};
}

int USPictureLCD::title_height() {
  if (Caption.get().empty()) return 0;
  const HDC dc = surface().dc();
  const SelectedFont font(dc, Font.handle());
  TEXTMETRICW metrics{};
  GetTextMetricsW(dc, &metrics);
  return static_cast<int>(metrics.tmHeight);
}

PixelRect USPictureLCD::value_area() {
  const int edge = scale().line() + scale()(kPadding);
  const int title = title_height();
  const int top = edge + (title > 0 ? title + scale()(4) : 0);
  return {edge, top, width() - edge, height() - edge};
}

LcdLayout USPictureLCD::layout() {
  const LcdSide sides[] = {LcdSide::kLeft, LcdSide::kCenter, LcdSide::kRight};
  const LcdSide side = sides[std::clamp<long>(Alignment.get(), 0, 2)];
  return lcd_layout(static_cast<int>(cells_.cells.size()), value_area(), side);
}

void USPictureLCD::draw_cell(int index, const PixelRect& clip, const Colors& now) {
  const LcdCell& cell = cells_.cells[static_cast<size_t>(index)];
  const PixelView view = surface().pixels();
  const uint16_t all = cells_.fourteen ? kFourteenBars : kSevenBars;
  const uint16_t lit = blinked_off_ ? 0 : cell.lit;
  std::vector<LcdShape> dark, bright;
  if (now.ghost > 0)
    append_bars(dark, static_cast<uint16_t>(all & ~lit), cells_.fourteen, layout_, index);
  append_bars(bright, lit, cells_.fourteen, layout_, index);
  if (!blinked_off_) append_marks(bright, cell, layout_, index);
  for (const LcdShape& shape : dark) fill_shape(view, clip, shape, now.value, now.ghost);
  for (const LcdShape& shape : bright) fill_shape(view, clip, shape, now.value, 1);
}

void USPictureLCD::draw_segments(const Colors& now) {
  cells_ = lcd_cells(shown_text_);
  layout_ = layout();
  for (int i = 0; i < static_cast<int>(cells_.cells.size()); ++i)
    draw_cell(i, surface().pixels().bounds(), now);
  cells_drawn_ = true;
}

bool USPictureLCD::draw_changed_cells(const LcdCells& fresh) {
  if (!draws() || !surface() || !cells_drawn_ || DigitStyle.get() != Lcd_Segments || blinked_off_)
    return false;
  if (fresh.cells.size() != cells_.cells.size() || fresh.fourteen != cells_.fourteen) return false;
  if (surface().width() != width() || surface().height() != height()) return false;
  const LcdCells former = std::exchange(cells_, fresh);
  if (layout() != layout_) return false;
  const Colors now = colors();
  const PixelView view = surface().pixels();
  for (int i = 0; i < static_cast<int>(fresh.cells.size()); ++i) {
    const auto at = static_cast<size_t>(i);
    if (fresh.cells[at] == former.cells[at]) continue;
    const PixelRect place = intersect(layout_.cell(i), value_area());
    // Each row has one colour, and its first pixel inside of the border is never drawn over.
    for (int y = place.top; y < place.bottom; ++y)
      std::fill(view.row(y) + place.left, view.row(y) + place.right, view.row(y)[scale().line()]);
    draw_cell(i, place, now);
    surface_changed(as_rect(place));
  }
  return true;
}

void USPictureLCD::draw_in_font(const Colors& now) {
  if (blinked_off_ || shown_text_.empty()) return;
  const PixelRect area = value_area();
  const int wide = area.right - area.left, high = area.bottom - area.top;
  if (wide < 1 || high < 1) return;
  const HDC dc = surface().dc();
  const auto measure = [&](int size) {
    const FontOfHeight font(Font.handle(), size);
    const SelectedFont selected(dc, font.get());
    SIZE taken{};
    GetTextExtentPoint32W(dc, shown_text_.data(), static_cast<int>(shown_text_.size()), &taken);
    return taken;
  };
  // The height of a line is more than that of its letters; both grow alike with the size.
  const SIZE trial = measure(high);
  int size = MulDiv(high, high, std::max(1, static_cast<int>(trial.cy)));
  if (trial.cx > wide) size = std::min(size, MulDiv(high, wide, static_cast<int>(trial.cx)));
  while (size > 1 && measure(size).cx > wide) --size;  // letters are not drawn to scale
  const FontOfHeight font(Font.handle(), size);
  const SelectedFont selected(dc, font.get());
  SetTextColor(dc, now.value);
  RECT place = as_rect(area);
  const UINT sides[] = {DT_LEFT, DT_CENTER, DT_RIGHT};
  DrawTextUnicode(dc, shown_text_, -1, &place,
                  sides[std::clamp<long>(Alignment.get(), 0, 2)] | DT_VCENTER | DT_SINGLELINE |
                      DT_NOPREFIX | DT_NOCLIP);
}

// A character without a picture is blank.
void USPictureLCD::draw_pictures() {
  const auto count = static_cast<int>(shown_text_.size());
  const auto kinds = static_cast<int>(DigitChars.get().size());
  if (blinked_off_ || count < 1 || kinds < 1 || !digits_.has_image()) return;
  const int cell_wide = digits_.Width() / kinds, cell_high = digits_.Height();
  const PixelRect area = value_area();
  const int wide = area.right - area.left, high = area.bottom - area.top;
  if (cell_wide < 1 || wide < count || high < 1) return;
  const int each = std::min(wide / count, std::max(1, MulDiv(high, cell_wide, cell_high)));
  const int tall = std::min(high, std::max(1, MulDiv(each, cell_high, cell_wide)));
  const long side = std::clamp<long>(Alignment.get(), 0, 2);
  int x = area.left + (wide - each * count) * static_cast<int>(side) / 2;
  for (const wchar_t c : shown_text_) {
    const size_t at = DigitChars.get().find(c);
    if (at != std::wstring::npos) {
      RenderArguments args;
      args.destX = x;
      args.destY = area.top + (high - tall) / 2;
      args.destWidth = each;
      args.destHeight = tall;
      args.SrcX = cell_wide * static_cast<int32_t>(at);
      args.SrcWidth = cell_wide;
      args.SrcHeight = cell_high;
      args.Opacity = Enabled.get() ? 100 : 50;
      args.grayScale = Enabled.get() ? GrayScale::None : GrayScale::NtscPal;
      render_to_dc(digits_, surface().dc(), args);
    }
    x += each;
  }
}

void USPictureLCD::draw_title(const Colors& now) {
  if (Caption.get().empty()) return;
  const HDC dc = surface().dc();
  const SelectedFont font(dc, Font.handle());
  const int edge = scale().line() + scale()(kPadding);
  RECT place{edge, edge, width() - edge, height() - edge};
  SetTextColor(dc, now.title);
  DrawTextUnicode(dc, Caption.get(), -1, &place,
                  DT_LEFT | DT_TOP | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS |
                      (right_to_left() ? DT_RTLREADING : 0u));
}

void USPictureLCD::draw_value(const Colors& now) {
  cells_drawn_ = false;
  switch (DigitStyle.get()) {
    case Lcd_Font:
      return draw_in_font(now);
    case Lcd_Picture:
      return draw_pictures();
    default:
      return draw_segments(now);
  }
}

void USPictureLCD::draw() {
  shown_text_ = lcd_fitted(text(), static_cast<int>(Digits.get()), LeadingZeros.get());
  const PixelView view = surface().pixels();
  const Colors now = colors();
  fill_system_gradient(view, view.bounds(), now.top, now.bottom, GradientDirection::TopToBottom);
  for (int i = 0; i < scale().line(); ++i)
    DrawFrame(view, now.border, i, i, view.width - i, view.height - i);
  draw_title(now);
  draw_value(now);
}

}  // namespace kestrelon
