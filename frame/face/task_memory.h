// Results in memory that the caller frees with CoTaskMemFree.
#pragma once

#include <windows.h>

#include <objbase.h>

#include <string_view>

namespace kestrelon {

/// Room for `count` of T and one more; null when memory is short.
template <class T>
T* task_array(size_t count) {
  return static_cast<T*>(CoTaskMemAlloc((count + 1) * sizeof(T)));
}

inline LPOLESTR task_text(std::wstring_view text) {
  auto* const out = task_array<wchar_t>(text.size());
  if (out != nullptr) out[text.copy(out, text.size())] = L'\0';
  return out;
}

}  // namespace kestrelon
