// A text that does not fit shows whole in a tip, once the pointer has rested on its node.
#include <algorithm>

#include "controls/us_tree_view/us_tree_view.h"

namespace kestrelon {
namespace {

constexpr UINT kRest = 600;  // milliseconds

}  // namespace

void USTreeView::watch_for_tip(NodeId id) {
  hide_node_tip();
  if (id == kNoNode || !AutoToolTips.get() || editing() || dragging_) return;
  tip_node_ = store_.ref(id);
  tip_timer_.start(kRest, [this] { show_node_tip(); });
}

void USTreeView::show_node_tip() {
  const Hold hold(*this);
  tip_timer_.stop();
  const NodeId id = store_.find(tip_node_);
  const int row = store_.row_of(id);
  if (row < 0 || window() == nullptr || !pointer_over()) return;
  const ItemParts parts = parts_of(row);
  const std::wstring text(store_.text(id));
  const HDC dc = GetDC(window());
  const int wanted = width_of(dc, text, store_.node(id).has(NodeFlag::kBold));
  ReleaseDC(window(), dc);
  if (parts.text.left >= 0 && parts.text.left + wanted <= width()) return;
  node_tip_.set_TipText(text);
  POINT place{parts.text.left, parts.row.top};
  if (!node_tip_.Create(window()) || !ClientToScreen(window(), &place)) return;
  node_tip_.show_at(place);
}

void USTreeView::hide_node_tip() {
  tip_timer_.stop();
  tip_node_ = {};
  node_tip_.Destroy();
}

}  // namespace kestrelon
