// Writes the dump of a database. Its lines and their order are the contract with the restore.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/calendar.h"
#include "services/mysql/db_connection.h"
#include "services/mysql/dump_lines.h"
#include "services/mysql/maintenance_observer.h"
#include "services/mysql/value_writer.h"

namespace kestrelon {

struct BackupOptions {
  bool drop_database = false;
  bool drop_table_if_exists = true;
  bool only_table_structure = false;
  /// Rows in one INSERT, at least 1.
  int records_in_block = 250;
  std::wstring application_title = L"Kestrelon 2012";
  std::wstring additional_information = L"Kestrelon 2012 - Interface gráfica de objetos";
  /// Values that the format would change are written in a form that comes back equal.
  bool exact_values = false;
  NumberMarks marks;
  std::function<DateTime()> clock;
};

/// One backup. Throws DbError; the file then stays as far as it was written.
class DumpWriter {
 public:
  DumpWriter(const std::wstring& path, DbConnection& connection, MaintenanceObserver& observer,
             const BackupOptions& options);

  void write();

  uint64_t altered_values() const { return values_.altered(); }
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
  void write_table(RecordSet& tables, const std::wstring& name);
  void write_rows(std::unique_ptr<RecordSet> reuse, const std::wstring& name);
  void write_page(RecordSet& rows);
  void write_row(RecordSet& rows);
  void write_blob(RecordSet& rows, size_t field, int type);
  void write_views();
  void write_comment(std::wstring_view text);
  void write_split(std::wstring_view text, bool pump_each_line);
  std::wstring moment_text() const;
  std::wstring create_text(RecordSet& result, size_t field);

  DbConnection& connection_;
  MaintenanceObserver& observer_;
  const BackupOptions& options_;
  LineWriter lines_;
  ValueWriter values_;
  std::vector<View> views_;
  std::vector<int> field_types_;  // of the table being written
  std::string page_;              // the rows of an INSERT
};

}  // namespace kestrelon
