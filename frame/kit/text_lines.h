// Text broken into lines, by widths that were measured before.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace kestrelon {

/// A line as a part of its text; width in pixels.
struct TextLine {
  size_t start = 0;
  size_t length = 0;
  int width = 0;
  bool operator==(const TextLine&) const = default;
};

/// The pixels from the beginning of a text to the end of each of its characters give the width of
/// any part.
int part_width(std::span<const int> ends, size_t start, size_t length);

/// Breaks at line ends (CR LF, CR or LF) and, where `room` is positive, between words so that lines
/// fit in it; blanks at such a break hang out and count nothing. A word longer than the room stands
/// alone. `ends` has one entry a character.
std::vector<TextLine> break_lines(std::wstring_view text, std::span<const int> ends, int room);

/// The number of characters from `start` on that fit in `room`.
size_t fitting(std::span<const int> ends, size_t start, size_t length, int room);

}  // namespace kestrelon
