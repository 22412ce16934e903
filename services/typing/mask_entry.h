// Typing into the places of a mask. The caret stands before a place or behind the last one; a
// character replaces what its place holds, Backspace and Delete leave blanks and shift nothing.
#pragma once

#include <string_view>

#include "services/typing/entry_settings.h"
#include "services/typing/entry_state.h"

namespace kestrelon::mask_entry {

/// The pattern with all places blank and the caret in the first.
EntryState empty(const EntrySettings& settings);
/// True when no place is filled.
bool is_empty(std::wstring_view text, const EntrySettings& settings);

/// The places filled with `text`; a text that does not fit shows as given.
EntryState showing(std::wstring_view text, const EntrySettings& settings);

EntryState type(const EntryState& state, wchar_t c, const EntrySettings& settings);
EntryState paste(const EntryState& state, std::wstring_view text, const EntrySettings& settings);
EntryState erase_backward(const EntryState& state, const EntrySettings& settings);
EntryState erase_forward(const EntryState& state, const EntrySettings& settings);
EntryState settled(EntryState state, const EntrySettings& settings);

enum class Step { kLeft, kRight, kHome, kEnd };
/// The position the caret reaches by one key.
size_t moved(const EntryState& state, Step step, const EntrySettings& settings);

bool is_well_formed(std::wstring_view text, const EntrySettings& settings);
bool is_complete(std::wstring_view text, const EntrySettings& settings);

}  // namespace kestrelon::mask_entry
