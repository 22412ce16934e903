// Statements out of files, and what becomes of them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "services/mysql/dump_lines.h"
#include "services/mysql/mysql_service.h"
#include "services/mysql/statement_gatherer.h"
#include "tests/services/mariadb/recording_observer.h"
#include "tests/services/mysql_fake.h"

namespace kestrelon::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::vector<std::string> lines_of(const std::string& text) {
  std::string_view left = text;
  LineReader reader([&left](std::span<uint8_t> room) {
    const size_t length = std::min(room.size(), left.size());
    std::copy_n(left.begin(), length, room.begin());
    left.remove_prefix(length);
    return std::optional(length);
  });
  std::vector<std::string> lines;
  for (std::string line; reader.next(line);) lines.push_back(line);
  return lines;
}

TEST(LineReader, EndsOfEveryKindPartLines) {
  EXPECT_THAT(lines_of("a\r\nb\nc\rd"), ElementsAre("a", "b", "c", "d"));
  EXPECT_THAT(lines_of("\r\n\r\n"), ElementsAre("", ""));
  EXPECT_THAT(lines_of("a\r\r\n"), ElementsAre("a", ""));
  EXPECT_THAT(lines_of(""), ElementsAre());
  // Ends and texts that meet the bounds of a block of the reader.
  for (size_t length = 65534; length < 65538; ++length) {
    const std::string text(length, 'x');
    EXPECT_THAT(lines_of(text + "\r\nb\r\n"), ElementsAre(text, "b")) << length;
    EXPECT_THAT(lines_of(text + text), ElementsAre(text + text)) << length;
  }
}

std::vector<std::string> statements_of(const std::vector<std::string>& lines) {
  StatementGatherer gatherer;
  std::vector<std::string> statements;
  for (const std::string& line : lines)
    if (auto statement = gatherer.feed(line)) statements.push_back(*statement);
  if (gatherer.is_gathering()) statements.push_back("(cut)");
  return statements;
}

TEST(StatementGatherer, BoundariesAreToldByTheShapeOfLines) {
  EXPECT_THAT(statements_of({"", "-- x;", " SELECT 1;", "(1);", "0;", "a;"}),
              ElementsAre("0;", "a;"));
  EXPECT_THAT(statements_of({"INSERT INTO `t` VALUES ", "('--'),", "('x');", "COMMIT;"}),
              ElementsAre("INSERT INTO `t` VALUES ('--'),('x');", "COMMIT;"));
  EXPECT_THAT(
      statements_of({"CREATE PROCEDURE p()", "begin", "  DO 1;", "END IF;", "end;", "DO 2;"}),
      ElementsAre("CREATE PROCEDURE p()\r\nbegin  DO 1;END IF;\r\nend;", "DO 2;"));
  EXPECT_THAT(statements_of({"CREATE PROCEDURE p()", "BEGIN", "end ;", "DO 2;"}),
              ElementsAre("(cut)"))
      << "such an end does not close and swallows what follows";
  EXPECT_THAT(statements_of({"BEGIN;", "a", "BEGINNING;", "END;"}),
              ElementsAre("BEGIN;", "a\r\nBEGINNING;\r\nEND;"));
  EXPECT_THAT(statements_of({"a; "}), ElementsAre("(cut)"));
  EXPECT_THAT(statements_of({"\xE9"
                             "a;"}),
              ElementsAre())
      << "letters are the ASCII ones";
}

class ScriptTest : public ::testing::Test {
 protected:
  bool restore(const std::string& text, bool ignore_error = false) {
    file_.write(text);
    return service_.restore(file_.path.wstring(), connection_, observer_, ignore_error);
  }

  FakeConnection connection_;
  MysqlService service_;
  RecordingObserver observer_;
  ScratchFile file_;
};

TEST_F(ScriptTest, ARestoreTellsEachCommandAndRunsItOnce) {
  ASSERT_TRUE(restore("-- Vers\xE3o\r\nSET a='\xE9';\r\n\r\nINSERT\r\n (1);\r\n"));
  EXPECT_THAT(connection_.asked, ElementsAre(L"SET a='é';", L"INSERT (1);"));
  EXPECT_EQ(observer_.commands, connection_.asked);
  EXPECT_THAT(observer_.statuses, ElementsAre(L"Restaurando cópia de segurança...",
                                              L"Cópia de segurança restaurada com sucesso."));
  const std::vector<std::pair<int64_t, int64_t>> steps = {{40, 9},  {40, 19}, {40, 19},
                                                          {40, 25}, {40, 30}, {100, 100}};
  EXPECT_EQ(observer_.steps, steps);
}

