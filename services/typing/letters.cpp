#include "services/typing/letters.h"

#include <algorithm>
#include <iterator>

#include "base/text.h"
#include "services/typing/letter_ranges.h"

namespace kestrelon {

bool is_letter(wchar_t c) {
  const uint32_t code = code_unit(c);
  if (code < 0x80) return (code | 0x20) >= L'a' && (code | 0x20) <= L'z';
  const auto* const range =
      std::partition_point(std::begin(kLetterRanges), std::end(kLetterRanges),
                           [code](const LetterRange& r) { return r.last < code; });
  return range != std::end(kLetterRanges) && code >= range->first;
}

wchar_t to_capital(wchar_t c) {
  constexpr wchar_t kSmallYDiaeresis = 0xFF, kCapitalYDiaeresis = 0x178;
  constexpr wchar_t kFinalSigma = 0x3C2, kCapitalSigma = 0x3A3;
  if (c == kSmallYDiaeresis) return kCapitalYDiaeresis;
  if (c == kFinalSigma) return kCapitalSigma;
  // The distances between the cases in the blocks that `fold_case` knows.
  for (const int distance : {32, 1, 80}) {
    const auto capital = static_cast<wchar_t>(c - distance);
    if (code_unit(c) > 80 && capital != c && fold_case(capital) == c) return capital;
  }
  return c;
}

wchar_t with_case(wchar_t c, TextCase text_case) {
  if (text_case == TextCase::kUpper) return to_capital(c);
  return text_case == TextCase::kLower ? fold_case(c) : c;
}

std::wstring with_case(std::wstring_view text, TextCase text_case) {
  std::wstring result(text);
  if (text_case == TextCase::kNormal) return result;
  for (wchar_t& c : result) c = with_case(c, text_case);
  return result;
}

}  // namespace kestrelon
