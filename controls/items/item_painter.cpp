#include "controls/items/item_painter.h"

#include <algorithm>

#include "frame/kit/gradient.h"
#include "frame/text.h"
#include "imaging/dib_win.h"
#include "lists/column_widths.h"

namespace kestrelon {
namespace {

constexpr int kDisabledOpacity = 50;  // percent

RECT to_rect(const PixelRect& area) {
  return {area.left, area.top, area.right, area.bottom};
}

PixelRect shrunk(const PixelRect& area, int by) {
  return {area.left + by, area.top + by, area.right - by, area.bottom - by};
}

// A mark of two strokes within a box, in tenths of its side.
void draw_check(HDC dc, const PixelRect& box, ColorRef color, int width) {
  const int side = box.right - box.left;
  const auto at = [&](int x, int y) {
    return POINT{box.left + (side * x + 5) / 10, box.top + (side * y + 5) / 10};
  };
  const POINT points[] = {at(2, 5), at(4, 7), at(8, 2)};
  const HPEN pen = CreatePen(PS_SOLID, width, color);
  const HGDIOBJ displaced = SelectObject(dc, pen);
  Polyline(dc, points, 3);
  SelectObject(dc, displaced);
  DeleteObject(pen);
}

}  // namespace

ItemPainter::ItemPainter(Surface& surface, const ItemColors& colors, HFONT font, HFONT bold,
                         Scale scale)
    : surface_(surface),
      colors_(colors),
      font_(font),
      bold_(bold),
      displaced_(SelectObject(surface.dc(), font)),
      scale_(scale) {}

ItemPainter::~ItemPainter() {
  SelectObject(surface_.dc(), displaced_);
}

void ItemPainter::draw(const ItemLook& look, const ItemParts& parts, const PixelRect& ground) {
  draw_ground(look, ground);
  if (look.tick != TickBox::kNone) draw_tick(look, parts.check);
  if (look.image != nullptr) draw_image(look, parts.image);
  draw_texts(look, parts.text);
  if (look.focus_rect) {
    SetTextColor(surface_.dc(), 0);
    draw_focus_rect(surface_.pixels(), shrunk(ground, scale_.line()));
  }
}

void ItemPainter::draw_ground(const ItemLook& look, const PixelRect& ground) {
  const PixelView view = surface_.pixels();
  if (look.back_color != kNoColor) fill_rect(view, ground, look.back_color);
  if (look.heading) {
    const int line = scale_.line();
    fill_rect(view, {ground.left, ground.bottom - line, ground.right, ground.bottom}, colors_.line);
  } else if (look.current) {
    fill_system_gradient(view, ground, colors_.current1, colors_.current2,
                         GradientDirection::TopToBottom);
    DrawFrame(view, colors_.current_border, ground.left, ground.top, ground.right, ground.bottom);
  } else if (look.selected) {
    fill_rect(view, ground, colors_.selected_back);
  } else if (look.hot) {
    fill_rect(view, ground, colors_.hot);
  }
}

void ItemPainter::draw_tick(const ItemLook& look, const PixelRect& box) {
  if (box.empty()) return;
  const PixelView view = surface_.pixels();
  const ColorRef line = look.disabled ? colors_.disabled_text : colors_.line;
  const ColorRef tick = look.disabled ? colors_.disabled_text : colors_.tick;
  fill_rect(view, box, colors_.back);
  for (int i = 0; i < scale_.line(); ++i)
    DrawFrame(view, line, box.left + i, box.top + i, box.right - i, box.bottom - i);
  if (look.tick == TickBox::kMixed) fill_rect(view, shrunk(box, scale_(4)), tick);
  if (look.tick == TickBox::kTicked) draw_check(surface_.dc(), box, tick, scale_.line(2));
}

void ItemPainter::draw_image(const ItemLook& look, const PixelRect& area) {
  if (area.empty()) return;
  render_to_dc(*look.image, surface_.dc(), area.left, area.top, area.right - area.left,
               area.bottom - area.top, look.disabled ? kDisabledOpacity : 100,
               look.disabled ? GrayScale::NtscPal : GrayScale::None);
}

ColorRef ItemPainter::text_color(const ItemLook& look) const {
  if (look.disabled) return colors_.disabled_text;
  if (look.current || look.selected) return colors_.selected_text;
  if (look.fore_color != kNoColor) return look.fore_color;
  return look.heading ? colors_.heading : colors_.text;
}

UINT ItemPainter::text_flags(const ItemLook& look) const {
  UINT flags = DT_NOPREFIX;
  flags |= look.wrapped ? DT_WORDBREAK | DT_EDITCONTROL : DT_SINGLELINE | DT_VCENTER;
  if (!look.wrapped) flags |= DT_END_ELLIPSIS;
  if (look.mirrored) flags |= DT_RIGHT | DT_RTLREADING;
  return flags;
}

void ItemPainter::draw_texts(const ItemLook& look, const PixelRect& area) {
  if (area.empty() || look.text.empty()) return;
  SelectObject(surface_.dc(), look.bold || look.heading ? bold_ : font_);
  if (look.columns == nullptr) return draw_piece(look, look.text, area);
  const int gap = scale_(6);  // between two columns
  for (const ColumnPiece& piece : split_columns(look.text, *look.columns, area, look.mirrored)) {
    PixelRect cell = piece.area;
    const bool last = look.mirrored ? cell.left == area.left : cell.right == area.right;
    if (!last) (look.mirrored ? cell.left : cell.right) += look.mirrored ? gap : -gap;
    draw_piece(look, piece.text, cell);
  }
}

// One column. A bold part that begins in it is drawn as far as the column goes.
void ItemPainter::draw_piece(const ItemLook& look, std::wstring_view text, const PixelRect& area) {
  const auto at = static_cast<size_t>(text.data() - look.text.data());
  const bool marked = look.bold_part && look.bold_part->size > 0 && look.bold_part->at >= at &&
                      look.bold_part->at < at + text.size();
  if (!marked) return draw_text(look, text, area);
  const size_t from = look.bold_part->at - at;
  draw_marked(look, text, {from, std::min(look.bold_part->size, text.size() - from)}, area);
}

void ItemPainter::draw_text(const ItemLook& look, std::wstring_view text, PixelRect area) {
  const UINT flags = text_flags(look);
  if (look.wrapped) area.top += scale_(1);
  if (colors_.shadowed && !look.disabled) {
    const int by = scale_(1);
    SetTextColor(surface_.dc(), colors_.shadow);
    draw_line(text, {area.left + by, area.top + by, area.right + by, area.bottom + by}, flags);
  }
  SetTextColor(surface_.dc(), text_color(look));
  draw_line(text, area, flags);
}

void ItemPainter::draw_line(std::wstring_view text, const PixelRect& area, UINT flags) {
  RECT rect = to_rect(area);
  if (rect.left < rect.right)
    DrawTextUnicode(surface_.dc(), text, static_cast<int>(text.size()), &rect, flags);
}

void ItemPainter::draw_marked(const ItemLook& look, std::wstring_view text, const TextMatch& part,
                              PixelRect area) {
  const HFONT plain = look.bold ? bold_ : font_;
  const struct {
    std::wstring_view text;
    HFONT font;
  } runs[] = {{text.substr(0, part.at), plain},
              {text.substr(part.at, part.size), bold_},
              {text.substr(part.at + part.size), plain}};
  SetTextColor(surface_.dc(), text_color(look));
  for (const auto& run : runs) {
    if (run.text.empty()) continue;
    SelectObject(surface_.dc(), run.font);
    draw_line(run.text, area, text_flags(look));
    const int width = text_width(surface_.dc(), run.text);
    look.mirrored ? area.right -= width : area.left += width;
  }
  SelectObject(surface_.dc(), plain);
}

void ItemPainter::draw_note(std::wstring_view text, const PixelRect& area) {
  SelectObject(surface_.dc(), font_);
  SetTextColor(surface_.dc(), colors_.disabled_text);
  draw_line(text, shrunk(area, scale_(8)), DT_CENTER | DT_WORDBREAK | DT_NOPREFIX);
}

void ItemPainter::draw_sample_lines(const PixelRect& area, int row_height) {
  constexpr int kLengths[] = {70, 45, 60, 35, 55};  // percent of the width
  const int bar = std::max(row_height / 3, 1), width = area.right - area.left;
  int i = 0;
  for (int y = area.top; y + row_height <= area.bottom; y += row_height, ++i) {
    const int top = y + (row_height - bar) / 2;
    const int length = width * kLengths[i % 5] / 100;
    const PixelRect line{area.left + scale_(6), top, area.left + length, top + bar};
    fill_rect(surface_.pixels(), intersect(line, area), 0xE4E4E4);
  }
}

int wrapped_height(HDC dc, std::wstring_view text, int width) {
  TEXTMETRICW metric{};
  GetTextMetricsW(dc, &metric);
  RECT rect{0, 0, std::max(width, 1), 0};
  const int height = DrawTextUnicode(dc, text, static_cast<int>(text.size()), &rect,
                                     DT_CALCRECT | DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX);
  return std::max(height, static_cast<int>(metric.tmHeight));
}

int text_width(HDC dc, std::wstring_view text) {
  SIZE size{};
  GetTextExtentPoint32W(dc, text.data(), static_cast<int>(text.size()), &size);
  return static_cast<int>(size.cx);
}

}  // namespace kestrelon
