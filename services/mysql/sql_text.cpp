#include "services/mysql/sql_text.h"

#include "base/decimal.h"
#include "base/text.h"
#include "services/mysql/utf8_text.h"

namespace kestrelon {
namespace {

constexpr long kInvalidNull = 94;
constexpr long kNoCurrentRow = 3021;
constexpr long kItemNotFound = 3265;

std::wstring value_text(const DbValue& value) {
  switch (value.kind) {
    case DbValue::Kind::kNull:
      return {};
    case DbValue::Kind::kBytes:
      return from_ansi(value.bytes);
    case DbValue::Kind::kReal:
      return decimal_text(static_cast<int64_t>(value.real));
    case DbValue::Kind::kBoolean:
      return value.boolean ? L"True" : L"False";
    default:
      return std::wstring(value.text);
  }
}

DbValue row_value(RecordSet& result, size_t field) {
  if (result.eof()) throw DbError(kNoCurrentRow, L"O resultado não tem registro atual.");
  if (field >= result.field_count())
    throw DbError(kItemNotFound, L"O resultado não tem o campo esperado.");
  return result.value(field);
}

bool says_create(std::wstring_view text) {
  return find_ignoring_case(text, L"CREATE") != std::wstring_view::npos;
}

// The bytes of UTF-16 units, low byte first.
std::string unpacked_bytes(std::wstring_view text) {
  std::string bytes;
  for (const wchar_t c : text) {
    bytes.push_back(static_cast<char>(c & 0xFF));
    bytes.push_back(static_cast<char>((c >> 8) & 0xFF));
  }
  if (!bytes.empty() && bytes.back() == '\0') bytes.pop_back();
  return bytes;
}

}  // namespace

std::wstring quoted_name(std::wstring_view name) {
  std::wstring quoted = L"`";
  for (const wchar_t c : name) quoted.append(c == L'`' ? 2 : 1, c);
  return quoted + L"`";
}

std::wstring row_text(RecordSet& result, size_t field) {
  const DbValue value = row_value(result, field);
  if (value.kind == DbValue::Kind::kNull) throw DbError(kInvalidNull, L"Uso de Null inválido.");
  return value_text(value);
}

std::wstring named_text(RecordSet& result, std::wstring_view field) {
  const auto index = result.find_field(field);
  if (!index)
    throw DbError(kItemNotFound, L"O resultado não tem o campo " + std::wstring(field) + L".");
  return value_text(row_value(result, *index));
}

std::wstring wide_field(RecordSet& result, size_t field) {
  const DbValue value = row_value(result, field);
  if (value.kind == DbValue::Kind::kNull) return {};
  if (value.kind != DbValue::Kind::kBytes) return value_text(value);
  std::wstring text;
  from_utf8(value.bytes, text);
  return text;
}

std::wstring wide_field(RecordSet& result, std::wstring_view field) {
  const auto index = result.find_field(field);
  return index ? wide_field(result, *index) : std::wstring();
}

std::wstring comment_text(std::wstring_view text) {
  std::wstring line(text);
  for (wchar_t& c : line) {
    const uint32_t code = code_unit(c);
    if (code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x2028 || code == 0x2029) c = L' ';
  }
  return line;
}

std::wstring show_create_text(RecordSet& result, size_t field) {
  std::wstring text = row_text(result, field);
  if (says_create(text)) return text;
  return from_ansi(unpacked_bytes(text));
}

std::wstring exact_create_text(RecordSet& result, std::wstring_view field) {
  std::wstring text = wide_field(result, field);
  if (text.empty())
    throw DbError(kInvalidNull, L"O servidor não entregou o texto do campo " + std::wstring(field) +
                                    L": falta permissão para lê-lo.");
  if (!says_create(text)) from_utf8(unpacked_bytes(std::wstring(text)), text);
  return text;
}

std::wstring lines_of_comment(std::wstring_view text) {
  std::wstring lines;
  std::wstring plain(text);
  for (wchar_t& c : plain)
    if (c == L'\r' || code_unit(c) == 0x85 || code_unit(c) == 0x2028) c = L'\n';
  for (const std::wstring_view line : split(plain, L"\n")) {
    const std::wstring_view trimmed = trim_blanks(line);
    if (!trimmed.empty()) lines.append(lines.empty() ? 0 : 1, L'\n').append(trimmed);
  }
  return lines;
}

std::wstring with_if_not_exists(std::wstring text, std::wstring_view kind) {
  const std::wstring what = L"CREATE " + std::wstring(kind);
  const std::wstring with = what + L" IF NOT EXISTS";
  for (size_t at = 0; (at = text.find(what, at)) != std::wstring::npos; at += with.size())
    text.replace(at, what.size(), with);
  return text;
}

bool is_of_database(RecordSet& result, std::wstring_view database, bool names_have_case) {
  const auto field = result.find_field(L"Db");
  if (!field || database.empty()) return true;
  const std::wstring own = value_text(result.value(*field));
  return names_have_case ? own == database : equals_ignoring_case(own, database);
}

bool database_names_have_case(DbConnection& connection) {
  const auto row = connection.execute(L"SELECT @@GLOBAL.lower_case_table_names;");
  return !row->eof() && wide_field(*row, 0) == L"0";
}

std::wstring position_text(RecordSet& result, int offset) {
  return L"(" + decimal_text(result.absolute_position() + offset) + L" de " +
         decimal_text(result.record_count()) + L"): ";
}

}  // namespace kestrelon
