#include "services/mysql/kn_mysql_win.h"

#include <algorithm>
#include <limits>

#include "services/event_text_win.h"
#include "services/kn_platform_win.h"
#include "services/mysql/ado_connection_win.h"

namespace kestrelon {
namespace {

std::wstring locale_text(LCTYPE what) {
  wchar_t text[16] = {};
  GetLocaleInfoW(LOCALE_USER_DEFAULT, what, text, static_cast<int>(std::size(text)));
  return text;
}

NumberMarks user_marks() {
  NumberMarks marks;
  const std::wstring decimal = locale_text(LOCALE_SDECIMAL);
  const std::wstring thousands = locale_text(LOCALE_STHOUSAND);
  if (!decimal.empty()) marks.decimal = decimal[0];
  marks.thousands = thousands.empty() ? L'\0' : thousands[0];
  marks.currency = locale_text(LOCALE_SCURRENCY);
  return marks;
}

}  // namespace

// Raises the events of the class, drives the caller's progress object and lets messages run.
class KN_MYSQL::Observer final : public MaintenanceObserver {
 public:
  Observer(KN_MYSQL& owner, LateObject progress) : owner_(owner), progress_(std::move(progress)) {
    owner_.is_cancelled_ = false;
  }

  void status(const std::wstring& message) override {
    if (owner_.events().empty()) return;
    EventText text(message);
    owner_.raise_status(text.text);
  }
  void command(std::wstring& sql) override {
    if (owner_.events().empty()) return;
    EventText text(sql);
    owner_.raise_comando_sql_on_restore(text.text);
    sql = to_wstring(text.text);
  }
  void script_totals(long commands, long errors) override {
    owner_.raise_errors_on_execute_sql_by_lines(commands, errors);
  }
  void progress(int64_t max, int64_t value) override {
    tell_progress(max, value);
    if (!progress_) return;
    try {
      put(L"Max", max);
      put(L"Value", value);
    } catch (const ComError&) {
      // A bar that refuses a value is no reason to stop.
    }
  }
  void pump() override { pump_messages(); }
  bool is_cancelled() override { return owner_.is_cancelled_; }

 private:
  void tell_progress(int64_t max, int64_t value) {
    if (owner_.events().empty()) return;
    VARIANT_BOOL cancel = VARIANT_FALSE;
    long done = long_of(value);
    long total = long_of(max);
    owner_.raise_andamento(done, total, cancel);
    if (cancel != VARIANT_FALSE) owner_.is_cancelled_ = true;
  }
  static long long_of(int64_t number) {
    return static_cast<long>(std::min<int64_t>(number, std::numeric_limits<long>::max()));
  }
  void put(const wchar_t* name, int64_t number) {
    constexpr int64_t kMost = std::numeric_limits<long>::max();
    progress_.put_property(name, number > kMost ? Variant(static_cast<double>(number))
                                                : Variant(static_cast<long>(number)));
  }

  KN_MYSQL& owner_;
  LateObject progress_;
};

bool KN_MYSQL::backup(const std::wstring& file, IDispatch* connection, const VARIANT& progress,
                      bool drop_database, bool drop_table_if_exists, bool only_table_structure,
                      short records_in_block, const std::wstring& application_title,
                      const std::wstring& additional_information) {
  BackupOptions options;
  options.drop_database = drop_database;
  options.drop_table_if_exists = drop_table_if_exists;
  options.only_table_structure = only_table_structure;
  options.records_in_block = records_in_block;
  options.application_title = application_title;
  options.additional_information = additional_information;
  options.exact_values = exact_values_;
  options.marks = user_marks();
  options.clock = [] { return system_platform().local_now(); };
  AdoConnection database(connection);
  Observer observer(*this, object_of(progress));
  return service_.backup(file, database, observer, options);
}

bool KN_MYSQL::restore(const std::wstring& file, IDispatch* connection, IDispatch* progress,
                       bool ignore_error) {
  AdoConnection database(connection);
  Observer observer(*this, LateObject(ComPtr<IDispatch>(progress)));
  return service_.restore(file, database, observer, ignore_error);
}

long KN_MYSQL::execute_sql_by_line(const std::wstring& file, IDispatch* connection,
                                   const VARIANT& progress) {
  AdoConnection database(connection);
  Observer observer(*this, object_of(progress));
  return service_.execute_by_line(file, database, observer);
}

bool KN_MYSQL::alter_tables_engine(IDispatch* connection, MYSQL_TABLE_ENGINE engine,
                                   const VARIANT& progress) {
  AdoConnection database(connection);
  Observer observer(*this, object_of(progress));
  return service_.alter_engine(database, observer, engine);
}

bool KN_MYSQL::optimize_tables(IDispatch* connection, const VARIANT& progress) {
  AdoConnection database(connection);
  Observer observer(*this, object_of(progress));
  return service_.optimize(database, observer);
}

bool KN_MYSQL::repair_tables(IDispatch* connection, const VARIANT& progress,
                             MYSQL_TYPE_REPAIR mode) {
  AdoConnection database(connection);
  Observer observer(*this, object_of(progress));
  return service_.repair(database, observer, mode);
}

void KN_MYSQL::flush(IDispatch* connection, MYSQL_FLUSH what) {
  AdoConnection database(connection);
  Observer observer(*this, {});
  service_.flush(database, observer, what);
}

long KN_MYSQL::altered_values() const {
  constexpr uint64_t kMost = std::numeric_limits<long>::max();
  return static_cast<long>(std::min(service_.altered_values(), kMost));
}

}  // namespace kestrelon
