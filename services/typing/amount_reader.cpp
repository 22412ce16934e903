// What a person means by a number that was pasted or set.
#include <algorithm>
#include <string>

#include "base/text.h"
#include "services/typing/amount.h"
#include "services/typing/letters.h"

namespace kestrelon {
namespace {

constexpr wchar_t kNoBreakSpace = 0xA0, kNarrowNoBreakSpace = 0x202F, kThinSpace = 0x2009;
constexpr wchar_t kMinusSign = 0x2212, kHyphen = 0x2010, kNoBreakHyphen = 0x2011, kEnDash = 0x2013;
constexpr wchar_t kEuro = 0x20AC, kPound = 0xA3, kYen = 0xA5;

bool is_blank(wchar_t c) {
  return c == L' ' || c == L'\t' || c == L'\r' || c == L'\n' || c == kNoBreakSpace ||
         c == kNarrowNoBreakSpace || c == kThinSpace;
}

bool is_minus(wchar_t c) {
  return c == L'-' || c == kMinusSign || c == kHyphen || c == kNoBreakHyphen || c == kEnDash;
}

bool is_currency_symbol(wchar_t c) {
  return c == L'$' || c == kEuro || c == kPound || c == kYen;
}

bool is_mark(wchar_t c, const AmountMarks& marks) {
  return c == L'.' || c == L',' || c == L'\'' || c == marks.decimal || (c != 0 && c == marks.group);
}

// What stands around the digits: signs, brackets, a currency word and blanks.
struct Wrapping {
  int minuses = 0, opened = 0, closed = 0, letters = 0, capitals = 0, symbols = 0;

  // False for a character that belongs to no number.
  bool take(wchar_t c) {
    minuses += is_minus(c);
    opened += c == L'(';
    closed += c == L')';
    letters += is_letter(c);
    capitals += c >= L'A' && c <= L'Z';
    symbols += is_currency_symbol(c);
    return is_minus(c) || c == L'(' || c == L')' || is_letter(c) || is_currency_symbol(c) ||
           is_blank(c) || c == L'+';
  }

  // "R$", "US$", "BRL", but not "maçãs" or "kg".
  bool words_are_currency() const {
    constexpr int kCodeLength = 3;
    if (letters == 0) return symbols <= 1;
    return letters <= kCodeLength && (symbols == 1 || (symbols == 0 && capitals == kCodeLength));
  }
  bool is_sensible() const {
    return opened == closed && minuses + opened <= 1 && words_are_currency();
  }
};

// Where the decimal mark stands in a text of digits and marks; npos for none. False for a text
// whose marks make no number.
bool find_decimal(std::wstring_view text, const AmountMarks& marks, size_t& position) {
  position = std::wstring_view::npos;
  const auto mark_of = [&marks](wchar_t c) { return is_mark(c, marks); };
  const auto found = std::find_if(text.rbegin(), text.rend(), mark_of);
  if (found == text.rend()) return true;
  const size_t last = static_cast<size_t>(text.rend() - found) - 1;
  const auto same = std::count(text.begin(), text.end(), text[last]);
  const auto all = std::count_if(text.begin(), text.end(), mark_of);
  if (same > 1) return all == same;
  const bool one_group = text.size() - last - 1 == 3 && last >= 1 && last <= 3 && text[0] != L'0';
  if (all > 1 || text[last] == marks.decimal || !one_group) position = last;
  return true;
}

}  // namespace

std::optional<Amount> read_amount(std::wstring_view text, const AmountMarks& marks) {
  Wrapping wrapping;
  const auto in_number = [&marks](wchar_t c) { return is_digit(c) || is_mark(c, marks); };
  for (; !text.empty() && !in_number(text.front()); text.remove_prefix(1))
    if (!wrapping.take(text.front())) return {};
  for (; !text.empty() && !in_number(text.back()); text.remove_suffix(1))
    if (!wrapping.take(text.back())) return {};
  if (!wrapping.is_sensible()) return {};

  std::wstring bare(text);
  std::erase_if(bare, is_blank);  // groups parted by blanks
  if (!std::all_of(bare.begin(), bare.end(), in_number)) return {};
  size_t mark = 0;
  if (std::none_of(bare.begin(), bare.end(), is_digit) || !find_decimal(bare, marks, mark))
    return {};

  Amount amount;
  for (size_t i = 0; i < bare.size(); ++i)
    if (is_digit(bare[i])) (i > mark ? amount.places : amount.whole) += bare[i];
  amount.whole.erase(0, std::min(amount.whole.find_first_not_of(L'0'), amount.whole.size()));
  amount.negative = wrapping.minuses + wrapping.opened > 0;
  return amount;
}

}  // namespace kestrelon
