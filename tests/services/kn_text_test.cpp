#include "services/kn_text.h"

#include <gtest/gtest.h>

#include <cmath>

namespace kestrelon {
namespace {

TEST(RemoveAccents, ReplacesTheListedLettersAndNoOther) {
  EXPECT_EQ(remove_accents(L"Ação, PÂNICO e üç"), L"Acao, PANICO e uc");
  EXPECT_EQ(remove_accents(L"ÀÅÈËÌÏÒÖÙÜàåèëìïòöùü"), L"AAEEIIOOUUaaeeiioouu");
  EXPECT_EQ(remove_accents(L"ñÑýÿÆØðß×÷ă"), L"ñÑýÿÆØðß×÷ă");
  EXPECT_EQ(remove_accents(L""), L"");
}

TEST(KeepDigits, KeepsAsciiDigits) {
  EXPECT_EQ(keep_digits(L"a1-2.٣4²"), L"124");
  EXPECT_EQ(keep_digits(L"abc"), L"");
}

TEST(TextBetween, SearchesWithoutRegardToCase) {
  EXPECT_EQ(text_between(L"<B>um</b><b>dois</B>", L"<b>", L"</B>"), L"um");
  EXPECT_EQ(text_between(L"x AÇÃO y fim", L"ação", L"FIM"), L" y ");
  EXPECT_EQ(text_between(L"]a[b]c", L"[", L"]"), L"b");
  EXPECT_EQ(text_between(L"||", L"|", L"|"), L"");
  EXPECT_EQ(text_between(L"|x", L"|", L"|"), L"");  // one mark cannot be both
  EXPECT_EQ(text_between(L"abc", L"z", L"c"), L"");
  EXPECT_EQ(text_between(L"abc", L"a", L"z"), L"");
  EXPECT_EQ(text_between(L"abc", L"", L"c"), L"ab");
  EXPECT_EQ(text_between(L"abc", L"a", L""), L"");
  EXPECT_EQ(text_between(L"", L"", L""), L"");
}

TEST(FillMask, StopsWhereTheTextEnds) {
  EXPECT_EQ(fill_mask(L"12345", L"@@-@@"), L"12-34");
  EXPECT_EQ(fill_mask(L"123", L"@@-@@"), L"12-3");
}

TEST(FormatBytes, ChangesUnitsAndFormsAtTheirBounds) {
  const double kb = 1024;
  const struct {
    double bytes;
    const wchar_t* text;
  } cases[] = {{0, L"0 Bytes"},
               {0.5, L"1 Bytes"},
               {998.5, L"999 Bytes"},
               {-5, L"-5 Bytes"},
               {999, L"999 Bytes"},
               {999.5, L"0.98 Kb"},
               {1000, L"0.98 Kb"},
               {8.99 * kb, L"8.99 Kb"},
               {8.996 * kb, L"9.00 Kb"},
               {9 * kb, L"9.0 Kb"},
               {99 * kb, L"99.0 Kb"},
               {99 * kb - 1, L"99.0 Kb"},
               {99 * kb + 1, L"99 Kb"},
               {100.9 * kb, L"100 Kb"},
               {999 * kb, L"999 Kb"},
               {999 * kb + 1, L"0.98 Mb"},
               {12.34 * kb * kb, L"12.3 Mb"},
               {5e9, L"4.66 Gb"},
               {999 * std::pow(kb, 3), L"999 Gb"},
               {1.5 * std::pow(kb, 4), L"1.50 Tb"},
               {2 * std::pow(kb, 5), L"2.00 Pb"},
               {3 * std::pow(kb, 6), L"3.00 Eb"},
               {999 * std::pow(kb, 7), L"999 Zb"},
               {1000 * std::pow(kb, 7), L"0.98 Yb"},
               {5000 * std::pow(kb, 8), L"5000 Yb"}};
  for (const auto& c : cases) EXPECT_EQ(format_bytes(c.bytes, L'.'), c.text) << c.bytes;
  EXPECT_EQ(format_bytes(1000, L','), L"0,98 Kb");
  EXPECT_EQ(format_bytes(std::nan(""), L'.'), L"");
  EXPECT_EQ(format_bytes(INFINITY, L'.'), L"");
}

}  // namespace
}  // namespace kestrelon
