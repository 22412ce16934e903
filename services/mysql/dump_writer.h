// Writes the default form of a dump. Its lines and their order are the contract with the restore.
#pragma once

#include <string>
#include <vector>

#include "services/mysql/alteration_log.h"
#include "services/mysql/backup_options.h"
#include "services/mysql/db_connection.h"
#include "services/mysql/dump_lines.h"
#include "services/mysql/maintenance_observer.h"
#include "services/mysql/value_writer.h"

namespace kestrelon {

/// One backup. Throws DbError; the file then stays as far as it was written.
class DumpWriter {
 public:
  DumpWriter(const std::wstring& path, DbConnection& connection, MaintenanceObserver& observer,
             const BackupOptions& options, AlterationLog& log);

  void write();

  long lines_written() const { return lines_.count(); }

 private:
  struct View {
    std::wstring name;
    std::wstring text;
  };
  /// The words that part stored procedures from functions.
  struct RoutineKind {
    std::wstring_view sql;    // PROCEDURE
    std::wstring_view label;  // procedure
  };

  void write_header();
  void write_database();
  void write_routines(const RoutineKind& kind);
  int64_t write_tables();
  void keep_view(RecordSet& tables, const std::wstring& name);
  bool write_table(RecordSet& tables, const std::wstring& name);
  void write_rows(std::unique_ptr<RecordSet> reuse, const std::wstring& name);
  void write_page(RecordSet& rows);
  bool try_row(RecordSet& rows);
  void write_row(RecordSet& rows);
  bool leaves_out(const std::wstring& name, const std::wstring& text);
  void check_cancel();
  void write_blob(RecordSet& rows, size_t field, int type);
  void write_views();
  void write_comment(std::wstring_view text);
  void write_split(std::wstring_view text, bool pump_each_line);
  std::wstring moment_text() const;
  std::wstring create_text(RecordSet& result, size_t field, const std::wstring& label);

  DbConnection& connection_;
  MaintenanceObserver& observer_;
  const BackupOptions& options_;
  AlterationLog& log_;
  LineWriter lines_;
  ValueWriter values_;
  std::vector<View> views_;
  std::vector<int> field_types_;  // of the table being written
  std::wstring insert_;           // its INSERT
  std::string page_;              // the rows of an INSERT
};

}  // namespace kestrelon
