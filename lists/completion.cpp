#include "lists/completion.h"

namespace kestrelon {

std::optional<Completed> complete(const ListStore& store, std::wstring_view typed) {
  const TextMatcher matcher(typed, SearchMode::kBeginsWith, false);
  for (int i = store.find(matcher); i >= 0; i = store.find(matcher, i + 1)) {
    const ListEntry& item = store.item(i);
    const auto match = matcher.find(store.text(i));
    if (match && !item.has(ItemFlag::kHeader) && !item.has(ItemFlag::kDisabled)) {
      const std::wstring_view rest = store.text(i).substr(match->at + match->size);
      if (rest.empty()) return std::nullopt;
      return Completed{i, std::wstring(typed).append(rest), typed.size()};
    }
    if (i + 1 == store.count()) break;
  }
  return std::nullopt;
}

}  // namespace kestrelon
