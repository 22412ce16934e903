#include "services/kn_number_words.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace kestrelon {
namespace {

// Spells by gluing a tree of ready words: all numbers below 1000 are laid out first by adding names
// to names, larger ones by recursion from the left. Shares no step with the code under test.
class Speller {
 public:
  Speller() {
    const std::vector<std::wstring> small = {
        L"zero",     L"um",     L"dois",      L"três",      L"quatro",  L"cinco",   L"seis",
        L"sete",     L"oito",   L"nove",      L"dez",       L"onze",    L"doze",    L"treze",
        L"quatorze", L"quinze", L"dezesseis", L"dezessete", L"dezoito", L"dezenove"};
    names_ = small;
    for (const wchar_t* ten : {L"vinte", L"trinta", L"quarenta", L"cinquenta", L"sessenta",
                               L"setenta", L"oitenta", L"noventa"}) {
      names_.push_back(ten);
      for (int unit = 1; unit <= 9; ++unit)
        names_.push_back(std::wstring(ten) + L" e " + small[unit]);
    }
    const std::vector<std::wstring> below_hundred = names_;
    for (const wchar_t* hundred :
         {L"cento", L"duzentos", L"trezentos", L"quatrocentos", L"quinhentos", L"seiscentos",
          L"setecentos", L"oitocentos", L"novecentos"}) {
      const bool first = std::wstring(hundred) == L"cento";
      names_.push_back(first ? L"cem" : hundred);
      for (int rest = 1; rest < 100; ++rest)
        names_.push_back(std::wstring(hundred) + L" e " + below_hundred[rest]);
    }
  }

  std::wstring spell(int64_t number) const {
    if (number < 1000) return names_[static_cast<size_t>(number)];
    if (number < 1000000)
      return join(names_[number / 1000] + L" mil", number % 1000, number % 1000);
    if (number < 1000000000)
      return join(counted(number / 1000000, L"milhão", L"milhões"), number % 1000000,
                  group_after(number % 1000000, 1000));
    return join(counted(number / 1000000000, L"bilhão", L"bilhões"), number % 1000000000,
                group_after(number % 1000000000, 1000000));
  }

 private:
  std::wstring counted(int64_t count, const wchar_t* one, const wchar_t* many) const {
    return names_[static_cast<size_t>(count)] + L" " + (count == 1 ? one : many);
  }
  // The group that follows if it is the last one, otherwise a number that takes no joint.
  static int64_t group_after(int64_t rest, int64_t scale) {
    if (rest >= scale && rest % scale == 0 && rest / scale < 1000) return rest / scale;
    if (rest < 1000) return rest;
    if (rest < scale && rest % 1000 == 0) return rest / 1000;
    return 999;
  }
  std::wstring join(const std::wstring& head, int64_t rest, int64_t last) const {
    if (rest == 0) return head;
    return head + (last < 100 || last % 100 == 0 ? L" e " : L" ") + spell(rest);
  }

