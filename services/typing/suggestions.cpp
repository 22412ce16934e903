#include "services/typing/suggestions.h"

#include "base/text.h"
#include "services/kn_text.h"

namespace kestrelon {
namespace {

// Same length, so that what is found here is at the same place there.
std::wstring folded(std::wstring_view text) {
  return fold_case(remove_accents(text));
}

bool begins_at(std::wstring_view value, size_t at, std::wstring_view text) {
  return value.compare(at, text.size(), text) == 0;
}

// Where the text begins the value or, if wanted, a word of it; npos nowhere.
size_t place_in(std::wstring_view value, std::wstring_view text, bool any_word) {
  if (begins_at(value, 0, text)) return 0;
  for (size_t blank = 0; any_word && (blank = value.find(L' ', blank)) != std::wstring_view::npos;)
    if (begins_at(value, ++blank, text)) return blank;
  return std::wstring_view::npos;
}

}  // namespace

void Suggestions::assign(std::vector<std::wstring> values) {
  values_ = std::move(values);
  size_t units = 0;
  for (const std::wstring& value : values_) units += value.size();
  folded_.clear();
  folded_.reserve(units);
  starts_.assign(1, 0);
  starts_.reserve(values_.size() + 1);
  for (const std::wstring& value : values_) {
    folded_ += folded(value);
    starts_.push_back(static_cast<uint32_t>(folded_.size()));
  }
}

std::vector<std::wstring> Suggestions::find(std::wstring_view text, size_t most,
                                            const SuggestionSearch& search) const {
  std::vector<std::wstring> found;
  const std::wstring wanted = folded(text), exact = fold_case(text);
  const std::wstring_view all = folded_;
  for (size_t i = 0; i < values_.size() && found.size() < most; ++i) {
    const std::wstring_view value = all.substr(starts_[i], starts_[i + 1] - starts_[i]);
    const size_t at = place_in(value, wanted, search.any_word);
    if (at == std::wstring_view::npos) continue;
    const std::wstring_view part = std::wstring_view(values_[i]).substr(at, wanted.size());
    if (search.ignore_accents || fold_case(std::wstring(part)) == exact)
      found.push_back(values_[i]);
  }
  return found;
}

}  // namespace kestrelon
