#include "services/kn_text.h"

#include <cmath>
#include <iterator>

#include "base/decimal.h"
#include "base/text.h"

namespace kestrelon {
namespace {

constexpr std::wstring_view kAccented = L"ÀÁÂÃÄÅÇÈÉÊËÌÍÎÏÒÓÔÕÖÙÚÛÜàáâãäåçèéêëìíîïòóôõöùúûü";
constexpr std::wstring_view kPlain = L"AAAAAACEEEEIIIIOOOOOUUUUaaaaaaceeeeiiiiooooouuuu";
static_assert(kAccented.size() == kPlain.size());

constexpr double kLargestShort = 999;  // of one unit before the next is taken

// Three figures: the whole part alone above 99, one place down to 9, two below.
std::wstring short_number(double value, wchar_t mark) {
  if (value > 99) return format_fixed(std::floor(value), 0, mark);
  return format_fixed(value, value < 9 ? 2 : 1, mark);
}

}  // namespace

std::wstring keep_digits(std::wstring_view text) {
  std::wstring digits(text);
  std::erase_if(digits, [](wchar_t c) { return !is_digit(c); });
  return digits;
}

std::wstring fill_mask(std::wstring_view text, std::wstring_view mask) {
  std::wstring filled;
  size_t next = 0;
  for (const wchar_t c : mask) {
    if (c != L'@')
      filled += c;
    else if (next < text.size())
      filled += text[next++];
  }
  return filled;
}

std::wstring remove_accents(std::wstring_view text) {
  std::wstring plain(text);
  for (wchar_t& c : plain) {
    const size_t at = c < L'À' ? std::wstring_view::npos : kAccented.find(c);
    if (at != std::wstring_view::npos) c = kPlain[at];
  }
  return plain;
}

std::wstring text_between(std::wstring_view text, std::wstring_view begin, std::wstring_view end) {
  const std::wstring folded = fold_case(text);
  const size_t found = folded.find(fold_case(begin));
  if (found == std::wstring::npos) return {};
  const size_t from = found + begin.size();
  const size_t to = folded.find(fold_case(end), from);
  return to == std::wstring::npos ? std::wstring() : std::wstring(text.substr(from, to - from));
}

std::wstring format_bytes(double bytes, wchar_t mark) {
  constexpr std::wstring_view kSuffixes[] = {L" Kb", L" Mb", L" Gb", L" Tb",
                                             L" Pb", L" Eb", L" Zb", L" Yb"};
  if (!std::isfinite(bytes)) return {};
  if (bytes <= kLargestShort) return format_fixed(bytes, 0, mark) + L" Bytes";
  double unit = 1024;
  size_t suffix = 0;
  while (bytes > unit * kLargestShort && suffix + 1 < std::size(kSuffixes)) {
    unit *= 1024;
    ++suffix;
  }
  return short_number(bytes / unit, mark) + std::wstring(kSuffixes[suffix]);
}

}  // namespace kestrelon
