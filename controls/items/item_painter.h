// Draws items. Reads no window and no control: the same look always gives the same pixels.
#pragma once

#include "controls/items/item_look.h"
#include "frame/kit/scale.h"
#include "frame/surface.h"

namespace kestrelon {

class ItemPainter {
 public:
  /// Fonts are the caller's and must outlive the painter.
  ItemPainter(Surface& surface, const ItemColors& colors, HFONT font, HFONT bold, Scale scale);
  ~ItemPainter();
  ItemPainter(const ItemPainter&) = delete;
  ItemPainter& operator=(const ItemPainter&) = delete;

  /// `ground` is the part of the row that is filled; parts may reach beyond it when the list is
  /// scrolled sideways.
  void draw(const ItemLook& look, const ItemParts& parts, const PixelRect& ground);
  /// A text in the middle of an area: what an empty list says.
  void draw_note(std::wstring_view text, const PixelRect& area);
  /// Gray bars in place of texts, for a designer without items.
  void draw_sample_lines(const PixelRect& area, int row_height);

 private:
  void draw_ground(const ItemLook& look, const PixelRect& ground);
  void draw_tick(const ItemLook& look, const PixelRect& box);
  void draw_image(const ItemLook& look, const PixelRect& area);
  void draw_texts(const ItemLook& look, const PixelRect& area);
  void draw_text(const ItemLook& look, std::wstring_view text, PixelRect area);
  void draw_piece(const ItemLook& look, std::wstring_view text, const PixelRect& area);
  void draw_marked(const ItemLook& look, std::wstring_view text, const TextMatch& part,
                   PixelRect area);
  void draw_line(std::wstring_view text, const PixelRect& area, UINT flags);
  ColorRef text_color(const ItemLook& look) const;
  UINT text_flags(const ItemLook& look) const;

  Surface& surface_;
  const ItemColors& colors_;
  HFONT font_, bold_;
  HGDIOBJ displaced_;
  Scale scale_;
};

/// The height of a text wrapped at `width` pixels, at least one line.
int wrapped_height(HDC dc, std::wstring_view text, int width);
/// The width of a text in one line.
int text_width(HDC dc, std::wstring_view text);

}  // namespace kestrelon
