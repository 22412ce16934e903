#include "services/mysql/mysql_service.h"

#include <optional>

#include "base/decimal.h"
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
    return false;
  }
}

bool MysqlService::backup(const std::wstring& path, DbConnection& connection,
                          MaintenanceObserver& observer, const BackupOptions& options) {
  altered_values_ = 0;
  std::optional<DumpWriter> writer;
  try {
    writer.emplace(path, connection, observer, options);
    writer->write();
  } catch (const DbError& error) {
    keep_error(error.number, error.description, writer ? writer->lines_written() : 0);
    if (writer) altered_values_ = writer->altered_values();
    return false;
  }
  altered_values_ = writer->altered_values();
  return true;
}

bool MysqlService::restore(const std::wstring& path, DbConnection& connection,
                           MaintenanceObserver& observer, bool ignore_error) {
  const ScriptOutcome outcome = restore_dump(path, connection, observer, ignore_error);
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
