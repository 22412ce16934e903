// The records and words of the data grid that its store, layout, painting and values share.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace kestrelon {

/// Low two bits: left, centre, right; next two: top, centre, bottom.
enum class GridAlignment : int16_t {
  LeftTop = 0,
  CenterTop = 1,
  RightTop = 2,
  LeftCenter = 4,
  CenterCenter = 5,
  RightCenter = 6,
  LeftBottom = 8,
  CenterBottom = 9,
  RightBottom = 10,
};

enum class GridDataType : int16_t {
  String = 0,
  Numeric = 1,
  Date = 2,
  Boolean = 3,
  ProgressBar = 4,
  Custom = 5,
  Button = 6,
};

/// What one call of `GridStore::format_cells` changes; the bits are not those of the cell flags.
enum class GridCellFormat : int32_t {
  BackColor = 1,
  ForeColor = 4,
  Image = 8,
  FontName = 16,
  FontBold = 32,
  FontItalic = 64,
  FontUnderline = 128,
  FontStrikethrough = 256,
  HandPointer = 512,
  Alignment = 1024,
};

/// How a column is sorted now. The numbers are the reverse of the sort types callers pass.
enum class GridSortState : int32_t { None = 0, Descending = 1, Ascending = 2 };

inline constexpr int16_t kGridChecked = 2;
inline constexpr int16_t kGridSelected = 4;  // rows only
inline constexpr int16_t kGridChanged = 8;
inline constexpr int16_t kGridBold = 16;  // this and the next three: cells only
inline constexpr int16_t kGridItalic = 32;
inline constexpr int16_t kGridUnderline = 64;
inline constexpr int16_t kGridStrikethrough = 128;
inline constexpr int16_t kGridFontBits =
    kGridBold | kGridItalic | kGridUnderline | kGridStrikethrough;
inline constexpr int16_t kGridWordWrap = 256;    // cells and columns
inline constexpr int16_t kGridAddedNew = 512;    // rows only
inline constexpr int16_t kGridRowLocked = 1024;  // rows only

/// A foreign object that the grid only keeps: a picture, a bound control. Its deleter releases it.
using GridObject = std::shared_ptr<void>;

struct GridColumn {
  GridObject bound_control;
  float width = 0;           ///< container units
  int32_t width_pixels = 0;  ///< `width` converted by the store's scale
  GridAlignment alignment = GridAlignment::LeftCenter;
  GridAlignment image_alignment = GridAlignment::LeftCenter;
  GridSortState sort_state = GridSortState::None;
  GridDataType type = GridDataType::String;
  int16_t flags = 0;         ///< kGridWordWrap or 0; new cells copy it
  int16_t move_control = 0;  ///< which edges of a bound control follow the cell
  bool visible = true;
  bool locked = false;
  std::wstring heading;
  std::wstring format;
  std::wstring input_filter;
  std::wstring tag;
};

/// The interned part of a cell's format.
struct GridLook {
  uint32_t back_color = 0xFFFFFF;
  uint32_t fore_color = 0;
  std::wstring font_name;
  bool hand_pointer = false;
  int16_t image = 0;  ///< 0 none, > 0 an index, < 0 minus the index of an image given by key
  bool operator==(const GridLook&) const = default;
};

struct GridTotalLine {
  int32_t alignment = 6;
  bool average = false;
  bool invisible = false;
  uint32_t fore_color = 0;
  std::wstring caption = {};
};

/// A row without its cells, by value.
struct GridRowInfo {
  int32_t height = 0;  ///< pixels
  int32_t image = 0;   ///< as GridLook::image
  int16_t flags = 0;   ///< kGridChecked, Selected, Changed, AddedNew, RowLocked
  bool group_header = false;
  bool visible = true;

  bool has(int16_t bit) const { return (flags & bit) != 0; }
};

/// A cell, by value; `text` lives as long as `GridSource` says.
struct GridCellInfo {
  std::wstring_view text;
  int16_t flags = 0;   ///< in a progress bar column the bar's value, -1 for none, and no flags
  int16_t style = -1;  ///< for `GridSource::look`; -1 is the grid's own look
  GridAlignment alignment = GridAlignment::LeftCenter;
};

/// Bold, italic, underline and strikethrough of a cell; a progress bar's word holds no such bits.
constexpr int16_t grid_font_bits(GridDataType type, int16_t cell_flags) {
  return type == GridDataType::ProgressBar ? int16_t{0}
                                           : static_cast<int16_t>(cell_flags & kGridFontBits);
}

}  // namespace kestrelon
