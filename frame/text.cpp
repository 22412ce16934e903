#include "frame/text.h"

#include <algorithm>
#include <string>

#include "frame/platform.h"

namespace kestrelon {
namespace {

int draw_text_ansi(HDC dc, std::wstring_view text, RECT* rect, UINT flags) {
  const int length = static_cast<int>(text.size());
  const int bytes =
      WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<size_t>(std::max(bytes, 0)), '\0');
  WideCharToMultiByte(CP_ACP, 0, text.data(), length, narrow.data(), bytes, nullptr, nullptr);
  return DrawTextA(dc, narrow.data(), bytes, rect, flags);
}

}  // namespace

int DrawTextUnicode(HDC dc, std::wstring_view text, int length, RECT* rect, UINT flags) {
  if (length >= 0) text = text.substr(0, static_cast<size_t>(length));
  if (text.empty() || rect == nullptr) return 0;
  flags &= ~static_cast<UINT>(DT_MODIFYSTRING);
  if (!IsNtPlatform()) return draw_text_ansi(dc, text, rect, flags);
  return DrawTextW(dc, text.data(), static_cast<int>(text.size()), rect, flags);
}

}  // namespace kestrelon
