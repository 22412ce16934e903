// A connection that fails at a point of the test's choice.
#pragma once

#include <functional>

#include "tests/services/mariadb/mariadb_connection.h"

namespace kestrelon::testing {

/// Calls `on_statement` before each statement that goes to the inner connection; it may throw.
class FailingConnection final : public DbConnection {
 public:
  explicit FailingConnection(DbConnection& inner) : inner_(inner) {}

  std::wstring default_database() override { return inner_.default_database(); }
  std::unique_ptr<RecordSet> execute(std::wstring_view sql) override {
    count(sql);
    return inner_.execute(sql);
  }
  std::unique_ptr<RecordSet> open_rows(std::unique_ptr<RecordSet> reuse,
                                       std::wstring_view sql) override {
    count(sql);
    return inner_.open_rows(std::move(reuse), sql);
  }

  std::function<void(int number, std::wstring_view sql)> on_statement;
  int statements = 0;

 private:
  void count(std::wstring_view sql) {
    ++statements;
    if (on_statement) on_statement(statements, sql);
  }

  DbConnection& inner_;
};

}  // namespace kestrelon::testing
