// Typed sequences as a person would write them down: "1 2 3 Left 4 Back , 5".
//
// A key is one character, or a name: Left Right Home End WordLeft WordRight Back Del Undo Redo All
// Space Tab Enter, with "S+" in front for Shift; "at:N" is a click at a position, "sel:A-B" a
// selection, "paste:TEXT" and "set:TEXT" bring a text, blanks written as "_". A state is the text
// with "|" for the caret, "[" and "]" around a selection and "_" for blanks.
#pragma once

#include <string>
#include <string_view>

#include "services/typing/entry_field.h"

namespace kestrelon::typing_script {

struct Field {
  EntrySettings settings;
  EntryState state;
  EntryHistory history;
};

/// False for a key that does not exist.
bool press(Field& field, std::wstring_view key);

std::wstring picture(const EntryState& state);

/// A field by its description: "currency", "number decimals=3", "mask=(##)_####", "preset=phone",
/// "text case=upper max=5"; it begins as an interface would show it.
Field field_of(std::wstring_view description);

}  // namespace kestrelon::typing_script
