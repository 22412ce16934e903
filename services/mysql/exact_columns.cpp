#include "services/mysql/exact_columns.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "services/mysql/sql_text.h"
#include "services/mysql/utf8_text.h"

namespace kestrelon {
namespace {

using Form = ExactColumn::Form;

// Character sets whose texts come back equal from UTF-8. Others go out as their own bytes.
constexpr std::array<std::wstring_view, 9> kPlainCharsets = {
    L"utf8mb4", L"utf8mb3", L"utf8", L"latin1", L"ascii", L"ucs2", L"utf16", L"utf16le", L"utf32"};

bool is_one_of(std::wstring_view word, std::initializer_list<std::wstring_view> words) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

struct Declared {
  std::wstring word;         // int of "int(11) unsigned"
  uint64_t length = 0;       // 11; the members of ENUM and SET are none
  std::wstring_view within;  // what stands in the brackets
};

Declared declared(std::wstring_view type) {
  Declared parts;
  const size_t end = std::min(type.find_first_of(L"( "), type.size());
  parts.word = fold_case(type.substr(0, end));
  const size_t close = type.rfind(L')');
  if (end < type.size() && type[end] == L'(' && close != std::wstring_view::npos)
    parts.within = type.substr(end + 1, close - end - 1);
  for (const wchar_t c : parts.within) {
    if (!is_digit(c) || parts.length > 0xFFFF'FFFF) break;
    parts.length = parts.length * 10 + static_cast<uint64_t>(c - L'0');
  }
  return parts;
}

uint64_t most_bytes(const Declared& type) {
  const std::wstring& word = type.word;
  if (word.starts_with(L"tiny")) return 255;
  if (word.starts_with(L"medium")) return 0xFF'FFFF;
  if (is_one_of(word, {L"blob", L"text"})) return 0xFFFF;
  if (is_one_of(word, {L"char", L"varchar"})) return type.length * 4;
  if (is_one_of(word, {L"binary", L"varbinary"})) return type.length;
  return 0xFFFF'FFFF;
}

void read_as_hex(ExactColumn& column, std::wstring bytes, std::string charset) {
  column.form = Form::kHex;
  column.charset = std::move(charset);
  column.expression = L"HEX(" + bytes + L")";
  column.bytes = std::move(bytes);
}

void read_as_text(ExactColumn& column, std::wstring_view collation, bool has_unicode) {
  const std::wstring charset(collation.substr(0, collation.find(L'_')));
  const bool is_plain =
      std::find(kPlainCharsets.begin(), kPlainCharsets.end(), charset) != kPlainCharsets.end() ||
      charset.empty();
  column.form = Form::kText;
  if (!is_plain)
    read_as_hex(column, L"CAST(" + column.expression + L" AS BINARY)", to_utf8(charset));
  else if (!has_unicode)
    read_as_hex(column, L"CONVERT(" + column.expression + L" USING utf8mb4)", "utf8mb4");
}

// Beside an empty member the error value, which shows as an empty text too, is told by its number.
void read_as_member(ExactColumn& column, const Declared& type, std::wstring_view collation,
                    bool has_unicode) {
  column.may_hold_enum_error = true;
  const bool may_have_empty_member =
      type.within.starts_with(L"''") || type.within.find(L",''") != std::wstring_view::npos;
  if (!may_have_empty_member) {
    read_as_text(column, collation, has_unicode);
    return;
  }
  column.form = Form::kNumber;
  column.expression += L"+0";
}

ExactColumn exact_column(std::wstring name, std::wstring_view shown_type,
                         std::wstring_view collation, bool has_unicode) {
  const Declared type = declared(shown_type);
  const std::wstring& word = type.word;
  ExactColumn column;
  column.name = std::move(name);
  column.expression = quoted_name(column.name);
  column.most_bytes = most_bytes(type);
  if (is_one_of(word, {L"smallint", L"mediumint", L"int", L"year"})) {
    column.form = Form::kNumber;
  } else if (word == L"tinyint" || word == L"bit") {
    // A sum is no truth value and no bytes, whatever a driver makes of the column.
    column.form = Form::kNumber;
    column.expression += L"+0";
  } else if (word == L"bigint" || word == L"decimal") {
    column.form = Form::kNumber;
    column.expression = L"CAST(" + column.expression + L" AS CHAR)";
  } else if (word == L"float" || word == L"double") {
    // A single shows six digits; as a double it shows all of them.
    column.form = Form::kNumber;
    column.expression = L"CAST(CAST(" + column.expression + L" AS DOUBLE) AS CHAR)";
  } else if (is_one_of(word, {L"char", L"varchar", L"tinytext", L"text", L"mediumtext", L"longtext",
                              L"set", L"json"})) {
    read_as_text(column, collation, has_unicode);
  } else if (word == L"enum") {
    read_as_member(column, type, collation, has_unicode);
  } else if (is_one_of(word, {L"date", L"time", L"datetime", L"timestamp", L"inet4", L"inet6",
                              L"uuid"})) {
    column.expression = L"CAST(" + column.expression + L" AS CHAR)";
  } else {
    // Bytes, spatial values and whatever later servers add.
    read_as_hex(column, quoted_name(column.name), {});
  }
  return column;
}

bool is_generated(std::wstring_view extra) {
  for (const wchar_t* mark : {L"VIRTUAL GENERATED", L"STORED GENERATED", L"PERSISTENT"})
    if (find_ignoring_case(extra, mark) != std::wstring_view::npos) return true;
  return find_ignoring_case(extra, L"VIRTUAL") == 0;
}

}  // namespace

std::vector<ExactColumn> exact_columns(RecordSet& shown, bool has_unicode) {
  std::vector<ExactColumn> columns;
  for (; !shown.eof(); shown.move_next())
    if (!is_generated(wide_field(shown, L"Extra")))
      columns.push_back(exact_column(wide_field(shown, L"Field"), wide_field(shown, L"Type"),
                                     wide_field(shown, L"Collation"), has_unicode));
  return columns;
}

}  // namespace kestrelon
