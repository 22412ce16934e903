// The tolerant number, in two locales, and what is shown of it. The input is a text in UTF-16; its
// first line may be a display format.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "grid/fixed_locale_rules.h"
#include "grid/values/cell_value.h"
#include "grid/values/date_text.h"
#include "grid/values/number_format.h"

namespace {

using namespace kestrelon;

void try_in(const LocaleRules& rules, std::wstring_view format, std::wstring_view text) {
  const CellNumber number = read_number(text, rules.facts());
  const double value = number.to_double();
  if (!std::isfinite(value)) abort();
  // Written plainly, the same digits come back.
  const CellNumber again = read_number(plain_number(number, rules.facts()), rules.facts());
  if (again.to_double() != value) abort();
  format_number(number, format, rules.facts());
  display_text(text, GridDataType::Date, L"dd/mm/yyyy", rules);
  if (const auto date = cell_date(text, rules)) {
    const std::wstring written = date_text(*date, rules.facts());
    if (cell_date(written, rules) != date) abort();
  }
  const GridProgress progress = cell_progress(text, 50, rules.facts());
  if (progress.percent < -1 || progress.percent > 100) abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const FixedLocaleRules brazil = brazilian_locale_rules();
  static const FixedLocaleRules america = american_locale_rules();
  std::wstring input;
  for (size_t i = 0; i + 1 < size; i += 2)
    input.push_back(static_cast<wchar_t>(data[i] | data[i + 1] << 8));
  const std::wstring_view all(input);
  const size_t line = all.find(L'\n');
  const bool formatted = line != std::wstring_view::npos;
  const std::wstring_view format = formatted ? all.substr(0, line) : L"#,##0.00";
  const std::wstring_view text = formatted ? all.substr(line + 1) : all;
  for (const LocaleRules* rules : {&brazil, &america}) try_in(*rules, format, text);
  return 0;
}
