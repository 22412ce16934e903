#include "services/mysql/dump_writer.h"

#include "base/decimal.h"
#include "base/text.h"
#include "services/kn_format_ex.h"
#include "services/mysql/file_errors.h"
#include "services/mysql/sql_text.h"
#include "services/mysql/told_check.h"

namespace kestrelon {
namespace {

std::wstring labelled(const std::wstring& label, const std::wstring& name) {
  return label + L" " + name;
}

std::wstring with_end(const std::wstring& statement) {
  return statement + L";";
}

std::wstring show_create(const std::wstring& kind, const std::wstring& name) {
  return L"SHOW CREATE " + kind + L" " + quoted_name(name) + L";";
}

}  // namespace

DumpWriter::DumpWriter(const std::wstring& path, DbConnection& connection,
                       MaintenanceObserver& observer, const BackupOptions& options,
                       AlterationLog& log)
    : connection_(connection),
      observer_(observer),
      options_(options),
      log_(log),
      lines_(path),
      values_(options.marks) {}

void DumpWriter::write() {
  write_header();
  write_routines({L"PROCEDURE", L"procedure"});
  write_routines({L"FUNCTION", L"function"});
  const int64_t tables = write_tables();
  if (!views_.empty()) write_views();
  note_left_out(connection_, log_);
  lines_.blank();
  lines_.line(L"--  Fim do arquivo: " + moment_text());
  lines_.complete();
  observer_.progress(100, 100);
  observer_.status(L"O backup de " + decimal_text(tables) + L" tabela(s) foi concluído.");
}

std::wstring DumpWriter::moment_text() const {
  const DateTime now = options_.clock();
  return format_moment(now, L"DD/MM/YYYY") + L" " + format_moment(now, L"HH:MM:SS");
}

void DumpWriter::write_comment(std::wstring_view text) {
  lines_.line(L"--");
  lines_.line(L"--  " + comment_text(text));
  lines_.line(L"--");
  lines_.blank();
}

void DumpWriter::write_split(std::wstring_view text, bool pump_each_line) {
  for (const std::wstring_view line : split(text, L"\n")) {
    lines_.line(line);
    if (pump_each_line) observer_.pump();
  }
}

void DumpWriter::write_header() {
  lines_.line(L"--  Criado por: " + comment_text(options_.application_title));
  lines_.line(L"--  Data/Hora: " + moment_text());
  const auto version = connection_.execute(L"SHOW GLOBAL VARIABLES LIKE 'VERSION';");
  lines_.line(L"--  Versão do MySql: " + row_text(*version, 1));
  lines_.line(L"--  Base de dados: " + comment_text(connection_.default_database()));
  const std::wstring information = lines_of_comment(options_.additional_information);
  // Further lines are comments, too.
  std::wstring label = L"--  Informações adicionais: ";
  for (const std::wstring_view line : split(information, L"\n")) {
    if (!line.empty()) lines_.line(label + comment_text(line));
    label = L"--  ";
  }
  lines_.blank();
  lines_.line(L"SET FOREIGN_KEY_CHECKS=0;");
  lines_.blank();
  if (options_.drop_database) write_database();
}

void DumpWriter::write_database() {
  const std::wstring database = quoted_name(connection_.default_database());
  lines_.line(L"DROP DATABASE IF EXISTS " + database + L";");
  const auto result = connection_.execute(L"SHOW CREATE DATABASE " + database + L";");
  lines_.line(create_text(*result, 1, L"base de dados " + database) + L";");
  lines_.line(L"USE " + quoted_name(row_text(*result, 0)) + L";");
}

std::wstring DumpWriter::create_text(RecordSet& result, size_t field, const std::wstring& label) {
  std::wstring text = show_create_text(result, field);
  if (from_ansi(to_ansi(text)) != text)
    log_.altered(L"A estrutura de " + comment_text(label) +
                 L" tem caracteres que este formato não comporta.");
  return text;
}

void DumpWriter::check_cancel() {
  if (observer_.is_cancelled()) throw cancelled_error();
}

// A line end in a name would end its line, and what follows could be read as a command.
bool DumpWriter::leaves_out(const std::wstring& name, const std::wstring& text) {
  if (comment_text(name) == name && (text.empty() || !has_stray_lines(text))) return false;
  log_.altered(comment_text(quoted_name(name)) +
               L" tem quebras de linha que este formato não comporta e ficou de fora.");
  return true;
}

void DumpWriter::write_routines(const RoutineKind& kind) {
  const std::wstring sql(kind.sql);
  const std::wstring label(kind.label);
  const auto routines = connection_.execute(L"SHOW " + sql + L" STATUS;");
  // The server lists the routines of all its databases.
  const std::wstring database = connection_.default_database();
  const bool names_have_case = database_names_have_case(connection_);
  bool is_first = true;
  for (; !routines->eof(); routines->move_next()) {
    if (!is_of_database(*routines, database, names_have_case)) continue;
    const std::wstring name = named_text(*routines, L"Name");
    if (leaves_out(name, {})) continue;
    check_cancel();
    const int64_t total = routines->record_count();
    observer_.status(L"Efetuando backup da procedure (" +
                     decimal_text(routines->absolute_position()) + L" de " + decimal_text(total) +
                     L"): " + name);
    observer_.progress(total, 0);
    if (!is_first) lines_.blank();
    is_first = false;
    const auto result = connection_.execute(show_create(sql, name));
    const std::wstring text =
        with_if_not_exists(with_end(create_text(*result, 2, labelled(label, name))), kind.sql);
    if (!comes_back_by_lines(text))
      log_.altered(L"A " + label + L" " + comment_text(quoted_name(name)) +
                   L" não volta igual: suas linhas são juntadas ou cortadas na leitura.");
    write_comment(L"Exclui a " + label + L": " + quoted_name(name));
    lines_.line(L"DROP " + sql + L" IF EXISTS " + quoted_name(name) + L";");
    lines_.blank();
    write_comment(L"Estrutura da " + label + L": " + quoted_name(name));
    write_split(text, true);
    lines_.blank();
  }
}

int64_t DumpWriter::write_tables() {
  const auto tables = connection_.execute(L"SHOW TABLE STATUS;");
  int64_t count = 0;
  for (; !tables->eof(); tables->move_next()) {
    const std::wstring name = named_text(*tables, L"Name");
    check_cancel();
    observer_.progress(tables->record_count(), 0);
    if (equals_ignoring_case(named_text(*tables, L"Comment"), L"VIEW")) {
      keep_view(*tables, name);
      continue;
    }
    if (!write_table(*tables, name)) continue;
    lines_.blank();
    ++count;
  }
  return count;
}

void DumpWriter::keep_view(RecordSet& tables, const std::wstring& name) {
  observer_.status(L"Efetuando backup da view " + position_text(tables, 0) + name);
  const auto result = connection_.execute(L"SHOW CREATE VIEW " + quoted_name(name) + L";");
  const std::wstring text =
      with_if_not_exists(create_text(*result, 1, L"view " + name) + L";", L"VIEW");
  if (!leaves_out(name, text)) views_.push_back({name, text});
}

bool DumpWriter::write_table(RecordSet& tables, const std::wstring& name) {
  observer_.status(L"Efetuando backup da tabela " + position_text(tables, 0) + name);
  auto result = connection_.execute(L"SHOW CREATE TABLE " + quoted_name(name) + L";");
  const std::wstring text =
      with_if_not_exists(create_text(*result, 1, L"tabela " + name) + L";", L"TABLE");
  if (leaves_out(name, text)) return false;
  if (options_.drop_table_if_exists) {
    write_comment(L"Exclui a tabela: " + quoted_name(name));
    lines_.line(L"DROP TABLE IF EXISTS " + quoted_name(name) + L";");
    lines_.blank();
  }
  write_comment(L"Estrutura da tabela: " + quoted_name(name));
  write_split(text, false);
  lines_.blank();
  if (options_.only_table_structure) return true;
  note_rows(connection_, name, log_);
  const uint64_t before = values_.altered();
  write_rows(std::move(result), name);
  if (const uint64_t altered = values_.altered() - before)
    log_.altered(L"Tabela " + comment_text(quoted_name(name)) + L": " +
                     decimal_text(static_cast<int64_t>(altered)) +
                     L" valor(es) que este formato altera.",
                 altered);
  return true;
}

// Views may refer to any table and so come last.
void DumpWriter::write_views() {
  for (const View& view : views_) {
    write_comment(L"Exclui a view: " + quoted_name(view.name));
    lines_.line(L"DROP VIEW IF EXISTS " + quoted_name(view.name) + L";");
    lines_.blank();
    write_comment(L"Estrutura da tabela: " + quoted_name(view.name));
    write_split(view.text, true);
    lines_.blank();
  }
}

}  // namespace kestrelon
