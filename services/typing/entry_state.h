// What an input field holds: its text, its caret and its selection. Positions are between UTF-16
// units, from 0 to the length of the text.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>

namespace kestrelon {

struct EntryState {
  std::wstring text;
  size_t anchor = 0;  // where the selection began; equal to the caret without one
  size_t caret = 0;

  size_t begin() const { return std::min(anchor, caret); }
  size_t end() const { return std::max(anchor, caret); }
  bool has_selection() const { return anchor != caret; }
  bool operator==(const EntryState&) const = default;
};

inline EntryState state_at(std::wstring text, size_t caret) {
  const size_t at = std::min(caret, text.size());
  return {std::move(text), at, at};
}

}  // namespace kestrelon
