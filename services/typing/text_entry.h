// Typing of plain text: what its filters let through, in its case and up to its length.
#pragma once

#include <string>
#include <string_view>

#include "services/typing/entry_settings.h"
#include "services/typing/entry_state.h"

namespace kestrelon::text_entry {

/// `text` as the field takes it: no control characters but line ends and tabs in a field of several
/// lines, where every kind of line end becomes CR LF; a blank for each of them in a field of one.
/// Then the filters and the case.
std::wstring filtered(std::wstring_view text, const EntrySettings& settings);

/// At most `room` units of `text`, without half a surrogate pair or half a line end.
std::wstring_view fitting(std::wstring_view text, size_t room);

/// Units that may still come in where `selected` of `length` go out.
size_t room(size_t length, size_t selected, const EntrySettings& settings);

EntryState type(const EntryState& state, wchar_t c, const EntrySettings& settings);
EntryState paste(const EntryState& state, std::wstring_view text, const EntrySettings& settings);
EntryState erase_backward(const EntryState& state);
EntryState erase_forward(const EntryState& state);

/// One step to the left or right, over a surrogate pair or a line end as a whole.
size_t before(std::wstring_view text, size_t position);
size_t after(std::wstring_view text, size_t position);

}  // namespace kestrelon::text_entry
