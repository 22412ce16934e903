// Type-ahead: the keys of a user become the beginning of the item that is looked for.
#pragma once

#include <cstdint>
#include <string>

namespace kestrelon {

/// The rule alone: which text to look for, and from where on. The clock is the caller's.
class TypeAhead {
 public:
  static constexpr uint32_t kPauseMs = 1000;  ///< a longer pause starts anew

  struct Search {
    std::wstring text;       ///< a prefix, case and accents ignored
    bool from_next = false;  ///< begin behind the current item: a new word or a repeated letter
  };

  /// A character as composed by the keyboard, so that dead keys work; `now` in milliseconds, may
  /// wrap. A control character ends the word and looks for nothing. A blank begins no word: it is
  /// the key that checks.
  Search add(wchar_t character, uint32_t now);

  /// True while a blank would lengthen the word and is not to check or choose.
  bool takes_blank(uint32_t now) const;
  void reset() { typed_.clear(); }

 private:
  std::wstring typed_;
  uint32_t last_ = 0;
};

}  // namespace kestrelon
