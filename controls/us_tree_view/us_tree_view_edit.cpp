// Editing in place: the system's editor over the text of a node. It belongs to the node, whatever
// is added, sorted or removed meanwhile.
#include <algorithm>

#include "controls/us_tree_view/us_tree_view.h"
#include "frame/translate_color.h"

namespace kestrelon {
namespace {

constexpr int kNarrowest = 60;  // pixels of an editor at 96 dots an inch

}  // namespace

void USTreeView::start_edit(NodeId id) {
  const Hold hold(*this);
  if (!AllowEdit.get() || window() == nullptr || !choice_.selectable(id)) return;
  const NodeRef node = store_.ref(id);
  if (editing() && !take_edit()) return;
  if (store_.find(node) == kNoNode) return;
  VARIANT_BOOL cancel = VARIANT_FALSE;
  tell(id, [&](IDispatch*& view) { raise_before_edit(view, cancel); });
  id = store_.find(node);
  if (cancel != VARIANT_FALSE || window() == nullptr || editing() || id == kNoNode) return;
  show_node(id);
  if (!edit_.create(ES_AUTOHSCROLL | WS_BORDER, RECT{})) return;
  edited_ = node;
  edit_.set_font(plain_font());
  edit_.set_limit(static_cast<int>(kMaxItemText));
  edit_.set_colors(TranslateColor(ForeColor.get()), TranslateColor(BackColor.get()));
  edit_.set_text(store_.text(id));
  place_editor();
  edit_.show(true);
  SetFocus(edit_.hwnd());
  edit_.select_all();
}

void USTreeView::place_editor() {
  if (!editing()) return;
  const int row = store_.row_of(store_.find(edited_));
  if (row < 0) return drop_edit();
  const PixelRect area = parts_of(row).text;
  const int over = scale()(3), left = std::min(area.left - over, width() - scale()(kNarrowest));
  edit_.move({std::max(left, 0), area.top, width(), area.bottom});
}

bool USTreeView::take_edit() {
  if (!editing()) return true;
  if (taking_edit_) return false;  // from within a handler of AfterEdit
  const Hold hold(*this);
  const NodeId id = store_.find(edited_);
  std::wstring text = edit_.text();
  if (id == kNoNode || text == store_.text(id)) {
    drop_edit();
    return true;
  }
  BSTR value = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  VARIANT_BOOL cancel = VARIANT_FALSE;
  taking_edit_ = true;
  tell(id, [&](IDispatch*& view) { raise_after_edit(view, value, cancel); });
  taking_edit_ = false;
  text = to_wstring(value);
  SysFreeString(value);
  if (cancel != VARIANT_FALSE && editing()) return false;
  const NodeId now = store_.find(edited_);
  drop_edit();
  if (cancel == VARIANT_FALSE && now != kNoNode) {
    store_.set_text(now, text);
    rows_changed();
  }
  return true;
}

void USTreeView::drop_edit() {
  if (!editing()) return;
  const bool had_focus = edit_.has_focus();
  edit_.show(false);
  edit_.destroy();
  if (had_focus && window() != nullptr) SetFocus(window());
  redraw();
}

}  // namespace kestrelon
