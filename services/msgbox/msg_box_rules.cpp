#include "services/msgbox/msg_box_rules.h"

#include <algorithm>

#include "base/decimal.h"
#include "base/text.h"
#include "frame/kit/access_key.h"

namespace kestrelon::msg_box {
namespace {

constexpr int32_t kSetMask = 0xF, kIconMask = 0xF0, kDefaultMask = 0xF00;
constexpr int32_t kForeground = 0x10000, kTopmost = 0x40000, kSystemModal = 0x1000;
constexpr int32_t kRight = 0x80000, kRightToLeft = 0x100000;

constexpr wchar_t kRule[] = L"---------------------------\r\n";

std::vector<Answer> buttons_of(int32_t set) {
  switch (set) {
    case 0:
      return {kOk};
    case 1:
      return {kOk, kCancel};
    case 2:
      return {kAbort, kRetry, kIgnore};
    case 3:
      return {kYes, kNo, kCancel};
    case 4:
      return {kYes, kNo};
    case 5:
      return {kRetry, kCancel};
    case 6:
      return {kCancel, kTryAgain, kContinue};
    default:
      return {};
  }
}

bool is_blank(wchar_t c) {
  return c == L' ' || c == L'\t' || c == L'\r' || c == L'\n' || c == L'<' || c == L'>' || c == L'"';
}

bool starts_link(std::wstring_view word) {
  for (const std::wstring_view scheme : {L"http://", L"https://", L"mailto:", L"www."})
    if (word.size() > scheme.size() && equals_ignoring_case(word.substr(0, scheme.size()), scheme))
      return true;
  return false;
}

}  // namespace

Rules read_rules(int32_t number) {
  Rules out;
  out.buttons = buttons_of(number & kSetMask);
  const auto chosen = static_cast<size_t>((number & kDefaultMask) >> 8);
  out.chosen = chosen < out.buttons.size() ? chosen : 0;
  const int32_t icon = (number & kIconMask) >> 4;
  if (icon >= 1 && icon <= 4) out.icon = static_cast<Icon>(icon);
  out.topmost = (number & (kTopmost | kSystemModal)) != 0;
  out.foreground = (number & kForeground) != 0;
  out.align_right = (number & kRight) != 0;
  out.right_to_left = (number & kRightToLeft) != 0;
  return out;
}

const wchar_t* caption_of(Answer answer) {
  switch (answer) {
    case kOk:
      return L"OK";
    case kCancel:
      return L"Cancelar";
    case kAbort:
      return L"&Anular";
    case kRetry:
      return L"&Repetir";
    case kIgnore:
      return L"&Ignorar";
    case kYes:
      return L"&Sim";
    case kNo:
      return L"&N\u00e3o";
    case kTryAgain:
      return L"&Tentar novamente";
    case kContinue:
      return L"&Continuar";
    default:
      return L"";
  }
}

Answer gone_answer(std::span<const Answer> buttons) {
  return std::find(buttons.begin(), buttons.end(), kCancel) != buttons.end() ? kCancel : kNone;
}

Answer escape_answer(std::span<const Answer> buttons) {
  if (buttons.size() == 1) return buttons.front();
  return gone_answer(buttons);
}

std::vector<std::wstring> captions_for(std::span<const Answer> buttons,
                                       std::span<const std::wstring> given) {
  std::vector<std::wstring> out;
  for (size_t i = 0; i < buttons.size(); ++i)
    out.push_back(i < given.size() && !given[i].empty() ? given[i] : caption_of(buttons[i]));
  return out;
}

std::wstring counting_caption(std::wstring_view caption, int32_t seconds) {
  return std::wstring(caption) + L" (" + decimal_text(seconds) + L")";
}

std::wstring copied_text(std::wstring_view title, std::wstring_view text,
                         std::span<const std::wstring> captions) {
  std::wstring out = kRule;
  out.append(title).append(L"\r\n").append(kRule).append(text).append(L"\r\n").append(kRule);
  for (const std::wstring& caption : captions) out += without_access_marks(caption) + L"   ";
  return out.append(L"\r\n").append(kRule);
}

std::vector<Link> find_links(std::wstring_view text) {
  std::vector<Link> out;
  size_t start = 0;
  while (start < text.size()) {
    size_t end = start;
    while (end < text.size() && !is_blank(text[end])) ++end;
    const size_t next = end + 1;
    while (start < end && (text[start] == L'(' || text[start] == L'[')) ++start;
    if (starts_link(text.substr(start, end - start))) {
      while (end > start && std::wstring_view(L".,;:!?)]'").find(text[end - 1]) != text.npos) --end;
      if (starts_link(text.substr(start, end - start))) out.push_back({start, end - start});
    }
    start = next;
  }
  return out;
}

}  // namespace kestrelon::msg_box
