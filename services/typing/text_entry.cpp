#include "services/typing/text_entry.h"

#include <algorithm>
#include <limits>

#include "base/text.h"

namespace kestrelon::text_entry {
namespace {

constexpr wchar_t kDelete = 0x7F, kLineSeparator = 0x2028, kParagraphSeparator = 0x2029;

bool is_line_end(wchar_t c) {
  return c == L'\r' || c == L'\n' || c == kLineSeparator || c == kParagraphSeparator;
}

bool is_control(wchar_t c) {
  return code_unit(c) < L' ' || c == kDelete;
}

bool in_pix_key(wchar_t c) {
  constexpr std::wstring_view kMarks = L"@.-_+()/!#$%&'*=?^`{|}~";
  const bool letter = code_unit(c) < 0x80 && is_letter(c);
  return is_digit(c) || letter || kMarks.find(c) != std::wstring_view::npos;
}

bool passes(wchar_t c, const EntrySettings& settings) {
  if (settings.number_only) return is_digit(c) || c == L'\r' || c == L'\n';
  return !settings.pix_key || in_pix_key(c);
}

// Line ends and control characters of one line or several.
std::wstring plain(std::wstring_view text, bool multiline) {
  while (!multiline && !text.empty() && is_line_end(text.back())) text.remove_suffix(1);
  std::wstring result;
  result.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    const wchar_t c = text[i];
    if (is_line_end(c)) {
      if (c == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n') ++i;
      result += multiline ? L"\r\n" : L" ";
    } else if (c == L'\t') {
      result += multiline ? c : L' ';
    } else if (!is_control(c)) {
      result += c;
    }
  }
  return result;
}

bool splits(std::wstring_view text, size_t position) {
  if (position == 0 || position >= text.size()) return false;
  const wchar_t left = text[position - 1], right = text[position];
  return (is_high_surrogate(left) && is_low_surrogate(right)) || (left == L'\r' && right == L'\n');
}

EntryState replaced(const EntryState& state, std::wstring_view text) {
  EntryState result;
  result.text.reserve(state.text.size() + text.size());
  result.text.append(state.text, 0, state.begin()).append(text);
  result.anchor = result.caret = result.text.size();
  result.text.append(state.text, state.end());
  return result;
}

}  // namespace

std::wstring filtered(std::wstring_view text, const EntrySettings& settings) {
  std::wstring result = plain(text, settings.multiline);
  if (settings.number_only || settings.pix_key)
    std::erase_if(result, [&settings](wchar_t c) { return !passes(c, settings); });
  if (settings.text_case != TextCase::kNormal)
    for (wchar_t& c : result) c = with_case(c, settings.text_case);
  return result;
}

std::wstring_view fitting(std::wstring_view text, size_t room) {
  if (text.size() <= room) return text;
  return text.substr(0, splits(text, room) ? room - 1 : room);
}

size_t room(size_t length, size_t selected, const EntrySettings& settings) {
  if (settings.max_length == 0) return std::numeric_limits<size_t>::max();
  const size_t kept = length - selected;
  return settings.max_length - std::min(settings.max_length, kept);
}

EntryState type(const EntryState& state, wchar_t c, const EntrySettings& settings) {
  if (is_control(c) && !(settings.multiline && (c == L'\r' || c == L'\n' || c == L'\t')))
    return state;
  return paste(state, std::wstring_view(&c, 1), settings);
}

EntryState paste(const EntryState& state, std::wstring_view text, const EntrySettings& settings) {
  const std::wstring taken = filtered(text, settings);
  const size_t most = room(state.text.size(), state.end() - state.begin(), settings);
  const std::wstring_view piece = fitting(taken, most);
  return piece.empty() ? state : replaced(state, piece);
}

EntryState erase_backward(const EntryState& state) {
  if (state.has_selection()) return replaced(state, {});
  return replaced({state.text, before(state.text, state.caret), state.caret}, {});
}

EntryState erase_forward(const EntryState& state) {
  if (state.has_selection()) return replaced(state, {});
  return replaced({state.text, state.caret, after(state.text, state.caret)}, {});
}

size_t before(std::wstring_view text, size_t position) {
  if (position == 0) return 0;
  return splits(text, position - 1) ? position - 2 : position - 1;
}

size_t after(std::wstring_view text, size_t position) {
  if (position >= text.size()) return text.size();
  return splits(text, position + 1) ? position + 2 : position + 1;
}

}  // namespace kestrelon::text_entry
