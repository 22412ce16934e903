#include "base/text_pattern.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

namespace kestrelon {
namespace {

TEST(Fold, MakesCaseAndAccentsAlikeAndKeepsTheRest) {
  const struct {
    const wchar_t* text;
    const wchar_t* folded;
    const wchar_t* upper;
  } cases[] = {{L"\u00C1gua", L"agua", L"\u00C1GUA"},
               {L"A\u0301gua", L"agua", L"A\u0301GUA"},
               {L"A\u00C7\u00C3O", L"acao", L"A\u00C7\u00C3O"},
               {L"\u00FF\u0178", L"yy", L"\u0178\u0178"},
               {L"stra\u00DFe", L"stra\u00DFe", L"STRA\u00DFE"},
               {L"\u1EA4\u01B0", L"au", L"\u1EA4\u01AF"},
               {L"\u0394\u03AC\u03C2", L"\u03B4\u03B1\u03C3", L"\u0394\u0386\u03A3"},
               {L"\u0419\u0451", L"\u0438\u0435", L"\u0419\u0401"},
               {L"[@`{_7\u20AC\U0001F600\u4E2D", L"[@`{_7\u20AC\U0001F600\u4E2D",
                L"[@`{_7\u20AC\U0001F600\u4E2D"}};
  for (const auto& c : cases) {
    EXPECT_EQ(folded_text(c.text), c.folded);
    EXPECT_EQ(upper_text(c.text), c.upper);
  }
}

TEST(Fold, IsIdempotentForEveryUnit) {
  for (uint32_t code = 1; code <= 0xFFFF; ++code) {
    const auto c = static_cast<wchar_t>(code);
    const wchar_t folded = folded_letter(c);
    ASSERT_EQ(folded_letter(folded), folded) << code;
    ASSERT_EQ(upper_letter(upper_letter(c)), upper_letter(c)) << code;
  }
}

TEST(TextPattern, FindsByRule) {
  const TextPattern folded(L"\u00E1gua", LetterRule::kFold);
  EXPECT_TRUE(folded.contains(L"Caixa d'AGUA"));
  EXPECT_TRUE(folded.ends(L"Caixa d'A\u0301gua"));
  EXPECT_TRUE(folded.equals(L"a\u0301GUA"));
  EXPECT_FALSE(folded.equals(L"\u00E1guas"));
  const TextPattern upper(L"\u00E1gua", LetterRule::kUpper);
  EXPECT_TRUE(upper.begins(L"\u00C1GUAS"));
  EXPECT_FALSE(upper.contains(L"agua"));
  const TextPattern exact(L"gua", LetterRule::kExact);
  EXPECT_TRUE(exact.ends(L"agua"));
  EXPECT_FALSE(exact.contains(L"GUA"));
  EXPECT_FALSE(exact.contains(L"gu"));
}

TEST(TextPattern, TellsThePlaceInTheTextAsWritten) {
  const auto match = TextPattern(L"cafe", LetterRule::kFold).find(L"um cafe\u0301 forte");
  ASSERT_TRUE(match);
  EXPECT_EQ(match->at, 3u);
  EXPECT_EQ(match->size, 5u);
  EXPECT_EQ(TextPattern(L"", LetterRule::kFold).find(L"x")->size, 0u);
}

// Small alphabets make near misses, block ends and repeated beginnings frequent; an exact
// allocation shows a read beyond the text.
TEST(TextPattern, AgreesWithAPlainSearchOfFoldedTexts) {
  constexpr wchar_t kLetters[] = {L'a', L'A', L'\u00E1', L'b', L'B', L'!', L'\u0431', L'\0'};
  std::mt19937 random(7);
  for (const LetterRule rule : {LetterRule::kExact, LetterRule::kUpper, LetterRule::kFold}) {
    for (int round = 0; round < 60000; ++round) {
      const size_t size = random() % 40;
      // NUL is a letter like others but under kFold, where it could not be told from an accent.
      const size_t alphabet = rule == LetterRule::kFold ? 7 : 8;
      const std::unique_ptr<wchar_t[]> held(new wchar_t[size]);
      for (size_t i = 0; i < size; ++i) held[i] = kLetters[random() % alphabet];
      const std::wstring_view text(held.get(), size);
      std::wstring what;
      for (size_t i = random() % 5; i > 0; --i) what += kLetters[random() % alphabet];

      const TextPattern pattern(what, rule);
      const std::wstring plain = letters_by_rule(text, rule), wanted = letters_by_rule(what, rule);
      const auto match = pattern.find(text);
      ASSERT_EQ(match ? match->at : std::wstring::npos, plain.find(wanted)) << round;
      ASSERT_EQ(pattern.begins(text), plain.starts_with(wanted));
      ASSERT_EQ(pattern.ends(text), plain.ends_with(wanted));
      ASSERT_EQ(pattern.equals(text), plain == wanted);
    }
  }
}

}  // namespace
}  // namespace kestrelon
