// Where the tabs, the page and the marks of a tab strip lie: numbers alone.
#pragma once

#include <span>
#include <vector>

#include "frame/kit/pixel_view.h"
#include "frame/kit/scale.h"

namespace kestrelon::tab_strip {

/// Numbered as ENUM_TAB_PLACEMENT.
enum class Side { kTop = 0, kBottom = 1, kLeft = 2, kRight = 3 };

/// What layout knows of a tab: picture and caption together, edges not included; pixels.
struct Item {
  int width = 0;
  int height = 0;
};

struct Shape {
  int width = 0;
  int height = 0;
  int active_height = 0;  ///< pixels of the screen, as the next
  int inactive_height = 0;
  Side side = Side::kTop;
  bool equal_widths = true;  ///< else each tab is as wide as its content
  bool control_box = false;  ///< a close mark at the strip's end
  bool close_marks = false;  ///< one in each tab
  Scale scale;
};

struct Arrangement {
  PixelRect strip, page;
  std::vector<PixelRect> tabs;         ///< empty for one that is scrolled away or does not fit
  std::vector<PixelRect> close_marks;  ///< empty where there are none
  PixelRect back, forward;             ///< arrows, where tabs do not all fit
  PixelRect box;
  int first = 0;  ///< the first tab shown
  int last = -1;  ///< the last one shown whole
};

/// `first` is where the user has scrolled to; it is held to what leaves no empty room at the end.
/// With `wanted` at 0 or more the strip scrolls as far as that tab needs to be seen.
Arrangement arrange(const Shape& shape, std::span<const Item> items, int active, int first,
                    int wanted);

/// Tabs count from 0.
enum class Part { kNothing, kTab, kCloseMark, kBack, kForward, kBox };
struct Hit {
  Part part = Part::kNothing;
  int tab = -1;
  bool operator==(const Hit&) const = default;
};
Hit hit(const Arrangement& strip, int x, int y);

/// The place a dragged tab would take at a point: the tab whose middle it has passed.
int drop_place(const Arrangement& strip, Side side, int dragged, int x, int y);

/// Picture and caption within a tab.
struct Face {
  PixelRect picture, text;
};
/// `picture` is the edge of its square, 0 without one; `icon_side` as ENUM_ICON_ALIGNMENT.
Face face(const PixelRect& tab, const PixelRect& close_mark, int picture, int text_width,
          int text_height, int icon_side, Scale scale);
Item measure(int picture, int text_width, int text_height, int icon_side, Scale scale);

/// The next tab from `from` in a direction of 1 or -1 that `takes(tab)` accepts; `from` without
/// one. `round` goes on at the other end.
template <class Takes>
int walk(int from, int direction, int count, bool round, Takes&& takes) {
  int at = from;
  for (int step = 0; step < count; ++step) {
    at += direction;
    if (at < 0 || at >= count) {
      if (!round) return from;
      at = at < 0 ? count - 1 : 0;
    }
    if (takes(at)) return at;
  }
  return from;
}

}  // namespace kestrelon::tab_strip
