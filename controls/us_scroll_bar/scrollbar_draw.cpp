#include "controls/us_scroll_bar/scrollbar_draw.h"

#include <algorithm>

#include "frame/bitmap_resource.h"

namespace kestrelon {
namespace {

constexpr int kCorner = 3;      // of faces drawn in nine pieces
constexpr int kThumbCell = 17;  // step of the thumb strip, and the breadth of all strips
constexpr int kThumbLength = 15;
constexpr int kButtonCell = 18;  // step of the button strips
constexpr int kGripAlong = 10;   // size of a grip along the bar and across it
constexpr int kGripAcross = 9;

// A part of a strip.
struct Cell {
  int x, y, width, height;
};

int state_or_idle(int state, int states) {
  return state >= 0 && state < states ? state : 0;
}

int width_of(const RECT& r) {
  return static_cast<int>(r.right - r.left);
}
int height_of(const RECT& r) {
  return static_cast<int>(r.bottom - r.top);
}

// Three stretches of one direction: the corners as they are, what lies between them stretched.
struct Stretches {
  int from[3], length[3], to[3], to_length[3];
  Stretches(int source, int source_length, int target, int target_length) {
    const int corner = std::min(kCorner, target_length / 2);
    const int sources[] = {corner, source_length - 2 * kCorner, corner};
    const int targets[] = {corner, target_length - 2 * corner, corner};
    const int starts[] = {source, source + kCorner, source + source_length - corner};
    for (int i = 0, at = target; i < 3; at += targets[i++]) {
      from[i] = starts[i];
      length[i] = sources[i];
      to[i] = at;
      to_length[i] = targets[i];
    }
  }
};

void draw_nine(HDC dc, const pcMemDC& strip, const Cell& cell, const RECT& place) {
  const Stretches x(cell.x, cell.width, static_cast<int>(place.left), width_of(place));
  const Stretches y(cell.y, cell.height, static_cast<int>(place.top), height_of(place));
  for (int row = 0; row < 3; ++row)
    for (int column = 0; column < 3; ++column) {
      if (x.to_length[column] <= 0 || y.to_length[row] <= 0) continue;
      if (row != 1 && column != 1)
        strip.Draw(dc, x.from[column], y.from[row], x.to_length[column], y.to_length[row],
                   x.to[column], y.to[row], false);
      else
        strip.StretchDraw(dc, x.to[column], y.to[row], x.to_length[column], y.to_length[row],
                          x.from[column], y.from[row], x.length[column], y.length[row]);
    }
}

// Draws a glyph in the middle; of one larger than the place only its middle shows.
void draw_centred(HDC dc, const pcMemDC& strip, const Cell& cell, const RECT& place) {
  const int width = std::min(cell.width, width_of(place));
  const int height = std::min(cell.height, height_of(place));
  if (width <= 0 || height <= 0) return;
  strip.Draw(dc, cell.x + (cell.width - width) / 2, cell.y + (cell.height - height) / 2, width,
             height, static_cast<int>(place.left) + (width_of(place) - width) / 2,
             static_cast<int>(place.top) + (height_of(place) - height) / 2, true);
}

// Whole source pixels are repeated: blends would blur the edges.
class StretchMode {
 public:
  explicit StretchMode(HDC dc) : dc_(dc), former_(SetStretchBltMode(dc, COLORONCOLOR)) {}
  ~StretchMode() { SetStretchBltMode(dc_, former_); }
  StretchMode(const StretchMode&) = delete;
  StretchMode& operator=(const StretchMode&) = delete;

 private:
  HDC dc_;
  int former_;
};

bool runs_down(ENUM_POSITION orientation) {
  return orientation == Horizontal;
}

void load(pcMemDC& strip, const wchar_t* name) {
  strip.CreateFromBitmap(BitmapResource(name).get());
}

}  // namespace

const cScrollbarDraw::Strips& cScrollbarDraw::strips(ENUM_POSITION orientation) const {
  const bool down = runs_down(orientation);
  std::optional<Strips>& own = down ? down_ : across_;
  if (own) return *own;
  own.emplace();
  load(own->back, down ? L"SCRBACKV" : L"SCRBACKH");
  load(own->thumb, down ? L"SCRTHUMBV" : L"SCRTHUMBH");
  load(own->grip, down ? L"SCRGRIPV" : L"SCRGRIPH");
  load(own->face, down ? L"SCRARROWV" : L"SCRARROWH");
  load(own->top_left, down ? L"SCRARROWVT" : L"SCRARROWHL");
  load(own->bottom_right, down ? L"SCRARROWVB" : L"SCRARROWHR");
  return *own;
}

void cScrollbarDraw::DrawBack(HDC hDC, int state, ENUM_POSITION orientation,
                              const RECT& rectangle) const {
  if (IsRectEmpty(&rectangle)) return;
  const StretchMode mode(hDC);
  const bool down = runs_down(orientation);
  const int line = state_or_idle(state, 3);
  // One line of the strip for each state, as long as the bar is broad.
  const Cell cell = down ? Cell{0, line, kThumbCell, 1} : Cell{line, 0, 1, kThumbCell};
  strips(orientation)
      .back.StretchDraw(hDC, static_cast<int>(rectangle.left), static_cast<int>(rectangle.top),
                        width_of(rectangle), height_of(rectangle), cell.x, cell.y, cell.width,
                        cell.height);
}

void cScrollbarDraw::DrawBar(HDC hDC, int state, ENUM_POSITION orientation,
                             const RECT& rectangle) const {
  if (IsRectEmpty(&rectangle)) return;
  const StretchMode mode(hDC);
  const bool down = runs_down(orientation);
  const Strips& own = strips(orientation);
  const int cell = state_or_idle(state, 4);
  draw_nine(hDC, own.thumb,
            down ? Cell{cell * kThumbCell, 0, kThumbCell, kThumbLength}
                 : Cell{0, cell * kThumbCell, kThumbLength, kThumbCell},
            rectangle);
  const int along = down ? height_of(rectangle) : width_of(rectangle);
  const int across = down ? width_of(rectangle) : height_of(rectangle);
  if (along < kGripAlong + 2 * kCorner || across < kGripAcross + 2) return;
  draw_centred(hDC, own.grip,
               down ? Cell{0, cell * kGripAlong, kGripAcross, kGripAlong}
                    : Cell{0, cell * kGripAcross, kGripAlong, kGripAcross},
               rectangle);
}

void cScrollbarDraw::draw_button(HDC dc, int state, ENUM_POSITION orientation, const RECT& place,
                                 const pcMemDC& arrow) const {
  if (IsRectEmpty(&place)) return;
  const StretchMode mode(dc);
  const int at = state_or_idle(state, 5) * kButtonCell;
  const Cell cell = runs_down(orientation) ? Cell{0, at, kThumbCell, kButtonCell}
                                           : Cell{at, 0, kButtonCell, kThumbCell};
  draw_nine(dc, strips(orientation).face, cell, place);
  draw_centred(dc, arrow, cell, place);
}

void cScrollbarDraw::DrawTopLeftButton(HDC hDC, int state, ENUM_POSITION orientation,
                                       const RECT& rectangle) const {
  draw_button(hDC, state, orientation, rectangle, strips(orientation).top_left);
}

void cScrollbarDraw::DrawBottomRightButton(HDC hDC, int state, ENUM_POSITION orientation,
                                           const RECT& rectangle) const {
  draw_button(hDC, state, orientation, rectangle, strips(orientation).bottom_right);
}

}  // namespace kestrelon
