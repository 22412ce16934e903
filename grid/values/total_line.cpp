#include "grid/values/total_line.h"

#include <charconv>
#include <cmath>

#include "grid/values/number_format.h"

namespace kestrelon {
namespace {

double to_fifteen_digits(double value) {
  constexpr int kDigitsBehindTheFirst = 14;
  char buffer[40];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value,
                                 std::chars_format::scientific, kDigitsBehindTheFirst);
  double rounded = 0;
  std::from_chars(buffer, end.ptr, rounded);
  return rounded;
}

}  // namespace

double shown_total(const GridSource& source, int column, const TotalRules& rules) {
  const double total = source.total(column, rules.visible_only);
  if (!source.total_line(column).average) return total;
  const int rows = rules.visible_only ? source.visible_count() : source.row_count();
  const int divisor = rules.exact ? rows : rows - 1;
  return divisor > 0 ? total / divisor : total;
}

std::wstring total_text(double total, std::wstring_view format, const LocaleFacts& facts) {
  if (!std::isfinite(total)) return {};
  return format_number(number_of(to_fifteen_digits(total)), format, facts);
}

std::wstring total_cell(const GridSource& source, int column, const TotalRules& rules,
                        std::wstring_view format, const LocaleFacts& facts) {
  std::wstring text = source.total_line(column).caption;
  if (source.column(column).type != GridDataType::Numeric) return text;
  if (!text.empty()) text += L' ';
  return text + total_text(shown_total(source, column, rules), format, facts);
}

}  // namespace kestrelon
