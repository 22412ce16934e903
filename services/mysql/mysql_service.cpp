#include "services/mysql/mysql_service.h"

#include <optional>

#include "base/decimal.h"
#include "services/mysql/dump_writer.h"
#include "services/mysql/exact_dump.h"
#include "services/mysql/file_errors.h"
#include "services/mysql/script_runner.h"
#include "services/mysql/table_maintenance.h"

namespace kestrelon {

void MysqlService::keep_error(long number, const std::wstring& text, long line) {
  error_description_ = L"Mensagem original de erro:\r\n-\r\nLinha: " + decimal_text(line) +
                       L"\r\nNúmero: " + decimal_text(number) + L"\r\nDescrição: " + text;
}

template <class Work>
bool MysqlService::run(Work&& work) {
  try {
    work();
    return true;
  } catch (const DbError& error) {
    keep_error(error.number, error.description, 0);
  } catch (const std::bad_alloc&) {
    const DbError error = out_of_memory_error();
    keep_error(error.number, error.description, 0);
  }
  return false;
}

template <class Dump>
bool MysqlService::write(const std::wstring& path, DbConnection& connection,
                         MaintenanceObserver& observer, const BackupOptions& options) {
  AlterationLog log;  // an event may ask for the one of the last backup
  std::optional<Dump> dump;
  bool is_written = false;
  try {
    dump.emplace(path, connection, observer, options, log);
    dump->write();
    is_written = true;
  } catch (const DbError& error) {
    keep_error(error.number, error.description, dump ? dump->lines_written() : 0);
  } catch (const std::bad_alloc&) {
    const DbError error = out_of_memory_error();
    keep_error(error.number, error.description, dump ? dump->lines_written() : 0);
  }
  log_ = std::move(log);
  return is_written;
}

bool MysqlService::backup(const std::wstring& path, DbConnection& connection,
                          MaintenanceObserver& observer, const BackupOptions& options) {
  return options.exact_values ? write<ExactDump>(path, connection, observer, options)
                              : write<DumpWriter>(path, connection, observer, options);
}

bool MysqlService::restore(const std::wstring& path, DbConnection& connection,
                           MaintenanceObserver& observer, bool ignore_error) {
  const ScriptOutcome outcome = restore_file(path, connection, observer, ignore_error);
  if (outcome.error_number != 0)
    keep_error(outcome.error_number, outcome.error_text, outcome.error_line);
  return !outcome.stopped;
}

long MysqlService::execute_by_line(const std::wstring& path, DbConnection& connection,
                                   MaintenanceObserver& observer) {
  const ScriptOutcome outcome = run_script_by_line(path, connection, observer);
  if (outcome.error_number != 0)
    keep_error(outcome.error_number, outcome.error_text, outcome.error_line);
  return outcome.errors;
}

bool MysqlService::alter_engine(DbConnection& connection, MaintenanceObserver& observer,
                                int engine) {
  return run([&] { alter_tables_engine(connection, observer, engine); });
}

bool MysqlService::optimize(DbConnection& connection, MaintenanceObserver& observer) {
  return run([&] { optimize_tables(connection, observer); });
}

bool MysqlService::repair(DbConnection& connection, MaintenanceObserver& observer, int mode) {
  return run([&] { repair_tables(connection, observer, mode); });
}

void MysqlService::flush(DbConnection& connection, MaintenanceObserver& observer, int what) {
  run([&] { flush_server(connection, observer, what); });
}

}  // namespace kestrelon
