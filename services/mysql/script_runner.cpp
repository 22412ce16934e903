#include "services/mysql/script_runner.h"

#include "base/decimal.h"
#include "base/text.h"
#include "services/mysql/dump_lines.h"
#include "services/mysql/statement_gatherer.h"

namespace kestrelon {
namespace {

constexpr long kInputPastEnd = 62;

void tell_error(ScriptOutcome& outcome, const DbError& error, long line) {
  outcome.error_line = line;
  outcome.error_number = error.number;
  outcome.error_text = error.description;
}

// Calls `body` with each line of the file and its number, progress told before, until the body
// stops the run or the file fails.
template <class Body>
void run_lines(const std::wstring& path, MaintenanceObserver& observer, ScriptOutcome& outcome,
               Body&& body) {
  long number = 0;
  try {
    int64_t length = 0;
    int64_t characters = 0;
    SystemFile file = open_lines(path, length);
    LineReader reader([&file](std::span<uint8_t> room) { return file.read(room); });
    for (std::string line; !outcome.stopped && reader.next(line);) {
      characters += static_cast<int64_t>(line.size());
      observer.progress(length, characters);
      body(line, ++number);
    }
  } catch (const DbError& error) {
    tell_error(outcome, error, number);
    outcome.stopped = true;
  }
}

// Runs a statement and answers its error number, 0 for none.
long try_execute(DbConnection& connection, const std::wstring& sql, ScriptOutcome& outcome,
                 long line) {
  try {
    connection.execute(sql);
    return 0;
  } catch (const DbError& error) {
    tell_error(outcome, error, line);
    return error.number;
  }
}

}  // namespace

ScriptOutcome restore_dump(const std::wstring& path, DbConnection& connection,
                           MaintenanceObserver& observer, bool ignore_error) {
  observer.status(L"Restaurando cópia de segurança...");
  ScriptOutcome outcome;
  StatementGatherer gatherer;
  long last_line = 0;
  run_lines(path, observer, outcome, [&](const std::string& line, long number) {
    last_line = number;
    const auto statement = gatherer.feed(line);
    if (!statement) {
      if (!gatherer.is_gathering() && !line.empty()) observer.pump();
      return;
    }
    std::wstring sql = from_ansi(*statement);
    observer.command(sql);
    ++outcome.commands;
    if (try_execute(connection, sql, outcome, number) != 0) {
      ++outcome.errors;
      outcome.stopped = !ignore_error;
    }
    observer.pump();
  });
  if (!outcome.stopped && gatherer.is_gathering()) {
    tell_error(outcome, {kInputPastEnd, L"O arquivo termina no meio de um comando."}, last_line);
    ++outcome.errors;
    outcome.stopped = !ignore_error;
  }
  if (outcome.stopped) return outcome;
  observer.progress(100, 100);
  observer.status(L"Cópia de segurança restaurada com sucesso.");
  return outcome;
}

ScriptOutcome run_script_by_line(const std::wstring& path, DbConnection& connection,
                                 MaintenanceObserver& observer) {
  observer.status(L"Atualizando base de dados...");
  ScriptOutcome outcome;
  run_lines(path, observer, outcome, [&](const std::string& line, long number) {
    observer.pump();
    const std::wstring text = from_ansi(line);
    const std::wstring command(trim_blanks(text));
    if (!starts_command(to_ansi(command.substr(0, 1)))) return;
    long error = try_execute(connection, command, outcome, number);
    if (const long other = try_execute(connection, L"COMMIT;", outcome, number)) error = other;
    if (error != 0) ++outcome.errors;
    std::wstring told = error != 0 ? command + L" Erro:" + decimal_text(error) : command;
    observer.command(told);
    ++outcome.commands;
  });
  observer.progress(100, 100);
  observer.script_totals(outcome.commands, outcome.errors);
  return outcome;
}

}  // namespace kestrelon
