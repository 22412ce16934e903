// The tree on its surface.
#include <algorithm>

#include "controls/us_tree_view/us_tree_view.h"
#include "frame/kit/color.h"
#include "frame/screen.h"
#include "frame/translate_color.h"

namespace kestrelon {
namespace {

constexpr int kSign = 9;  // side of an expander's box at 96 dots an inch

}  // namespace

ItemColors USTreeView::colors() const {
  ItemColors out = base_colors(BackColor.get(), ForeColor.get());
  if (high_contrast()) return out;
  out.current1 = TranslateColor(BackColorSelected1.get());
  out.current2 = TranslateColor(BackColorSelected2.get());
  out.current_border = TranslateColor(FocusRectColor.get());
  out.selected_back = BlendColor(out.current1, out.current2, 0.5);
  out.selected_text = TranslateColor(ForeColorSelected.get());
  out.hot = BlendColor(out.back, out.current1, 0.5);
  out.line = TranslateColor(LineColor.get());
  return out;
}

int32_t USTreeView::image_number_of(NodeId id) const {
  const TreeNode& node = store_.node(id);
  if (node.image_selected != 0 && id == choice_.current()) return node.image_selected;
  if (node.image_expanded != 0 && node.has(NodeFlag::kExpanded) && node.children > 0)
    return node.image_expanded;
  return node.image;
}

ItemLook USTreeView::look_of(NodeId id) const {
  const TreeNode& node = store_.node(id);
  ItemLook look;
  look.text = store_.text(id);
  if (has_checks() && !node.has(NodeFlag::kNoCheckBox))
    look.tick = node.check == kChecked  ? TickBox::kTicked
                : node.check == kGrayed ? TickBox::kMixed
                                        : TickBox::kEmpty;
  if (!high_contrast() && node.fore_color != kNoColor)
    look.fore_color = TranslateColor(node.fore_color);
  if (!high_contrast() && node.back_color != kNoColor)
    look.back_color = TranslateColor(node.back_color);
  look.bold = node.has(NodeFlag::kBold);
  look.disabled = !Enabled.get() || node.has(NodeFlag::kDisabled);
  const bool mark = id == choice_.current() && focus_within();
  look.selected = node.has(NodeFlag::kSelected) && (focus_within() || !HideSelection.get());
  look.current = mark && look.selected;
  look.focus_rect = mark && ShowFocusRect.get();
  look.hot = id == store_.find(hot_) && HotTracking.get() && !look.disabled;
  look.mirrored = const_cast<USTreeView*>(this)->right_to_left();
  return look;
}

// In the font that the text will be drawn in.
int USTreeView::width_of(HDC dc, std::wstring_view text, bool bold) {
  const HGDIOBJ displaced = SelectObject(dc, bold ? bold_font() : plain_font());
  const int width = text_width(dc, text);
  SelectObject(dc, displaced);
  return width;
}

void USTreeView::draw_row(ItemPainter& painter, int row) {
  const NodeId id = store_.node_at(row);
  ItemLook look = look_of(id);
  look.image = image_of(image_number_of(id));
  ItemParts parts = parts_of(row);
  const int wanted = width_of(surface().dc(), look.text, look.bold) + 2 * metrics_.padding;
  widest_ =
      std::max(widest_, (look.mirrored ? width() - parts.text.right : parts.text.left + left_) +
                            wanted + metrics_.padding);
  PixelRect ground{0, parts.row.top, width(), parts.row.bottom};
  if (!FullRowSelect.get()) {
    if (look.mirrored)
      parts.text.left = std::max(parts.text.right - wanted, parts.text.left);
    else
      parts.text.right = parts.text.left + wanted;
    ground = {parts.text.left - metrics_.padding, ground.top, parts.text.right, ground.bottom};
  }
  painter.draw(look, parts, ground);
  if (ShowLines.get()) draw_lines(id, parts);
  if (ShowExpanders.get() && !parts.expander.empty() && store_.node(id).expandable())
    draw_expander(id, parts);
}

// A line down from each ancestor that has more children below this row, one across to the node.
void USTreeView::draw_lines(NodeId id, const ItemParts& parts) {
  const PixelView view = surface().pixels();
  const ColorRef color = colors().line;
  const int step = metrics_.expander, thin = scale().line();
  if (step == 0 || parts.expander.empty()) return;
  const bool mirrored = right_to_left();
  int x = (parts.expander.left + parts.expander.right) / 2;
  const int middle = (parts.row.top + parts.row.bottom) / 2;
  const bool first = store_.parent(id) == kNoNode && store_.previous_sibling(id) == kNoNode;
  const int from = first ? middle : parts.row.top;
  const int to = store_.next_sibling(id) == kNoNode ? middle + thin : parts.row.bottom;
  fill_rect(view, {x, from, x + thin, to}, color);
  const int end = mirrored ? parts.expander.left : parts.expander.right;
  fill_rect(view, {std::min(x, end), middle, std::max(x, end), middle + thin}, color);
  for (NodeId up = store_.parent(id); up != kNoNode; up = store_.parent(up)) {
    x += mirrored ? step : -step;
    if (x < -step || (mirrored && x > width() + step)) break;
    if (!ShowRootLines.get() && store_.parent(up) == kNoNode) break;
    if (store_.next_sibling(up) != kNoNode)
      fill_rect(view, {x, parts.row.top, x + thin, parts.row.bottom}, color);
  }
}

void USTreeView::draw_expander(NodeId id, const ItemParts& parts) {
  const PixelView view = surface().pixels();
  const ItemColors look = colors();
  const int side = scale()(kSign) | 1, thin = scale().line();
  const int left = (parts.expander.left + parts.expander.right) / 2 - side / 2;
  const int top = (parts.row.top + parts.row.bottom) / 2 - side / 2;
  const PixelRect box{left, top, left + side, top + side};
  fill_rect(view, box, look.back);
  for (int i = 0; i < thin; ++i)
    DrawFrame(view, look.line, box.left + i, box.top + i, box.right - i, box.bottom - i);
  const int middle = side / 2, inset = 2 * thin;
  const ColorRef sign = Enabled.get() ? look.text : look.disabled_text;
  fill_rect(view, {left + inset, top + middle, left + side - inset, top + middle + thin}, sign);
  const bool open = store_.node(id).has(NodeFlag::kExpanded) && store_.node(id).children > 0;
  if (!open)
    fill_rect(view, {left + middle, top + inset, left + middle + thin, top + side - inset}, sign);
}

void USTreeView::draw() {
  if (!surface()) return;
  const ItemColors look = colors();
  const PixelView view = surface().pixels();
  surface().clear(look.back);
  const int before = widest_;
  {
    ItemPainter painter(surface(), look, plain_font(), bold_font(), scale());
    if (store_.row_count() == 0 && !user_mode())
      painter.draw_sample_lines(view.bounds(), row_height_);
    else if (store_.row_count() == 0)
      painter.draw_note(EmptyText.get(), view.bounds());
    const int first = first_row(), count = rows().touched_rows(first);
    for (int row = first; row < first + count; ++row) draw_row(painter, row);
  }
  draw_drop_mark();
  if (window() == nullptr && border() != 0)
    DrawFrame(view, TranslateColor(BorderColor.get()), 0, 0, view.width, view.height);
  if (std::max(before, width()) < widest_) relayout();  // a bar is wanted
}

// A line where the node would go between others, a frame around the one it would go into.
void USTreeView::draw_drop_mark() {
  const int row = store_.row_of(store_.find(drop_));
  if (row < 0 || !drop_allowed_) return;
  const ItemParts parts = parts_of(row);
  const PixelView view = surface().pixels();
  const ColorRef color = colors().current_border;
  const int half = scale().line();
  if (drop_position_ == NodePosition::kLastChild || drop_position_ == NodePosition::kFirstChild)
    return DrawFrame(view, color, parts.text.left, parts.row.top,
                     std::min(parts.text.right, width()), parts.row.bottom);
  const int y = drop_position_ == NodePosition::kBefore ? parts.row.top : parts.row.bottom;
  fill_rect(view, {parts.text.left, y - half, width(), y + half}, color);
}

}  // namespace kestrelon
