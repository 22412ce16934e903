#include "services/code_page_win.h"

#include <windows.h>

namespace kestrelon {

std::optional<std::string> page_bytes(std::wstring_view text) {
  if (text.empty()) return std::string();
  // A machine may have UTF-8 for its page, which takes every character and no questions.
  const bool is_utf8 = GetACP() == CP_UTF8;
  const DWORD flags = is_utf8 ? 0 : WC_NO_BEST_FIT_CHARS;
  BOOL lost = FALSE;
  BOOL* const asks = is_utf8 ? nullptr : &lost;
  const int size = static_cast<int>(text.size());
  const int length =
      WideCharToMultiByte(CP_ACP, flags, text.data(), size, nullptr, 0, nullptr, asks);
  std::string bytes(static_cast<size_t>(length), '\0');
  if (lost || length == 0) return std::nullopt;
  WideCharToMultiByte(CP_ACP, flags, text.data(), size, bytes.data(), length, nullptr, nullptr);
  return bytes;
}

std::wstring page_text(std::string_view bytes) {
  return text_of_page(bytes, CP_ACP).value_or(std::wstring());
}

std::optional<std::wstring> text_of_page(std::string_view bytes, unsigned page) {
  if (bytes.empty()) return std::wstring();
  const int size = static_cast<int>(bytes.size());
  const int length = MultiByteToWideChar(page, 0, bytes.data(), size, nullptr, 0);
  if (length == 0) return std::nullopt;
  std::wstring text(static_cast<size_t>(length), L'\0');
  MultiByteToWideChar(page, 0, bytes.data(), size, text.data(), length);
  return text;
}

}  // namespace kestrelon
