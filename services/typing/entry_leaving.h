// What happens to an input field's text when the field is left, and by the arrows beside it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/calendar.h"
#include "services/typing/entry_settings.h"
#include "services/typing/entry_state.h"
#include "services/typing/mask_presets.h"

namespace kestrelon {

struct LeavingRules {
  bool format_currency = false;
  bool format_date = false;
  std::wstring date_format = L"dd/mm/yyyy";
  MaskPreset preset = MaskPreset::kNone;
  bool required = false;
  std::optional<Amount> least, most;
};

/// The text as it stays: completed by its preset, then formatted as a date, else as an amount of
/// money. A text that is neither stays as it is.
std::wstring entry_left(std::wstring_view text, const EntrySettings& settings,
                        const LeavingRules& rules);

/// Why the text may not stay, in the user's language; "" when it may. An empty field only lacks
/// what is required.
std::wstring_view entry_fault(std::wstring_view text, const EntrySettings& settings,
                              const LeavingRules& rules);

/// The number a step higher or lower, within its bounds; in a date or time the part at the caret.
/// An empty date begins at `today`.
EntryState entry_spun(const EntryState& state, int step, const CalendarDate& today,
                      const EntrySettings& settings, const LeavingRules& rules);

/// The number in any text of a field: by its own rules in number fields, as a person means it
/// elsewhere.
std::optional<Amount> entry_amount(std::wstring_view text, const EntrySettings& settings);

}  // namespace kestrelon
