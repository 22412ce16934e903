#include "frame/kit/access_key.h"

#include <cwctype>

namespace kestrelon {
namespace {

std::wstring lower_key(wchar_t key) {
  return std::wstring(1, static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(key))));
}

}  // namespace

std::wstring access_key_from_start(std::wstring_view caption) {
  if (caption.size() < 2) return {};
  size_t place = 0;
  while ((place = caption.find(L'&', place)) < caption.size() - 1) {
    if (caption[place + 1] != L'&') return lower_key(caption[place + 1]);
    place += 2;
  }
  return {};
}

std::wstring access_key_from_end(std::wstring_view caption) {
  if (caption.size() < 2) return {};
  // Pairs are counted from the first of a run, as the text is drawn, so that the key is what is
  // underlined.
  for (size_t end = caption.size(); end > 0;) {
    const size_t last = caption.rfind(L'&', end - 1);
    if (last == std::wstring_view::npos) return {};
    size_t first = last;
    while (first > 0 && caption[first - 1] == L'&') --first;
    const bool single = (last - first) % 2 == 0;
    if (single && last + 1 < caption.size()) return lower_key(caption[last + 1]);
    end = first;
  }
  return {};
}

std::wstring without_access_marks(std::wstring_view caption) {
  std::wstring out;
  for (size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == L'&' && ++i == caption.size()) break;
    out += caption[i];
  }
  return out;
}

}  // namespace kestrelon
