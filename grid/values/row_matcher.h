// What FindItem, FilterOn and typing ahead ask of a cell.
#pragma once

#include <string_view>

#include "base/text_pattern.h"

namespace kestrelon {

enum class GridSearchMode : int {
  Equal = 0,
  GreaterEqual = 1,
  Like = 2,
  Navigate = 4,
  BeginsWith = 5,
  EndsWith = 6,
};

class RowMatcher {
 public:
  /// `mode` as callers pass it. Without `match_case` both texts are compared in upper case.
  RowMatcher(std::wstring_view text, int mode, bool match_case);

  /// False for an empty text or a mode of no meaning: such a search finds nothing, and such a
  /// filter hides nothing.
  bool active() const { return active_; }
  /// Of an active matcher.
  bool matches(std::wstring_view cell) const;

 private:
  // Below 0 where the cell stands before the text, unit by unit.
  int compare(std::wstring_view cell) const;

  TextPattern pattern_;
  GridSearchMode mode_;
  bool active_;
};

/// The first position from `start` (0 where that is none of `count`) whose text matches; -1 for
/// none. `text_at(position)` gives the text.
template <class TextAt>
int find_position(const RowMatcher& matcher, int count, int start, TextAt text_at) {
  if (!matcher.active()) return -1;
  for (int position = start >= 0 && start < count ? start : 0; position < count; ++position)
    if (matcher.matches(text_at(position))) return position;
  return -1;
}

}  // namespace kestrelon
