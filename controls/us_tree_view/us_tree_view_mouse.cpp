// The mouse: choosing, expanding, checking.
#include <cstdlib>

#include "controls/us_tree_view/us_tree_view.h"
#include "frame/input_state.h"

namespace kestrelon {

void USTreeView::mouse_down(short button, short shift, float x, float y) {
  const Hold hold(*this);
  press_button_ = button;
  press_shift_ = shift;
  last_x_ = static_cast<int>(x);
  last_y_ = static_cast<int>(y);
  const short pressed = button, modifiers = shift;
  raise_mouse_down(button, shift, x, y);
  hide_node_tip();
  if (!editing() || take_edit()) press(pressed, modifiers, last_x_, last_y_);
}

void USTreeView::press(short button, short shift, int x, int y) {
  const NodeId id = node_at_point(y);
  pressed_ = {};
  if (id == kNoNode || !Enabled.get() || (button != kLeftButton && button != kRightButton)) return;
  const NodeRef node = store_.ref(id);
  if (button == kRightButton) {
    if (!store_.node(id).has(NodeFlag::kSelected))
      choice_changed(choice_.choose(id, Choice::kPlain));
    return;
  }
  const ItemPart part = hit_item(parts_of(store_.row_of(id)), x, y);
  if (part == ItemPart::kExpander && store_.node(id).expandable()) return toggle_expanded(id);
  if (part == ItemPart::kCheck) return toggle_check(id);
  pressed_ = node;
  press_x_ = x;
  press_y_ = y;
  drag_refused_ = false;
  const bool changed = choice_.choose(id, choice_of_click(shift, choice_.mode()));
  if (changed) show_row_of(id, true);
  choice_changed(changed);
}

void USTreeView::mouse_up(short button, short shift, float x, float y) {
  const Hold hold(*this);
  const short released = button, modifiers = shift;
  raise_mouse_up(button, shift, x, y);
  if (released != kLeftButton) return;
  const NodeId pressed = store_.find(pressed_);
  const bool dragged = dragging_;
  end_drag(true);
  if (dragged || pressed == kNoNode || node_at_point(static_cast<int>(y)) != pressed) return;
  short keys = modifiers;
  tell(pressed, [&](IDispatch*& view) { raise_node_click(view, keys); });
}

void USTreeView::double_click() {
  const Hold hold(*this);
  const short button = press_button_;
  mouse_down(button, press_shift_, static_cast<float>(last_x_), static_cast<float>(last_y_));
  const NodeRef node = pressed_;
  if (button != kLeftButton || store_.find(node) == kNoNode) return;
  pressed_ = {};
  raise_dbl_click();
  if (const NodeId id = store_.find(node); id != kNoNode) toggle_expanded(id);
}

void USTreeView::pointer_moved(short button, short, float x, float y) {
  last_x_ = static_cast<int>(x);
  last_y_ = static_cast<int>(y);
  const bool held = (button & kLeftButton) != 0;
  if (!held || store_.find(pressed_) == kNoNode) {
    if (dragging_) end_drag(false);  // the release went elsewhere
    return set_hot(pointer_over() ? node_at_point(last_y_) : kNoNode);
  }
  if (AllowDrag.get() == Drag_None || drag_refused_) return;
  const bool moved = std::abs(last_x_ - press_x_) >= GetSystemMetrics(SM_CXDRAG) ||
                     std::abs(last_y_ - press_y_) >= GetSystemMetrics(SM_CYDRAG);
  if (!dragging_ && moved) begin_drag();
  if (dragging_) drag_over(last_x_, last_y_);
}

void USTreeView::hover_changed() {
  if (!pointer_over()) set_hot(kNoNode);
}

void USTreeView::set_hot(NodeId id) {
  if (!user_mode() || store_.ref(id) == hot_) return;
  hot_ = store_.ref(id);
  if (HotTracking.get()) redraw();
  watch_for_tip(id);
}

void USTreeView::lost_focus() {
  const Hold hold(*this);
  if (editing()) take_edit();
  end_drag(false);
  hide_node_tip();
  ItemControl::lost_focus();
}

void USTreeView::drag(Drag& step) {
  IDispatch* data = ComPtr<IDispatch>(step.data).detach();
  if (step.stage == Drag::Stage::kDrop) {
    raise_ole_drag_drop(data, step.effect, step.button, step.shift, step.x, step.y);
  } else {
    auto state = static_cast<short>(step.stage);
    raise_ole_drag_over(data, step.effect, step.button, step.shift, step.x, step.y, state);
  }
  if (data != nullptr) data->Release();
}

}  // namespace kestrelon
