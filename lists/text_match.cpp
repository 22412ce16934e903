#include "lists/text_match.h"

#include <algorithm>

#include "base/text.h"

namespace kestrelon {

namespace {

wchar_t fold(wchar_t c) {
  return fold_case(c);
}
wchar_t keep(wchar_t c) {
  return c;
}

/// Positions of `text` compared with an already folded `sought`.
template <wchar_t (*Fold)(wchar_t)>
struct Compare {
  static bool same(std::wstring_view text, std::wstring_view sought) {
    for (size_t i = 0; i < sought.size(); ++i)
      if (Fold(text[i]) != sought[i]) return false;
    return true;
  }
  static size_t find(std::wstring_view text, std::wstring_view sought) {
    if (sought.empty() || text.size() < sought.size()) return std::wstring_view::npos;
    const size_t last = text.size() - sought.size();
    for (size_t i = 0; i <= last; ++i)
      if (Fold(text[i]) == sought[0] && same(text.substr(i), sought)) return i;
    return std::wstring_view::npos;
  }
  static bool at_or_after(std::wstring_view text, std::wstring_view sought) {
    const size_t common = std::min(text.size(), sought.size());
    for (size_t i = 0; i < common; ++i)
      if (const wchar_t c = Fold(text[i]); c != sought[i])
        return code_unit(c) > code_unit(sought[i]);
    return text.size() >= sought.size();
  }
  static bool matches(std::wstring_view text, std::wstring_view sought, SearchMode mode) {
    const bool room = text.size() >= sought.size();
    switch (mode) {
      case SearchMode::kEqual:
        return text.size() == sought.size() && same(text, sought);
      case SearchMode::kGreaterEqual:
        return at_or_after(text, sought);
      case SearchMode::kLike:
        return find(text, sought) != std::wstring_view::npos;
      case SearchMode::kNavigate:
        return !text.empty() && Fold(text[0]) == sought[0] && at_or_after(text, sought);
      case SearchMode::kBeginsWith:
        return room && same(text, sought);
      case SearchMode::kEndsWith:
        return room && same(text.substr(text.size() - sought.size()), sought);
    }
    return false;
  }
};

std::wstring folded(std::wstring_view text) {
  std::wstring result(text);
  std::transform(result.begin(), result.end(), result.begin(), fold);
  return result;
}

}  // namespace

TextMatcher::TextMatcher(std::wstring_view sought, SearchMode mode, bool match_case)
    : sought_(match_case ? std::wstring(sought) : folded(sought)),
      mode_(mode),
      exact_(match_case) {}

bool TextMatcher::matches(std::wstring_view text) const {
  if (sought_.empty()) return false;
  return exact_ ? Compare<keep>::matches(text, sought_, mode_)
                : Compare<fold>::matches(text, sought_, mode_);
}

size_t find_folded(std::wstring_view text, std::wstring_view sought) {
  return Compare<fold>::find(text, folded(sought));
}

}  // namespace kestrelon
