#include "frame/kit/text_lines.h"

#include <algorithm>

namespace kestrelon {
namespace {

bool ends_line(wchar_t c) {
  return c == L'\r' || c == L'\n';
}

// The first line of [start, end), which holds no line end; `next` is where the one after it begins.
TextLine take_line(std::wstring_view text, std::span<const int> ends, size_t start, size_t end,
                   int room, size_t& next) {
  next = end;
  size_t length = end - start;
  if (room > 0 && part_width(ends, start, length) > room) {
    size_t cut = start + fitting(ends, start, length, room);
    if (cut < end && text[cut] != L' ') {
      // Back to the blank before the word, or else on to the end of it.
      size_t blank = cut;
      while (blank > start && text[blank - 1] != L' ') --blank;
      cut = blank > start ? blank : std::min(text.find(L' ', cut), end);
    }
    next = cut;
    while (next < end && text[next] == L' ') ++next;
    while (cut > start && text[cut - 1] == L' ') --cut;
    length = cut - start;
  }
  return {start, length, part_width(ends, start, length)};
}

}  // namespace

int part_width(std::span<const int> ends, size_t start, size_t length) {
  if (length == 0 || start + length > ends.size()) return 0;
  return ends[start + length - 1] - (start == 0 ? 0 : ends[start - 1]);
}

size_t fitting(std::span<const int> ends, size_t start, size_t length, int room) {
  const auto from = ends.begin() + static_cast<std::ptrdiff_t>(start);
  const int before = start == 0 ? 0 : ends[start - 1];
  return static_cast<size_t>(
      std::upper_bound(from, from + static_cast<std::ptrdiff_t>(length), before + room) - from);
}

std::vector<TextLine> break_lines(std::wstring_view text, std::span<const int> ends, int room) {
  std::vector<TextLine> lines;
  size_t start = 0;
  while (start < text.size()) {
    size_t end = start;
    while (end < text.size() && !ends_line(text[end])) ++end;
    size_t next = start;
    do {
      lines.push_back(take_line(text, ends, next, end, room, next));
    } while (next < end);
    if (end == text.size()) break;
    const bool pair = text[end] == L'\r' && end + 1 < text.size() && text[end + 1] == L'\n';
    start = end + (pair ? 2 : 1);
    if (start == text.size()) lines.push_back({start, 0, 0});
  }
  return lines;
}

}  // namespace kestrelon
