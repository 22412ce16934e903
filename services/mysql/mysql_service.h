// The maintenance service over a connection: what KN_MYSQL offers, without its COM clothes.
#pragma once

#include <string>

#include "services/mysql/alteration_log.h"
#include "services/mysql/backup_options.h"
#include "services/mysql/db_connection.h"
#include "services/mysql/maintenance_observer.h"

namespace kestrelon {

/// Every call tells its failure by its result and by `error_description`, and throws nothing of the
/// database's.
class MysqlService {
 public:
  bool backup(const std::wstring& path, DbConnection& connection, MaintenanceObserver& observer,
              const BackupOptions& options);
  bool restore(const std::wstring& path, DbConnection& connection, MaintenanceObserver& observer,
               bool ignore_error);
  /// Commands that failed.
  long execute_by_line(const std::wstring& path, DbConnection& connection,
                       MaintenanceObserver& observer);
  bool alter_engine(DbConnection& connection, MaintenanceObserver& observer, int engine);
  bool optimize(DbConnection& connection, MaintenanceObserver& observer);
  bool repair(DbConnection& connection, MaintenanceObserver& observer, int mode);
  void flush(DbConnection& connection, MaintenanceObserver& observer, int what);

  /// Text of the last error, kept by calls that succeed.
  const std::wstring& error_description() const { return error_description_; }
  /// Values and objects of the last backup that its text changes or leaves out.
  uint64_t altered_values() const { return log_.count(); }
  /// What they are, a line each, in Portuguese.
  const std::wstring& warnings() const { return log_.lines(); }

 private:
  template <class Dump>
  bool write(const std::wstring& path, DbConnection& connection, MaintenanceObserver& observer,
             const BackupOptions& options);
  template <class Work>
  bool run(Work&& work);
  void keep_error(long number, const std::wstring& text, long line);

  std::wstring error_description_;
  AlterationLog log_;
};

}  // namespace kestrelon
