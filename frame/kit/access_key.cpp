#include "frame/kit/access_key.h"

#include <cwctype>

namespace kestrelon {

std::wstring access_key_from_start(std::wstring_view caption) {
  if (caption.size() < 2) return {};
  size_t place = 0;
  while ((place = caption.find(L'&', place)) < caption.size() - 1) {
    if (caption[place + 1] != L'&') {
      const wchar_t key = caption[place + 1];
      return std::wstring(1, static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(key))));
    }
    place += 2;
  }
  return {};
}

}  // namespace kestrelon
