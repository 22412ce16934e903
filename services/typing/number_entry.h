// Typing of numbers and amounts of money: digits in groups of three, an optional fraction in number
// fields, a fixed one in currency fields.
//
// In both kinds the text is always well-formed: a sign, the currency word and a blank, digits
// without leading zeros in groups, the decimal mark, the places. The caret does not stand before
// the first digit's prefix. A group mark or the decimal mark is stepped over by Backspace and
// Delete, never deleted alone.
#pragma once

#include <string_view>

#include "services/typing/entry_settings.h"
#include "services/typing/entry_state.h"

namespace kestrelon::number_entry {

/// "0", or zero with all its places and the currency word in a currency field.
EntryState zero(const EntrySettings& settings);

/// The field showing `amount`, rounded to what its places hold, with the caret where typing starts.
EntryState showing(const Amount& amount, const EntrySettings& settings);

/// The number in the field's own text, read by the field's own marks; a text that is not the
/// field's own is read as a pasted one. An empty text, and one without a number, is zero.
Amount value(std::wstring_view text, const EntrySettings& settings);

EntryState type(const EntryState& state, wchar_t c, const EntrySettings& settings);
EntryState paste(const EntryState& state, std::wstring_view text, const EntrySettings& settings);
EntryState erase_backward(const EntryState& state, const EntrySettings& settings);
EntryState erase_forward(const EntryState& state, const EntrySettings& settings);

/// The same text with caret and selection on places that take input.
EntryState settled(EntryState state, const EntrySettings& settings);

/// First position that takes input.
size_t first_position(std::wstring_view text, const EntrySettings& settings);

/// The text as it stays when the field is left: no mark without places behind it, no signed zero.
std::wstring finished(std::wstring_view text, const EntrySettings& settings);

/// True for a text that this field could have made.
bool is_well_formed(std::wstring_view text, const EntrySettings& settings);

}  // namespace kestrelon::number_entry
