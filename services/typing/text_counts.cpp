#include "services/typing/text_counts.h"

namespace kestrelon {

int count_lines(std::wstring_view text) {
  if (text.empty()) return 0;
  int lines = 1;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool pair = text[i] == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n';
    if ((text[i] == L'\r' && !pair) || text[i] == L'\n') ++lines;
  }
  return lines;
}

std::wstring_view tab_field(std::wstring_view text, int column) {
  if (column < 0) return {};
  for (; column > 0; --column) {
    const size_t tab = text.find(L'\t');
    if (tab == std::wstring_view::npos) return {};
    text.remove_prefix(tab + 1);
  }
  return text.substr(0, text.find(L'\t'));
}

}  // namespace kestrelon
