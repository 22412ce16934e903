// An input field without a window: text, caret and selection, the rules it takes text by, and what
// was before. Every key, paste, drop and finished composition goes through it.
#pragma once

#include <string_view>
#include <vector>

#include "services/typing/entry_settings.h"
#include "services/typing/entry_state.h"

namespace kestrelon {

enum class EntryMove { kLeft, kRight, kWordLeft, kWordRight, kHome, kEnd };

/// The state after one action. A refused action gives the state back as it was.
EntryState entry_typed(const EntryState& state, wchar_t c, const EntrySettings& settings);
EntryState entry_pasted(const EntryState& state, std::wstring_view text,
                        const EntrySettings& settings);
EntryState entry_erased_backward(const EntryState& state, const EntrySettings& settings);
EntryState entry_erased_forward(const EntryState& state, const EntrySettings& settings);
EntryState entry_moved(const EntryState& state, EntryMove move, bool extend,
                       const EntrySettings& settings);
/// Caret and selection, as a click may leave them, on places that take input.
EntryState entry_settled(EntryState state, const EntrySettings& settings);
/// The field with a text set by a program.
EntryState entry_showing(std::wstring_view text, const EntrySettings& settings);
/// True when the field holds nothing: no characters, or a mask without a filled place.
bool entry_is_empty(std::wstring_view text, const EntrySettings& settings);

/// What was, for undo. Characters typed one after the other are one step, so are those deleted.
class EntryHistory {
 public:
  enum class Kind { kTyping, kErasing, kOther };

  /// To be called with the states around every change.
  void changed(const EntryState& before, const EntryState& after, Kind kind);
  /// The next change begins a step of its own.
  void end_step() { open_ = Kind::kOther; }
  void clear();
  bool can_undo() const { return at_ > 0; }
  bool can_redo() const { return at_ < steps_.size(); }
  /// Both give the state back as it is when there is nothing to return to, or when the text is no
  /// longer what the history knows.
  EntryState undo(const EntryState& now);
  EntryState redo(const EntryState& now);

 private:
  struct Step {
    EntryState before, after;
  };
  void forget_old_steps();

  std::vector<Step> steps_;
  size_t at_ = 0;  // steps done; those behind it can be done again
  Kind open_ = Kind::kOther;
};

}  // namespace kestrelon
