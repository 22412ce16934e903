// The text of a dump, line by line, over a scripted connection.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "services/mysql/mysql_service.h"
#include "tests/services/mariadb/recording_observer.h"
#include "tests/services/mysql_fake.h"

namespace kestrelon::testing {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr const wchar_t* kVersion = L"SHOW GLOBAL VARIABLES LIKE 'VERSION';";

class DumpTextTest : public ::testing::Test {
 protected:
  DumpTextTest() {
    options_.clock = [] { return DateTime{{2026, 3, 9}, 14, 5, 7}; };
    answer(kVersion, {{L"Variable_name"}, {L"Value"}}, {{L"version", L"10.11"}});
  }

  void answer(const std::wstring& sql, std::vector<FakeField> fields,
              std::vector<std::vector<FakeCell>> rows) {
    connection_.answers[sql] = {std::move(fields), std::move(rows)};
  }
  void add_table(const std::wstring& name, std::vector<FakeField> fields,
                 std::vector<std::vector<FakeCell>> rows) {
    auto& list = connection_.answers[L"SHOW TABLE STATUS;"];
    list.fields = {{L"Name"}, {L"Comment"}};
    list.rows.push_back({name, L""});
    answer(L"SHOW CREATE TABLE `" + name + L"`;", {{L"Table"}, {L"Create Table"}},
           {{name, L"CREATE TABLE `" + name + L"` (\n  `a` int\n)"}});
    answer(L"SELECT * FROM `" + name + L"`;", std::move(fields), std::move(rows));
  }
  std::string dump() {
    EXPECT_TRUE(service_.backup(file_.path.wstring(), connection_, observer_, options_));
    return file_.read();
  }
  /// The rows of the one table t in the dump.
  std::string rows_of(std::vector<FakeField> fields, std::vector<std::vector<FakeCell>> rows) {
    connection_.answers.erase(L"SHOW TABLE STATUS;");
    add_table(L"t", std::move(fields), std::move(rows));
    const std::string text = dump();
    const std::string head = "INSERT INTO `t` VALUES \r\n";
    const size_t at = text.find(head) + head.size();
    return text.substr(at, text.find(";\r\n", at) - at);
  }

