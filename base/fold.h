// Letters made alike for searching: upper-casing by Unicode, and one folding of case and accents
// for every search in the product ("agua" finds "Água"). Both go unit by unit and know no locale.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/letter_runs.h"
#include "base/text.h"

namespace kestrelon {
namespace detail {

/// Pages of 256 codes, made from runs while compiling; page 0 of `units` is the one unchanged page
/// for all codes that no run names, held as differences so that it serves each of them.
struct LetterTable {
  static constexpr int kPages = 21;
  uint8_t page[256] = {};
  uint16_t difference[kPages][256] = {};

  template <size_t N>
  consteval explicit LetterTable(const LetterRun (&runs)[N]) {
    int used = 0;
    for (const LetterRun& run : runs)
      for (int i = 0; i < run.count; ++i) {
        const int code = run.first + i * run.step;
        if (page[code >> 8] == 0) page[code >> 8] = static_cast<uint8_t>(++used);
        difference[page[code >> 8]][code & 255] =
            static_cast<uint16_t>(run.target + i * run.target_step - code);
      }
  }

  constexpr wchar_t operator()(wchar_t c) const {
    const uint32_t code = code_unit(c);
    if (code > 0xFFFF) return c;  // beyond the base plane, where wchar_t is wide enough
    return static_cast<wchar_t>(
        static_cast<uint16_t>(code + difference[page[code >> 8]][code & 255]));
  }
};

extern const LetterTable kUpperLetters;
extern const LetterTable kFoldedLetters;

}  // namespace detail

/// How letters are compared: as they are, without case, or without case and accents.
enum class LetterRule : uint8_t { kExact, kUpper, kFold };

/// One-to-one upper-casing; a letter that would become two stays.
inline wchar_t upper_letter(wchar_t c) {
  return detail::kUpperLetters(c);
}

/// The small letter without its accents; 0 for a combining accent, which a search passes over.
inline wchar_t folded_letter(wchar_t c) {
  return detail::kFoldedLetters(c);
}

/// Same length as the text.
std::wstring upper_text(std::wstring_view text);

/// Combining accents are dropped, so the result may be shorter.
std::wstring folded_text(std::wstring_view text);

/// A text in the form that `rule` compares.
std::wstring letters_by_rule(std::wstring_view text, LetterRule rule);

}  // namespace kestrelon
