#include "lists/text_match.h"

namespace kestrelon {

bool TextMatcher::matches(std::wstring_view text) const {
  if (matches_nothing()) return false;
  switch (mode_) {
    case SearchMode::kEqual:
      return pattern_.equals(text);
    case SearchMode::kGreaterEqual:
      return at_or_after(text);
    case SearchMode::kLike:
      return pattern_.contains(text);
    case SearchMode::kNavigate:
      return begins_alike(text) && at_or_after(text);
    case SearchMode::kBeginsWith:
      return pattern_.begins(text);
    case SearchMode::kEndsWith:
      return pattern_.ends(text);
  }
  return false;
}

bool TextMatcher::at_or_after(std::wstring_view text) const {
  const std::wstring letters = letters_by_rule(text, pattern_.rule());
  return letters.compare(pattern_.letters()) >= 0;
}

bool TextMatcher::begins_alike(std::wstring_view text) const {
  const std::wstring letters = letters_by_rule(text.substr(0, 1), pattern_.rule());
  return !letters.empty() && letters[0] == pattern_.letters()[0];
}

}  // namespace kestrelon
