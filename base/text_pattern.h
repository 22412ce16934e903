// One text looked for in many others. What can be prepared once is done at construction; a search
// allocates nothing.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/fold.h"

namespace kestrelon {

/// Where a pattern was found, in units of the searched text, for marking the place.
struct TextMatch {
  size_t at = 0;
  size_t size = 0;
};

class TextPattern {
 public:
  TextPattern(std::wstring_view pattern, LetterRule rule);

  /// The pattern in the form that is compared.
  const std::wstring& letters() const { return letters_; }
  LetterRule rule() const { return rule_; }

  /// An empty pattern is found everywhere, at 0. Under kFold combining accents of the text count
  /// for nothing.
  bool equals(std::wstring_view text) const;
  bool begins(std::wstring_view text) const;
  bool ends(std::wstring_view text) const;
  bool contains(std::wstring_view text) const { return find(text).has_value(); }
  std::optional<TextMatch> find(std::wstring_view text) const;

 private:
  // One of the two first letters, as the scan tests sixteen bytes of text for it: a unit is a
  // candidate when `unit | caseless == wanted` or when it has a bit of `beyond`.
  struct Probe {
    uint32_t caseless = 0, wanted = 0, beyond = 0;
  };

  Probe probe_for(wchar_t letter) const;
  wchar_t letter_of(wchar_t c) const;
  size_t match_at(std::wstring_view text, size_t at) const;
  std::optional<TextMatch> scan(std::wstring_view text) const;
  std::optional<TextMatch> test(std::wstring_view text, size_t at) const;

  std::wstring letters_;
  LetterRule rule_;
  Probe probes_[2];
};

}  // namespace kestrelon
