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

/// `value`, rounded to cents with halves to even, spelled out: "um mil duzentos e trinta reais e
/// dez centavos". Above 9,999,999,999.99 in either direction, and for what is no number, the answer
/// is "Valor não suportado.". A negative amount ends in "negativo" or "negativos". With
/// `plain_thousand` a thousand is "mil" instead of "um mil".
std::wstring number_to_words(double value, const CurrencyWords& words = {},
                             bool plain_thousand = false);

}  // namespace kestrelon
