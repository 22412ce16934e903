#include "lists/completion.h"

namespace kestrelon {

std::optional<Completed> complete(const ListStore& store, std::wstring_view typed, int column) {
  const TextMatcher matcher(typed, SearchMode::kBeginsWith, false);
  for (int i = store.find(matcher, 0, column); i >= 0; i = store.find(matcher, i + 1, column)) {
    const ListEntry& item = store.item(i);
    const std::wstring_view text = column_text(store.text(i), column);
    const auto match = matcher.find(text);
    if (match && !item.has(ItemFlag::kHeader) && !item.has(ItemFlag::kDisabled)) {
      const std::wstring_view rest = text.substr(match->at + match->size);
      if (rest.empty()) return std::nullopt;
      return Completed{i, std::wstring(typed).append(rest), typed.size()};
    }
    if (i + 1 == store.count()) break;
  }
  return std::nullopt;
}

}  // namespace kestrelon
