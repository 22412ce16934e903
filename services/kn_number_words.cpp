#include "services/kn_number_words.h"

#include <cmath>
#include <cstdint>

#include "base/decimal.h"
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

constexpr std::wstring_view kFeminineOne = L"uma", kFeminineTwo = L"duas";

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

std::wstring_view unit_word(int number, bool feminine) {
  if (feminine && number == 1) return kFeminineOne;
  return feminine && number == 2 ? kFeminineTwo : kUnits[number];
}

// 1 to 999.
void append_group(std::wstring& text, int group, bool feminine) {
  const int rest = group % 100;
  if (group == 100) return append(text, L"cem");
  std::wstring hundred(kHundreds[group / 100]);
  if (feminine && group >= 200) hundred[hundred.size() - 2] = L'a';  // "duzentas"
  append(text, hundred);
  bool joined = group > 100;
  if (rest < 20) {
    if (rest > 0) append_joined(text, unit_word(rest, feminine), joined);
    return;
  }
  append_joined(text, kTens[rest / 10], joined);
  if (rest % 10 > 0) append_joined(text, unit_word(rest % 10, feminine), true);
}

// The last group that is spoken takes "e" before it when it is below 100 or a round hundred.
// Thousands go with the unit in gender; millions are nouns of their own.
void append_number(std::wstring& text, int64_t number, const WordOptions& options) {
  bool first = true;
  for (const Scale& scale : kScales) {
    const int group = static_cast<int>(number / scale.size % 1000);
    if (group == 0) continue;
    const bool last = number % scale.size == 0;
    if (!first && last && (group < 100 || group % 100 == 0)) append(text, L"e");
    const bool silent_one = options.plain_thousand && group == 1 && scale.size == 1000;
    if (!silent_one) append_group(text, group, options.feminine && scale.size <= 1000);
    append(text, group == 1 ? scale.singular : scale.plural);
    first = false;
  }
}

// A text of digits with a mark before the last two, read as cents; what is too long for an amount
// stays too large.
int64_t cents_of(const std::wstring& digits) {
  constexpr size_t kMostDigits = 16;
  if (digits.empty() || digits.size() > kMostDigits) return kLimitInCents + 1;
  int64_t cents = 0;
  for (const wchar_t c : digits)
    if (is_digit(c)) cents = cents * 10 + (c - L'0');
  return cents;
}

std::wstring_view negative_word(bool singular, bool feminine) {
  if (feminine) return singular ? L"negativa" : L"negativas";
  return singular ? L"negativo" : L"negativos";
}

}  // namespace

std::wstring number_to_words(double value, const CurrencyWords& words, const WordOptions& options) {
  constexpr int64_t kMillion = 1'000'000;
  const int64_t total = cents_of(format_fixed(std::fabs(value), 2));
  if (total > kLimitInCents) return std::wstring(kUnsupported);

  const int64_t units = total / 100;
  const int64_t cents = total % 100;
  std::wstring text;
  if (total == 0) append(text, L"zero");
  append_number(text, units, options);
  if (units > 0 || total == 0) {
    const std::wstring_view word = units == 1 ? words.unit_singular : words.unit_plural;
    const bool exact_scale = units > 0 && units % kMillion == 0;
    if (exact_scale && !trim_blanks(word).empty()) append(text, L"de");
    append(text, word);
  }
  if (cents > 0) {
    if (units > 0) append(text, L"e");
    append_number(text, cents, {.plain_thousand = options.plain_thousand});
    append(text, cents == 1 ? words.cent_singular : words.cent_plural);
  }
  if (value < 0 && total > 0) {
    const bool singular = (cents > 0 ? cents : units) == 1;
    append(text, negative_word(singular, options.feminine && cents == 0));
  }
  return text;
}

}  // namespace kestrelon
