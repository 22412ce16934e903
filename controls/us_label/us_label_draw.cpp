// From the caption to pixels with alpha.
#include "controls/us_label/us_label.h"
#include "frame/dib_section.h"
#include "frame/kit/coverage.h"
#include "frame/screen.h"
#include "frame/selected_font.h"
#include "frame/translate_color.h"

namespace kestrelon {
namespace {

constexpr int kFramePadding = 2;  // between frame and text, at 96 dpi
constexpr std::wstring_view kDots = L"...";

// Every pixel of the frame lies within the surface.
void draw_frame(const PixelView& view, int line, ColorRef color) {
  const PixelRect all = view.bounds();
  fill_opaque(view, {0, 0, all.right, line}, color);
  fill_opaque(view, {0, all.bottom - line, all.right, all.bottom}, color);
  fill_opaque(view, {0, 0, line, all.bottom}, color);
  fill_opaque(view, {all.right - line, 0, all.right, all.bottom}, color);
}

int text_width(HDC dc, std::wstring_view text) {
  SIZE size{};
  GetTextExtentPoint32W(dc, text.data(), static_cast<int>(text.size()), &size);
  return static_cast<int>(size.cx);
}

}  // namespace

int USLabel::padding() const {
  return BorderStyle.get() == No_Border ? 0 : scale().line() + scale()(kFramePadding);
}

USLabel::Colors USLabel::colors() const {
  const bool over = is_link() && pointer_over() && Enabled.get();
  if (high_contrast()) {
    const COLORREF text = GetSysColor(!Enabled.get() ? COLOR_GRAYTEXT
                                      : is_link()    ? COLOR_HOTLIGHT
                                                     : COLOR_WINDOWTEXT);
    return {text, text, GetSysColor(COLOR_WINDOWTEXT), GetSysColor(COLOR_WINDOW)};
  }
  const COLORREF back = TranslateColor(BackColor.get());
  if (!Enabled.get()) return {kDisabledText, kDisabledText, kDisabledBorder, back};
  const COLORREF text = TranslateColor(over ? ForeColorOver.get() : ForeColor.get());
  const COLORREF rest = over ? text : TranslateColor(ForeColorDelimiter.get());
  return {text, rest, TranslateColor(BorderColor.get()), back};
}

LabelText USLabel::break_text(HDC dc, int room) const {
  LabelText out = label_text(Caption.get(), UseMnemonic.get(), CaptionDelimiter.get());
  TEXTMETRICW metrics{};
  GetTextMetricsW(dc, &metrics);
  out.line_height = static_cast<int>(metrics.tmHeight);
  out.ends.resize(out.text.size());
  SIZE size{};
  if (!out.text.empty())
    GetTextExtentExPointW(dc, out.text.c_str(), static_cast<int>(out.text.size()), 0, nullptr,
                          out.ends.data(), &size);
  out.lines = break_lines(out.text, out.ends, WordWrap.get() ? room : 0);
  return out;
}

// Gives the control the size of its text: all of it, or with WordWrap the height alone.
void USLabel::fit() {
  if (!AutoSize.get() || !began_ || fitting_ || !surface()) return;
  const SelectedFont font(surface().dc(), Font.handle());
  const int border = 2 * padding();
  const LabelText text = break_text(surface().dc(), std::max(1, width() - border));
  const int wanted_width = WordWrap.get() ? width() : std::max(1, text.width() + border);
  const int wanted_height = std::max(text.height(), text.line_height) + border;
  if (wanted_width == width() && wanted_height == height()) return;
  fitting_ = true;
  request_size(wanted_width, wanted_height);
  fitting_ = false;
}

void USLabel::draw() {
  const PixelView view = surface().pixels();
  const Colors now = colors();
  for (int y = 0; y < view.height; ++y) std::fill_n(view.row(y), view.width, 0u);
  if (BackStyle.get() == Opaque) fill_opaque(view, view.bounds(), now.back);
  if (BorderStyle.get() != No_Border) draw_frame(view, scale().line(), now.border);
  if (!Caption.get().empty()) draw_text(now);
}

// White on black, laid over the surface in the run's colour; the mask is black again afterwards.
void USLabel::draw_run(const DibSection& mask, const Run& run, const RECT& area) {
  if (run.text.empty()) return;
  TextOutW(mask.dc(), area.left, area.top, run.text.data(), static_cast<int>(run.text.size()));
  // Italic letters lean beyond their width.
  const int lean = static_cast<int>(area.bottom - area.top);
  const PixelRect part{area.left - lean, area.top, area.right + lean, area.bottom};
  lay_over(surface().pixels(), mask.pixels(), part, run.color);
  fill_rect(mask.pixels(), part, 0);
}

void USLabel::draw_line(const DibSection& mask, const LabelText& text, const TextLine& line,
                        POINT at, const Colors& now, bool dots) {
  const size_t end = line.start + line.length;
  const size_t split =
      text.delimiter == LabelText::kNone ? end : std::clamp(text.delimiter, line.start, end);
  const std::wstring_view all = text.text;
  const int first = part_width(text.ends, line.start, split - line.start);
  const int second = part_width(text.ends, split, end - split);
  const Run runs[] = {
      {all.substr(line.start, split - line.start), first, now.text},
      {all.substr(split, end - split), second, now.delimiter},
      {dots ? kDots : std::wstring_view(), line.width - first - second,
       split < end ? now.delimiter : now.text},
  };
  const bool mirrored = right_to_left();
  int x = static_cast<int>(at.x) + (mirrored ? line.width : 0);
  for (const Run& run : runs) {
    if (mirrored) x -= run.width;
    draw_run(mask, run, {x, at.y, x + run.width, at.y + text.line_height});
    if (!mirrored) x += run.width;
  }
  if (mirrored || text.underlined < line.start || text.underlined >= end) return;
  TEXTMETRICW metrics{};
  GetTextMetricsW(mask.dc(), &metrics);
  const int left =
      static_cast<int>(at.x) + part_width(text.ends, line.start, text.underlined - line.start);
  const int top = static_cast<int>(at.y + metrics.tmAscent) + scale().line();
  fill_opaque(surface().pixels(),
              {left, top, left + part_width(text.ends, text.underlined, 1), top + scale().line()},
              text.underlined < split ? now.text : now.delimiter);
}

void USLabel::draw_text(const Colors& now) {
  DibSection mask;
  if (!mask.create(width(), height())) return;
  const bool underline = is_link() && pointer_over();
  const SelectedFont font(mask.dc(), Font.handle(), underline);
  SetBkMode(mask.dc(), TRANSPARENT);
  SetTextColor(mask.dc(), RGB(255, 255, 255));
  if (right_to_left()) SetTextAlign(mask.dc(), TA_RTLREADING);
  const int edge = padding();
  const int room = std::max(1, width() - 2 * edge), tall = height() - 2 * edge;
  LabelText text = break_text(mask.dc(), room);
  const int kept =
      DisplayEllipsis.get() ? cut_label(text, room, tall, text_width(mask.dc(), kDots)) : -1;
  long side = Alignment.get();
  if (right_to_left() && side != On_Center) side = To_Right_Justify - side;
  int y = edge + (VerticalCenter.get() ? std::max(0, (tall - text.height()) / 2) : 0);
  for (const TextLine& whole : text.lines) {
    TextLine line = whole;
    if (kept >= 0 && &whole == &text.lines.back()) {
      line.length = static_cast<size_t>(kept);
      line.width = part_width(text.ends, line.start, line.length);
      line.width += text_width(mask.dc(), kDots);
    }
    const int free = room - line.width;
    const int x = edge + (side == On_Center ? free / 2 : side == To_Right_Justify ? free : 0);
    draw_line(mask, text, line, {x, y}, now, line.length != whole.length);
    y += text.line_height;
    if (y >= height()) break;
  }
}

}  // namespace kestrelon
