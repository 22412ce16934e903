#include "services/kn_number_words.h"

#include <cmath>
#include <cstdint>

#include "base/rounding.h"
#include "base/text.h"

namespace kestrelon {
namespace {

constexpr std::wstring_view kUnits[20] = {
    L"",         L"um",     L"dois",      L"três",      L"quatro",  L"cinco",   L"seis",
    L"sete",     L"oito",   L"nove",      L"dez",       L"onze",    L"doze",    L"treze",
    L"quatorze", L"quinze", L"dezesseis", L"dezessete", L"dezoito", L"dezenove"};
constexpr std::wstring_view kTens[10] = {L"",         L"",          L"vinte",    L"trinta",
                                         L"quarenta", L"cinquenta", L"sessenta", L"setenta",
                                         L"oitenta",  L"noventa"};
constexpr std::wstring_view kHundreds[10] = {
    L"",           L"cento",      L"duzentos",   L"trezentos",  L"quatrocentos",
    L"quinhentos", L"seiscentos", L"setecentos", L"oitocentos", L"novecentos"};

struct Scale {
  int64_t size;
  std::wstring_view singular, plural;
};
constexpr Scale kScales[] = {{1'000'000'000, L"bilhão", L"bilhões"},
                             {1'000'000, L"milhão", L"milhões"},
                             {1'000, L"mil", L"mil"},
                             {1, L"", L""}};

constexpr int64_t kLimitInCents = 9'999'999'999'99;
constexpr std::wstring_view kUnsupported = L"Valor não suportado.";

// Adds a word with one blank before it; empty words leave no trace.
void append(std::wstring& text, std::wstring_view word) {
  word = trim_blanks(word);
  if (word.empty()) return;
  if (!text.empty()) text += L' ';
  text += word;
}

void append_joined(std::wstring& text, std::wstring_view word, bool joined) {
  if (joined) append(text, L"e");
  append(text, word);
}

// 1 to 999.
void append_group(std::wstring& text, int group) {
  const int rest = group % 100;
  if (group == 100) return append(text, L"cem");
  append(text, kHundreds[group / 100]);
  bool joined = group > 100;
  if (rest < 20) {
    if (rest > 0) append_joined(text, kUnits[rest], joined);
    return;
  }
  append_joined(text, kTens[rest / 10], joined);
  if (rest % 10 > 0) append_joined(text, kUnits[rest % 10], true);
}

// The last group that is spoken takes "e" before it when it is below 100 or a round hundred.
void append_number(std::wstring& text, int64_t number, bool plain_thousand) {
  bool first = true;
  for (const Scale& scale : kScales) {
    const int group = static_cast<int>(number / scale.size % 1000);
    if (group == 0) continue;
    const bool last = number % scale.size == 0;
    if (!first && last && (group < 100 || group % 100 == 0)) append(text, L"e");
    const bool silent_one = plain_thousand && group == 1 && scale.size == 1000;
    if (!silent_one) append_group(text, group);
    append(text, group == 1 ? scale.singular : scale.plural);
    first = false;
  }
}

}  // namespace

std::wstring number_to_words(double value, const CurrencyWords& words, bool plain_thousand) {
  constexpr int64_t kMillion = 1'000'000;
  const int64_t total = round_half_even<int64_t>(std::fabs(value) * 100);
  if (!std::isfinite(value) || total > kLimitInCents) return std::wstring(kUnsupported);

  const int64_t units = total / 100;
  const int64_t cents = total % 100;
  std::wstring text;
  if (total == 0) append(text, L"zero");
  append_number(text, units, plain_thousand);
  if (units > 0 || total == 0) {
    const std::wstring_view word = units == 1 ? words.unit_singular : words.unit_plural;
    const bool exact_scale = units > 0 && units % kMillion == 0;
    if (exact_scale && !trim_blanks(word).empty()) append(text, L"de");
    append(text, word);
  }
  if (cents > 0) {
    if (units > 0) append(text, L"e");
    append_number(text, cents, plain_thousand);
    append(text, cents == 1 ? words.cent_singular : words.cent_plural);
  }
  if (value < 0 && total > 0) {
    const bool singular = (cents > 0 ? cents : units) == 1;
    append(text, singular ? L"negativo" : L"negativos");
  }
  return text;
}

}  // namespace kestrelon
