#include "chrome/us_tab/tab_strip_layout.h"

#include <algorithm>

namespace kestrelon::tab_strip {
namespace {

// Pixels at 96 dots an inch.
constexpr int kStart = 2;     // before the first tab
constexpr int kPadding = 10;  // within a tab, at both ends
constexpr int kGap = 4;       // between picture and caption
constexpr int kMark = 11;     // edge of a close mark
constexpr int kMarkGap = 6;   // between caption and close mark
constexpr int kArrow = 16;    // length of an arrow
constexpr int kLeast = 40;    // the narrowest of equally wide tabs
constexpr int kWidest = 150;  // and the widest, unless a caption needs more
constexpr int kInset = 3;     // how far other tabs stand back at the sides

bool upright(Side side) {
  return side == Side::kLeft || side == Side::kRight;
}

// The strip as if it ran from left to right at the top: positions along it and depths from its
// outer edge. turn() gives the control's own pixels.
struct Band {
  int along = 0;  // length of the strip
  int depth = 0;
};

PixelRect turn(const Shape& shape, const PixelRect& area) {
  switch (shape.side) {
    case Side::kTop:
      return area;
    case Side::kBottom:
      return {area.left, shape.height - area.bottom, area.right, shape.height - area.top};
    case Side::kLeft:
      return {area.top, area.left, area.bottom, area.right};
    case Side::kRight:
      return {shape.width - area.bottom, area.left, shape.width - area.top, area.right};
  }
  return area;
}

int mark_room(const Shape& shape) {
  return shape.close_marks ? shape.scale(kMark) + shape.scale(kMarkGap) : 0;
}

Band band_of(const Shape& shape, std::span<const Item> items) {
  const int high = std::max({shape.active_height, shape.inactive_height, 1});
  if (!upright(shape.side)) return {shape.width, std::min(high, std::max(shape.height, 0))};
  int widest = 0;
  for (const Item& item : items) widest = std::max(widest, item.width);
  const int wanted = widest + 2 * shape.scale(kPadding) + mark_room(shape);
  return {shape.height, std::clamp(wanted, 0, std::max(shape.width / 2, 0))};
}

std::vector<int> lengths_of(const Shape& shape, std::span<const Item> items, int room) {
  std::vector<int> out;
  const int edges = 2 * shape.scale(kPadding) + mark_room(shape);
  if (upright(shape.side)) {
    out.assign(items.size(), std::max({shape.active_height, shape.inactive_height, 1}));
    return out;
  }
  int widest = 0;
  for (const Item& item : items) {
    out.push_back(item.width + edges);
    widest = std::max(widest, out.back());
  }
  if (!shape.equal_widths || items.empty()) return out;
  // As wide as the strip has room for, but neither stretched over a wide form nor cut.
  const int part = room / static_cast<int>(items.size());
  const int usual = std::clamp(part, shape.scale(kLeast), shape.scale(kWidest));
  std::fill(out.begin(), out.end(), std::max(usual, widest));
  return out;
}

PixelRect mark_of(const Shape& shape, const PixelRect& tab) {
  const int edge = shape.scale(kMark);
  const int right = tab.right - shape.scale(kMarkGap);
  const int top = tab.top + (tab.bottom - tab.top - edge) / 2;
  const PixelRect mark{right - edge, top, right, top + edge};
  return mark.left < tab.left || edge > tab.bottom - tab.top ? PixelRect{} : mark;
}

int sum(const std::vector<int>& lengths, size_t from, size_t to) {
  int64_t out = 0;
  for (size_t i = from; i < to; ++i) out += lengths[i];
  return static_cast<int>(std::min<int64_t>(out, 0x3FFFFFFF));
}

// The first tab to show, so that the wanted one shows whole and no room stays empty behind the
// last.
int settle_first(const std::vector<int>& lengths, int room, int first, int wanted) {
  const int count = static_cast<int>(lengths.size());
  first = std::clamp(first, 0, std::max(count - 1, 0));
  if (wanted >= 0 && wanted < count) {
    first = std::min(first, wanted);
    while (first < wanted &&
           sum(lengths, static_cast<size_t>(first), static_cast<size_t>(wanted) + 1) > room)
      ++first;
  }
  while (first > 0 && sum(lengths, static_cast<size_t>(first) - 1, lengths.size()) <= room) --first;
  return first;
}

}  // namespace

Arrangement arrange(const Shape& shape, std::span<const Item> items, int active, int first,
                    int wanted) {
  const Scale scale = shape.scale;
  const Band band = band_of(shape, items);
  Arrangement out;
  out.strip = turn(shape, {0, 0, band.along, band.depth});
  const int other = upright(shape.side) ? shape.width : shape.height;
  out.page = turn(shape, {0, band.depth, band.along, std::max(other, band.depth)});

  int end = band.along;
  if (shape.control_box) {
    const int edge = scale(kArrow);
    const int top = std::max((band.depth - edge) / 2, 0);
    out.box = turn(shape, {end - edge - scale(2), top, end - scale(2), top + edge});
    end -= edge + 2 * scale(2);
  }
  const int start = scale(kStart);
  int room = std::max(end - start, 0);
  const std::vector<int> lengths = lengths_of(shape, items, room);
  if (sum(lengths, 0, lengths.size()) > room) {
    const int arrow = scale(kArrow);
    out.back = turn(shape, {end - 2 * arrow, 0, end - arrow, band.depth});
    out.forward = turn(shape, {end - arrow, 0, end, band.depth});
    end -= 2 * arrow;
    room = std::max(end - start, 0);
    out.first = settle_first(lengths, room, first, wanted);
  }

  out.tabs.resize(items.size());
  out.close_marks.resize(items.size());
  const int high = std::max(shape.active_height, shape.inactive_height);
  int at = start;
  for (size_t i = static_cast<size_t>(out.first); i < items.size() && at < end; ++i) {
    const bool chosen = static_cast<int>(i) == active;
    const int back = upright(shape.side)
                         ? (chosen ? 0 : scale(kInset))
                         : high - (chosen ? shape.active_height : shape.inactive_height);
    const int right = std::min(at + lengths[i], end);
    const PixelRect tab{at, std::clamp(back, 0, band.depth), right, band.depth};
    out.tabs[i] = turn(shape, tab);
    if (at + lengths[i] <= end) out.last = static_cast<int>(i);
    at += lengths[i];
    if (shape.close_marks) out.close_marks[i] = mark_of(shape, out.tabs[i]);
  }
  return out;
}

Hit hit(const Arrangement& strip, int x, int y) {
  const auto inside = [&](const PixelRect& area) {
    return x >= area.left && x < area.right && y >= area.top && y < area.bottom;
  };
  if (inside(strip.box)) return {Part::kBox, -1};
  if (inside(strip.back)) return {Part::kBack, -1};
  if (inside(strip.forward)) return {Part::kForward, -1};
  for (size_t i = 0; i < strip.tabs.size(); ++i) {
    if (!inside(strip.tabs[i])) continue;
    const bool mark = inside(strip.close_marks[i]);
    return {mark ? Part::kCloseMark : Part::kTab, static_cast<int>(i)};
  }
  return {};
}

int drop_place(const Arrangement& strip, Side side, int dragged, int x, int y) {
  const int point = upright(side) ? y : x;
  int place = dragged;
  for (int i = 0; i < static_cast<int>(strip.tabs.size()); ++i) {
    const PixelRect& tab = strip.tabs[static_cast<size_t>(i)];
    if (tab.empty()) continue;
    const int middle = upright(side) ? (tab.top + tab.bottom) / 2 : (tab.left + tab.right) / 2;
    if (i < dragged && point < middle) return i;
    if (i > dragged && point > middle) place = i;
  }
  return place;
}

Item measure(int picture, int text_width, int text_height, int icon_side, Scale scale) {
  const bool beside = icon_side < 2;
  const int gap = picture > 0 && text_width > 0 ? scale(kGap) : 0;
  if (beside) return {picture + gap + text_width, std::max(picture, text_height)};
  return {std::max(picture, text_width), picture + (gap > 0 ? gap / 2 : 0) + text_height};
}

Face face(const PixelRect& tab, const PixelRect& close_mark, int picture, int text_width,
          int text_height, int icon_side, Scale scale) {
  Face out;
  const int right =
      close_mark.empty() ? tab.right - scale(kPadding) : close_mark.left - scale(kMarkGap);
  const PixelRect room{std::min(tab.left + scale(kPadding), tab.right), tab.top,
                       std::max(right, tab.left), tab.bottom};
  const Item whole = measure(picture, text_width, text_height, icon_side, scale);
  const int width = std::max(room.right - room.left, 0);
  int x = room.left + std::max((width - whole.width) / 2, 0);
  int y = room.top + (room.bottom - room.top - whole.height) / 2;
  const auto middle = [&](int height) { return room.top + (room.bottom - room.top - height) / 2; };
  const int gap = picture > 0 && text_width > 0 ? scale(kGap) : 0;
  if (icon_side < 2) {
    const bool first = icon_side == 0;
    const int text = std::max(std::min(text_width, width - picture - gap), 0);
    const int text_left = first ? x + picture + gap : x;
    out.text = {text_left, middle(text_height), text_left + text,
                middle(text_height) + text_height};
    const int left = first ? x : out.text.right + gap;
    out.picture = {left, middle(picture), left + picture, middle(picture) + picture};
  } else {
    const bool first = icon_side == 2;
    const int text = std::min(text_width, width);
    const int top = first ? y + picture + gap / 2 : y;
    const int left = room.left + (width - text) / 2;
    out.text = {left, top, left + text, top + text_height};
    const int picture_top = first ? y : out.text.bottom + gap / 2;
    const int picture_left = room.left + (width - picture) / 2;
    out.picture = {picture_left, picture_top, picture_left + picture, picture_top + picture};
  }
  if (picture == 0) out.picture = {};
  return out;
}

}  // namespace kestrelon::tab_strip
