#include "services/mysql/sql_restore.h"

#include <optional>

#include "base/decimal.h"
#include "services/mysql/file_errors.h"
#include "services/mysql/session_keeper.h"
#include "services/mysql/sql_splitter.h"
#include "services/mysql/sql_text.h"
#include "services/mysql/statement_text.h"
#include "services/mysql/utf8_text.h"

namespace kestrelon {
namespace {

DbError cut_error(const std::wstring& path, const std::wstring& why) {
  return {kInputPastEnd, L"O arquivo " + path + L" está cortado ou foi alterado: " + why};
}

// Statements of the whole file, and the line on which the last one begins.
struct Counted {
  int64_t statements = 0;
  long line = 1;
  bool is_cut = false;
};

Counted count_statements(SystemFile& file, const std::string& sql_mode,
                         MaintenanceObserver& observer) {
  constexpr int64_t kBetweenPumps = 1024;
  Counted counted;
  SqlSplitter splitter([&file](std::span<uint8_t> room) { return file.read(room); }, sql_mode);
  for (std::string_view statement; splitter.next(statement);) {
    if (++counted.statements % kBetweenPumps != 0) continue;
    observer.pump();
    if (observer.is_cancelled()) throw cancelled_error();
  }
  counted.line = splitter.line();
  counted.is_cut = splitter.is_cut();
  if (!file.seek(0)) throw read_error();
  return counted;
}

// Throws when the file is not whole.
void check_exact(const std::wstring& path, SystemFile& file, const std::string& sql_mode,
                 MaintenanceObserver& observer) {
  const auto totals = read_closing_line(last_line_of(file));
  if (!totals) throw cut_error(path, L"falta a linha final da cópia.");
  const Counted counted = count_statements(file, sql_mode, observer);
  if (counted.is_cut)
    throw cut_error(path, L"o comando da linha " + decimal_text(counted.line) + L" não termina.");
  if (counted.statements != totals->statements)
    throw cut_error(path, L"tem " + decimal_text(counted.statements) + L" comandos em lugar de " +
                              decimal_text(totals->statements) + L".");
}

// The server's tool ends its files with a comment, unless it was asked for none at all.
void check_servers(const std::wstring& path, SystemFile& file, const std::string& sql_mode,
                   MaintenanceObserver& observer) {
  const std::string head = head_of(file);
  const bool has_comments = head.find("-- MariaDB dump") != std::string::npos ||
                            head.find("-- MySQL dump") != std::string::npos;
  if (has_comments && last_line_of(file).find("-- Dump completed") == std::string::npos)
    throw cut_error(path, L"falta a linha final da cópia.");
  const Counted counted = count_statements(file, sql_mode, observer);
  if (counted.is_cut)
    throw cut_error(path, L"o comando da linha " + decimal_text(counted.line) + L" não termina.");
}

void give_back_database(DbConnection& connection, const std::wstring& database) {
  try {
    const auto now = connection.execute(L"SELECT DATABASE();");
    if (!database.empty() && wide_field(*now, 0) != database)
      connection.execute(L"USE " + quoted_name(database) + L";");
  } catch (const DbError&) {
    // It was dropped, or the connection is gone.
  }
}

void keep_error(ScriptOutcome& outcome, const DbError& error, long line, bool ignore_error) {
  outcome.error_line = line;
  outcome.error_number = error.number;
  outcome.error_text = error.description;
  ++outcome.errors;
  outcome.stopped = !ignore_error || error.number == kUserInterrupt;
}

// A driver that changes characters on their way would lose them in silence.
void check_driver(DbConnection& connection) {
  connection.execute(L"SET NAMES utf8mb4;");
  if (!sends_unicode(connection))
    throw DbError(kBadFormat,
                  L"A conexão não transporta todos os caracteres: use um driver com Unicode.");
}

void run_all(SqlSplitter& splitter, StatementText& text, int64_t length, DbConnection& connection,
             MaintenanceObserver& observer, bool ignore_error, ScriptOutcome& outcome) {
  std::wstring sql;
  for (std::string_view statement; !outcome.stopped && splitter.next(statement);) {
    observer.progress(length, splitter.position());
    try {
      if (observer.is_cancelled()) throw cancelled_error();
      text.read(statement, sql);
      observer.command(sql);
      ++outcome.commands;
      connection.execute(sql);
    } catch (const DbError& error) {
      keep_error(outcome, error, splitter.line(), ignore_error);
    }
    observer.pump();
  }
  if (!outcome.stopped && splitter.is_cut())
    keep_error(outcome,
               {kInputPastEnd, L"O arquivo termina no meio do comando da linha " +
                                   decimal_text(splitter.line()) + L"."},
               splitter.line(), ignore_error);
}

}  // namespace

void restore_sql(const std::wstring& path, SystemFile& file, int64_t length, DumpKind kind,
                 DbConnection& connection, MaintenanceObserver& observer, bool ignore_error,
                 ScriptOutcome& outcome) {
  std::optional<SessionKeeper> session(std::in_place, connection);
  const std::string sql_mode = to_utf8(session->sql_mode());
  try {
    if (kind == DumpKind::kExact)
      check_exact(path, file, sql_mode, observer);
    else
      check_servers(path, file, sql_mode, observer);
  } catch (const DbError& error) {
    keep_error(outcome, error, 0, ignore_error);
  }
  if (outcome.stopped) return;
  check_driver(connection);
  session->undo_open_work();
  SqlSplitter splitter([&file](std::span<uint8_t> room) { return file.read(room); }, sql_mode);
  StatementText text(session->executes_immediate());
  run_all(splitter, text, length, connection, observer, ignore_error, outcome);
  const std::wstring database = session->database();
  session.reset();
  give_back_database(connection, database);
}

}  // namespace kestrelon
