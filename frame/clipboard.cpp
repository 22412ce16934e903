#include "frame/clipboard.h"

#include <algorithm>

namespace kestrelon {

std::wstring clipboard_text(HWND owner) {
  std::wstring text;
  if (!OpenClipboard(owner)) return text;
  if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
    const auto* const units = static_cast<const wchar_t*>(GlobalLock(data));
    // Another program's memory: its length counts, not the zero that it should end with.
    const size_t most = GlobalSize(data) / sizeof(wchar_t);
    if (units != nullptr) text.assign(units, std::find(units, units + most, L'\0'));
    GlobalUnlock(data);
  }
  CloseClipboard();
  return text;
}

bool put_clipboard_text(HWND owner, std::wstring_view text) {
  if (!OpenClipboard(owner)) return false;
  EmptyClipboard();
  bool done = false;
  if (const HGLOBAL data = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t))) {
    auto* const units = static_cast<wchar_t*>(GlobalLock(data));
    units[text.copy(units, text.size())] = L'\0';
    GlobalUnlock(data);
    done = SetClipboardData(CF_UNICODETEXT, data) != nullptr;  // the system's from here on
    if (!done) GlobalFree(data);
  }
  CloseClipboard();
  return done;
}

}  // namespace kestrelon
