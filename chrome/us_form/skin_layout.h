// Where the parts of a window skin lie, which picture shows a state, and what a point of it does:
// numbers alone, in pixels of 96 dots an inch unless told otherwise.
#pragma once

#include <array>
#include <string_view>

#include "frame/kit/color.h"
#include "frame/kit/scale.h"

namespace kestrelon::skin {

inline constexpr int kTitleHeight = 28, kStripWidth = 10, kIconSide = 16;

/// Title buttons by number; 0 is none.
enum class Button { kNone = 0, kMinimize = 1, kMaximize = 2, kClose = 3 };

/// Answers of a hit test, numbered as WM_NCHITTEST's; 0 is none.
enum Grip : int {
  kNoGrip = 0,
  kCaptionGrip = 2,
  kLeftGrip = 10,
  kRightGrip = 11,
  kTopGrip = 12,
  kTopLeftGrip = 13,
  kTopRightGrip = 14,
  kBottomGrip = 15,
  kBottomLeftGrip = 16,
  kBottomRightGrip = 17
};

/// Pointer numbers, those of MousePointerConstants.
enum Pointer : long {
  kDefaultPointer = 0,
  kPointerNESW = 6,
  kPointerNS = 7,
  kPointerNWSE = 8,
  kPointerWE = 9
};

/// The two Office themes share one geometry, every other number has that of Windows 8.
constexpr bool is_flat(long theme) {
  return theme != 0 && theme != 1;
}
constexpr int box_width(long theme) {
  return is_flat(theme) ? 107 : 76;
}
constexpr int edge_width(long theme) {
  return is_flat(theme) ? 5 : 3;
}
/// The number of a theme's first picture; 0 for a theme that has none.
constexpr int picture_base(long theme) {
  return theme < 0 || theme > 2 ? 0 : static_cast<int>(theme + 1) * 100;
}

/// The control box's state. In the designer a skin looks active and not maximized.
struct BoxState {
  bool active = true;
  bool maximized = false;
  Button hot = Button::kNone;
  bool pressed = false;  ///< the mouse key is down; only an active window shows it
};
/// The offset of a picture from the theme's base: 51 to 58, 61 to 67, 71 to 77.
int control_box_picture(const BoxState& state);

/// Shown and answering, for each of the three buttons in their order, and for all.
struct Buttons {
  bool box = true;
  std::array<bool, 3> shown{true, true, true};
  std::array<bool, 3> enabled{true, true, true};

  bool shows(Button button) const { return shown[static_cast<size_t>(button) - 1]; }
  bool answers(Button button) const {
    return box && shows(button) && enabled[static_cast<size_t>(button) - 1];
  }
};

/// The rows of a title in which buttons lie, ends included.
struct Rows {
  int first, last;
  constexpr bool contains(int y) const { return y >= first && y <= last; }
};
constexpr Rows button_rows(long theme) {
  return is_flat(theme) ? Rows{0, 21} : Rows{6, 26};
}
/// The rows in which a release counts as a click, the same in all themes.
inline constexpr Rows kReleaseRows{6, 26};

/// The columns of a button within the control box, ends included.
struct Zone {
  int first, last;
};
Zone button_zone(long theme, Button button);

/// The button under a point of a title `width` wide that answers; kNone otherwise.
Button button_at(long theme, const Buttons& buttons, int width, int x, int y);

/// A part of the title that the strip's fill covers, from x on.
struct Mask {
  int x = 0, width = 0;
  constexpr bool operator==(const Mask&) const = default;
};
struct Masks {
  std::array<Mask, 3> parts{};
  size_t count = 0;
};
/// What hides the pictures of buttons that are not shown.
Masks button_masks(long theme, const Buttons& buttons, int width);

/// The width of the fill from column 10 on. In Windows 8 it runs past the title's end.
constexpr int fill_width(long theme, bool box, int width) {
  return !box ? width - 8 : is_flat(theme) ? width + 107 : width - 76;
}

/// Left, top, right and bottom of the caption.
PixelRect caption_place(bool icon, bool box, int width);
/// The length of the part of a caption before the last delimiter; all of it without one.
size_t caption_split(std::wstring_view caption, std::wstring_view delimiter);

struct CaptionColors {
  ColorRef main, delimiter;
};
CaptionColors caption_colors(long theme, bool active, const CaptionColors& chosen);

/// Whether a point of the title is asked for edges rather than buttons when the pointer moves.
bool moves_over_edge(long theme, int width, int x, int y);
/// The pointer there, and what a press outside of the button rows takes hold of.
Pointer title_pointer(int width, int x, int y);
Grip title_grip(int width, int x);
/// The bottom edge; its bands for the pointer and for the press differ.
Pointer bottom_pointer(int width, int x);
Grip bottom_grip(int width, int x);

/// The places of the three edges in a window of a size in real pixels.
struct Edges {
  PixelRect left, right, bottom;
};
Edges edge_places(long theme, int width, int height, Scale scale);

/// The twelve rectangles that round the corners of a window of a size in real pixels; for the two
/// Office themes, Windows 8 stays square.
std::array<PixelRect, 12> corner_cuts(int width, int height, Scale scale);

/// Sizes in twips that a child of a desk does not get below.
inline constexpr long kLeastChildWidth = 4000, kLeastChildHeight = 490;

/// Where a picture lies in its sheet, in pixels of the sheet.
PixelRect box_in_sheet(long theme, int picture, Scale scale);
PixelRect strip_in_sheet(long theme, bool active, Scale scale);
enum class Edge { kLeft, kRight, kBottom };
PixelRect edge_in_sheet(long theme, Edge edge, bool active, Scale scale);
/// The percentage of the sheet for a scale: 100, 125, 150, 200 or 300, the largest that fits.
int sheet_percent(Scale scale);

/// A background from color1 over the colour half-way to color2, one row a line; the middle colour
/// is cut to whole numbers and lies in row (rows - 1) / 2.
void paint_background(const PixelView& view, ColorRef color1, ColorRef color2);

}  // namespace kestrelon::skin
