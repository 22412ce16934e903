#include "grid/values/row_matcher.h"

#include <algorithm>

namespace kestrelon {
namespace {

bool is_mode(int mode) {
  return mode >= 0 && mode <= static_cast<int>(GridSearchMode::EndsWith) && mode != 3;
}

}  // namespace

RowMatcher::RowMatcher(std::wstring_view text, int mode, bool match_case)
    : pattern_(text, match_case ? LetterRule::kExact : LetterRule::kUpper),
      mode_(static_cast<GridSearchMode>(mode)),
      active_(!text.empty() && is_mode(mode)) {}

int RowMatcher::compare(std::wstring_view cell) const {
  const std::wstring& text = pattern_.letters();
  const bool upper = pattern_.rule() == LetterRule::kUpper;
  for (size_t i = 0; i < std::min(cell.size(), text.size()); ++i) {
    const uint32_t unit = code_unit(upper ? upper_letter(cell[i]) : cell[i]);
    if (unit != code_unit(text[i])) return unit < code_unit(text[i]) ? -1 : 1;
  }
  return cell.size() < text.size() ? -1 : cell.size() > text.size() ? 1 : 0;
}

bool RowMatcher::matches(std::wstring_view cell) const {
  switch (mode_) {
    case GridSearchMode::Equal:
      return pattern_.equals(cell);
    case GridSearchMode::GreaterEqual:
      return compare(cell) >= 0;
    case GridSearchMode::Like:
      return pattern_.contains(cell);
    case GridSearchMode::Navigate: {
      if (cell.empty()) return false;
      const bool upper = pattern_.rule() == LetterRule::kUpper;
      const wchar_t first = upper ? upper_letter(cell[0]) : cell[0];
      return first == pattern_.letters()[0] && compare(cell) >= 0;
    }
    case GridSearchMode::BeginsWith:
      return pattern_.begins(cell);
    case GridSearchMode::EndsWith:
      return pattern_.ends(cell);
  }
  return false;
}

}  // namespace kestrelon
