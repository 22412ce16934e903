// The fonts of a grid's cells, made once each.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

namespace kestrelon::grid_paint {

/// A font with what painting needs to know of it.
struct CellFont {
  HFONT handle = nullptr;
  int height = 0;          ///< of a line
  int ellipsis_width = 0;  ///< of "..."
  int digit_width = 0;     ///< of the widest digit
  bool lined = false;      ///< underlined or struck out
};

struct FontStyle {
  bool bold = false, italic = false, underline = false, strikethrough = false;
  bool operator==(const FontStyle&) const = default;
};

/// Owns the fonts it gives out; they live until the next change of the base fonts.
class GridFonts {
 public:
  GridFonts() = default;
  GridFonts(const GridFonts&) = delete;
  GridFonts& operator=(const GridFonts&) = delete;
  ~GridFonts() { reset(); }

  /// The fonts of cells and headings, heights in pixels of the screen.
  void set(const LOGFONTW& cells, const LOGFONTW& header);

  const CellFont& header();
  /// The font of the cells, by another name unless that is empty. Bold or italic of the base stay.
  const CellFont& cell(std::wstring_view name, const FontStyle& style);

 private:
  struct Entry {
    std::wstring name;
    FontStyle style;
    CellFont font;
  };
  void reset();

  LOGFONTW cells_ = {}, header_logical_ = {};
  CellFont header_;
  std::vector<Entry> entries_;
  size_t last_ = 0;  // most cells look like the one before
};

}  // namespace kestrelon::grid_paint
