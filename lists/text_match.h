// How lists, trees and combo boxes compare what a user looks for with an item's text.
#pragma once

#include <string>
#include <string_view>

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

/// A text to look for, folded once. Case and accents count only with `match_case`. An unknown mode
/// and an empty text match nothing.
class TextMatcher {
 public:
  TextMatcher(std::wstring_view sought, SearchMode mode, bool match_case);

  bool matches(std::wstring_view text) const;
  bool matches_nothing() const { return sought_.empty(); }

 private:
  std::wstring sought_;
  SearchMode mode_;
  bool exact_;
};

/// Where `sought` lies in `text`, case and accents ignored: the part to show in bold. npos when it
/// does not.
size_t find_folded(std::wstring_view text, std::wstring_view sought);

}  // namespace kestrelon
