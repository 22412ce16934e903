// From a value to pixels and text.
#include "base/clock_text.h"
#include "base/decimal.h"
#include "controls/us_progress_bar/us_progress_bar.h"
#include "frame/kit/gradient.h"
#include "frame/region.h"
#include "frame/screen.h"
#include "frame/selected_font.h"
#include "frame/text.h"
#include "frame/translate_color.h"
#include "services/typing/amount.h"

namespace kestrelon {
namespace {

// A number as people in Brazil write it: "1.234,50".
std::wstring number_text(double value, int decimals) {
  const std::wstring plain = format_fixed(value, decimals, L',');
  const bool negative = !plain.empty() && plain[0] == L'-';
  const size_t begin = negative ? 1 : 0;
  const size_t end = std::min(plain.find(L','), plain.size());
  return plain.substr(0, begin) +
         group_digits(std::wstring_view(plain).substr(begin, end - begin), L'.') +
         plain.substr(end);
}

RECT as_rect(const PixelRect& area) {
  return {area.left, area.top, area.right, area.bottom};
}

}  // namespace

PixelRect USProgressBar::bar() const {
  const int line = scale().line();
  return {line, line, width() - line, height() - line};
}

int USProgressBar::bar_length() const {
  const PixelRect inner = bar();
  return std::max(0, upright() ? inner.bottom - inner.top : inner.right - inner.left);
}

bool USProgressBar::text_tells(ENUM_PROGRESS_TEXT mode, wchar_t mark) const {
  if (TextMode.get() == Progress_Caption) return caption_marks_.find(mark) != std::wstring::npos;
  return TextMode.get() == mode;
}

USProgressBar::Look USProgressBar::look() const {
  const double value = Value.get();
  const int places = used_decimals(Decimals.get());
  Look out;
  out.filled = filled_length(bar_length(), range().fraction(value));
  if (text_tells(Progress_Percent, L'p')) out.percent = range().percent(value, places);
  if (text_tells(Progress_Value, L'v')) out.value = value_step(value, places);
  if (TextMode.get() != Progress_Caption) return out;
  if (text_tells(Progress_Caption, L'm')) out.max = Max.get();
  if (text_tells(Progress_Caption, L't')) out.seconds = clock_.seconds_left();
  return out;
}

// A bar that knows no value tells none either.
std::wstring USProgressBar::text() const {
  const int places = used_decimals(Decimals.get());
  const auto percent = [&] {
    return percent_text(range().percent(Value.get(), places), places) + L"%";
  };
  const bool counts = !endless() && State.get() != TASKBAR_NOPROGRESS;
  switch (TextMode.get()) {
    case Progress_Percent:
      return counts ? percent() : std::wstring();
    case Progress_Value:
      return counts ? number_text(Value.get(), places) : std::wstring();
    case Progress_Caption:
      if (caption_marks_.empty()) return Caption.get();
      return fill_caption(Caption.get(),
                          {percent(), number_text(Value.get(), places),
                           number_text(Max.get(), places), duration_text(clock_.seconds_left())});
    default:
      return {};
  }
}

COLORREF USProgressBar::state_color() const {
  switch (State.get()) {
    case TASKBAR_ERROR:
      return TranslateColor(ColorError.get());
    case TASKBAR_PAUSED:
      return TranslateColor(ColorPaused.get());
    default:
      return TranslateColor(Color.get());
  }
}

USProgressBar::Colors USProgressBar::colors() const {
  if (high_contrast()) {
    const COLORREF text = GetSysColor(Enabled.get() ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT);
    return {GetSysColor(COLOR_WINDOW), GetSysColor(COLOR_WINDOWTEXT), GetSysColor(COLOR_HIGHLIGHT),
            text, GetSysColor(COLOR_HIGHLIGHTTEXT)};
  }
  const COLORREF back = TranslateColor(BackColor.get());
  if (!Enabled.get()) return {back, kDisabledBorder, kDisabledBorder, kDisabledText, 0xFFFFFF};
  return {back, TranslateColor(BorderColor.get()), state_color(), TranslateColor(ForeColor1.get()),
          TranslateColor(ForeColor2.get())};
}

// Light from above, or from the left on an upright bar: lighter at the edge, the colour itself from
// the middle on.
void USProgressBar::draw_fill(const PixelRect& part, COLORREF color) {
  const PixelView view = surface().pixels();
  if (high_contrast()) return fill_rect(view, part, color);
  const COLORREF light = BlendColor(color, 0xFFFFFF, 0.4);
  const PixelRect all = bar();
  const auto direction =
      upright() ? GradientDirection::LeftToRight : GradientDirection::TopToBottom;
  const int middle = upright() ? (all.left + all.right) / 2 : (all.top + all.bottom) / 2;
  const PixelRect half = upright() ? PixelRect{all.left, part.top, middle, part.bottom}
                                   : PixelRect{part.left, all.top, part.right, middle};
  fill_rect(view, part, color);
  if (!half.empty()) fill_system_gradient(view, half, light, color, direction);
}

std::vector<PixelRect> USProgressBar::draw_runner(COLORREF color) {
  const int length = bar_length();
  const ULONGLONG way = runner_.running() ? GetTickCount64() - runner_began_ : 1000;
  const Runner at = runner_at(length, way);
  const PixelRect part = bar_part(bar(), at.from, at.to, upright());
  if (part.empty()) return {};
  draw_fill(part, color);
  return {part};
}

std::vector<PixelRect> USProgressBar::draw_filled(COLORREF color) {
  const bool empty = State.get() == TASKBAR_NOPROGRESS;
  const int filled = empty ? 0 : filled_length(bar_length(), range().fraction(Value.get()));
  const PixelRect all = bar();
  std::vector<PixelRect> parts;
  if (Style.get() == Progress_Blocks) {
    const int thick = upright() ? all.right - all.left : all.bottom - all.top;
    parts = bar_blocks(all, filled, {std::max(2, thick * 2 / 3), scale()(2)}, upright());
  } else if (filled > 0) {
    parts = {bar_part(all, 0, filled, upright())};
  }
  for (const PixelRect& part : parts) draw_fill(part, color);
  if (upright()) std::ranges::reverse(parts);  // from the top down, as regions are made
  return parts;
}

// Each pixel of the text has the colour of the part of the bar it lies on.
void USProgressBar::draw_text(const std::vector<PixelRect>& filled, const Colors& now) {
  if (drawn_text_.empty()) return;
  const HDC dc = surface().dc();
  const SelectedFont font(dc, Font.handle());
  const RECT place = as_rect(bar());
  constexpr UINT kFlags = DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX;
  const UINT flags = kFlags | (right_to_left() ? DT_RTLREADING : 0u);
  const HRGN region = region_from_rects(filled);
  const auto draw_clipped = [&](COLORREF color, int mode) {
    const int saved = SaveDC(dc);
    IntersectClipRect(dc, place.left, place.top, place.right, place.bottom);
    ExtSelectClipRgn(dc, region, mode);
    SetTextColor(dc, color);
    RECT area = place;
    DrawTextUnicode(dc, drawn_text_, -1, &area, flags);
    RestoreDC(dc, saved);
  };
  draw_clipped(now.text, RGN_DIFF);
  if (!filled.empty()) draw_clipped(now.text_on_fill, RGN_AND);
  DeleteObject(region);
}

void USProgressBar::draw() {
  drawn_ = look();
  drawn_text_ = text();
  const PixelView view = surface().pixels();
  const Colors now = colors();
  fill_rect(view, view.bounds(), now.border);
  fill_rect(view, bar(), now.back);
  draw_text(endless() ? draw_runner(now.fill) : draw_filled(now.fill), now);
}

}  // namespace kestrelon
