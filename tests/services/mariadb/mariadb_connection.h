// The dump's connection over the server's own client library.
#pragma once

#include <mysql.h>

#include <memory>
#include <string>

#include "services/mysql/db_connection.h"

namespace kestrelon::testing {

/// Field types and values come as an ADO provider gives them: decimals with a comma, dates as
/// moments, BIT(1) as a boolean. Rows of `open_rows` are streamed, other results are held whole.
class MariaDbConnection final : public DbConnection {
 public:
  /// Connects to the loopback port; an empty database is none. Throws DbError.
  explicit MariaDbConnection(unsigned port, const std::string& database = {});

  std::wstring default_database() override { return database_; }
  std::unique_ptr<RecordSet> execute(std::wstring_view sql) override;
  std::unique_ptr<RecordSet> open_rows(std::unique_ptr<RecordSet> reuse,
                                       std::wstring_view sql) override;

  /// A statement in UTF-8 whose result does not matter.
  void run(const std::string& sql);
  MYSQL* handle() { return mysql_.get(); }

 private:
  [[noreturn]] void fail();

  std::unique_ptr<MYSQL, decltype(&mysql_close)> mysql_;
  std::wstring database_;
};

}  // namespace kestrelon::testing
