#include "base/text_pattern.h"

#include <algorithm>
#include <bit>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace kestrelon {
namespace {

constexpr size_t kNone = std::wstring_view::npos;

#ifdef __SSE2__

constexpr size_t kLanes = 16 / sizeof(wchar_t);

__m128i in_all_lanes(uint32_t unit) {
  return sizeof(wchar_t) == 2 ? _mm_set1_epi16(static_cast<short>(unit))
                              : _mm_set1_epi32(static_cast<int>(unit));
}

__m128i equal_lanes(__m128i a, __m128i b) {
  return sizeof(wchar_t) == 2 ? _mm_cmpeq_epi16(a, b) : _mm_cmpeq_epi32(a, b);
}

struct LaneProbe {
  __m128i caseless, wanted, beyond;

  // All bits set in the lanes that cannot hold the letter.
  __m128i misses(const wchar_t* units) const {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(units));
    const __m128i hit = equal_lanes(_mm_or_si128(block, caseless), wanted);
    const __m128i plain = equal_lanes(_mm_and_si128(block, beyond), _mm_setzero_si128());
    return _mm_andnot_si128(hit, plain);
  }
};

#endif

}  // namespace

TextPattern::TextPattern(std::wstring_view pattern, LetterRule rule)
    : letters_(letters_by_rule(pattern, rule)), rule_(rule) {
  if (letters_.empty()) return;
  probes_[0] = probe_for(letters_[0]);
  probes_[1] = probe_for(letters_[letters_.size() > 1 ? 1 : 0]);
}

TextPattern::Probe TextPattern::probe_for(wchar_t letter) const {
  constexpr uint32_t kCaseBit = 0x20, kBeyondAscii = ~uint32_t{0x7F};
  if (rule_ == LetterRule::kExact) return {0, code_unit(letter), 0};
  // A letter outside ASCII is looked for among the units outside ASCII; `wanted` 0 meets none.
  const uint32_t wanted = code_unit(letter) < 0x80 ? code_unit(letter) | kCaseBit : 0;
  return {kCaseBit, wanted, kBeyondAscii};
}

wchar_t TextPattern::letter_of(wchar_t c) const {
  if (rule_ == LetterRule::kFold) return folded_letter(c);
  return rule_ == LetterRule::kUpper ? upper_letter(c) : c;
}

// The end of the pattern laid over the text at `at`, kNone where they differ.
size_t TextPattern::match_at(std::wstring_view text, size_t at) const {
  for (const wchar_t wanted : letters_) {
    wchar_t letter = 0;
    do {
      if (at == text.size()) return kNone;
      letter = letter_of(text[at++]);
    } while (letter == 0 && rule_ == LetterRule::kFold);
    if (letter != wanted) return kNone;
  }
  while (rule_ == LetterRule::kFold && at < text.size() && folded_letter(text[at]) == 0) ++at;
  return at;
}

bool TextPattern::equals(std::wstring_view text) const {
  return match_at(text, 0) == text.size();
}

bool TextPattern::begins(std::wstring_view text) const {
  return match_at(text, 0) != kNone;
}

bool TextPattern::ends(std::wstring_view text) const {
  size_t at = text.size();
  for (size_t left = letters_.size(); left > 0;) {
    if (at == 0) return false;
    const wchar_t letter = letter_of(text[--at]);
    if (letter == 0 && rule_ == LetterRule::kFold) continue;
    if (letter != letters_[--left]) return false;
  }
  return true;
}

std::optional<TextMatch> TextPattern::find(std::wstring_view text) const {
  if (letters_.empty()) return TextMatch{};
  if (text.size() < letters_.size()) return std::nullopt;
  return scan(text);
}

std::optional<TextMatch> TextPattern::test(std::wstring_view text, size_t at) const {
  if (letter_of(text[at]) != letters_[0]) return std::nullopt;
  const size_t end = match_at(text, at);
  if (end == kNone) return std::nullopt;
  return TextMatch{at, end - at};
}

#ifdef __SSE2__

std::optional<TextMatch> TextPattern::scan(std::wstring_view text) const {
  const auto lanes = [](const Probe& probe) {
    return LaneProbe{in_all_lanes(probe.caseless), in_all_lanes(probe.wanted),
                     in_all_lanes(probe.beyond)};
  };
  const LaneProbe first = lanes(probes_[0]), second = lanes(probes_[1]);
  const size_t step = letters_.size() > 1 ? 1 : 0;  // from the first tested letter to the second
  const size_t starts = text.size() - step;         // places where the pattern may begin

  wchar_t padded[kLanes + 1] = {};
  const wchar_t* units = text.data();
  if (starts < kLanes) units = std::copy(text.begin(), text.end(), padded) - text.size();
  for (size_t at = 0; at < starts; at += kLanes) {
    // The last block overlaps the one before it, so that nothing is read past the text.
    const size_t block = std::min(at, starts < kLanes ? 0 : starts - kLanes);
    const __m128i misses =
        _mm_or_si128(first.misses(units + block), second.misses(units + block + step));
    auto candidates = static_cast<uint32_t>(_mm_movemask_epi8(misses)) ^ 0xFFFFu;
    while (candidates != 0) {
      const size_t lane = static_cast<size_t>(std::countr_zero(candidates)) / sizeof(wchar_t);
      if (block + lane >= starts) break;
      if (const auto match = test(text, block + lane)) return match;
      candidates &= ~uint32_t{0} << ((lane + 1) * sizeof(wchar_t));
    }
  }
  return std::nullopt;
}

#else

std::optional<TextMatch> TextPattern::scan(std::wstring_view text) const {
  for (size_t at = 0; at + letters_.size() <= text.size(); ++at)
    if (const auto match = test(text, at)) return match;
  return std::nullopt;
}

#endif

}  // namespace kestrelon
