// Statements out of SQL files.
#include "services/mysql/sql_splitter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "services/mysql/block_tracker.h"
#include "services/mysql/dump_head.h"
#include "services/mysql/statement_text.h"
#include "services/mysql/utf8_text.h"
#include "tests/services/plain_splitter.h"

namespace kestrelon::testing {
namespace {

using ::testing::ElementsAre;

std::vector<std::string> statements_of(const std::string& text, bool* is_cut = nullptr) {
  SqlSplitter splitter(source_of(text));
  std::vector<std::string> statements;
  for (std::string_view one; splitter.next(one);) statements.emplace_back(one);
  if (is_cut != nullptr) *is_cut = splitter.is_cut();
  return statements;
}

TEST(SqlSplitter, ADelimiterCountsOutsideQuotesAndCommentsOnly) {
  EXPECT_THAT(statements_of("a ';\\';' b; -- c;\n# d;\n/* e; */ f \"g;\"\"\" `h;\\`;;"),
              ElementsAre("a ';\\';' b", "f \"g;\"\"\" `h;\\`"));
  EXPECT_THAT(statements_of("/*!50003 a; ';*/' */; b --c;\n;"),
              ElementsAre("/*!50003 a; ';*/' */", "b --c"));
  EXPECT_THAT(statements_of("delimiter // x\na; -- //\nb//DELIMITER ;\nc;"),
              ElementsAre("a; -- //\nb", "c"));
  EXPECT_THAT(statements_of("\xEF\xBB\xBF/*M!999999\\- sandbox; */ a;"), ElementsAre("a"));
}

TEST(SqlSplitter, ModesOfTheFileChangeWhatAQuoteIs) {
  EXPECT_THAT(statements_of("SET SQL_MODE='NO_BACKSLASH_ESCAPES';a '\\';SET sql_mode = "
                            "@saved_sql_mode;b '\\';';c;"),
              ElementsAre("SET SQL_MODE='NO_BACKSLASH_ESCAPES'", "a '\\'",
                          "SET sql_mode = @saved_sql_mode", "b '\\';'", "c"));
  EXPECT_THAT(statements_of("/*!50003 SET sql_mode = 'ANSI_QUOTES' */;a \"\\\";b;"),
              ElementsAre("/*!50003 SET sql_mode = 'ANSI_QUOTES' */", "a \"\\\"", "b"));
  EXPECT_THAT(statements_of("SET @old_sql_mode='NO_BACKSLASH_ESCAPES';a '\\';';"),
              ElementsAre("SET @old_sql_mode='NO_BACKSLASH_ESCAPES'", "a '\\';'"));
}

TEST(SqlSplitter, AnEndInTheMiddleIsTold) {
  for (const char* cut : {"a", "a 'b;", "a /* b;", "/*! b;", "/* b", "a `b;", "a \"b\\"}) {
    bool is_cut = false;
    EXPECT_THAT(statements_of(cut, &is_cut), ElementsAre()) << cut;
    EXPECT_TRUE(is_cut) << cut;
  }
  for (const char* whole : {"", "a;", "a;\n-- b", "a; # b", "a;\n/* b */\n"}) {
    bool is_cut = true;
    statements_of(whole, &is_cut);
    EXPECT_FALSE(is_cut) << whole;
  }
}

TEST(SqlSplitter, RandomTextsAreSplitAsByThePlainSplitter) {
  static constexpr const char* kPieces[] = {"a",
                                            " ",
                                            ";",
                                            "'",
                                            "\"",
                                            "`",
                                            "\\",
                                            "--",
                                            "-- ",
                                            "-",
                                            "#",
                                            "/*",
                                            "/*!",
                                            "/*M!",
                                            "*/",
                                            "\n",
                                            "\r\n",
                                            "DELIMITER ",
                                            "delimiter //\n",
                                            "//",
                                            ";;",
                                            "BEGIN",
                                            "END",
                                            "\xC3\xA7",
                                            "\xFF",
                                            "/"};
  std::mt19937 random(7);
  for (int round = 0; round < 1'500; ++round) {
    std::string text;
    for (unsigned i = random() % 40; i > 0; --i) text += kPieces[random() % std::size(kPieces)];
    ASSERT_EQ(statements_of(text), PlainSplitter(text).all()) << text;
  }
  // Marks that lie across the blocks of the reader.
  for (const char* mark : {"'a;b'", "/* ; */", "-- ;\n", "`;`", "\\", "DELIMITER //\n//"})
    for (size_t before = (1 << 18) - 8; before < (1 << 18) + 3; ++before) {
      const std::string tail = std::string(mark) + ";y;";
      auto expected = PlainSplitter("x" + tail).all();
      if (!expected.empty()) expected[0].insert(0, before - 1, 'x');
      ASSERT_EQ(statements_of(std::string(before, 'x') + tail), expected) << mark << before;
    }
}

TEST(StatementText, BytesThatAreNoTextBecomeDigits) {
  StatementText text(true);
  std::wstring sql;
  text.read("INSERT INTO t VALUES ('\xC3\xA7', _binary 'a\xFF\\0''\\'', 'b')", sql);
  EXPECT_EQ(to_utf8(sql), "INSERT INTO t VALUES ('\xC3\xA7', _binary 0x61FF002727, 'b')");
  EXPECT_ANY_THROW(text.read("SELECT \xFF", sql));
  text.read("/*!40101 SET NAMES latin1 */", sql);
  text.read("SELECT '\xE7'", sql);
  EXPECT_EQ(to_utf8(sql), "EXECUTE IMMEDIATE CONVERT(0x53454C4543542027E727 USING latin1)");
  text.read("SET character_set_client = utf8mb4", sql);
  text.read("SELECT '\xC3\xA7'", sql);
  EXPECT_EQ(to_utf8(sql), "SELECT '\xC3\xA7'");
  text.read("SET character_set_client = @saved_cs_client", sql);
  text.read("SELECT '\xE7'", sql);
  EXPECT_TRUE(to_utf8(sql).ends_with("USING latin1)"));
  StatementText plain(false);
  plain.read("SET NAMES latin1", sql);
  EXPECT_ANY_THROW(plain.read("SELECT '\xE7'", sql));
}

TEST(DumpHead, TheLastLineTellsItsTotals) {
  const DumpTotals totals{3, 1'000'000, 5, 12};
  const std::string line = closing_line(totals);
  const auto read = read_closing_line(line);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->rows, totals.rows);
  EXPECT_EQ(read->statements, totals.statements);
  for (size_t length = 0; length + 1 < line.size(); ++length)
    EXPECT_FALSE(read_closing_line(line.substr(0, length))) << length;
  EXPECT_FALSE(read_closing_line(line + "x"));
  const std::wstring name = L"kestrelon_head_test.sql";
  SystemFile written = SystemFile::create(name);
  ASSERT_TRUE(written.write(std::string(9000, 'x') + "\n" + line + "\n\n") && written.close());
  SystemFile file = SystemFile::open(name);
  EXPECT_EQ(last_line_of(file), line);
  EXPECT_EQ(head_of(file).size(), 4096u);
  file.close();
  remove_file(name);
  EXPECT_EQ(kind_of_dump("--  Criado por: x"), DumpKind::kTold);
  EXPECT_EQ(kind_of_dump("\xEF\xBB\xBF-- MySQL dump 10.13"), DumpKind::kServers);
}

TEST(BlockTracker, BlocksCloseWithTheirEnds) {
  const auto closed = [](std::string_view text) {
    BlockTracker tracker;
    tracker.feed(text);
    return tracker.is_closed();
  };
  for (const char* yes :
       {"CREATE PROCEDURE p() BEGIN IF a THEN SELECT IF(a, b, c); END IF; END;",
        "CREATE PROCEDURE IF NOT EXISTS p() x: BEGIN CASE a WHEN 1 THEN DO 1; END CASE; END x;",
        "CREATE PROCEDURE p() BEGIN WHILE a DO SET a = REPEAT('x', 2); END WHILE; END",
        "SELECT CASE a WHEN 1 THEN 'BEGIN' END -- BEGIN", "SELECT 'it''s' /* BEGIN */"})
    EXPECT_TRUE(closed(yes)) << yes;
  for (const char* no : {"CREATE PROCEDURE p() BEGIN DO 1;", "CREATE PROCEDURE p() IF a THEN DO 1;",
                         "x: BEGIN LOOP DO 1; END LOOP;", "SELECT 'a", "/* a"})
    EXPECT_FALSE(closed(no)) << no;
  EXPECT_TRUE(creates_program("CREATE DEFINER=`table`@`x` PROCEDURE p()"));
  EXPECT_TRUE(creates_program("create or replace trigger t"));
  EXPECT_FALSE(creates_program("CREATE TABLE `procedure` (a INT)"));
  EXPECT_FALSE(creates_program("INSERT INTO procedure"));
}

}  // namespace
}  // namespace kestrelon::testing
