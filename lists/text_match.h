// How lists, trees and combo boxes compare what a user looks for with an item's text.
#pragma once

#include <string_view>

#include "base/text_pattern.h"

namespace kestrelon {

/// Numbered as the public enumeration has it.
enum class SearchMode {
  kEqual = 0,
  kGreaterEqual = 1,
  kLike = 2,      ///< the text holds what is looked for
  kNavigate = 4,  ///< not empty, at or after it, and of the same first character
  kBeginsWith = 5,
  kEndsWith = 6,
};

/// A text to look for, prepared once. Case and accents count only with `match_case`. An unknown
/// mode and an empty text match nothing.
class TextMatcher {
 public:
  TextMatcher(std::wstring_view sought, SearchMode mode, bool match_case)
      : pattern_(sought, match_case ? LetterRule::kExact : LetterRule::kFold), mode_(mode) {}

  bool matches(std::wstring_view text) const;
  bool matches_nothing() const { return pattern_.letters().empty(); }
  /// Where it lies in a text: the part to show in bold.
  std::optional<TextMatch> find(std::wstring_view text) const { return pattern_.find(text); }

 private:
  bool at_or_after(std::wstring_view text) const;
  bool begins_alike(std::wstring_view text) const;

  TextPattern pattern_;
  SearchMode mode_;
};

}  // namespace kestrelon
