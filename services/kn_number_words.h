// Amounts of money in Portuguese words.
#pragma once

#include <string>
#include <string_view>

namespace kestrelon {

/// The words for the two units of a currency. An empty word is left out.
struct CurrencyWords {
  std::wstring_view unit_singular = L"real";
  std::wstring_view unit_plural = L"reais";
  std::wstring_view cent_singular = L"centavo";
  std::wstring_view cent_plural = L"centavos";
};

struct WordOptions {
  bool plain_thousand = false;  ///< "mil" instead of "um mil"
  bool feminine = false;  ///< the unit is of that gender ("duas libras"); cents stay as they are
};

/// `value`, rounded to cents in decimals with halves away from zero, spelled out: "um mil duzentos
/// e trinta reais e dez centavos". Above 9,999,999,999.99 in either direction, and for what is no
/// number, the answer is "Valor não suportado.". A negative amount ends in "negativo" or
/// "negativos", or in their feminine forms where they follow a feminine unit.
std::wstring number_to_words(double value, const CurrencyWords& words = {},
                             const WordOptions& options = {});

}  // namespace kestrelon
