// What a grid shows, asked for cell by cell while it is painted.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "frame/kit/pixel_view.h"

namespace kestrelon::grid_paint {

/// `GRID_DATA_TYPE`, as far as looks go.
enum class CellKind { kText, kCheckBox, kButton, kProgress };

struct CellFacts {
  std::wstring_view text;  ///< as shown, formatted; may point into `scratch`
  std::wstring scratch;
  std::wstring_view font_name;  ///< empty for the grid's own font
  CellKind kind = CellKind::kText;
  int alignment = 4;  ///< `GRID_ALIGNMENT`
  int image_alignment = 4;
  int32_t image = 0;              ///< as the store has it, 0 for none
  const void* picture = nullptr;  ///< handed on to GridPictures; wins over the image
  double progress = -1;           ///< per cent; below 0 there is no bar
  ColorRef back = 0, fore = 0;    ///< translated; used where they are the cell's own
  bool own_back = false, own_fore = false;
  bool bold = false, italic = false, underline = false, strikethrough = false;
  bool wrap = false;
  bool checked = false;  ///< of a check box
  bool pressed = false;  ///< of a button

  /// Back to an empty cell; keeps the memory of `scratch`.
  void clear() {
    std::wstring kept = std::move(scratch);
    kept.clear();
    *this = {};
    scratch = std::move(kept);
  }
};

struct RowFacts {
  bool selected = false;  ///< as far as selections show at all
  bool checked = false;
  bool group_header = false;
  int32_t image = 0;
};

struct HeadingFacts {
  std::wstring_view text;
  int alignment = 4;
  int state = 1;  ///< 1 normal, 2 hover, 3 pressed
  int sort = 0;   ///< 0 no arrow, 1 down, 2 up
};

struct TotalFacts {
  std::wstring_view text;  ///< may point into `scratch`
  std::wstring scratch;
  int alignment = 6;
  ColorRef fore = 0;
};

/// Rows are display positions, columns indexes in the store. Texts stay where they are until the
/// row they belong to is painted. Nothing in here may raise events.
class GridContents {
 public:
  virtual ~GridContents() = default;
  virtual RowFacts row(int32_t row) const = 0;
  /// Fills an empty record in.
  virtual void cell(int32_t row, int32_t column, CellFacts& facts) const = 0;
  /// The cell whose text a group header shows across the row.
  virtual void group_cell(int32_t row, CellFacts& facts) const = 0;
  virtual HeadingFacts heading(int32_t column) const = 0;
  virtual void total(int32_t column, TotalFacts& facts) const = 0;
  virtual std::wstring_view caption() const = 0;
  /// The image that marks a cell whose text does not fit its row; 0 for none.
  virtual int32_t expand_image() const { return 0; }
};

}  // namespace kestrelon::grid_paint
