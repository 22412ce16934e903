#include "services/typing/entry_field.h"

#include "base/text.h"
#include "services/typing/mask_entry.h"
#include "services/typing/number_entry.h"
#include "services/typing/text_entry.h"

namespace kestrelon {
namespace {

bool is_number(const EntrySettings& settings) {
  return settings.kind == EntryKind::kNumber || settings.kind == EntryKind::kCurrency;
}

bool is_mask(const EntrySettings& settings) {
  return settings.kind == EntryKind::kMask && settings.masks;
}

// A step of a caret that jumps over words: to the next end of a run of letters and digits.
size_t word_left(std::wstring_view text, size_t position) {
  while (position > 0 && text[position - 1] == L' ') --position;
  while (position > 0 && text[position - 1] != L' ') --position;
  return position;
}

size_t word_right(std::wstring_view text, size_t position) {
  while (position < text.size() && text[position] != L' ') ++position;
  while (position < text.size() && text[position] == L' ') ++position;
  return position;
}

size_t moved_in_text(const EntryState& state, EntryMove move) {
  switch (move) {
    case EntryMove::kLeft:
      return text_entry::before(state.text, state.caret);
    case EntryMove::kRight:
      return text_entry::after(state.text, state.caret);
    case EntryMove::kWordLeft:
      return word_left(state.text, state.caret);
    case EntryMove::kWordRight:
      return word_right(state.text, state.caret);
    case EntryMove::kHome:
      return 0;
    case EntryMove::kEnd:
      return state.text.size();
  }
  return state.caret;
}

size_t moved_in_number(const EntryState& state, EntryMove move, const EntrySettings& settings) {
  const size_t first = number_entry::first_position(state.text, settings);
  if (move == EntryMove::kWordLeft) return first;
  if (move == EntryMove::kWordRight) return state.text.size();
  const bool own = number_entry::is_well_formed(state.text, settings);
  return own ? std::max(first, moved_in_text(state, move)) : moved_in_text(state, move);
}

size_t moved_in_mask(const EntryState& state, EntryMove move, const EntrySettings& settings) {
  using mask_entry::Step;
  switch (move) {
    case EntryMove::kLeft:
      return mask_entry::moved(state, Step::kLeft, settings);
    case EntryMove::kRight:
      return mask_entry::moved(state, Step::kRight, settings);
    case EntryMove::kWordLeft:
    case EntryMove::kHome:
      return mask_entry::moved(state, Step::kHome, settings);
    case EntryMove::kWordRight:
    case EntryMove::kEnd:
      return mask_entry::moved(state, Step::kEnd, settings);
  }
  return state.caret;
}

size_t moved(const EntryState& state, EntryMove move, const EntrySettings& settings) {
  if (is_number(settings)) return moved_in_number(state, move, settings);
  return is_mask(settings) ? moved_in_mask(state, move, settings) : moved_in_text(state, move);
}

// A number that has grown past the field's length is refused.
EntryState within_length(const EntryState& before, const EntryState& after,
                         const EntrySettings& settings) {
  const size_t most = settings.max_length;
  const bool grown = after.text.size() > before.text.size();
  return most > 0 && grown && after.text.size() > most ? before : after;
}

}  // namespace

EntryState entry_typed(const EntryState& state, wchar_t c, const EntrySettings& settings) {
  if (is_number(settings))
    return within_length(state, number_entry::type(state, c, settings), settings);
  return is_mask(settings) ? mask_entry::type(state, c, settings)
                           : text_entry::type(state, c, settings);
}

EntryState entry_pasted(const EntryState& state, std::wstring_view text,
                        const EntrySettings& settings) {
  if (is_number(settings))
    return within_length(state, number_entry::paste(state, text, settings), settings);
  return is_mask(settings) ? mask_entry::paste(state, text, settings)
                           : text_entry::paste(state, text, settings);
}

EntryState entry_erased_backward(const EntryState& state, const EntrySettings& settings) {
  if (is_number(settings)) return number_entry::erase_backward(state, settings);
  return is_mask(settings) ? mask_entry::erase_backward(state, settings)
                           : text_entry::erase_backward(state);
}

EntryState entry_erased_forward(const EntryState& state, const EntrySettings& settings) {
  if (is_number(settings)) return number_entry::erase_forward(state, settings);
  return is_mask(settings) ? mask_entry::erase_forward(state, settings)
                           : text_entry::erase_forward(state);
}

EntryState entry_moved(const EntryState& state, EntryMove move, bool extend,
                       const EntrySettings& settings) {
  EntryState result = state;
  const bool to_edge = move == EntryMove::kLeft || move == EntryMove::kRight;
  if (state.has_selection() && !extend && to_edge) {
    result.caret = move == EntryMove::kLeft ? state.begin() : state.end();
  } else {
    result.caret = moved(state, move, settings);
  }
  if (extend) return result;
  result.anchor = result.caret;
  return entry_settled(std::move(result), settings);
}

EntryState entry_settled(EntryState state, const EntrySettings& settings) {
  if (is_number(settings)) return number_entry::settled(std::move(state), settings);
  if (is_mask(settings)) return mask_entry::settled(std::move(state), settings);
  state.caret = std::min(state.caret, state.text.size());
  state.anchor = std::min(state.anchor, state.text.size());
  return state;
}

EntryState entry_showing(std::wstring_view text, const EntrySettings& settings) {
  if (is_number(settings)) {
    if (trim_blanks(text).empty()) return {};
    EntryState shown = number_entry::showing(number_entry::value(text, settings), settings);
    // Too many digits for the pattern: shown as given, nothing is lost.
    const bool held = number_entry::is_well_formed(shown.text, settings);
    return held ? shown : state_at(std::wstring(text), text.size());
  }
  if (is_mask(settings)) return mask_entry::showing(text, settings);
  std::wstring cased = with_case(text, settings.text_case);
  cased.resize(text_entry::fitting(cased, text_entry::room(0, 0, settings)).size());
  return state_at(std::move(cased), 0);
}

bool entry_is_empty(std::wstring_view text, const EntrySettings& settings) {
  return is_mask(settings) ? mask_entry::is_empty(text, settings) : trim_blanks(text).empty();
}

void EntryHistory::changed(const EntryState& before, const EntryState& after, Kind kind) {
  if (before == after) return;  // a refused key parts nothing
  if (before.text == after.text) {
    end_step();
    return;
  }
  steps_.resize(at_);
  const bool joins =
      kind != Kind::kOther && kind == open_ && !steps_.empty() && steps_.back().after == before;
  if (joins) {
    steps_.back().after = after;
  } else {
    steps_.push_back({before, after});
    forget_old_steps();
  }
  at_ = steps_.size();
  open_ = kind;
}

void EntryHistory::clear() {
  steps_.clear();
  at_ = 0;
  end_step();
}

EntryState EntryHistory::undo(const EntryState& now) {
  end_step();
  if (!can_undo() || steps_[at_ - 1].after.text != now.text) return now;
  return steps_[--at_].before;
}

EntryState EntryHistory::redo(const EntryState& now) {
  end_step();
  if (!can_redo() || steps_[at_].before.text != now.text) return now;
  return steps_[at_++].after;
}

void EntryHistory::forget_old_steps() {
  constexpr size_t kMostSteps = 200;
  constexpr size_t kMostUnits = 4 << 20;  // of all texts together
  const size_t each = steps_.back().before.text.size() + steps_.back().after.text.size() + 1;
  const size_t most = std::max<size_t>(1, std::min(kMostSteps, kMostUnits / each));
  if (steps_.size() > most) {
    const auto surplus = static_cast<std::ptrdiff_t>(steps_.size() - most);
    steps_.erase(steps_.begin(), steps_.begin() + surplus);
  }
}

}  // namespace kestrelon
