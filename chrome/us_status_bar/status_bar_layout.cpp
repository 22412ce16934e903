#include "chrome/us_status_bar/status_bar_layout.h"

#include <algorithm>

namespace kestrelon::status_bar {
namespace {

// Pixels at 96 dots an inch.
constexpr int kGap = 2;       // between two panels; the line that parts them lies in it
constexpr int kEdge = 2;      // above and below the panels, and at both ends
constexpr int kPadding = 4;   // within a panel, left and right
constexpr int kImageGap = 4;  // between image and text
constexpr int kGripSize = 16;

int64_t own_width(const Item& item) {
  const int64_t wanted = item.sizing == Sizing::kFixed      ? item.width
                         : item.sizing == Sizing::kContents ? item.content
                                                            : 0;
  return std::max<int64_t>({wanted, item.min_width, 0});
}

// What springs may take beyond their least widths, handed out in equal parts: whoever needs more
// than its part as its least width keeps that, and the others share the rest.
std::vector<int64_t> widths_of(std::span<const Item> items, int64_t room) {
  std::vector<int64_t> out(items.size());
  std::vector<size_t> springs;
  for (size_t i = 0; i < items.size(); ++i) {
    if (!items[i].visible) continue;
    out[i] = own_width(items[i]);
    if (items[i].sizing == Sizing::kSpring)
      springs.push_back(i);
    else
      room -= out[i];
  }
  std::stable_sort(springs.begin(), springs.end(),
                   [&](size_t a, size_t b) { return out[a] > out[b]; });
  for (size_t at = 0; at < springs.size(); ++at) {
    const auto left = static_cast<int64_t>(springs.size() - at);
    const int64_t part = room > 0 ? (room + left - 1) / left : 0;
    int64_t& width = out[springs[at]];
    width = std::max(width, part);
    room -= width;
  }
  return out;
}

}  // namespace

Arrangement arrange(const Shape& shape, std::span<const Item> items) {
  const Scale scale = shape.scale;
  Arrangement out;
  const int edge = scale(kEdge), gap = scale(kGap), top = edge + scale.line();
  int end = shape.width - edge;
  if (shape.grip) {
    out.grip = intersect({shape.width - scale(kGripSize), shape.height - scale(kGripSize),
                          shape.width, shape.height},
                         {0, 0, shape.width, shape.height});
    end = shape.width - scale(kGripSize);
  }
  out.room = {edge, top, std::max(end, edge), std::max(shape.height - edge, top)};
  const auto shown =
      std::count_if(items.begin(), items.end(), [](const Item& item) { return item.visible; });
  const int64_t gaps = shown > 1 ? static_cast<int64_t>(gap) * (shown - 1) : 0;
  const std::vector<int64_t> widths = widths_of(items, out.room.right - out.room.left - gaps);
  int64_t x = out.room.left;
  for (size_t i = 0; i < items.size(); ++i) {
    PixelRect& place = out.panels.emplace_back();
    if (!items[i].visible) continue;
    if (x < out.room.right && widths[i] > 0)
      place = {static_cast<int>(x), out.room.top,
               static_cast<int>(std::min<int64_t>(x + widths[i], out.room.right)), out.room.bottom};
    x += widths[i] + gap;
  }
  return out;
}

int hit(const Arrangement& bar, int x, int y) {
  const auto inside = [&](const PixelRect& area) {
    return x >= area.left && x < area.right && y >= area.top && y < area.bottom;
  };
  if (inside(bar.grip)) return kGrip;
  for (size_t i = 0; i < bar.panels.size(); ++i)
    if (inside(bar.panels[i])) return static_cast<int>(i) + 1;
  return kNothing;
}

int needed_width(const Content& content, Scale scale) {
  const int gap = content.image_width > 0 && content.text_width > 0 ? scale(kImageGap) : 0;
  return content.image_width + gap + content.text_width + 2 * scale(kPadding);
}

Face face(const PixelRect& panel, const Content& content, Scale scale) {
  Face out;
  const PixelRect room{panel.left + scale(kPadding), panel.top, panel.right - scale(kPadding),
                       panel.bottom};
  if (room.empty()) return out;
  const int free = room.right - room.left - (needed_width(content, scale) - 2 * scale(kPadding));
  int x = room.left;
  if (free > 0) x += content.alignment == 1 ? free / 2 : content.alignment == 2 ? free : 0;
  if (content.image_width > 0) {
    const int y = room.top + (room.bottom - room.top - content.image_height) / 2;
    out.image = {x, y, x + content.image_width, y + content.image_height};
    x = out.image.right + scale(kImageGap);
  }
  if (content.text_width > 0)
    out.text = {x, room.top, std::min(x + content.text_width, room.right), room.bottom};
  return out;
}

int filled_width(double value, double most, int width) {
  if (!(most > 0) || !(value > 0) || width <= 0) return 0;
  return value >= most ? width : static_cast<int>(value / most * width);
}

}  // namespace kestrelon::status_bar
