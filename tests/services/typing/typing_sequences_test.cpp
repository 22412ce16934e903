// Plays the table of typed sequences. KESTRELON_RECORD=1 writes the states anew, to be read by eye
// before they are held.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "base/text.h"
#include "services/mysql/utf8_text.h"
#include "tests/services/typing/typing_script.h"

namespace kestrelon {
namespace {

constexpr const char* kTable = KESTRELON_SOURCE_DIR "/tests/data/typing/sequences.txt";
constexpr std::wstring_view kArrow = L" -> ";

std::wstring without_line_ends(std::wstring text) {
  for (size_t at; (at = text.find(L"\r\n")) != std::wstring::npos;) text.replace(at, 2, L"\u00B6");
  return text;
}

// The states after each key, parted by blanks.
std::wstring played(std::wstring_view field, std::wstring_view keys) {
  typing_script::Field entry = typing_script::field_of(field);
  std::wstring states;
  for (const std::wstring_view key : split(keys, L" ")) {
    if (!typing_script::press(entry, key)) return L"no such key: " + std::wstring(key);
    states +=
        (states.empty() ? L"" : L" ") + without_line_ends(typing_script::picture(entry.state));
  }
  return states;
}

TEST(TypedSequences, LeaveTextAndCaretAsTheTableTellsAfterEachKey) {
  const bool record = std::getenv("KESTRELON_RECORD") != nullptr;
  std::ifstream file(kTable, std::ios::binary);
  ASSERT_TRUE(file);
  std::string written;
  std::wstring field;
  int sequences = 0;
  for (std::string line; std::getline(file, line);) {
    std::wstring text;
    from_utf8(line, text);
    const bool sequence = !text.empty() && text[0] != L'#' && text[0] != L'[';
    if (text.starts_with(L"[")) field = text.substr(1, text.size() - 2);
    if (sequence) {
      const size_t arrow = text.find(kArrow);
      const std::wstring keys = text.substr(0, arrow);
      const std::wstring states = played(field, keys);
      ++sequences;
      if (!record) {
        ASSERT_NE(arrow, std::wstring::npos) << line;
        EXPECT_EQ(to_utf8(states), to_utf8(text.substr(arrow + kArrow.size())))
            << "[" << to_utf8(field) << "] " << to_utf8(keys);
      }
      text = keys + std::wstring(kArrow) + states;
    }
    written += to_utf8(text) + "\n";
  }
  EXPECT_GE(sequences, 400);
  if (record) std::ofstream(kTable, std::ios::binary) << written;
}

}  // namespace
}  // namespace kestrelon
