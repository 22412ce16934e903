// The keyboard: lists/tree/tree_keys.h says what a key means, here it happens.
#include <algorithm>

#include "controls/us_tree_view/us_tree_view.h"
#include "frame/input_state.h"

namespace kestrelon {

bool USTreeView::wants_key(int key, short shift) const {
  if (editing()) return key == VK_RETURN || key == VK_ESCAPE;
  if (dragging_) return key == VK_ESCAPE;
  if ((shift & kAltKey) != 0) return false;
  return key >= VK_PRIOR && key <= VK_DOWN;
}

void USTreeView::key_down(short& key, short& shift) {
  const Hold hold(*this);
  hide_node_tip();
  skip_character_ = false;
  raise_key_down(key, shift);
  if (key == 0) return;
  if (editing()) {
    if (key != VK_RETURN && key != VK_ESCAPE) return;
    key == VK_RETURN ? static_cast<void>(take_edit()) : drop_edit();
    key = 0;
    return;
  }
  if (dragging_ && key == VK_ESCAPE) return end_drag(false);
  // A blank within a word is a letter of it.
  if (key == VK_SPACE && shift == 0 && type_ahead_.takes_blank(GetTickCount())) return;
  const ListKeySettings settings{choice_.mode(), has_checks(), AllowEdit.get(), false,
                                 right_to_left()};
  const TreeCommand command = tree_command(key, shift, settings);
  skip_character_ = command.act != TreeAct::kNone;
  run(command);
}

void USTreeView::key_press(short& character) {
  const Hold hold(*this);
  raise_key_press(character);
  if (character == 0 || editing() || std::exchange(skip_character_, false)) return;
  look_for(static_cast<wchar_t>(static_cast<unsigned short>(character)));
}

void USTreeView::run(const TreeCommand& command) {
  const NodeId current = choice_.current();
  const int row = store_.row_of(current);
  switch (command.act) {
    case TreeAct::kUp:
      return move_to_row(row < 0 ? 0 : row - 1, row < 0, command.how);
    case TreeAct::kDown:
      return move_to_row(row + 1, true, command.how);
    case TreeAct::kPageUp:
    case TreeAct::kPageDown: {
      const bool down = command.act == TreeAct::kPageDown;
      const int from = std::max(row, 0);
      const int target = store_.row_count() > 0 ? rows().page_target(from, first_row(), down) : 0;
      return move_to_row(target, down, command.how);
    }
    case TreeAct::kHome:
      return move_to_row(0, true, command.how);
    case TreeAct::kEnd:
      return move_to_row(store_.row_count() - 1, false, command.how);
    case TreeAct::kInto:
      if (!store_.node(current).expandable()) return;
      if (!store_.node(current).has(NodeFlag::kExpanded)) return expand_by_user(current);
      return move_mark(store_.first_child(current), command.how);
    case TreeAct::kOut:
      if (store_.node(current).has(NodeFlag::kExpanded) && store_.child_count(current) > 0 &&
          current != kNoNode)
        return collapse_by_user(current);
      return move_mark(store_.parent(current), command.how);
    case TreeAct::kParent:
      return move_mark(store_.parent(current), command.how);
    case TreeAct::kExpand:
      return expand_by_user(current);
    case TreeAct::kCollapse:
      return collapse_by_user(current);
    case TreeAct::kExpandAll:
      if (current == kNoNode) return;
      expand_by_user(current);
      if (const NodeId now = choice_.current(); now == current) {
        store_.expand_all(now, true);
        rows_changed();
      }
      return;
    case TreeAct::kCheck:
      return toggle_check(current);
    case TreeAct::kToggle:
      return choice_changed(choice_.choose(current, Choice::kToggle));
    case TreeAct::kSelectAll:
      return choice_changed(choice_.select_all());
    case TreeAct::kEdit:
      return start_edit(current);
    default:
      return;
  }
}

void USTreeView::move_mark(NodeId id, Choice how) {
  if (!store_.has(id)) return;
  const bool changed = choice_.choose(id, how);
  show_row_of(id, true);
  choice_changed(changed);
}

// To a row, or beyond it to the next node that can be chosen, back from there at the ends.
void USTreeView::move_to_row(int64_t row, bool down, Choice how) {
  const int64_t count = store_.row_count();
  if (count == 0) return;
  row = std::clamp<int64_t>(row, 0, count - 1);
  for (const bool onward : {true, false})
    for (int64_t at = row; at >= 0 && at < count; at += down == onward ? 1 : -1)
      if (const NodeId id = store_.node_at(static_cast<int32_t>(at)); choice_.selectable(id))
        return move_mark(id, how);
}

void USTreeView::look_for(wchar_t character) {
  const TypeAhead::Search search = type_ahead_.add(character, GetTickCount());
  const int count = store_.row_count();
  if (search.text.empty() || count == 0) return;
  const TextMatcher matcher(search.text, SearchMode::kBeginsWith, false);
  const int from = std::max(store_.row_of(choice_.current()), 0) +
                   (search.from_next && choice_.current() != kNoNode ? 1 : 0);
  for (int i = 0; i < count; ++i) {
    const NodeId id = store_.node_at((from + i) % count);
    if (!choice_.selectable(id) || !matcher.matches(store_.text(id))) continue;
    return move_mark(id, choice_.mode() == SelectMode::kLatch ? Choice::kMark : Choice::kPlain);
  }
}

}  // namespace kestrelon
