// What goes wrong in the middle: the old file, the caller's session and the server's locks stand.
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include "tests/services/mariadb/dump_fixture.h"
#include "tests/services/mariadb/every_kind.h"
#include "tests/services/mariadb/failing_connection.h"

namespace kestrelon::testing {
namespace {

constexpr int kPoints = 20;
constexpr const char* kYesterday = "yesterday's backup";
constexpr const char* kSettings =
    "SELECT @@sql_mode, @@time_zone, @@character_set_client, @@character_set_results, "
    "@@collation_connection, @@foreign_key_checks, @@unique_checks, @@autocommit, "
    "@@sql_select_limit, @@sql_quote_show_create, @@check_constraint_checks, @@in_transaction, "
    "DATABASE()";

class SafetyTest : public DumpTest {
 protected:
  SafetyTest() {
    std::ofstream(file_) << kYesterday;
    fill_all(every_kind_of_object());
  }
  ~SafetyTest() override {
    std::error_code error;
    std::filesystem::remove(partial(), error);
  }
  std::filesystem::path partial() const { return file_.string() + ".parcial"; }

  /// A session with settings of its own, none of which a dump leaves as they are.
  static void make_peculiar(MariaDbConnection& connection) {
    connection.run(
        "SET SESSION sql_mode='ANSI_QUOTES,NO_BACKSLASH_ESCAPES', time_zone='-03:00',"
        " foreign_key_checks=0, sql_select_limit=1, sql_quote_show_create=0");
    connection.run("SET NAMES utf8mb4 COLLATE utf8mb4_bin");
  }
  static std::vector<Cell> settings_of(MariaDbConnection& connection) {
    // Read as the dump would find them: the query itself changes nothing.
    if (mysql_query(connection.handle(), kSettings) != 0)
      return {Cell(mysql_error(connection.handle()))};
    MYSQL_RES* const result = mysql_store_result(connection.handle());
    MYSQL_ROW row = mysql_fetch_row(result);
    std::vector<Cell> cells;
    for (unsigned i = 0; i < mysql_num_fields(result); ++i)
      cells.push_back(row[i] == nullptr ? Cell() : Cell(row[i]));
    mysql_free_result(result);
    return cells;
  }
  /// Another session writes to a table without waiting for long.
  void expect_no_lock(const std::string& database) {
    MariaDbConnection other(port(), database);
    other.run("SET SESSION lock_wait_timeout=1, innodb_lock_wait_timeout=1");
    EXPECT_NO_THROW(other.run("ALTER TABLE datas COMMENT='livre'"));
  }
};

TEST_F(SafetyTest, AFailureAtAnyStatementLeavesTheSessionAndTheOldFile) {
  MariaDbConnection source(port(), "loja");
  make_peculiar(source);
  const auto before = settings_of(source);
  FailingConnection counted(source);
  for (const bool exact : {true, false}) {
    options_.exact_values = exact;
    counted.on_statement = nullptr;
    counted.statements = 0;
    const std::string whole = file_.string() + "-whole";
    source.run("SET SESSION sql_select_limit=DEFAULT");
    ASSERT_TRUE(
        service_.backup(std::wstring(whole.begin(), whole.end()), counted, observer_, options_))
        << error();
    std::filesystem::remove(whole);
    source.run("SET SESSION sql_select_limit=1");
    const int total = counted.statements;
    for (int point = 0; point < kPoints; ++point) {
      const int at = 1 + total * point / kPoints;
      counted.statements = 0;
      counted.on_statement = [at](int number, std::wstring_view) {
        if (number == at) throw DbError(2013, L"Lost connection");
      };
      std::ofstream(file_) << kYesterday;
      // What only serves the warnings may fail without harm.
      const bool is_written = service_.backup(file_.wstring(), counted, observer_, options_);
      EXPECT_FALSE(exact && is_written && at > 2 && service_.altered_values() == 0) << at;
      EXPECT_EQ(settings_of(source), before) << exact << " at " << at;
      EXPECT_EQ(dump_text() == kYesterday, !is_written) << exact << " at " << at;
    }
    expect_no_lock("loja");
  }
}

TEST_F(SafetyTest, AKilledProcessLeavesTheOldFile) {
  for (int point = 0; point < kPoints; ++point) {
    const pid_t child = fork();
    if (child == 0) {
      struct Killer final : MaintenanceObserver {
        void status(const std::wstring&) override { step(); }
        void command(std::wstring&) override {}
        void script_totals(long, long) override {}
        void progress(int64_t, int64_t) override { step(); }
        void pump() override {}
        void step() {
          if (left-- == 0) kill(getpid(), SIGKILL);
        }
        int left = 0;
      } killer;
      killer.left = point * 3;
      options_.exact_values = point % 2 == 0;
      MariaDbConnection source(port(), "loja");
      service_.backup(file_.wstring(), source, killer, options_);
      _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status)) << point;
    EXPECT_EQ(dump_text(), kYesterday) << point;
  }
}

TEST_F(SafetyTest, AConnectionKilledAtAnyPointFails) {
  for (int point = 0; point < kPoints; ++point) {
    MariaDbConnection source(port(), "loja");
    FailingConnection counted(source);
    const std::string kill = "KILL CONNECTION " + std::to_string(mysql_thread_id(source.handle()));
    const int at = 1 + point * 5;
    counted.on_statement = [&](int number, std::wstring_view) {
      if (number == at) admin_.run(kill);
    };
    ASSERT_FALSE(service_.backup(file_.wstring(), counted, observer_, options_)) << at;
    EXPECT_EQ(error().find("Número: 0\r\n"), std::string::npos);
    EXPECT_EQ(dump_text(), kYesterday);
  }
}

TEST_F(SafetyTest, AFullDiskLeavesTheOldFile) {
  struct sigaction ignored {};
  struct sigaction old_action {};
  ignored.sa_handler = SIG_IGN;
  sigaction(SIGXFSZ, &ignored, &old_action);
  rlimit old{};
  getrlimit(RLIMIT_FSIZE, &old);
  for (const bool exact : {true, false}) {
    options_.exact_values = exact;
    const rlimit small{4096, old.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_FALSE(backup());
    setrlimit(RLIMIT_FSIZE, &old);
    EXPECT_NE(error().find("Número: 61\r\n"), std::string::npos) << error();
    EXPECT_EQ(dump_text(), kYesterday);
  }
  sigaction(SIGXFSZ, &old_action, nullptr);
  // Without an old file the part stands where it was asked for.
  std::filesystem::remove(file_);
  EXPECT_FALSE(service_.backup(L"/proc/nowhere/x.sql", admin_, observer_, options_));
  EXPECT_NE(error().find("Número: 75\r\n"), std::string::npos) << error();
}

TEST_F(SafetyTest, ARestoreThatFailsGivesTheSessionBackAndHoldsNoLock) {
  ASSERT_TRUE(backup()) << error();
  for (int point = 0; point < kPoints; ++point) {
    MariaDbConnection target(port(), "copia");
    make_peculiar(target);
    const auto before = settings_of(target);
    FailingConnection counted(target);
    const int at = 8 + point * 13;
    counted.on_statement = [&](int number, std::wstring_view) {
      if (number == at) throw DbError(1205, L"Lock wait timeout exceeded");
    };
    const bool restored = service_.restore(file_.wstring(), counted, observer_, false);
    EXPECT_EQ(restored, counted.statements < at) << at;
    EXPECT_EQ(settings_of(target), before) << at;
    if (!rows("copia", "SHOW TABLES LIKE 'datas'").empty()) expect_no_lock("copia");
  }
}

TEST_F(SafetyTest, AStatementFitsTheServersPacket) {
  fill("CREATE TABLE grandes (id INT PRIMARY KEY, b LONGBLOB, t LONGTEXT, g GEOMETRY)");
  fill(
      "INSERT INTO grandes VALUES (1, REPEAT(0x00FF27, 200000), REPEAT('ção''\\\\', 90000), "
      "NULL), (2, '', NULL, ST_GeomFromText('POINT(1 2)')), (3, REPEAT('x', 900000), "
      "REPEAT('y', 900000), NULL)");
  const std::string old = *read_rows(admin_, "SELECT @@GLOBAL.max_allowed_packet")[0][0];
  admin_.run("SET GLOBAL max_allowed_packet=1048576");
  const bool is_written = backup();
  const bool is_restored = is_written && restore();
  EXPECT_TRUE(is_restored) << error();
  // What the target's packet cannot hold is refused, never put in as NULL.
  admin_.run("DROP DATABASE copia");
  admin_.run("CREATE DATABASE copia");
  admin_.run("SET GLOBAL max_allowed_packet=" + old);
  ASSERT_TRUE(restore()) << error();
  EXPECT_EQ(differing("grandes"), 0u);
  admin_.run("SET GLOBAL max_allowed_packet=524288");
  EXPECT_FALSE(restore());
  admin_.run("SET GLOBAL max_allowed_packet=" + old);
}

TEST_F(SafetyTest, ACancelEndsTheWorkAndKeepsTheOldFile) {
  struct Canceller final : MaintenanceObserver {
    void status(const std::wstring&) override {}
    void command(std::wstring&) override { ++commands; }
    void script_totals(long, long) override {}
    void progress(int64_t, int64_t) override { ++steps; }
    void pump() override {}
    bool is_cancelled() override { return steps + commands > 5; }
    int steps = 0;
    int commands = 0;
  };
  for (const bool exact : {true, false}) {
    options_.exact_values = exact;
    Canceller canceller;
    MariaDbConnection source(port(), "loja");
    EXPECT_FALSE(service_.backup(file_.wstring(), source, canceller, options_));
    EXPECT_NE(error().find("Número: 18\r\n"), std::string::npos) << error();
    EXPECT_EQ(dump_text(), kYesterday);
  }
  for (const bool exact : {true, false}) {
    options_.exact_values = exact;
    ASSERT_TRUE(backup()) << error();
    Canceller canceller;
    MariaDbConnection target(port(), "copia");
    EXPECT_FALSE(service_.restore(file_.wstring(), target, canceller, true)) << exact;
    EXPECT_LE(canceller.commands, 7);
  }
}

TEST_F(SafetyTest, ACutFileIsToldBeforeAnythingRuns) {
  ASSERT_TRUE(backup()) << error();
  const std::string whole = dump_text();
  for (int point = 1; point <= kPoints; ++point) {
    std::ofstream(file_, std::ios::binary)
        << whole.substr(0, whole.size() * static_cast<size_t>(point) / (kPoints + 1));
    observer_.commands.clear();
    EXPECT_FALSE(restore()) << point;
    EXPECT_TRUE(observer_.commands.empty()) << point;
    EXPECT_NE(error().find(file_.string() + " está cortado"), std::string::npos) << error();
  }
  // A hole in the middle, the last line whole.
  const size_t hole = whole.find("INSERT INTO `textos`");
  std::ofstream(file_, std::ios::binary)
      << whole.substr(0, hole) << whole.substr(whole.find("COMMIT;", hole));
  observer_.commands.clear();
  EXPECT_FALSE(restore());
  EXPECT_TRUE(observer_.commands.empty());
}

TEST_F(SafetyTest, DatabasesAreToldApartAsTheServerTellsThem) {
  admin_.run("DROP DATABASE IF EXISTS LOJA");
  admin_.run("CREATE DATABASE LOJA");
  admin_.run("CREATE PROCEDURE LOJA.alheia() SELECT 1");
  for (const bool exact : {true, false}) {
    options_.exact_values = exact;
    ASSERT_TRUE(backup()) << error();
    EXPECT_EQ(dump_text().find("alheia"), std::string::npos) << exact;
  }
  admin_.run("DROP DATABASE LOJA");
}

TEST_F(SafetyTest, TheDefaultFormTellsWhatItLeavesOut) {
  options_.exact_values = false;
  ASSERT_TRUE(backup()) << error();
  const std::string warnings = to_utf8(service_.warnings());
  for (const char* line :
       {"A trigger `t1` não faz parte", "O evento `noite`", "A coluna invisível `oculta`",
        "A procedure `p_comentada` não volta igual", "O zero da coluna `id` da tabela `escondidas`",
        "A coluna gerada `soma`", "Tabela `datas`: ", "tem quebras de linha"})
    EXPECT_NE(warnings.find(line), std::string::npos) << line << "\n" << warnings;
  EXPECT_EQ(dump_text().find("\nDROP TABLE numeros"), std::string::npos);
  // A table named with a line end and a statement behind it harms nothing.
  MariaDbConnection source(port(), "loja");
  service_.restore(file_.wstring(), source, observer_, true);
  EXPECT_FALSE(rows("loja", "SHOW TABLES LIKE 'numeros'").empty());
  EXPECT_NE(error().find("O arquivo termina no meio de um comando: o da linha "), std::string::npos)
      << "a routine that does not close swallows what follows, as told: " << error();
}

}  // namespace
}  // namespace kestrelon::testing
