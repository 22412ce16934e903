#include "services/mysql/script_runner.h"

#include "base/decimal.h"
#include "base/text.h"
#include "services/mysql/block_tracker.h"
#include "services/mysql/dump_lines.h"
#include "services/mysql/file_errors.h"
#include "services/mysql/sql_restore.h"
#include "services/mysql/statement_gatherer.h"

namespace kestrelon {
namespace {

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
  } catch (const std::bad_alloc&) {
    tell_error(outcome, out_of_memory_error(), number);
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

// Statements told by the shape of lines.
class ToldRestore {
 public:
  ToldRestore(DbConnection& connection, MaintenanceObserver& observer, bool ignore_error,
              ScriptOutcome& outcome)
      : connection_(connection),
        observer_(observer),
        ignore_error_(ignore_error),
        outcome_(outcome) {}

  void feed(const std::string& line, long number) {
    last_line_ = number;
    if (is_skipping_) {
      skip(line);
      return;
    }
    const bool is_first = !gatherer_.is_gathering() && starts_command(line);
    if (is_first) {
      blocks_ = {};
      first_line_ = number;
    }
    if (is_first || gatherer_.is_gathering()) blocks_.feed(line);
    const auto statement = gatherer_.feed(line);
    if (statement)
      run(*statement, number);
    else if (!gatherer_.is_gathering() && !line.empty())
      observer_.pump();
  }

  void finish() {
    if (gatherer_.is_gathering())
      fail(L"O arquivo termina no meio de um comando: o da linha " + decimal_text(first_line_) +
               L".",
           last_line_);
    else if (is_skipping_)
      unfinished();
  }

 private:
  void run(const std::string& statement, long number) {
    if (observer_.is_cancelled()) throw cancelled_error();
    std::wstring sql = from_ansi(statement);
    observer_.command(sql);
    ++outcome_.commands;
    if (try_execute(connection_, sql, outcome_, number) != 0) {
      ++outcome_.errors;
      outcome_.stopped = !ignore_error_;
      is_skipping_ = ignore_error_ && !blocks_.is_closed() && creates_program(statement);
    }
    observer_.pump();
  }

  // The rest of a program that was cut in its middle, up to the end of its blocks or to the next
  // heading of a dump, whichever comes first.
  void skip(const std::string& line) {
    const bool is_heading = previous_ == "--" && line.starts_with("--  E");
    previous_ = line;
    if (is_heading) {
      unfinished();
      is_skipping_ = false;
      return;
    }
    blocks_.feed(line);
    is_skipping_ = !blocks_.is_closed() || !line.ends_with(';');
  }

  void unfinished() {
    fail(L"O bloco que começa na linha " + decimal_text(first_line_) + L" não termina.",
         first_line_);
  }

  void fail(const std::wstring& text, long line) {
    tell_error(outcome_, {kInputPastEnd, text}, line);
    ++outcome_.errors;
    outcome_.stopped = !ignore_error_;
  }

  DbConnection& connection_;
  MaintenanceObserver& observer_;
  bool ignore_error_;
  ScriptOutcome& outcome_;
  StatementGatherer gatherer_;
  BlockTracker blocks_;
  std::string previous_;
  long first_line_ = 0;
  long last_line_ = 0;
  bool is_skipping_ = false;
};

void restore_lines(const std::wstring& path, DbConnection& connection,
                   MaintenanceObserver& observer, bool ignore_error, ScriptOutcome& outcome) {
  ToldRestore restore(connection, observer, ignore_error, outcome);
  run_lines(path, observer, outcome,
            [&](const std::string& line, long number) { restore.feed(line, number); });
  if (!outcome.stopped) restore.finish();
}

}  // namespace

ScriptOutcome restore_file(const std::wstring& path, DbConnection& connection,
                           MaintenanceObserver& observer, bool ignore_error) {
  observer.status(L"Restaurando cópia de segurança...");
  ScriptOutcome outcome;
  try {
    int64_t length = 0;
    SystemFile file = open_lines(path, length);
    const DumpKind kind = kind_of_dump(head_of(file));
    if (kind != DumpKind::kTold)
      restore_sql(path, file, length, kind, connection, observer, ignore_error, outcome);
    else
      restore_lines(path, connection, observer, ignore_error, outcome);
  } catch (const DbError& error) {
    tell_error(outcome, error, outcome.error_line);
    outcome.stopped = true;
  } catch (const std::bad_alloc&) {
    tell_error(outcome, out_of_memory_error(), outcome.error_line);
    outcome.stopped = true;
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
