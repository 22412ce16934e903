#include "frame/window_class.h"

#include <string_view>

#include "base/module_win.h"

namespace kestrelon {
namespace {

struct Registered {
  const wchar_t* name;
  ATOM atom;
};
constexpr size_t kMost = 16;
Registered registered[kMost];
size_t count = 0;

}  // namespace

ATOM window_class(const wchar_t* name, WNDPROC procedure, UINT style) {
  for (size_t i = 0; i < count; ++i)
    if (std::wstring_view(registered[i].name) == name) return registered[i].atom;
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.style = style;
  description.lpfnWndProc = procedure;
  description.hInstance = module_instance();
  description.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
  description.lpszClassName = name;
  const ATOM atom = RegisterClassExW(&description);
  if (atom != 0 && count < kMost) registered[count++] = {name, atom};
  return atom;
}

void unregister_window_classes() {
  while (count > 0) UnregisterClassW(registered[--count].name, module_instance());
}

}  // namespace kestrelon
