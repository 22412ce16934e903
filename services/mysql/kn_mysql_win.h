// KN_MYSQL: backup and maintenance of MySQL databases over the caller's connection.
#pragma once

#include "kn_mysql_glue.h"
#include "services/mysql/mysql_service.h"

namespace kestrelon {

class KN_MYSQL final : public KN_MYSQLGlue<KN_MYSQL, AutomationObject> {
 public:
  bool backup(const std::wstring& file, IDispatch* connection, const VARIANT& progress,
              bool drop_database, bool drop_table_if_exists, bool only_table_structure,
              short records_in_block, const std::wstring& application_title,
              const std::wstring& additional_information);
  bool restore(const std::wstring& file, IDispatch* connection, IDispatch* progress,
               bool ignore_error);
  long execute_sql_by_line(const std::wstring& file, IDispatch* connection,
                           const VARIANT& progress);
  bool alter_tables_engine(IDispatch* connection, MYSQL_TABLE_ENGINE engine,
                           const VARIANT& progress);
  bool optimize_tables(IDispatch* connection, const VARIANT& progress);
  bool repair_tables(IDispatch* connection, const VARIANT& progress, MYSQL_TYPE_REPAIR mode);
  void flush(IDispatch* connection, MYSQL_FLUSH what);

  const std::wstring& err_description() const { return service_.error_description(); }
  bool exact_values() const { return exact_values_; }
  void set_exact_values(bool exact) { exact_values_ = exact; }
  long altered_values() const;
  /// Heard by the work that runs; without one nothing happens.
  void cancel() { is_cancelled_ = true; }
  const std::wstring& last_warnings() const { return service_.warnings(); }

 private:
  class Observer;

  MysqlService service_;
  bool exact_values_ = false;
  bool is_cancelled_ = false;
};

}  // namespace kestrelon
