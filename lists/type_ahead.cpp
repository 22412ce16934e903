#include "lists/type_ahead.h"

#include <algorithm>

#include "base/fold.h"

namespace kestrelon {

namespace {

bool one_letter_repeated(const std::wstring& text) {
  return std::all_of(text.begin(), text.end(),
                     [&](wchar_t c) { return folded_letter(c) == folded_letter(text[0]); });
}

}  // namespace

TypeAhead::Search TypeAhead::add(wchar_t character, uint32_t now) {
  const bool anew = typed_.empty() || now - last_ >= kPauseMs;
  if (anew) typed_.clear();
  if (character < L' ' || (anew && character == L' ')) {
    typed_.clear();
    return {};
  }
  typed_ += character;
  last_ = now;
  if (one_letter_repeated(typed_)) return {typed_.substr(0, 1), true};
  return {typed_, false};
}

bool TypeAhead::takes_blank(uint32_t now) const {
  return !typed_.empty() && now - last_ < kPauseMs;
}

}  // namespace kestrelon
