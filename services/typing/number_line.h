// The text of a number field as sign, digits and decimal mark, without groups and prefix.
#pragma once

#include <string>
#include <string_view>

#include "services/typing/entry_settings.h"

namespace kestrelon {

struct NumberLine {
  bool negative = false;
  std::wstring whole;   // "0" at least, without leading zeros
  std::wstring places;  // all `decimals` of them in a currency field
  bool mark = false;    // a decimal mark is shown

  /// Characters that the caret passes one by one: the digits, and the mark if one is shown.
  size_t size() const { return whole.size() + (mark ? 1 : 0) + places.size(); }
  bool is_zero() const;
  Amount amount() const;
};

/// Most places that are taken. Equal marks leave room for two only: three digits behind a mark
/// would read as a group.
size_t most_places(const EntrySettings& settings);

/// Reads the field's own text, whatever else it holds.
NumberLine line_of(std::wstring_view text, const EntrySettings& settings);

/// Strips leading zeros, gives the whole part one digit at least and a currency its places.
void tidy(NumberLine& line, const EntrySettings& settings);

std::wstring text_of(const NumberLine& line, const EntrySettings& settings);

/// Length of sign, currency word and blank.
size_t prefix_length(const NumberLine& line, const EntrySettings& settings);

/// The position with `right` characters of the line behind it: at a group mark, before it when
/// `before_mark`, else behind it.
size_t position_of(const std::wstring& text, const NumberLine& line, size_t right, bool before_mark,
                   const EntrySettings& settings);

/// Characters of the line behind a position.
size_t right_of(const std::wstring& text, const NumberLine& line, size_t position);

}  // namespace kestrelon
