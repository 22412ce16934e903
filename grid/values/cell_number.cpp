#include "grid/values/cell_number.h"
#include "base/exact_digits.h"

#include <cmath>
#include <limits>
#include <optional>

#include "base/fold.h"
#include "base/text.h"
#include "grid/values/number_reader.h"

namespace kestrelon {
namespace {

// Powers that a Double holds exactly: a division by one of them rounds once.
constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                              1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                              1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int32_t kLastPower = 22;
constexpr uint64_t kExactWhole = uint64_t{1} << 53;

bool is_word(std::wstring_view text, std::wstring_view word) {
  return text.size() == word.size() && upper_text(text) == upper_text(word);
}

// `digits` times 10 to the power of -scale.
double nearest(const std::string& digits, int32_t scale) {
  DecimalDigits exact{digits, static_cast<int>(digits.size()) - scale};
  exact.trim();
  return nearest_double(exact);
}

// Most numbers are a few figures and at most one mark; filling a grid reads every cell.
std::optional<double> figures_only(std::wstring_view text, wchar_t decimal_mark) {
  constexpr size_t kFigures = 16;  // with the mark; fifteen digits fit a Double
  if (text.empty() || text.size() > kFigures) return std::nullopt;
  uint64_t digits = 0;
  size_t places = 0, count = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (is_digit(text[i])) {
      digits = digits * 10 + static_cast<uint64_t>(text[i] - L'0');
      ++count;
    } else if (text[i] == decimal_mark && count == i) {
      places = text.size() - i - 1;
    } else {
      return std::nullopt;
    }
  }
  if (count == 0 || digits > kExactWhole) return std::nullopt;
  return static_cast<double>(digits) / kPowers[places];
}

}  // namespace

std::string CellNumber::digits() const {
  if (!long_digits_.empty()) return long_digits_;
  return head_ == 0 ? std::string() : std::to_string(head_);
}

double CellNumber::to_double() const {
  double value = 0;
  if (fits() && head_ <= kExactWhole && scale_ <= kLastPower)
    value = static_cast<double>(head_) / kPowers[scale_];
  else if (!is_zero())
    value = nearest(digits(), scale_);
  return negative_ && value != 0 ? -value : value;
}

int boolean_word(std::wstring_view text, const LocaleFacts& facts) {
  text = trim_blanks(text);
  if (text.empty()) return -1;
  if (is_word(text, L"True") || is_word(text, facts.true_word)) return 1;
  if (is_word(text, L"False") || is_word(text, facts.false_word)) return 0;
  return -1;
}

CellNumber read_number(std::wstring_view text, const LocaleFacts& facts) {
  text = trim_blanks(text);
  if (text.empty()) return {};
  if (text.size() > 1 && text[0] == L'&') {
    const wchar_t kind = upper_letter(text[1]);
    if (kind == L'H' || kind == L'O') {
      NumberReader reader(text.substr(2), facts);
      return reader.read_based(kind == L'H' ? 16 : 8) ? std::move(reader.number()) : CellNumber();
    }
  }
  NumberReader reader(text, facts);
  if (reader.read_decimal()) {
    const CellNumber& number = reader.number();
    if (number.fits() || std::isfinite(number.to_double())) return std::move(reader.number());
    return {};
  }
  if (!reader.kept_any() && boolean_word(text, facts) == 1) return {true, 1};
  return {};
}

double cell_number(std::wstring_view text, const LocaleFacts& facts) {
  if (const auto number = figures_only(text, facts.decimal_mark)) return *number;
  return read_number(text, facts).to_double();
}

}  // namespace kestrelon