  FakeConnection connection_;
  BackupOptions options_;
  MysqlService service_;
  RecordingObserver observer_;
  ScratchFile file_;
};

TEST_F(DumpTextTest, LinesComeInTheToldOrder) {
  options_.drop_database = true;
  options_.additional_information = L"  nota  ";
  answer(L"SHOW CREATE DATABASE `loja`;", {{L"Database"}, {L"Create"}},
         {{L"loja", L"CREATE DATABASE `loja`"}});
  answer(L"SHOW PROCEDURE STATUS;", {{L"Db"}, {L"Name"}},
         {{L"sys", L"alheia"}, {L"loja", L"p1"}, {L"LOJA", L"p2"}});
  for (const wchar_t* name : {L"p1", L"p2"})
    answer(L"SHOW CREATE PROCEDURE `" + std::wstring(name) + L"`;",
           {{L"Procedure"}, {L"sql_mode"}, {L"Create Procedure"}},
           {{name, L"", L"CREATE PROCEDURE `" + std::wstring(name) + L"`()\nBEGIN\n  DO 1;\nEND"}});
  answer(L"SHOW FUNCTION STATUS;", {{L"Name"}}, {{L"f"}});
  answer(L"SHOW CREATE FUNCTION `f`;", {{L"Function"}, {L"sql_mode"}, {L"Create Function"}},
         {{L"f", L"", L"CREATE FUNCTION `f`() RETURNS INT"}});
  add_table(L"t", {{L"a", db_type::kInteger}},
            {{FakeCell::number(L"1")}, {FakeCell::number(L"2")}, {FakeCell()}});
  connection_.answers[L"SHOW TABLE STATUS;"].rows.insert(
      connection_.answers[L"SHOW TABLE STATUS;"].rows.begin(), {L"v", L"View"});
  answer(L"SHOW CREATE VIEW `v`;", {{L"View"}, {L"Create View"}},
         {{L"v", L"CREATE VIEW `v` AS\nSELECT 1"}});
  add_table(L"vazia", {{L"a"}}, {});
  options_.records_in_block = 2;

  EXPECT_EQ(dump(),
            "--  Criado por: Kestrelon 2012\r\n--  Data/Hora: 09/03/2026 14:05:07\r\n"
            "--  Vers\xE3o do MySql: 10.11\r\n--  Base de dados: loja\r\n"
            "--  Informa\xE7\xF5"
            "es adicionais: nota\r\n\r\nSET FOREIGN_KEY_CHECKS=0;\r\n\r\n"
            "DROP DATABASE IF EXISTS `loja`;\r\nCREATE DATABASE `loja`;\r\nUSE `loja`;\r\n"
            "--\r\n--  Exclui a procedure: `p1`\r\n--\r\n\r\nDROP PROCEDURE IF EXISTS `p1`;\r\n\r\n"
            "--\r\n--  Estrutura da procedure: `p1`\r\n--\r\n\r\n"
            "CREATE PROCEDURE IF NOT EXISTS `p1`()\r\nBEGIN\r\n  DO 1;\r\nEND;\r\n\r\n\r\n"
            "--\r\n--  Exclui a procedure: `p2`\r\n--\r\n\r\nDROP PROCEDURE IF EXISTS `p2`;\r\n\r\n"
            "--\r\n--  Estrutura da procedure: `p2`\r\n--\r\n\r\n"
            "CREATE PROCEDURE IF NOT EXISTS `p2`()\r\nBEGIN\r\n  DO 1;\r\nEND;\r\n\r\n"
            "--\r\n--  Exclui a function: `f`\r\n--\r\n\r\nDROP FUNCTION IF EXISTS `f`;\r\n\r\n"
            "--\r\n--  Estrutura da function: `f`\r\n--\r\n\r\n"
            "CREATE FUNCTION IF NOT EXISTS `f`() RETURNS INT;\r\n\r\n"
            "--\r\n--  Exclui a tabela: `t`\r\n--\r\n\r\nDROP TABLE IF EXISTS `t`;\r\n\r\n"
            "--\r\n--  Estrutura da tabela: `t`\r\n--\r\n\r\n"
            "CREATE TABLE IF NOT EXISTS `t` (\r\n  `a` int\r\n);\r\n\r\n"
            "--\r\n--  Dados da tabela: `t`\r\n--\r\n\r\nLOCK TABLES `t` WRITE;\r\n"
            "INSERT INTO `t` VALUES \r\n('1'),('2');\r\nCOMMIT;\r\n"
            "INSERT INTO `t` VALUES \r\n(NULL);\r\nCOMMIT;\r\nUNLOCK TABLES;\r\n\r\n"
            "--\r\n--  Exclui a tabela: `vazia`\r\n--\r\n\r\nDROP TABLE IF EXISTS `vazia`;\r\n\r\n"
            "--\r\n--  Estrutura da tabela: `vazia`\r\n--\r\n\r\n"
            "CREATE TABLE IF NOT EXISTS `vazia` (\r\n  `a` int\r\n);\r\n\r\n\r\n"
            "--\r\n--  Exclui a view: `v`\r\n--\r\n\r\nDROP VIEW IF EXISTS `v`;\r\n\r\n"
            "--\r\n--  Estrutura da tabela: `v`\r\n--\r\n\r\n"
            "CREATE VIEW IF NOT EXISTS `v` AS\r\nSELECT 1;\r\n\r\n\r\n"
            "--  Fim do arquivo: 09/03/2026 14:05:07\r\n");
  EXPECT_THAT(connection_.asked, Not(Contains(L"SHOW CREATE PROCEDURE `alheia`;")));
  EXPECT_THAT(observer_.statuses, Contains(L"Efetuando backup da procedure (2 de 3): p1"));
  EXPECT_THAT(observer_.statuses, Contains(L"Efetuando backup da procedure (1 de 1): f"));
  EXPECT_THAT(observer_.statuses, Contains(L"Efetuando backup da view (1 de 3): v"));
  EXPECT_EQ(observer_.statuses.back(), L"O backup de 2 tabela(s) foi concluído.");
  EXPECT_THAT(observer_.steps, Contains(std::pair<int64_t, int64_t>(3, 3)));
  EXPECT_EQ(observer_.steps.back(), (std::pair<int64_t, int64_t>(100, 100)));
}

TEST_F(DumpTextTest, OptionsLeavePartsOut) {
  add_table(L"t", {{L"a"}}, {{L"x"}});
  options_.drop_table_if_exists = false;
  options_.only_table_structure = true;
  options_.additional_information = L"   ";
  const std::string text = dump();
  EXPECT_THAT(text, Not(HasSubstr("Exclui a tabela")));
  EXPECT_THAT(text, Not(HasSubstr("LOCK TABLES")));
  EXPECT_THAT(text, Not(HasSubstr("adicionais")));
  EXPECT_THAT(text, Not(HasSubstr("USE `")));
}

TEST_F(DumpTextTest, StructureThatComesAsBytesIsReadAsText) {
  const std::string sql = "CREATE TABLE `t` (`pre\xE7o` int)";
  for (const bool packed : {false, true}) {
    add_table(L"t", {{L"a"}}, {});
    FakeCell cell = FakeCell::of_bytes(sql);
    if (packed) {
      std::wstring units;
      for (size_t i = 0; i < sql.size(); i += 2) {
        const auto low = static_cast<unsigned char>(sql[i]);
        const auto high = i + 1 < sql.size() ? static_cast<unsigned char>(sql[i + 1]) : 0u;
        units.push_back(static_cast<wchar_t>(low | high << 8));
      }
      cell = FakeCell(units);
    }
    connection_.answers[L"SHOW CREATE TABLE `t`;"].rows[0][1] = cell;
    EXPECT_THAT(dump(), HasSubstr("CREATE TABLE IF NOT EXISTS `t` (`pre\xE7o` int);\r\n"));
  }
}

TEST_F(DumpTextTest, ValuesAreWrittenAsToldAndTheAlteredOnesCounted) {
  EXPECT_EQ(rows_of({{L"a"}, {L"b"}, {L"c"}, {L"d"}}, {{L"it's", L"C:\\x", L"a\r\nb", L"\\'"}}),
            "('it\\'s', 'C:\\\\x', 'a\\r\\nb', '\\\\\\'')");
  EXPECT_EQ(service_.altered_values(), 0u);
  EXPECT_EQ(rows_of({{L"a"}, {L"b"}, {L"c"}, {L"d"}, {L"e"}, {L"f"}},
                    {{L"NULL", L"True", L"a\nb", L"R$ 1.234,5-", L"x,5", L"\x3A9"}}),
            "(NULL, True, 'ab', 'R$ 1.234.5-', 'x,5', '?')");
  EXPECT_EQ(service_.altered_values(), 5u);
  EXPECT_EQ(rows_of({{L"a", db_type::kNumeric},
                     {L"b", db_type::kDouble},
                     {L"c", db_type::kBoolean},
                     {L"d", db_type::kSingle},
                     {L"e", db_type::kDouble}},
                    {{FakeCell::number(L"-1,50"), FakeCell::of_real(1e20),
                      FakeCell::of_boolean(false), FakeCell::of_real(0.1f), L"1,5"}}),
            "('-1.50', '1E+20', False, '0.1', '1.5')");
  EXPECT_EQ(service_.altered_values(), 0u);
  EXPECT_EQ(rows_of({{L"a", db_type::kDate}, {L"b", db_type::kTimeStamp}, {L"c", db_type::kTime}},
                    {{FakeCell::of_moment({2024, 2, 29, 0, 0, 0, 0}),
                      FakeCell::of_moment({2024, 2, 29, 1, 2, 3, 400'000}),
                      FakeCell::of_moment({1899, 12, 30, 23, 59, 59, 0})}}),
            "('2024-02-29', '2024-02-29 01:02:03', '1899-12-30 23:59:59')");
  EXPECT_EQ(service_.altered_values(), 1u);
}

TEST_F(DumpTextTest, BlobsAreReadInChunksAndWhatIsLostIsCounted) {
  const FakeCell whole = FakeCell::of_bytes(std::string(4097, '\x07'));
  FakeCell broken = whole;
  broken.failing_chunks = {0};
  FakeCell lost = FakeCell::of_bytes("x");
  lost.failing_chunks = {0};
  const std::vector<FakeField> fields = {{L"a", db_type::kLongVarBinary},
                                         {L"b", db_type::kVarBinary}};
  std::string hex;
  for (int i = 0; i < 4097; ++i) hex += "07";
  EXPECT_EQ(rows_of(fields, {{whole, FakeCell::of_bytes("\x01\xFE")}}),
            "(0x" + hex + ", '0x01fe')");
  EXPECT_EQ(service_.altered_values(), 1u) << "the quoted digits are a text";
  EXPECT_EQ(rows_of(fields, {{broken, FakeCell()}}), "(0x07, NULL)");
  EXPECT_EQ(service_.altered_values(), 1u);
  EXPECT_EQ(rows_of(fields, {{lost, FakeCell::of_bytes("")}}), "(NULL, NULL)");
  EXPECT_EQ(service_.altered_values(), 2u);
}

TEST_F(DumpTextTest, AFailureKeepsTheFileAndTellsTheError) {
  add_table(L"t", {{L"a"}}, {{L"x"}});
  connection_.failing = {L"SELECT * FROM `t`;"};
  EXPECT_FALSE(service_.backup(file_.path.wstring(), connection_, observer_, options_));
  EXPECT_EQ(service_.error_description(),
            L"Mensagem original de erro:\r\n-\r\nLinha: 22\r\nNúmero: 1064\r\n"
            L"Descrição: erro de sintaxe");
  EXPECT_TRUE(file_.read().ends_with("  `a` int\r\n);\r\n\r\n"));
  options_.records_in_block = 0;
  connection_.failing.clear();
  EXPECT_FALSE(service_.backup(file_.path.wstring(), connection_, observer_, options_));
  EXPECT_FALSE(service_.backup(L"/nonexistent/x.sql", connection_, observer_, options_));
  EXPECT_THAT(service_.error_description(), HasSubstr(L"Número: 75\r\n"));
}

TEST(NumericText, FollowsTheHostsRules) {
  const NumberMarks marks;
  for (const wchar_t* yes : {L"1,5", L" -1.234,56 ", L"(3)", L"5-", L"R$ 10", L"-R$10,5", L",5",
                             L"5,", L"1E5", L"1,5d-3", L"1.2.3", L"\t7\n"})
    EXPECT_TRUE(is_numeric(yes, marks)) << yes;
  for (const wchar_t* no : {L"", L" ", L"-", L",", L"1,2,3", L"1 2", L"1E", L"--1", L"(-1)", L".5",
                            L"R$", L"1,5x", L"()", L"E5", L"+1-"})
    EXPECT_FALSE(is_numeric(no, marks)) << no;
}

}  // namespace
}  // namespace kestrelon::testing