  std::vector<std::wstring> names_;
};

std::wstring with_currency(const Speller& speller, int64_t number) {
  const std::wstring words = speller.spell(number);
  if (number == 1) return words + L" real";
  return words + (number > 0 && number % 1000000 == 0 ? L" de reais" : L" reais");
}

TEST(NumberToWords, AgreesWithAnotherSpellerUpToTwoMillion) {
  const Speller speller;
  for (int64_t number = 0; number < 2000000; ++number)
    ASSERT_EQ(number_to_words(static_cast<double>(number)), with_currency(speller, number))
        << number;
}

TEST(NumberToWords, AgreesAtAllJointsOfTheScales) {
  const Speller speller;
  const int64_t groups[] = {0, 1, 2, 21, 99, 100, 101, 200, 999};
  for (const int64_t billions : {0, 1, 2, 9})
    for (const int64_t millions : groups)
      for (const int64_t thousands : groups)
        for (const int64_t units : groups) {
          const int64_t number = ((billions * 1000 + millions) * 1000 + thousands) * 1000 + units;
          ASSERT_EQ(number_to_words(static_cast<double>(number)), with_currency(speller, number))
              << number;
        }
}

TEST(NumberToWords, SpeaksAsTheRulesShowIt) {
  const struct {
    double value;
    const wchar_t* words;
  } cases[] = {{0, L"zero reais"},
               {1, L"um real"},
               {1001, L"um mil e um reais"},
               {1100, L"um mil e cem reais"},
               {1230, L"um mil duzentos e trinta reais"},
               {1000000, L"um milhão de reais"},
               {1000001, L"um milhão e um reais"},
               {2000000000, L"dois bilhões de reais"},
               {1001000000, L"um bilhão e um milhão de reais"},
               {1000100000, L"um bilhão e cem mil reais"},
               {9999999999.0,
                L"nove bilhões novecentos e noventa e nove milhões novecentos e noventa e nove "
                L"mil novecentos e noventa e nove reais"}};
  for (const auto& c : cases) EXPECT_EQ(number_to_words(c.value), c.words) << c.value;
}

TEST(NumberToWords, SpeaksCentsSignsAndLimits) {
  const struct {
    double value;
    const wchar_t* words;
  } cases[] = {{0.01, L"um centavo"},
               {0.10, L"dez centavos"},
               {1.01, L"um real e um centavo"},
               {2.35, L"dois reais e trinta e cinco centavos"},
               {1000000.5, L"um milhão de reais e cinquenta centavos"},
               {-1, L"um real negativo"},
               {-2, L"dois reais negativos"},
               {-2.01, L"dois reais e um centavo negativo"},
               {-1.02, L"um real e dois centavos negativos"},
               {-0.01, L"um centavo negativo"},
               {-1000001, L"um milhão e um reais negativos"},
               {-0.001, L"zero reais"},
               {-0.0, L"zero reais"},
               // Halves of a cent as they are written, whatever their nearest binary number is.
               {0.005, L"um centavo"},
               {0.125, L"treze centavos"},
               {1.015, L"um real e dois centavos"},
               {-1.005, L"um real e um centavo negativo"},
               {1.0149999999, L"um real e um centavo"},
               {2.675, L"dois reais e sessenta e oito centavos"},
               {0.999, L"um real"},
               {0.995, L"um real"},
               {9999999999.994,
                L"nove bilhões novecentos e noventa e nove milhões novecentos e noventa e "
                L"nove mil novecentos e noventa e nove reais e noventa e nove centavos"},
               {9999999999.995, L"Valor não suportado."},
               {9999999999.999, L"Valor não suportado."},
               {10000000000.0, L"Valor não suportado."},
               {-10000000000.0, L"Valor não suportado."},
               {1e300, L"Valor não suportado."},
               {std::numeric_limits<double>::infinity(), L"Valor não suportado."},
               {std::nan(""), L"Valor não suportado."}};
  for (const auto& c : cases) EXPECT_EQ(number_to_words(c.value), c.words) << c.value;
}

TEST(NumberToWords, TakesAnyCurrencyWordsWithoutStrayBlanks) {
  const CurrencyWords dollars{L"dólar", L"dólares", L"cent", L"cents"};
  EXPECT_EQ(number_to_words(1.02, dollars), L"um dólar e dois cents");
  const CurrencyWords none{L"", L" ", L"", L""};
  EXPECT_EQ(number_to_words(0, none), L"zero");
  EXPECT_EQ(number_to_words(1000000, none), L"um milhão");
  EXPECT_EQ(number_to_words(-1.5, none), L"um e cinquenta negativos");
  EXPECT_EQ(number_to_words(3, {L" metro ", L" metros ", L"", L""}), L"três metros");
}

TEST(NumberToWords, FeminineWordsReachUnitsAndThousandsOnly) {
  const CurrencyWords pounds{L"libra", L"libras", L"centavo", L"centavos"};
  const auto words = [&](double value) {
    return number_to_words(value, pounds, {.feminine = true});
  };
  EXPECT_EQ(words(1), L"uma libra");
  EXPECT_EQ(words(2.02), L"duas libras e dois centavos");
  EXPECT_EQ(words(221), L"duzentas e vinte e uma libras");
  EXPECT_EQ(words(100), L"cem libras");
  EXPECT_EQ(words(112), L"cento e doze libras");
  EXPECT_EQ(words(2002), L"duas mil e duas libras");
  EXPECT_EQ(words(541000), L"quinhentas e quarenta e uma mil libras");
  EXPECT_EQ(words(2002000), L"dois milhões e duas mil libras");
  EXPECT_EQ(words(1e9), L"um bilhão de libras");
  EXPECT_EQ(words(-2), L"duas libras negativas");
  EXPECT_EQ(words(-1), L"uma libra negativa");
  EXPECT_EQ(words(-1.02), L"uma libra e dois centavos negativos");
  EXPECT_EQ(number_to_words(21, {L"página", L"páginas", L"", L""}, {.feminine = true}),
            L"vinte e uma páginas");
}

TEST(NumberToWords, DropsTheOneBeforeThousandOnRequest) {
  EXPECT_EQ(number_to_words(1000, {}, {.plain_thousand = true}), L"mil reais");
  EXPECT_EQ(number_to_words(1001, {}, {.plain_thousand = true}), L"mil e um reais");
  EXPECT_EQ(number_to_words(1001000, {}, {.plain_thousand = true}), L"um milhão e mil reais");
  EXPECT_EQ(number_to_words(21000, {}, {.plain_thousand = true}), L"vinte e um mil reais");
  EXPECT_EQ(number_to_words(1, {}, {.plain_thousand = true}), L"um real");
}

}  // namespace
}  // namespace kestrelon
