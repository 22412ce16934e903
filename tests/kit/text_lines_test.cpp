#include "frame/kit/text_lines.h"

#include <gtest/gtest.h>

#include <string>

#include "frame/kit/coverage.h"

namespace kestrelon {
namespace {

// Every character ten pixels wide.
std::vector<int> tens(std::wstring_view text) {
  std::vector<int> out;
  for (size_t i = 0; i < text.size(); ++i) out.push_back(static_cast<int>(i + 1) * 10);
  return out;
}

std::vector<std::wstring> broken(const std::wstring& text, int room) {
  std::vector<std::wstring> out;
  for (const TextLine& line : break_lines(text, tens(text), room)) {
    out.push_back(text.substr(line.start, line.length));
    EXPECT_EQ(line.width, static_cast<int>(line.length) * 10);
  }
  return out;
}

using Lines = std::vector<std::wstring>;

TEST(TextLines, EndWhereTheTextSaysInEachSpelling) {
  EXPECT_EQ(broken(L"a\r\nb\nc\rd", 0), (Lines{L"a", L"b", L"c", L"d"}));
  EXPECT_EQ(broken(L"a\n\nb", 0), (Lines{L"a", L"", L"b"}));
  EXPECT_EQ(broken(L"a\n", 0), (Lines{L"a", L""}));
  EXPECT_EQ(broken(L"\r\n", 50), (Lines{L"", L""}));
  EXPECT_TRUE(broken(L"", 50).empty());
}

TEST(TextLines, BreakBetweenWordsAndLetBlanksHang) {
  EXPECT_EQ(broken(L"um dois tres", 70), (Lines{L"um dois", L"tres"}));
  EXPECT_EQ(broken(L"um dois tres", 69), (Lines{L"um", L"dois", L"tres"}));
  EXPECT_EQ(broken(L"um    dois", 30), (Lines{L"um", L"dois"}));
  EXPECT_EQ(broken(L"um ", 20), (Lines{L"um"}));
  EXPECT_EQ(broken(L"um dois", 0), (Lines{L"um dois"}));
}

TEST(TextLines, LeaveAWordThatIsTooLongAlone) {
  EXPECT_EQ(broken(L"a inconstitucional b", 40), (Lines{L"a", L"inconstitucional", L"b"}));
  EXPECT_EQ(broken(L"abc", 1), (Lines{L"abc"}));
  EXPECT_EQ(broken(std::wstring(40000, L'x'), 5).size(), 1u);
}

TEST(TextLines, FitNoMoreThanTheRoom) {
  const std::vector<int> ends = tens(L"abcdef");
  EXPECT_EQ(fitting(ends, 2, 4, 20), 2u);
  EXPECT_EQ(fitting(ends, 2, 4, 19), 1u);
  EXPECT_EQ(fitting(ends, 2, 4, 0), 0u);
  EXPECT_EQ(fitting(ends, 2, 4, 1000), 4u);
  EXPECT_EQ(part_width(ends, 4, 3), 0);  // beyond the text
}

TEST(Coverage, LaysInkOverClearAndOpaquePixelsAndStaysInside) {
  uint32_t pixels[4] = {0, 0xFFFFFFFF, 0, 0xFFFFFFFF};
  uint32_t mask[4] = {0x00FFFFFF, 0x00808080, 0x00000000, 0x000000FF};
  const PixelView view{pixels, 4, 1, 4}, cover{mask, 4, 1, 4};
  lay_over(view, cover, {-5, -5, 50, 50}, 0x0000FF);  // red
  EXPECT_EQ(pixels[0], 0xFFFF0000u);
  EXPECT_EQ(pixels[1], 0xFFFF7F7Fu);
  EXPECT_EQ(pixels[2], 0u);
  EXPECT_EQ(pixels[3] & 0xFFFF, 0xC0C0u);  // a quarter: one channel of three counts so much
  fill_opaque(view, {2, 0, 90, 90}, 0x010203);
  EXPECT_EQ(pixels[1], 0xFFFF7F7Fu);
  EXPECT_EQ(pixels[2], 0xFF030201u);
  EXPECT_EQ(pixels[3], 0xFF030201u);
}

}  // namespace
}  // namespace kestrelon
