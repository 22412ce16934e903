#include "grid/values/csv_text.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "grid/values/cell_number.h"
#include "services/mysql/utf8_text.h"

namespace kestrelon {
namespace {

constexpr std::wstring_view kLineEnd = L"\r\n";
constexpr size_t kBlock = size_t{1} << 16;  // bytes handed to the sink at a time

// In the code page, or as UTF-8 where `unicode`; nothing where the page lacks a character.
std::optional<std::string> encoded(std::wstring_view line, bool unicode, const LocaleRules& rules) {
  const bool ascii =
      std::all_of(line.begin(), line.end(), [](wchar_t c) { return c > 0 && c < 0x80; });
  if (ascii) return std::string(line.begin(), line.end());
  if (unicode) return to_utf8(line);
  return rules.code_page_bytes(line);
}

}  // namespace

CsvText::CsvText(const GridSource& source, const LocaleRules& rules, const CsvOptions& options,
                 std::wstring caption)
    : source_(source), rules_(rules), options_(options), caption_(std::move(caption)) {}

bool CsvText::next(std::wstring_view& line) {
  line_.clear();
  switch (part_) {
    case Part::kCaption:
      part_ = Part::kHeadings;
      if (caption_.empty()) return next(line);
      line_ = caption_;
      break;
    case Part::kHeadings:
      part_ = Part::kRows;
      write_columns([this](int column) { return source_.column(column).heading; });
      break;
    case Part::kRows:
      if (write_row()) break;
      part_ = options_.total_line ? Part::kTotals : Part::kEnd;
      return next(line);
    case Part::kTotals:
      part_ = Part::kEnd;
      write_columns([this](int column) {
        return total_cell(source_, column, options_.totals, L"", rules_.facts());
      });
      break;
    case Part::kEnd:
      return false;
  }
  line_ += kLineEnd;
  line = line_;
  return true;
}

template <class TextOf>
void CsvText::write_columns(TextOf text_of) {
  for (int i = 0; i < source_.column_count(); ++i) {
    const int column = source_.column_at(i);
    if (options_.visible_columns_only && !source_.column(column).visible) continue;
    append_field(text_of(column));
    line_ += options_.semicolons ? L';' : L',';
  }
}

// False behind the last row.
bool CsvText::write_row() {
  if (options_.skip_hidden_rows) {
    position_ = source_.next_visible(position_);
    if (position_ < 0) position_ = source_.row_count();
  }
  if (position_ >= source_.row_count()) return false;
  const int row = source_.row_at(position_++);
  if (options_.visible_rows_only && !source_.row_info(row).visible) return true;
  write_columns([this, row](int column) {
    const std::wstring_view text = source_.text(row, column);
    const bool as_number =
        !options_.boolean_as_text && source_.column(column).type == GridDataType::Boolean;
    return as_number ? boolean_number(text) : std::wstring(text);
  });
  return true;
}

std::wstring CsvText::boolean_number(std::wstring_view text) const {
  const int word = boolean_word(text, rules_.facts());
  const bool state = word >= 0 ? word == 1 : cell_number(text, rules_.facts()) != 0;
  return state ? L"-1" : L"0";
}

// What spreadsheets calculate, but for a number with its sign.
bool CsvText::is_formula(std::wstring_view text) const {
  if (text.empty() || std::wstring_view(L"=+-@\t\r").find(text[0]) == std::wstring_view::npos)
    return false;
  return !read_number(text, rules_.facts()).whole_text();
}

void CsvText::append_field(std::wstring_view text) {
  const bool guarded = options_.guard_formulas && is_formula(text);
  const wchar_t special[] = {options_.semicolons ? L';' : L',', L'"', L'\r', L'\n', L'\0'};
  const bool quoted = options_.quotes && text.find_first_of(special) != std::wstring_view::npos;
  if (quoted) line_ += L'"';
  if (guarded) line_ += L'\'';
  if (!quoted) {
    line_ += text;
    return;
  }
  for (const wchar_t c : text) line_.append(c == L'"' ? 2 : 1, c);
  line_ += L'"';
}

bool write_csv(const GridSource& source, const LocaleRules& rules, const CsvOptions& options,
               const std::wstring& caption, const ByteSink& sink) {
  const auto fits_code_page = [&] {
    CsvText text(source, rules, options, caption);
    for (std::wstring_view line; text.next(line);)
      if (!encoded(line, false, rules)) return false;
    return true;
  };
  const bool unicode = !fits_code_page();
  std::string block = unicode ? "\xEF\xBB\xBF" : "";
  CsvText text(source, rules, options, caption);
  for (std::wstring_view line; text.next(line);) {
    const auto bytes = encoded(line, unicode, rules);
    if (!bytes) return false;
    block += *bytes;
    if (block.size() < kBlock) continue;
    if (!sink(block)) return false;
    block.clear();
  }
  return block.empty() || sink(block);
}

}  // namespace kestrelon
