// Tables and their rows in an exact dump.
#include <algorithm>

#include "base/decimal.h"
#include "base/text.h"
#include "services/mysql/exact_dump.h"
#include "services/mysql/file_errors.h"
#include "services/mysql/sql_text.h"
#include "services/mysql/utf8_text.h"

namespace kestrelon {
namespace {

constexpr size_t kRowsBetweenPumps = 256;

// Tables that only show the rows of others.
bool has_no_rows_of_its_own(std::wstring_view create) {
  constexpr std::wstring_view kEngine = L"\n) ENGINE=";
  const size_t at = create.rfind(kEngine);
  if (at == std::wstring_view::npos) return false;
  const std::wstring engine = fold_case(create.substr(at + kEngine.size(), 10));
  return engine.starts_with(L"mrg_") || engine.starts_with(L"federated");
}

}  // namespace

void ExactDump::list_tables() {
  const auto list = connection_.execute(L"SHOW FULL TABLES;");
  for (; !list->eof(); list->move_next())
    tables_.push_back({wide_field(*list, 0), wide_field(*list, L"Table_type")});
}

// Sequences come first: the defaults of tables may ask them.
void ExactDump::write_tables() {
  for (const Named& table : tables_)
    if (table.type == L"SEQUENCE") write_sequence(table.name);
  std::unique_ptr<RecordSet> reuse;
  for (size_t i = 0; i < tables_.size(); ++i) {
    const Named& table = tables_[i];
    step(i, tables_.size());
    if (table.type == L"SEQUENCE" || table.type.starts_with(L"TEMPORARY")) continue;
    if (table.type.find(L"VIEW") != std::wstring::npos) {
      observer_.status(L"Efetuando backup da view " + position(i) + table.name);
      views_.push_back(table.name);
      continue;
    }
    observer_.status(L"Efetuando backup da tabela " + position(i) + table.name);
    write_table(table, reuse);
    ++totals_.tables;
  }
}

void ExactDump::write_sequence(const std::wstring& name) {
  const std::wstring quoted = quoted_name(name);
  output_.comment(L"Sequência: " + quoted);
  if (options_.drop_table_if_exists) output_.statement(L"DROP SEQUENCE IF EXISTS " + quoted);
  output_.statement(create_text(L"SEQUENCE", name, L"Create Table"));
  const auto next =
      connection_.execute(L"SELECT next_not_cached_value, cycle_count FROM " + quoted + L";");
  output_.statement(L"DO SETVAL(" + quoted + L"," + wide_field(*next, 0) + L",0," +
                    wide_field(*next, 1) + L")");
  output_.line({});
  ++totals_.objects;
}

void ExactDump::write_table(const Named& table, std::unique_ptr<RecordSet>& reuse) {
  const std::wstring quoted = quoted_name(table.name);
  const std::wstring text = create_text(L"TABLE", table.name, L"Create Table");
  if (text.starts_with(L"CREATE TEMPORARY"))
    throw DbError(kInvalidArgument, L"A conexão tem uma tabela temporária com o nome da tabela " +
                                        comment_text(quoted) + L".");
  if (table.type.starts_with(L"SYSTEM VERSIONED"))
    log_.altered(L"A tabela " + comment_text(quoted) +
                 L" tem versões: as linhas antigas não foram gravadas.");
  output_.comment(L"Tabela: " + quoted);
  if (options_.drop_table_if_exists) output_.statement(L"DROP TABLE IF EXISTS " + quoted);
  output_.statement(text);
  if (!options_.only_table_structure && !has_no_rows_of_its_own(text)) {
    if (!reuse) reuse = connection_.execute(L"SELECT 1;");
    write_rows(table.name, std::move(reuse));
  }
  output_.line({});
}

// Pairs of digits are twice as long as the bytes, and the server drops a result that is longer than
// its limit: such values are asked for in pieces.
std::wstring ExactDump::select_of(const std::wstring& name, const std::vector<ExactColumn>& columns,
                                  std::vector<SelectedColumn>& selected) {
  const auto limit = static_cast<uint64_t>(std::max<int64_t>(session_.most_packet(), 1024));
  std::wstring list;
  size_t fields = 0;
  for (const ExactColumn& column : columns) {
    uint64_t longest = 0;
    if (column.form == ExactColumn::Form::kHex && column.most_bytes * 2 >= limit) {
      const auto most = connection_.execute(L"SELECT MAX(LENGTH(" + column.bytes + L")) FROM " +
                                            quoted_name(name) + L";");
      for (const wchar_t c : wide_field(*most, 0))
        if (is_digit(c)) longest = longest * 10 + static_cast<uint64_t>(c - L'0');
    }
    SelectedColumn one{&column, fields, 1};
    if (!list.empty()) list += L", ";
    if (longest * 2 < limit) {
      list += column.expression;
    } else {
      const uint64_t piece = limit / 4;
      one.fields = static_cast<size_t>((longest + piece - 1) / piece);
      for (size_t i = 0; i < one.fields; ++i)
        list += (i > 0 ? L", HEX(SUBSTRING(CAST(" : L"HEX(SUBSTRING(CAST(") + column.bytes +
                L" AS BINARY)," + decimal_text(static_cast<int64_t>(i * piece + 1)) + L"," +
                decimal_text(static_cast<int64_t>(piece)) + L"))";
    }
    fields += one.fields;
    selected.push_back(one);
  }
  return L"SELECT " + list + L" FROM " + quoted_name(name) + L";";
}

void ExactDump::write_rows(const std::wstring& name, std::unique_ptr<RecordSet> reuse) {
  const auto shown = connection_.execute(L"SHOW FULL COLUMNS FROM " + quoted_name(name) + L";");
  const std::vector<ExactColumn> columns = exact_columns(*shown, has_unicode_);
  std::wstring names;
  for (const ExactColumn& column : columns)
    names += (names.empty() ? L"" : L",") + quoted_name(column.name);
  std::vector<SelectedColumn> selected;
  const std::wstring sql = columns.empty() ? L"SELECT 1 FROM " + quoted_name(name) + L";"
                                           : select_of(name, columns, selected);
  const auto rows = connection_.open_rows(std::move(reuse), sql);
  ExactRow row(std::move(selected));
  copy_rows(*rows, row,
            to_utf8(L"INSERT INTO " + quoted_name(name) + L" (" + names + L") VALUES\n"));
  rows->close();
}

void ExactDump::write_insert(std::string& sql) {
  if (!sql.empty()) output_.statement_bytes(sql);
  sql.clear();
}

void ExactDump::copy_rows(RecordSet& rows, ExactRow& row, const std::string& insert) {
  if (rows.eof()) return;
  output_.statement(L"START TRANSACTION");
  std::string sql;
  size_t count = 0;
  for (; !rows.eof(); rows.move_next()) {
    if (++count % kRowsBetweenPumps == 0)
      step(static_cast<size_t>(count), static_cast<size_t>(std::max<int64_t>(
                                           rows.record_count(), static_cast<int64_t>(count))));
    row.read(rows);
    const bool is_long = insert.size() + row.text().size() > most_statement_;
    if (is_long || row.needs_leniency() || sql.size() + row.text().size() + 2 > most_statement_)
      write_insert(sql);
    if (is_long)
      row.move_long_values(most_statement_ - std::min(insert.size(), most_statement_ / 2), output_);
    if (row.needs_leniency()) output_.statement(L"SET SQL_MODE='NO_AUTO_VALUE_ON_ZERO'");
    sql += sql.empty() ? insert : ",\n";
    sql += row.text();
    if (is_long || row.needs_leniency()) write_insert(sql);
    if (row.needs_leniency())
      output_.statement(L"SET SQL_MODE='" + std::wstring(kExactMode) + L"'");
  }
  write_insert(sql);
  output_.statement(L"COMMIT");
  totals_.rows += static_cast<int64_t>(count);
}

}  // namespace kestrelon
