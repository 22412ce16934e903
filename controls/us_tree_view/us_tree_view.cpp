// Life, choice, and the setters that do more than draw again.
#include "controls/us_tree_view/us_tree_view.h"

#include "lists/collation_win.h"

namespace kestrelon {
namespace {

ControlTraits tree_traits() {
  ControlTraits traits;
  traits.initial_pixels = {180, 160};
  return traits;
}

}  // namespace

USTreeView::USTreeView()
    : USTreeViewGlue(tree_traits()),
      store_(language_collation()),
      link_(std::make_shared<TreeAccess*>(this)) {}

USTreeView::~USTreeView() {
  *link_ = nullptr;
}

void USTreeView::properties_read() {
  images_read();
  mode_changed();
  check_mode_changed();
  sorted_changed();
  ItemControl::properties_read();
}

void USTreeView::window_created() {
  bars_.Create(window());
  relayout();
}

void USTreeView::terminate() {
  drag_timer_.stop();
  hide_node_tip();
  edit_.destroy();
  bars_.Create(nullptr);
  ItemControl::terminate();
}

void USTreeView::font_changed() {
  widest_ = 0;
  ItemControl::font_changed();
}

void USTreeView::mode_changed() {
  choice_.set_mode(static_cast<SelectMode>(MultiSelect.get()));
  redraw();
}

void USTreeView::check_mode_changed() {
  store_.set_three_states(CheckBoxes.get() == Check_ThreeState);
  relayout();
}

void USTreeView::sorted_changed() {
  store_.set_sorted(Sorted.get());
  rows_changed();
}

void USTreeView::rows_changed() {
  relayout();
}

void USTreeView::choice_changed(bool changed) {
  if (!changed) return;
  redraw();
  const long item = accessible_focus();
  tell_readers(EVENT_OBJECT_SELECTION, item);
  if (focus_within()) tell_readers(EVENT_OBJECT_FOCUS, item);
  raise_selection_changed();
}

void USTreeView::drop_released() {
  std::vector<Variant> gone;  // their objects may do anything when they are released
  for (const NodeId id : store_.take_released()) {
    const auto kept = tags_.find(id);
    if (kept == tags_.end()) continue;
    gone.push_back(std::move(kept->second));
    tags_.erase(kept);
  }
}

}  // namespace kestrelon
