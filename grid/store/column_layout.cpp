#include "grid/store/column_layout.h"

#include <algorithm>
#include <optional>

#include "base/file_bytes.h"
#include "base/text.h"
#include "grid/store/header_format.h"

namespace kestrelon {
namespace {

constexpr wchar_t kBadLine[] = L"O arquivo de colunas tem uma linha inválida.";
constexpr wchar_t kBadOrder[] = L"A ordem gravada não corresponde às colunas da grade.";
constexpr wchar_t kUnreadable[] = L"Não foi possível ler o arquivo.";
constexpr wchar_t kUnwritable[] = L"Não foi possível gravar o arquivo.";
constexpr uint64_t kLargestFile = 1 << 20;

// Calls `take(key, value text)` for each line; false at the first that is not "number, tab, text"
// or that is not taken.
template <class Take>
bool for_each_line(std::wstring_view text, Take&& take) {
  while (!text.empty()) {
    const size_t end = std::min(text.find_first_of(L"\r\n"), text.size());
    const std::wstring_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (trim_blanks(line).empty()) continue;
    const size_t tab = line.find(L'\t');
    if (tab == std::wstring_view::npos || tab == 0 || tab > 6 ||
        !is_all_digits(line.substr(0, tab)))
      return false;
    int key = 0;
    for (const wchar_t c : line.substr(0, tab)) key = key * 10 + (c - L'0');
    if (!take(key, line.substr(tab + 1))) return false;
  }
  return true;
}

std::optional<std::wstring> layout_text(const std::wstring& name) {
  const auto bytes = read_file(name, kLargestFile);
  if (!bytes) return std::nullopt;
  return from_ansi(std::string(bytes->begin(), bytes->end()));
}

}  // namespace

std::wstring column_widths_text(const GridStore& store, wchar_t decimal_mark) {
  std::wstring text;
  for (int i = 0; i < store.column_count(); ++i)
    text += std::to_wstring(i) + L'\t' + single_text(store.column(i).width, decimal_mark) + L"\r\n";
  return text;
}

std::wstring take_column_widths(GridStore& store, std::wstring_view text) {
  const bool whole = for_each_line(text, [&](int column, std::wstring_view value) {
    const auto width = parse_plain_number(value);
    if (!width || *width < 0) return false;
    if (column < store.column_count()) store.set_column_width(column, *width);
    return true;
  });
  return whole ? L"" : kBadLine;
}

std::wstring column_order_text(const GridStore& store) {
  std::wstring text;
  for (int i = 0; i < store.column_count(); ++i)
    text += std::to_wstring(i) + L'\t' + std::to_wstring(store.column_at(i)) + L"\r\n";
  return text;
}

std::wstring take_column_order(GridStore& store, std::wstring_view text) {
  std::vector<int> order(static_cast<size_t>(store.column_count()), -1);
  const bool whole = for_each_line(text, [&](int position, std::wstring_view value) {
    const auto column = parse_plain_number(value);
    if (!column || position >= store.column_count() || order[static_cast<size_t>(position)] != -1)
      return false;
    if (!(*column >= 0 && *column < store.column_count())) return false;
    order[static_cast<size_t>(position)] = static_cast<int>(*column);
    return true;
  });
  return whole && store.set_column_order(order) ? L"" : kBadOrder;
}

std::wstring save_layout_file(const std::wstring& name, std::wstring_view text) {
  const std::string bytes = to_ansi(text);
  return write_file(name, std::vector<uint8_t>(bytes.begin(), bytes.end())) ? L"" : kUnwritable;
}

std::wstring load_column_widths_file(GridStore& store, const std::wstring& name) {
  const auto text = layout_text(name);
  return text ? take_column_widths(store, *text) : kUnreadable;
}

std::wstring load_column_order_file(GridStore& store, const std::wstring& name) {
  const auto text = layout_text(name);
  return text ? take_column_order(store, *text) : kUnreadable;
}

}  // namespace kestrelon
