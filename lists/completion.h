// Completing what a user types from the texts of a list.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "lists/list_store.h"

namespace kestrelon {

/// Numbered as the public enumeration has it.
enum class CompleteMode {
  kNone = 0,
  kAppend = 1,
  kSuggest = 2,  ///< by prefix
  kContains = 3,
};

struct Completed {
  int index = -1;
  std::wstring text;  ///< what was typed, and the rest of the item's text
  size_t typed = 0;   ///< units of it that were typed; the rest is to be selected
};

/// The first item that begins with what was typed, case and accents ignored; nothing for an empty
/// text, without such an item, and where nothing would be added.
std::optional<Completed> complete(const ListStore& store, std::wstring_view typed,
                                  int column = kWholeText);

/// How a list of suggestions is filtered.
inline SearchMode suggestion_search(CompleteMode mode) {
  return mode == CompleteMode::kContains ? SearchMode::kLike : SearchMode::kBeginsWith;
}

}  // namespace kestrelon
