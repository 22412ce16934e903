#include "chrome/us_tool_bar/tool_bar_layout.h"

namespace kestrelon::tool_bar {
namespace {

// Pixels at 96 dots an inch.
constexpr int kGripperWidth = 10, kEndPanelWidth = 12, kChevronWidth = 14;
constexpr int kEdge = 2;             // between the bar's top or bottom and its buttons
constexpr int kPadX = 6, kPadY = 3;  // within a button
constexpr int kGap = 4;              // between icon and caption
constexpr int kSeparatorWidth = 8, kDropWidth = 10;
constexpr int kSmallestFace = 16;

bool beside(const Item& item) {
  return item.side == IconSide::kLeft || item.side == IconSide::kRight;
}

struct Size {
  int width, height;
};

Size content_size(const Item& item, Scale scale) {
  const int gap = item.icon > 0 && item.text_width > 0 ? scale(kGap) : 0;
  if (beside(item))
    return {item.icon + gap + item.text_width, std::max(item.icon, item.text_height)};
  return {std::max(item.icon, item.text_width), item.icon + gap + item.text_height};
}

Size button_size(const Item& item, Scale scale) {
  if (item.separator) return {scale(kSeparatorWidth), scale(kSmallestFace + 2 * kPadY)};
  const Size content = content_size(item, scale);
  return {std::max(content.width, scale(kSmallestFace)) + 2 * scale(kPadX) +
              (item.drop_mark ? scale(kDropWidth) : 0),
          std::max(content.height, scale(kSmallestFace)) + 2 * scale(kPadY)};
}

PixelRect centred(int left, int width, int height, const PixelRect& in) {
  const int top = in.top + (in.bottom - in.top - height) / 2;
  return {left, top, left + width, top + height};
}

// Shows what ends before `limit`; answers whether that was all.
bool show_up_to(Arrangement& out, std::span<const Item> items, int limit) {
  size_t shown = 0;
  while (shown < out.places.size() && out.places[shown].area.right <= limit) ++shown;
  const bool all = shown == out.places.size();
  if (!all)
    while (shown > 0 && items[shown - 1].separator) --shown;
  for (size_t i = 0; i < out.places.size(); ++i) out.places[i].shown = i < shown;
  return all;
}

bool inside(const PixelRect& area, int x, int y) {
  return x >= area.left && x < area.right && y >= area.top && y < area.bottom;
}

}  // namespace

Arrangement arrange(const Shape& shape, std::span<const Item> items) {
  Arrangement out;
  const Scale scale = shape.scale;
  const int width = std::max(shape.width, 0), height = std::max(shape.height, 0);
  const int left = shape.gripper ? std::min(scale(kGripperWidth), width) : 0;
  const int right =
      shape.end_panel ? std::max(width - scale(kEndPanelWidth), left) : std::max(width, left);
  if (shape.gripper) out.gripper = {0, 0, left, height};
  if (shape.end_panel) out.end_panel = {right, 0, width, height};
  out.center = {left, 0, right, height};
  out.places.reserve(items.size());
  int x = left + scale(kEdge);
  for (const Item& item : items) {
    const Size size = button_size(item, scale);
    const int room = std::max(height - 2 * scale(kEdge), 0);
    const int tall = shape.stretch || item.separator ? room : std::min(size.height, room);
    out.places.push_back({centred(x, size.width, tall, out.center), size.height, true});
    x += size.width;
  }
  if (show_up_to(out, items, right)) return out;
  const int chevron = std::max(right - scale(kChevronWidth), left);
  out.chevron = {chevron, 0, right, height};
  show_up_to(out, items, chevron);
  return out;
}

int hit(const Arrangement& bar, int x, int y) {
  if (inside(bar.gripper, x, y)) return kGripper;
  if (inside(bar.end_panel, x, y)) return kEndPanel;
  if (inside(bar.chevron, x, y)) return kChevron;
  for (size_t i = 0; i < bar.places.size(); ++i)
    if (bar.places[i].shown && inside(bar.places[i].area, x, y)) return static_cast<int>(i) + 1;
  return kNothing;
}

Face face(const PixelRect& area, const Item& item, Scale scale) {
  Face out;
  PixelRect room = area;
  if (item.drop_mark) {
    room.right -= scale(kDropWidth);
    out.drop_mark = {room.right - scale(kPadX) / 2, area.top, area.right - scale(kPadX) / 2,
                     area.bottom};
  }
  const Size content = content_size(item, scale);
  const int x = room.left + (room.right - room.left - content.width) / 2;
  const int y = room.top + (room.bottom - room.top - content.height) / 2;
  const int middle = room.left + room.right;
  if (beside(item)) {
    const bool first = item.side == IconSide::kLeft;
    const int icon = first ? x : x + content.width - item.icon;
    const int text = first ? x + content.width - item.text_width : x;
    out.icon = centred(icon, item.icon, item.icon, room);
    out.text = centred(text, item.text_width, item.text_height, room);
    return out;
  }
  const bool first = item.side == IconSide::kTop;
  const int icon = first ? y : y + content.height - item.icon;
  const int text = first ? y + content.height - item.text_height : y;
  out.icon = {(middle - item.icon) / 2, icon, (middle - item.icon) / 2 + item.icon,
              icon + item.icon};
  out.text = {(middle - item.text_width) / 2, text,
              (middle - item.text_width) / 2 + item.text_width, text + item.text_height};
  return out;
}

Look look(const Condition& condition) {
  if (!condition.usable || condition.stored == Look::kDisabled) return Look::kDisabled;
  if (condition.pressed) return Look::kPressed;
  const bool down = condition.checked || condition.stored == Look::kSelected;
  if (condition.hot) return down ? Look::kOverDown : Look::kOver;
  return down ? Look::kSelected : condition.stored;
}

}  // namespace kestrelon::tool_bar
