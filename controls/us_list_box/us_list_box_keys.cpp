// The keyboard: lists/list_keys.h says what a key means, here it happens.
#include "controls/us_list_box/us_list_box.h"
#include "frame/input_state.h"

namespace kestrelon {

bool USListBox::wants_key(int key, short shift) const {
  if (editing()) return key == VK_RETURN || key == VK_ESCAPE;
  if ((shift & kAltKey) != 0) return false;
  return key >= VK_PRIOR && key <= VK_DOWN;
}

void USListBox::key_down(short& key, short& shift) {
  const Hold hold(*this);
  hide_item_tip();
  raise_key_down(key, shift);
  if (key == 0) return;
  if (editing()) {
    if (key != VK_RETURN && key != VK_ESCAPE) return;
    key == VK_RETURN ? static_cast<void>(take_edit()) : drop_edit();
    key = 0;
    return;
  }
  // A blank within a word is a letter of it.
  if (key == VK_SPACE && shift == 0 && type_ahead_.takes_blank(GetTickCount())) return;
  const ListKeySettings settings{model_.mode(), CheckBoxes.get(), AllowEdit.get(),
                                 AllowDrag.get() && !Sorted.get(), right_to_left()};
  run(list_command(key, shift, settings));
}

void USListBox::key_press(short& character) {
  const Hold hold(*this);
  raise_key_press(character);
  if (character == 0 || editing()) return;
  look_for(static_cast<wchar_t>(static_cast<unsigned short>(character)));
}

void USListBox::run(const ListCommand& command) {
  const int current = model_.current();
  const int row = current >= 0 ? model_.row_of_index(current) : 0;
  switch (command.act) {
    case ListAct::kUp:
      return move_mark(model_.step(-1), command.how);
    case ListAct::kDown:
      return move_mark(model_.step(1), command.how);
    case ListAct::kPageUp:
    case ListAct::kPageDown: {
      const bool down = command.act == ListAct::kPageDown;
      if (model_.row_count() == 0) return;
      return move_mark(model_.nearest(rows().page_target(row, first_row(), down), down),
                       command.how);
    }
    case ListAct::kHome:
      return move_mark(model_.nearest(0, true), command.how);
    case ListAct::kEnd:
      return move_mark(model_.nearest(model_.row_count() - 1, false), command.how);
    case ListAct::kScrollLeft:
    case ListAct::kScrollRight: {
      const int step = scale()(16);
      return scroll_sideways(left_ + (command.act == ListAct::kScrollLeft ? -step : step));
    }
    case ListAct::kCheck:
      return toggle_check(current);
    case ListAct::kToggle:
      return choice_changed(model_.choose(current, Choice::kToggle));
    case ListAct::kSelectAll:
      return select_all();
    case ListAct::kEdit:
      return start_edit(-1);
    case ListAct::kMoveItemUp:
      return move_by_user(current, model_.index_of_row(row - 1));
    case ListAct::kMoveItemDown:
      return move_by_user(current, model_.index_of_row(row + 1));
    default:
      return;
  }
}

void USListBox::move_mark(int index, Choice how) {
  if (index < 0) return;
  const bool changed = model_.choose(index, how);
  show_item(index, true);
  choice_changed(changed);
}

void USListBox::look_for(wchar_t character) {
  const TypeAhead::Search search = type_ahead_.add(character, GetTickCount());
  if (search.text.empty() || model_.is_virtual()) return;
  const TextMatcher matcher(search.text, SearchMode::kBeginsWith, false);
  const int found = model_.find_ahead(matcher, search.from_next);
  if (found >= 0)
    move_mark(found, model_.mode() == SelectMode::kLatch ? Choice::kMark : Choice::kPlain);
}

}  // namespace kestrelon
