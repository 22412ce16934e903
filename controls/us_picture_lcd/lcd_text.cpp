#include "controls/us_picture_lcd/lcd_text.h"

#include <algorithm>

#include "grid/values/number_format.h"

namespace kestrelon {
namespace {

constexpr int kMostDecimals = 15;

}  // namespace

std::wstring lcd_number(const CellNumber& number, int decimals, std::wstring_view format) {
  const LocaleFacts brazil;
  if (!format.empty()) return format_number(number, format, brazil);
  std::wstring plain = L"#,##0";
  const int places = std::clamp(decimals, 0, kMostDecimals);
  if (places > 0) plain += L"." + std::wstring(static_cast<size_t>(places), L'0');
  return format_number(number, plain, brazil);
}

std::wstring lcd_fitted(std::wstring_view text, int places, bool zeros) {
  const auto taken =
      static_cast<int>(text.size()) - static_cast<int>(std::ranges::count_if(text, is_lcd_mark));
  const int wanted = std::clamp(places, 0, kMostPlaces);
  if (taken > (wanted > 0 ? wanted : kMostPlaces))
    return std::wstring(static_cast<size_t>(wanted > 0 ? wanted : kMostPlaces), L'-');
  if (taken >= wanted) return std::wstring(text);
  const auto missing = static_cast<size_t>(wanted - taken);
  const size_t sign = !text.empty() && text[0] == L'-' ? 1 : 0;
  const bool number = text.size() > sign && text[sign] >= L'0' && text[sign] <= L'9';
  std::wstring out(text);
  return zeros && number ? out.insert(sign, missing, L'0') : out.insert(0, missing, L' ');
}

}  // namespace kestrelon
