#include "frame/window_procedure.h"

namespace kestrelon {

WNDPROC window_procedure(HWND window) {
  return reinterpret_cast<WNDPROC>(IsWindowUnicode(window)
                                       ? GetWindowLongPtrW(window, GWLP_WNDPROC)
                                       : GetWindowLongPtrA(window, GWLP_WNDPROC));
}

WNDPROC replace_procedure(HWND window, WNDPROC next) {
  const auto value = reinterpret_cast<LONG_PTR>(next);
  return reinterpret_cast<WNDPROC>(IsWindowUnicode(window)
                                       ? SetWindowLongPtrW(window, GWLP_WNDPROC, value)
                                       : SetWindowLongPtrA(window, GWLP_WNDPROC, value));
}

LRESULT call_procedure(WNDPROC procedure, HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  return IsWindowUnicode(window) ? CallWindowProcW(procedure, window, message, wparam, lparam)
                                 : CallWindowProcA(procedure, window, message, wparam, lparam);
}

bool withdraw_procedure(HWND window, WNDPROC ours, WNDPROC former) {
  if (window_procedure(window) == ours) return replace_procedure(window, former) != nullptr;
  HMODULE stays = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                     reinterpret_cast<LPCWSTR>(ours), &stays);
  return false;
}

}  // namespace kestrelon
