#include "grid/paint/shorten.h"

#include <algorithm>

namespace kestrelon::grid_paint {
namespace {

bool is_blank(wchar_t c) {
  return c == L' ' || c == L'\t' || c == 0xA0;
}

// ASCII's letters, and all beyond ASCII but its signs: a word is not to be parted there.
bool is_word(wchar_t c) {
  if (c < 0x80) return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z') || c == L'_';
  return c >= 0xC0 && c != 0xD7 && c != 0xF7 && (c < 0x2000 || c > 0x206F);
}

size_t without_blanks(std::wstring_view text, size_t end) {
  while (end > 0 && is_blank(text[end - 1])) --end;
  return end;
}

size_t whole_characters(std::wstring_view text, size_t end) {
  const bool parted = end > 0 && end < text.size() && (text[end - 1] & 0xFC00) == 0xD800 &&
                      (text[end] & 0xFC00) == 0xDC00;
  if (!parted) return end;
  return end == 1 ? 2 : end - 1;
}

}  // namespace

size_t ShortenToWidth(std::wstring_view text, size_t fitting) {
  if (fitting >= text.size()) return text.size();
  const size_t most = std::max<size_t>(fitting, 1);
  size_t end = most;
  // A break right behind what fits ends a word as well.
  if (is_word(text[most]) || !is_word(text[most - 1]))
    while (end > 0 && is_word(text[end - 1])) --end;
  end = without_blanks(text, end);
  return whole_characters(text, end > 0 ? end : most);
}

}  // namespace kestrelon::grid_paint
