// Nodes dragged within the tree: where one would go is asked of the program and shown.
#include <algorithm>

#include "controls/us_tree_view/us_tree_view.h"

namespace kestrelon {
namespace {

constexpr UINT kTick = 50;           // milliseconds between two looks at a drag that rests
constexpr DWORD kExpandAfter = 800;  // milliseconds over a closed branch

}  // namespace

void USTreeView::begin_drag() {
  const Hold hold(*this);
  VARIANT_BOOL cancel = VARIANT_FALSE;
  tell(store_.find(pressed_), [&](IDispatch*& view) { raise_before_drag(view, cancel); });
  drag_refused_ = cancel != VARIANT_FALSE;
  if (drag_refused_ || store_.find(pressed_) == kNoNode || !has_capture()) return;
  dragging_ = true;
  drop_ = {};
  over_since_ = GetTickCount();
  drag_timer_.start(kTick, [this] { drag_tick(); });
}

// The upper and lower quarter of a row mean before and behind its node, the middle into it.
NodePosition USTreeView::position_at(int y, int row) {
  const int within = y - rows().y_of(row, first_row());
  if (within < row_height_ / 4) return NodePosition::kBefore;
  return within >= row_height_ - row_height_ / 4 ? NodePosition::kAfter : NodePosition::kLastChild;
}

void USTreeView::drag_over(int, int y) {
  const Hold hold(*this);
  const NodeId target = node_at_point(std::clamp(y, 0, std::max(height() - 1, 0)));
  const NodePosition position =
      target == kNoNode ? NodePosition::kLastChild : position_at(y, store_.row_of(target));
  if (store_.ref(target) == drop_ && position == drop_position_) return;
  if (store_.ref(target) != drop_) over_since_ = GetTickCount();
  drop_ = store_.ref(target);
  drop_position_ = position;
  const NodeId dragged = store_.find(pressed_);
  drop_allowed_ = dragged != kNoNode && !store_.is_below(target, dragged);
  redraw();
  if (!drop_allowed_) return;
  IDispatch *node = argument(dragged), *over = argument(target);
  long place = static_cast<long>(position);
  VARIANT_BOOL cancel = VARIANT_FALSE;
  raise_node_drag_over(node, over, place, cancel);
  if (node != nullptr) node->Release();
  if (over != nullptr) over->Release();
  drop_allowed_ = cancel == VARIANT_FALSE;
  redraw();
}

void USTreeView::drag_tick() {
  const Hold hold(*this);
  if (!dragging_ || !has_capture()) return end_drag(false);
  const int beyond = last_y_ < 0 ? last_y_ : std::max(last_y_ - height() + 1, 0);
  if (beyond != 0) {
    scroll_to(int64_t{first_row()} + edge_scroll_rows(beyond, row_height_), true);
    return drag_over(last_x_, last_y_);
  }
  const NodeId over = store_.find(drop_);
  const TreeNode& node = store_.node(over);
  const bool closed = node.expandable() && !node.has(NodeFlag::kExpanded);
  if (!closed || GetTickCount() - over_since_ < kExpandAfter) return;
  over_since_ = GetTickCount();
  expand_by_user(over);
}

void USTreeView::end_drag(bool drop) {
  drag_timer_.stop();
  const NodeId dragged = store_.find(std::exchange(pressed_, {}));
  if (!std::exchange(dragging_, false)) return;
  const NodeId target = store_.find(std::exchange(drop_, {}));
  const bool allowed = std::exchange(drop_allowed_, false);
  redraw();
  if (!drop || !allowed || dragged == kNoNode) return;
  const Hold hold(*this);
  const NodeRef moved = store_.ref(dragged), to = store_.ref(target);
  IDispatch *node = argument(dragged), *over = argument(target);
  long place = static_cast<long>(drop_position_);
  VARIANT_BOOL cancel = VARIANT_FALSE;
  raise_node_drop(node, over, place, cancel);
  if (node != nullptr) node->Release();
  if (over != nullptr) over->Release();
  if (cancel != VARIANT_FALSE || AllowDrag.get() != Drag_Move) return;
  // A handler may have removed either of them.
  const NodeId id = store_.find(moved), now = store_.find(to);
  if (id == kNoNode || (target != kNoNode && now == kNoNode)) return;
  if (!move_node(id, now, place)) return;
  if (place == static_cast<long>(NodePosition::kLastChild)) store_.expand(now, true);
  show_row_of(id, true);
}

}  // namespace kestrelon
