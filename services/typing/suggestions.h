// The values that typed text may be completed to, held for quick search.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kestrelon {

struct SuggestionSearch {
  bool any_word = false;        // matches at the beginning of any word, not of the value alone
  bool ignore_accents = false;  // "agua" finds "Água"
};

class Suggestions {
 public:
  void assign(std::vector<std::wstring> values);
  bool empty() const { return values_.empty(); }
  /// The first `most` values, in their order, that the text begins; case never counts.
  std::vector<std::wstring> find(std::wstring_view text, size_t most,
                                 const SuggestionSearch& search) const;

 private:
  std::vector<std::wstring> values_;
  std::wstring folded_;           // all values, without case and accents, one behind the other
  std::vector<uint32_t> starts_;  // of each value in it, and its end
};

}  // namespace kestrelon
