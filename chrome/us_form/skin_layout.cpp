#include "chrome/us_form/skin_layout.h"

#include <algorithm>
#include <cmath>

namespace kestrelon::skin {

int control_box_picture(const BoxState& state) {
  const int hot = static_cast<int>(state.hot);
  const int plain = state.active ? (state.maximized ? 61 : 71) : (state.maximized ? 55 : 51);
  return plain + hot + (state.active && state.pressed && hot > 0 ? 3 : 0);
}

Zone button_zone(long theme, Button button) {
  constexpr Zone kOffice[] = {{2, 22}, {25, 46}, {50, 71}};
  constexpr Zone kFlat[] = {{2, 29}, {30, 55}, {56, 101}};
  const auto index = static_cast<size_t>(button) - 1;
  return is_flat(theme) ? kFlat[index] : kOffice[index];
}

Button button_at(long theme, const Buttons& buttons, int width, int x, int y) {
  if (!button_rows(theme).contains(y)) return Button::kNone;
  const int in_box = x - (width - box_width(theme));
  for (const Button button : {Button::kMinimize, Button::kMaximize, Button::kClose}) {
    const Zone zone = button_zone(theme, button);
    if (in_box >= zone.first && in_box <= zone.last)
      return buttons.answers(button) ? button : Button::kNone;
  }
  return Button::kNone;
}

namespace {

// From a button's first column: how far left of the title's end, and how wide.
constexpr Mask kOfficeMasks[] = {{76, 23}, {52, 23}, {28, 23}};
constexpr Mask kFlatMasks[] = {{107, 30}, {76, 25}, {50, 48}};
constexpr Mask kOfficeAll{76, 71}, kFlatAll{107, 103}, kFlatCloseLeft{107, 56},
    kFlatMinimizeLeft{76, 72};

}  // namespace

Masks button_masks(long theme, const Buttons& buttons, int width) {
  Masks out;
  const auto add = [&](const Mask& mask) { out.parts[out.count++] = {width - mask.x, mask.width}; };
  const auto& [minimize, maximize, close] = buttons.shown;
  const bool flat = is_flat(theme);
  if (!buttons.box || (!minimize && !maximize && !close)) {
    add(flat ? kFlatAll : kOfficeAll);
  } else if (flat && close && !minimize && !maximize) {
    add(kFlatCloseLeft);
  } else if (flat && minimize && !maximize && !close) {
    add(kFlatMinimizeLeft);
  } else {
    for (size_t i = 0; i < 3; ++i)
      if (!buttons.shown[i]) add(flat ? kFlatMasks[i] : kOfficeMasks[i]);
  }
  return out;
}

PixelRect caption_place(bool icon, bool box, int width) {
  return {icon ? 28 : 7, 7, width - (box ? 76 : 7), 28};
}

size_t caption_split(std::wstring_view caption, std::wstring_view delimiter) {
  const size_t at = delimiter.empty() ? std::wstring_view::npos : caption.rfind(delimiter);
  return at == std::wstring_view::npos ? caption.size() : at;
}

CaptionColors caption_colors(long theme, bool active, const CaptionColors& chosen) {
  if (active) return chosen;
  const ColorRef quiet = is_flat(theme) ? 0x3B3B3B : 0x808080;
  return {quiet, quiet};
}

bool moves_over_edge(long theme, int width, int x, int y) {
  return x < 3 || x > width - 3 || !button_rows(theme).contains(y);
}

Pointer title_pointer(int width, int x, int y) {
  if (x < 8) return kPointerNWSE;
  if (x > width - 8) return kPointerNESW;
  return y > 5 ? kDefaultPointer : kPointerNS;
}

Grip title_grip(int width, int x) {
  return x < 8 ? kTopLeftGrip : x > width - 8 ? kTopRightGrip : kTopGrip;
}

Pointer bottom_pointer(int width, int x) {
  return x < 3 ? kPointerNESW : x > width - 8 ? kPointerNWSE : kPointerNS;
}

Grip bottom_grip(int width, int x) {
  return x > width - 3 ? kBottomRightGrip : x > 7 ? kBottomGrip : kBottomLeftGrip;
}

Edges edge_places(long theme, int width, int height, Scale scale) {
  const int thick = scale(edge_width(theme));
  const int line = scale.line();
  return {{0, 0, thick, height},
          {width - thick, 0, width, height},
          {line, height - thick, width - line, height}};
}

std::array<PixelRect, 12> corner_cuts(int width, int height, Scale scale) {
  std::array<PixelRect, 12> out;
  constexpr PixelRect kCuts[] = {{0, 0, 2, 2}, {0, 0, 1, 4}, {0, 0, 4, 1}};
  size_t at = 0;
  for (const PixelRect& cut : kCuts) {
    const int right = scale(cut.right), bottom = scale(cut.bottom);
    out[at++] = {0, 0, right, bottom};
    out[at++] = {0, height - bottom, right, height};
    out[at++] = {width - right, 0, width, bottom};
    out[at++] = {width - right, height - bottom, width, height};
  }
  return out;
}

int sheet_percent(Scale scale) {
  constexpr int kPercents[] = {300, 200, 150, 125, 100};
  const int percent = scale.dpi() * 100 / 96;
  for (const int sheet : kPercents)
    if (percent >= sheet) return sheet;
  return 100;
}

namespace {

int sheet_length(int length, Scale scale) {
  return (length * sheet_percent(scale) + 50) / 100;
}

// Box pictures lie below one another in the order of their numbers.
int box_row(int picture) {
  if (picture <= 58) return std::max(0, picture - 51);
  return picture <= 67 ? 8 + std::max(0, picture - 61) : 15 + std::clamp(picture - 71, 0, 6);
}

}  // namespace

PixelRect box_in_sheet(long theme, int picture, Scale scale) {
  const int height = sheet_length(kTitleHeight, scale);
  const int top = box_row(picture) * height;
  return {0, top, sheet_length(box_width(theme), scale), top + height};
}

PixelRect strip_in_sheet(long theme, bool active, Scale scale) {
  const int left = sheet_length(box_width(theme), scale);
  const int height = sheet_length(kTitleHeight, scale);
  const int top = active ? height : 0;
  return {left, top, left + sheet_length(kStripWidth, scale), top + height};
}

PixelRect edge_in_sheet(long theme, Edge edge, bool active, Scale scale) {
  const int left = sheet_length(box_width(theme), scale);
  const int top = 2 * sheet_length(kTitleHeight, scale);
  const int thick = sheet_length(edge_width(theme), scale);
  const int step = active ? 1 : 0;
  if (edge == Edge::kBottom) return {left + step, top + 4, left + step + 1, top + 4 + thick};
  const int row = top + step + (edge == Edge::kRight ? 2 : 0);
  return {left, row, left + thick, row + 1};
}

namespace {

int32_t between(int32_t from, int32_t to, double part) {
  return static_cast<int32_t>(std::floor(from + (to - from) * part));
}

ColorRef between(ColorRef from, ColorRef to, double part) {
  const Channels a = SplitRGB(from), b = SplitRGB(to);
  return PackRGB(between(a.r, b.r, part), between(a.g, b.g, part), between(a.b, b.b, part));
}

}  // namespace

void paint_background(const PixelView& view, ColorRef color1, ColorRef color2) {
  const ColorRef middle = between(color1, color2, 0.5);
  const int last = view.height - 1;
  const int turn = last * 50 / 100;
  for (int y = 0; y < view.height; ++y) {
    const ColorRef color =
        y < turn ? between(color1, middle, static_cast<double>(y) / turn)
                 : between(middle, color2,
                           last > turn ? static_cast<double>(y - turn) / (last - turn) : 0.0);
    std::fill_n(view.row(y), view.width, to_pixel(color));
  }
}

}  // namespace kestrelon::skin
