#include "base/fold.h"

namespace kestrelon {
namespace detail {

constinit const LetterTable kUpperLetters{kUpperRuns};
constinit const LetterTable kFoldedLetters{kFoldRuns};

}  // namespace detail

std::wstring upper_text(std::wstring_view text) {
  std::wstring upper(text);
  for (wchar_t& c : upper) c = upper_letter(c);
  return upper;
}

std::wstring folded_text(std::wstring_view text) {
  std::wstring folded;
  folded.reserve(text.size());
  for (const wchar_t c : text)
    if (const wchar_t letter = folded_letter(c)) folded.push_back(letter);
  return folded;
}

std::wstring letters_by_rule(std::wstring_view text, LetterRule rule) {
  switch (rule) {
    case LetterRule::kUpper:
      return upper_text(text);
    case LetterRule::kFold:
      return folded_text(text);
    default:
      return std::wstring(text);
  }
}

}  // namespace kestrelon
