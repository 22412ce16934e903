// What is typed into the field, and what completes it.
#include "controls/us_combo_box/us_combo_box.h"

namespace kestrelon {
namespace {

constexpr UINT kSuggestionDelay = 150;  // milliseconds after the last key

}  // namespace

void USComboBox::edit_changed(ChildEdit&) {
  if (setting_text_) return;
  const Hold hold(*this);
  const std::wstring typed = edit_.text();
  if (typed == Value.get()) return;
  if (!may_change(L"Text")) return static_cast<void>(show_text(Value.get()));
  Value.assign(typed);
  contents_new_ = false;
  const bool moved = model_.set_current(find_text(typed));
  redraw();
  text_changed();
  if (moved) raise_selection_changed();
  // A handler may have set another text, or be rid of the control.
  if (edit_.hwnd() != nullptr && Value.get() == typed) complete_typed(typed);
}

void USComboBox::complete_typed(const std::wstring& typed) {
  const auto mode = static_cast<CompleteMode>(AutoComplete.get());
  if (mode == CompleteMode::kNone || Locked.get() || !focus_within()) return;
  if (mode == CompleteMode::kAppend) return append_rest(typed);
  suggest(typed);
  if (edit_.hwnd() != nullptr && enough_typed(typed))
    suggestion_timer_.start(kSuggestionDelay, [this] { ask_for_suggestions(); });
}

bool USComboBox::enough_typed(const std::wstring& typed) const {
  return !typed.empty() && static_cast<long>(typed.size()) >= MinChars.get();
}

void USComboBox::append_rest(const std::wstring& typed) {
  const TextRange caret = edit_.selection();
  const bool at_end = caret.end == static_cast<int>(typed.size());
  if (deleting_ || !at_end || !enough_typed(typed)) return;
  const auto found = complete(model_.store(), typed, text_column());
  if (!found) return;
  const bool moved = model_.set_current(found->index);
  const bool other = show_text(found->text);
  edit_.select({static_cast<int>(found->typed), static_cast<int>(found->text.size())});
  if (other) text_changed();
  if (moved) raise_selection_changed();
}

void USComboBox::end_suggestions() {
  suggestion_timer_.stop();
  suggested_for_.clear();
  if (model_.filter_off()) redraw_list();
}

void USComboBox::suggest(const std::wstring& typed) {
  const auto mode = static_cast<CompleteMode>(AutoComplete.get());
  list_new_ = false;
  model_.filter_off();
  suggested_for_.clear();
  if (!enough_typed(typed)) return close_list(false);
  // Any column may hold a part of a text; a beginning is that of the column that is typed.
  const int column = mode == CompleteMode::kContains ? kWholeText : text_column();
  model_.filter({typed, suggestion_search(mode), false}, column);
  const bool only_itself = model_.row_count() == 1 && model_.current() >= 0;
  if (model_.row_count() == 0 || only_itself) {
    model_.filter_off();
    return close_list(false);
  }
  suggested_for_ = typed;
  top_ = 0;
  hot_ = -1;
  if (!dropped_down()) {
    if (!open_list()) end_suggestions();
    return;
  }
  index_at_opening_ = model_.current();
  text_at_opening_ = typed;
  redraw_list();
}

// A list that is too large is filled by the program, for what was typed last.
void USComboBox::ask_for_suggestions() {
  const Hold hold(*this);
  suggestion_timer_.stop();
  BSTR text = Bstr(Value.get()).detach();
  raise_request_suggestions(text);
  SysFreeString(text);
  if (list_new_ && focus_within() && edit_.hwnd() != nullptr) suggest(Value.get());
}

}  // namespace kestrelon
