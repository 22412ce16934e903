#include "grid/store/header_format.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/decimal.h"
#include "base/exact_digits.h"
#include "base/rounding.h"
#include "base/text.h"

namespace kestrelon {
namespace {

constexpr size_t kMostColumns = 32767;
constexpr std::wstring_view kSpecial = L";|\"";

enum Field : size_t {
  Heading,
  Width,
  Alignment,
  DataType,
  Format,
  InputFilter,
  ImageAlignment,
  WordWrap,
  Index,
  Visible,
  Locked,
};

using Fields = std::vector<std::wstring>;

// What stands between the quotes at `at`, and `at` behind the closing one; nothing without one.
std::optional<std::wstring> quoted(std::wstring_view text, size_t& at) {
  std::wstring inside;
  for (size_t i = at + 1; i < text.size(); ++i) {
    if (text[i] != L'"') {
      inside += text[i];
    } else if (i + 1 < text.size() && text[i + 1] == L'"') {
      inside += text[i++];
    } else {
      at = i + 1;
      return inside;
    }
  }
  return std::nullopt;
}

// The fields of the column at `at`, and `at` on the "|" behind it or the end.
Fields take_column(std::wstring_view text, size_t& at) {
  Fields fields;
  bool quotes = true;  // a quote that nothing closes is looked for once
  for (;; ++at) {
    std::wstring field;
    if (quotes && at < text.size() && text[at] == L'"') {
      auto inside = quoted(text, at);
      quotes = inside.has_value();
      if (inside) field = std::move(*inside);
    }
    const size_t end = std::min(text.find_first_of(L";|", at), text.size());
    field += text.substr(at, end - at);
    if (fields.size() <= Locked) fields.push_back(std::move(field));
    at = end;
    if (at == text.size() || text[at] == L'|') return fields;
  }
}

template <class Enum>
bool read_number(const std::wstring& field, Enum& out) {
  if (trim_blanks(field).empty()) return true;
  const auto number = parse_plain_number(field);
  if (!number || std::fabs(*number) > std::numeric_limits<int16_t>::max()) return false;
  out = static_cast<Enum>(round_half_even<int16_t>(*number));
  return true;
}

bool read_bool(const std::wstring& field, bool& out) {
  const std::wstring_view word = trim_blanks(field);
  if (word.empty()) return true;
  for (const auto& [name, value] : {std::pair<const wchar_t*, bool>{L"True", true},
                                    {L"Verdadeiro", true},
                                    {L"False", false},
                                    {L"Falso", false}})
    if (equals_ignoring_case(word, name)) {
      out = value;
      return true;
    }
  const auto number = parse_plain_number(word);
  if (number) out = *number != 0;
  return number.has_value();
}

bool read_width(const std::wstring& field, double& out) {
  if (trim_blanks(field).empty()) return true;
  const auto number = parse_plain_number(field);
  if (number) out = *number;
  return number.has_value();
}

std::optional<GridNewColumn> read_column(Fields&& fields) {
  if (fields.size() == 1 && fields[Heading].empty()) return std::nullopt;
  fields.resize(Locked + 1);
  GridNewColumn column;
  if (!read_width(fields[Width], column.width) ||
      !read_number(fields[Alignment], column.alignment) ||
      !read_number(fields[DataType], column.type) ||
      !read_number(fields[ImageAlignment], column.image_alignment) ||
      !read_bool(fields[WordWrap], column.word_wrap) ||
      !read_number(fields[Index], column.position) || !read_bool(fields[Visible], column.visible) ||
      !read_bool(fields[Locked], column.locked))
    return std::nullopt;
  column.heading = std::move(fields[Heading]);
  column.format = std::move(fields[Format]);
  column.input_filter = std::move(fields[InputFilter]);
  return column;
}

std::wstring written(const std::wstring& field) {
  if (field.find_first_of(kSpecial) == std::wstring::npos) return field;
  std::wstring text = L"\"";
  for (const wchar_t c : field) text.append(c == L'"' ? 2 : 1, c);
  return text + L'"';
}

const wchar_t* word(bool value) {
  return value ? L"True" : L"False";
}

std::wstring column_text(const GridColumn& column, bool exact) {
  const auto number = [](auto value) { return std::to_wstring(static_cast<int>(value)); };
  const bool wraps = (column.flags & kGridWordWrap) != 0;
  const Fields fields = {written(column.heading),
                         exact ? single_text(column.width - 1, L'.') : number(column.width_pixels),
                         number(column.alignment),
                         number(column.type),
                         written(column.format),
                         written(column.input_filter),
                         number(column.image_alignment),
                         exact ? word(wraps) : number(wraps ? kGridWordWrap : 0),
                         L"0",
                         word(column.visible),
                         word(column.locked)};
  std::wstring text = fields[0];
  for (size_t i = 1; i < fields.size(); ++i) text += L';' + fields[i];
  return text;
}

}  // namespace

std::optional<double> parse_plain_number(std::wstring_view text) {
  text = trim_blanks(text);
  if (!text.empty() && text[0] == L'+') text.remove_prefix(1);
  constexpr size_t kLongest = 60;
  if (text.size() > kLongest) return std::nullopt;
  std::string plain;
  for (const wchar_t c : text) {
    const bool known =
        is_digit(c) || c == L'.' || c == L',' || c == L'-' || c == L'+' || c == L'e' || c == L'E';
    if (!known) return std::nullopt;
    plain += c == L',' ? '.' : static_cast<char>(c);
  }
  return parse_scientific(plain);
}

std::wstring single_text(float value, wchar_t mark) {
  if (!std::isfinite(value)) return L"0";
  const std::string plain = (value < 0 ? "-" : "") + plain_text(shortest_digits(value));
  std::wstring text(plain.begin(), plain.end());
  std::replace(text.begin(), text.end(), L'.', mark);
  return text;
}

std::vector<GridNewColumn> parse_header_format(std::wstring_view text) {
  std::vector<GridNewColumn> columns;
  for (size_t at = 0; at <= text.size() && columns.size() < kMostColumns; ++at) {
    auto column = read_column(take_column(text, at));
    if (!column) break;
    columns.push_back(std::move(*column));
  }
  return columns;
}

std::wstring build_header_format(const GridSource& source, bool exact) {
  std::wstring text;
  for (int i = 0; i < source.column_count(); ++i) {
    if (i != 0) text += L'|';
    text += column_text(source.column(i), exact);
  }
  return text;
}

}  // namespace kestrelon
