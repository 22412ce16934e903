// What of a caption is shown and in which lines: arithmetic over measured widths.
#pragma once

#include <string>
#include <vector>

#include "frame/kit/text_lines.h"

namespace kestrelon {

struct LabelText {
  static constexpr size_t kNone = static_cast<size_t>(-1);

  std::wstring text;          // without access marks
  size_t underlined = kNone;  // the character of the access key
  size_t delimiter = kNone;   // from here on the other colour
  std::vector<int> ends;      // pixels to the end of each character
  std::vector<TextLine> lines;
  int line_height = 0;

  int width() const;  // of the longest line
  int height() const { return line_height * static_cast<int>(lines.size()); }
};

/// More is neither measured nor drawn.
inline constexpr size_t kLongestLabel = 32767;

/// Takes marks out and finds the access key and the last delimiter.
LabelText label_text(const std::wstring& caption, bool mnemonic, const std::wstring& delimiter);

/// Leaves the lines that fit into a height, at least one, and tells how many characters of the last
/// one remain before dots of a width; -1 when everything fits in the width.
int cut_label(LabelText& text, int width, int height, int dots_width);

}  // namespace kestrelon
