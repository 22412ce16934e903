#include "controls/us_label/us_label_layout.h"

#include <algorithm>

namespace kestrelon {

int LabelText::width() const {
  int out = 0;
  for (const TextLine& line : lines) out = std::max(out, line.width);
  return out;
}

LabelText label_text(const std::wstring& caption, bool mnemonic, const std::wstring& delimiter) {
  LabelText out;
  const size_t length = std::min(caption.size(), kLongestLabel);
  out.text.reserve(length);
  for (size_t i = 0; i < length; ++i) {
    if (mnemonic && caption[i] == L'&') {
      if (++i == length) break;
      if (caption[i] != L'&' && out.underlined == LabelText::kNone)
        out.underlined = out.text.size();
    }
    out.text.push_back(caption[i]);
  }
  if (!delimiter.empty()) out.delimiter = out.text.rfind(delimiter);
  return out;
}

int cut_label(LabelText& text, int width, int height, int dots_width) {
  if (text.lines.empty() || text.line_height < 1) return -1;
  const auto room = static_cast<size_t>(std::max(1, height / text.line_height));
  const bool dropped = text.lines.size() > room;
  if (dropped) text.lines.resize(room);
  const TextLine& last = text.lines.back();
  if (!dropped && last.width <= width) return -1;
  return static_cast<int>(
      fitting(text.ends, last.start, last.length, std::max(0, width - dots_width)));
}

}  // namespace kestrelon
