// The items of a menu as a list with levels, and what follows from it: who belongs to whom, where
// a new item goes, which keys a short cut means, where the items of a bar lie.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "frame/kit/pixel_view.h"
#include "frame/kit/scale.h"

namespace kestrelon {

/// An item as it is saved.
struct MenuItem {
  std::wstring caption;  ///< "-" parts, "&" marks
  bool checked = false;
  bool is_default = false;
  std::wstring description;
  bool enabled = true;
  std::wstring image;  ///< a position from 1 in digits, or a key
  std::wstring key;
  short level = 0;
  bool radio = false;
  std::wstring short_cut;
  std::wstring tag;
  bool visible = true;

  bool separates() const { return caption == L"-"; }
};

namespace menu_model {

/// No item; where an item's parent is asked for, the menu itself.
inline constexpr int kNone = -1;
inline constexpr int kDeepest = 15;  ///< levels; deeper ones are taken as this

using Items = std::span<const MenuItem>;

/// The item of a key, the first of several; an empty key names none.
int find(Items items, std::wstring_view key);
/// The level of each item as it counts: one that jumps is one deeper than the item before it.
std::vector<int> levels(Items items);
/// The items directly under one, or at the top for kNone.
std::vector<int> children(Items items, int parent);
/// One past the last item that belongs to one.
int subtree_end(Items items, int index);
/// The item that one belongs to.
int parent_of(Items items, int index);

/// Modifiers of a short cut.
enum : int { kShift = 1, kControl = 2, kAlt = 4 };

struct ShortCut {
  int modifiers = 0;
  int key = 0;  ///< a virtual key; 0 for a text that names none
  bool operator==(const ShortCut&) const = default;
};

/// "Ctrl+Shift+F5", "Alt+Home", "F2", "Ctrl+S", in any case; key names in English and Portuguese.
/// A letter or digit alone is none: it would take that letter from every text box.
ShortCut parse_short_cut(std::wstring_view text);

/// The visible, enabled item of a short cut whose parents all are so too.
int find_short_cut(Items items, const ShortCut& pressed);

/// The bar: a rectangle for each item that has a place, from left to right, and what leads to the
/// others; empty while all fit.
struct Bar {
  std::vector<PixelRect> places;  ///< as many as items fit
  PixelRect overflow;
};
Bar lay_out_bar(std::span<const int> caption_widths, int width, int height, Scale scale,
                bool right_to_left);

/// Widths of the columns of a drawn item, in pixels of the scale.
struct ItemMetrics {
  int image_column = 0;  ///< from the left edge to the text
  int width = 0;
  int height = 0;
};
ItemMetrics measure_item(bool separator, int caption_width, int short_cut_width, int text_height,
                         int image_size, Scale scale);

}  // namespace menu_model
}  // namespace kestrelon
