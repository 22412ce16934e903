#include "grid/values/total_line.h"
#include "base/decimal.h"

#include <cmath>

#include "grid/values/number_format.h"

namespace kestrelon {
namespace {

constexpr int kSureDigits = 15;

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
  return format_number(number_of(rounded_to(total, kSureDigits)), format, facts);
}

std::wstring total_cell(const GridSource& source, int column, const TotalRules& rules,
                        std::wstring_view format, const LocaleFacts& facts) {
  std::wstring text = source.total_line(column).caption;
  if (source.column(column).type != GridDataType::Numeric) return text;
  if (!text.empty()) text += L' ';
  return text + total_text(shown_total(source, column, rules), format, facts);
}

}  // namespace kestrelon
