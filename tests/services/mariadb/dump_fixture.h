// Databases, files and comparisons for tests against a real server.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <vector>

#include "services/mysql/mysql_service.h"
#include "services/mysql/utf8_text.h"
#include "tests/services/mariadb/mariadb_connection.h"
#include "tests/services/mariadb/mariadb_server.h"
#include "tests/services/mariadb/recording_observer.h"

namespace kestrelon::testing {

using Cell = std::optional<std::string>;
using Rows = std::vector<std::vector<Cell>>;

/// All rows of a query as the server sends them.
inline Rows read_rows(MariaDbConnection& connection, const std::string& sql) {
  Rows rows;
  connection.run("SET SESSION character_set_results = utf8mb4");
  if (mysql_real_query(connection.handle(), sql.data(), sql.size()) != 0)
    throw std::runtime_error(mysql_error(connection.handle()));
  MYSQL_RES* const result = mysql_store_result(connection.handle());
  while (MYSQL_ROW row = mysql_fetch_row(result)) {
    const unsigned long* const lengths = mysql_fetch_lengths(result);
    auto& cells = rows.emplace_back();
    for (unsigned i = 0; i < mysql_num_fields(result); ++i)
      cells.push_back(row[i] == nullptr ? Cell() : Cell(std::in_place, row[i], lengths[i]));
  }
  mysql_free_result(result);
  return rows;
}

/// Two databases of the test's own, the source filled by the test, and a file for the dump.
class DumpTest : public ::testing::Test {
 protected:
  DumpTest() {
    admin_.run("DROP DATABASE IF EXISTS loja");
    admin_.run("DROP DATABASE IF EXISTS copia");
    admin_.run("CREATE DATABASE loja CHARACTER SET utf8mb4");
    admin_.run("CREATE DATABASE copia CHARACTER SET utf8mb4");
    options_.clock = [] { return DateTime{{2026, 3, 9}, 14, 5, 7}; };
    options_.exact_values = true;
  }
  ~DumpTest() override {
    std::error_code error;
    std::filesystem::remove(file_, error);
  }

  unsigned port() const { return MariaDbServer::shared().port(); }
  void fill(const std::string& sql) { MariaDbConnection(port(), "loja").run(sql); }
  /// Statements of one session.
  void fill_all(const std::vector<std::string>& statements) {
    MariaDbConnection source(port(), "loja");
    for (const std::string& sql : statements) {
      try {
        source.run(sql);
      } catch (const DbError& failure) {
        throw std::runtime_error(sql + ": " + to_utf8(failure.description));
      }
    }
  }
  bool backup() {
    MariaDbConnection source(port(), "loja");
    return service_.backup(file_.wstring(), source, observer_, options_);
  }
  bool restore(bool ignore_error = false) {
    MariaDbConnection target(port(), "copia");
    return service_.restore(file_.wstring(), target, observer_, ignore_error);
  }
  Rows rows(const std::string& database, const std::string& sql) {
    MariaDbConnection connection(port(), database);
    return read_rows(connection, sql);
  }
  /// Values of a table that differ between the databases; rows are told apart by their order.
  size_t differing(const std::string& table) {
    const Rows a = rows("loja", "SELECT * FROM `" + table + "` ORDER BY 1");
    const Rows b = rows("copia", "SELECT * FROM `" + table + "` ORDER BY 1");
    EXPECT_EQ(a.size(), b.size()) << table;
    size_t count = 0;
    for (size_t i = 0; i < a.size() && i < b.size(); ++i)
      for (size_t j = 0; j < a[i].size(); ++j) count += a[i][j] != b[i][j];
    return count;
  }
  std::string dump_text() const {
    std::ifstream file(file_, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::string error() const { return to_utf8(service_.error_description()); }

  MariaDbConnection admin_{port()};
  std::filesystem::path file_ =
      std::filesystem::temp_directory_path() / ("kestrelon-dump-" + std::to_string(getpid()));
  BackupOptions options_;
  MysqlService service_;
  RecordingObserver observer_;
};

}  // namespace kestrelon::testing