TEST_F(ScriptTest, ErrorsStopARestoreOrArePassedOver) {
  connection_.failing = {L"b;"};
  EXPECT_FALSE(restore("a;\r\nb;\r\nc;"));
  EXPECT_THAT(connection_.asked, ElementsAre(L"a;", L"b;"));
  EXPECT_EQ(observer_.statuses.size(), 1u);
  EXPECT_TRUE(restore("a;\r\nb;\r\nc;", true));
  EXPECT_EQ(connection_.asked.back(), L"c;");
  connection_.asked.clear();
  EXPECT_FALSE(restore("a;\r\nc"));
  EXPECT_THAT(connection_.asked, ElementsAre(L"a;")) << "a cut statement is not run";
  EXPECT_THAT(service_.error_description(), HasSubstr(L"Linha: 2\r\nNúmero: 62\r\n"));
  EXPECT_TRUE(restore("c", true));
  EXPECT_FALSE(service_.restore(L"/nonexistent/x.sql", connection_, observer_, true));
}

TEST_F(ScriptTest, AScriptRunsItsLinesWithACommitEach) {
  connection_.failing = {L"b", L"BAD"};
  file_.write("-- x\r\n  a  \r\nb\r\n(c)\r\n\r\nd");
  EXPECT_EQ(service_.execute_by_line(file_.path.wstring(), connection_, observer_), 1);
  EXPECT_THAT(connection_.asked, ElementsAre(L"a", L"COMMIT;", L"b", L"COMMIT;", L"d", L"COMMIT;"));
  EXPECT_THAT(observer_.commands, ElementsAre(L"a", L"b Erro:1064", L"d"));
  EXPECT_THAT(observer_.totals, ElementsAre(std::pair<long, long>(3, 1)));
  EXPECT_EQ(observer_.statuses, std::vector<std::wstring>{L"Atualizando base de dados..."});
  connection_.failing = {L"COMMIT;"};
  EXPECT_EQ(service_.execute_by_line(file_.path.wstring(), connection_, observer_), 3);
  EXPECT_EQ(service_.execute_by_line(L"/nonexistent/x", connection_, observer_), 0);
  EXPECT_EQ(observer_.totals.back(), (std::pair<long, long>(0, 0)));
}

TEST_F(ScriptTest, MaintenanceRunsItsStatementsUnquoted) {
  connection_.answers[L"SHOW TABLE STATUS;"] = {{{L"Name"}}, {{L"a"}, {L"b c"}}};
  EXPECT_TRUE(service_.alter_engine(connection_, observer_, 3));
  EXPECT_TRUE(service_.repair(connection_, observer_, 2));
  EXPECT_THAT(
      connection_.asked,
      ElementsAre(L"SHOW TABLE STATUS;", L"LOCK TABLES a WRITE;", L"ALTER TABLE a ENGINE = BDB;",
                  L"UNLOCK TABLES;", L"LOCK TABLES b c WRITE;", L"ALTER TABLE b c ENGINE = BDB;",
                  L"UNLOCK TABLES;", L"SHOW TABLE STATUS;", L"LOCK TABLES a WRITE;",
                  L"REPAIR TABLE a USE_FRM;", L"UNLOCK TABLES;", L"LOCK TABLES b c WRITE;",
                  L"REPAIR TABLE b c USE_FRM;", L"UNLOCK TABLES;", L"UNLOCK TABLES;"));
  EXPECT_EQ(observer_.statuses[1], L"Alterando tabela (3 de 2): b c");
  EXPECT_FALSE(service_.alter_engine(connection_, observer_, 5));
  connection_.asked.clear();
  service_.flush(connection_, observer_, 0);
  service_.flush(connection_, observer_, 8);
  service_.flush(connection_, observer_, -1);
  EXPECT_THAT(connection_.asked,
              ElementsAre(L"FLUSH HOSTS, LOGS, PRIVILEGES, STATUS, TABLES, TABLES WITH READ LOCK, "
                          L"QUERY CACHE"));
  EXPECT_EQ(observer_.statuses.back(), L"Erro: 50015");
}

}  // namespace
}  // namespace kestrelon::testing
