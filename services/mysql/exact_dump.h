// The exact form of a dump: every table, row, sequence, view, routine, trigger and event of a
// database, for Restore and for the server's own client.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "services/mysql/alteration_log.h"
#include "services/mysql/backup_options.h"
#include "services/mysql/db_connection.h"
#include "services/mysql/dump_head.h"
#include "services/mysql/exact_output.h"
#include "services/mysql/exact_row.h"
#include "services/mysql/maintenance_observer.h"
#include "services/mysql/session_keeper.h"

namespace kestrelon {

/// The mode under which the file is read: no zero becomes a new number, dates that do not exist are
/// taken as they are, and what does not fit is an error.
inline constexpr wchar_t kExactMode[] =
    L"NO_AUTO_VALUE_ON_ZERO,STRICT_ALL_TABLES,ALLOW_INVALID_DATES,NO_ENGINE_SUBSTITUTION";

/// One backup. Throws DbError; the session of the caller is as before in any case. Rows are those
/// of one moment in engines with transactions.
class ExactDump {
 public:
  ExactDump(const std::wstring& path, DbConnection& connection, MaintenanceObserver& observer,
            const BackupOptions& options, AlterationLog& log);
  ~ExactDump();
  ExactDump(const ExactDump&) = delete;
  ExactDump& operator=(const ExactDump&) = delete;

  void write();
  long lines_written() const { return output_.lines(); }

 private:
  struct Named {
    std::wstring name;
    std::wstring type;  // as SHOW FULL TABLES has it
  };
  /// The words of a kind of stored program.
  struct ProgramKind {
    const wchar_t* sql;    // PROCEDURE
    const wchar_t* label;  // procedure
    const wchar_t* list;   // the statement that lists them
    const wchar_t* name_field;
    const wchar_t* database_field;  // of a list over all databases; null for one of this alone
    const wchar_t* text_field;      // of SHOW CREATE
    bool is_everywhere;             // on servers of every kind
  };

  void prepare_session();
  void begin_snapshot();
  void write_head();
  void write_settings();
  void write_database();
  void write_end();
  void step(size_t done, size_t total);
  std::wstring moment_text() const;
  std::wstring position(size_t index) const;
  std::wstring create_text(std::wstring_view what, const std::wstring& name,
                           std::wstring_view field);
  bool is_own_database(const std::wstring& name) const;

  void list_tables();
  void write_tables();
  void write_table(const Named& table, std::unique_ptr<RecordSet>& reuse);
  void write_sequence(const std::wstring& name);
  void write_rows(const std::wstring& name, std::unique_ptr<RecordSet> reuse);
  std::wstring select_of(const std::wstring& name, const std::vector<ExactColumn>& columns,
                         std::vector<SelectedColumn>& selected);
  void copy_rows(RecordSet& rows, ExactRow& row, const std::string& insert);
  void write_insert(std::string& sql);

  void write_stand_ins();
  void write_views();
  void write_programs(const ProgramKind& kind);
  void write_program(const ProgramKind& kind, const std::wstring& name);
  void write_text(RecordSet& created, const std::wstring& text, const std::wstring& label);
  void set_texts(const std::wstring& client, const std::wstring& collation);
  void check_text(const std::wstring& text, const std::wstring& label);

  DbConnection& connection_;
  MaintenanceObserver& observer_;
  const BackupOptions& options_;
  AlterationLog& log_;
  ExactOutput output_;
  SessionKeeper session_;
  DumpTotals totals_;
  std::vector<Named> tables_;  // and views and sequences, in the order of the server
  std::vector<std::wstring> views_;
  std::vector<std::wstring> broken_views_;
  size_t most_statement_ = 0;  // bytes
  bool has_unicode_ = true;
  bool names_have_case_ = true;
  bool has_snapshot_ = false;
};

}  // namespace kestrelon
