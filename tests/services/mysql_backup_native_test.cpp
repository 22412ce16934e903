// Backups of a real server, restored into an empty database and compared there.
#include <thread>

#include "tests/services/mariadb/dump_fixture.h"

namespace kestrelon::testing {
namespace {

// Tables of every common kind. What only an exact dump carries whole stands in tables of their own.
constexpr const char* kPlainTables[] = {
    "CREATE TABLE numeros (id INT PRIMARY KEY, t TINYINT, s SMALLINT UNSIGNED, m MEDIUMINT, b "
    "BIGINT,"
    " u BIGINT UNSIGNED, d DECIMAL(20,6), f FLOAT, r DOUBLE, y YEAR, flag BIT(1), logico BOOL)",
    "INSERT INTO numeros VALUES (1,-128,65535,-8388608,-9223372036854775808,18446744073709551615,"
    "-12345678901234.567891,-1.5,-2.25e-300,2026,b'1',TRUE),(2,0,0,0,0,0,0,0,0,1901,b'0',FALSE),"
    "(3,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL),"
    "(4,127,1,8388607,9223372036854775807,1,0.000001,3.25,1e300,2155,b'1',TRUE)",
    "CREATE TABLE datas (id INT PRIMARY KEY, d DATE, h TIME, dt DATETIME, ts TIMESTAMP NULL)",
    "INSERT INTO datas VALUES (1,'2024-02-29','23:59:59','9999-12-31 23:59:59','2026-03-09 "
    "12:00:01'),"
    "(2,'1000-01-01','00:00:00','1000-01-01 00:00:00',NULL),(3,NULL,'-838:59:59',NULL,NULL),"
    "(4,'1970-01-01','100:00:01','1970-01-01 00:00:00',NULL)",
    "CREATE TABLE textos (id INT PRIMARY KEY, c CHAR(20), v VARCHAR(200), t TEXT,"
    " e ENUM('sim','não'), s SET('a','b','c'), j JSON)",
    "INSERT INTO textos VALUES (1,'O''Brien','C:\\\\pasta\\\\nova','linha 1\\r\\nlinha "
    "2','não','a,c',"
    "'{\"preço\": 1.5}'),(2,'','--  não é comentário;','\\'\\\\\\'','sim','','[]'),"
    "(3,'ação Õ €','true','null',NULL,NULL,NULL),(4,'END;','BEGIN','); DROP TABLE x; --',NULL,'b',"
    "'\"x\"')",
    "CREATE TABLE imagens (id INT PRIMARY KEY, b LONGBLOB)",
    "CREATE TABLE vazia (id INT PRIMARY KEY, nome VARCHAR(10) DEFAULT 'x' COMMENT 'fim;')",
    "CREATE TABLE `com espaço` (id INT PRIMARY KEY, `coluna da casa` VARCHAR(10))",
    "INSERT INTO `com espaço` VALUES (1,'um'),(2,'dois')"};

// Each value here is one that the format alters.
constexpr const char* kAlteredTable[] = {
    "CREATE TABLE alterados (id INT PRIMARY KEY, v VARCHAR(200), bin VARBINARY(300), b BLOB,"
    " dt DATETIME(6), r DOUBLE, bits BIT(8))",
    "INSERT INTO alterados (id, v) VALUES (1,'1,5'),(2,'R$ 1.234,56'),(3,'NULL'),(4,'True'),"
    "(5,'False'),(6,'a\\nb'),(7,'a\\rb'),(8,'😀 ok'),(9,'日本'),(10,'\\n\\r'),(11,'-0,5 ')",
    "INSERT INTO alterados (id, bin) VALUES (20,0x00FF27),(21,'texto'),(22,'')",
    "INSERT INTO alterados (id, b) VALUES (30,'')",
    "INSERT INTO alterados (id, dt) VALUES (40,'2026-03-09 10:20:30.000001'),"
    "(41,'2026-03-09 10:20:30.5')",
    "INSERT INTO alterados (id, r) VALUES (50,0.1e0+0.2e0),(51,1e0/3)",
    "INSERT INTO alterados (id, bits) VALUES (60,b'10101010')"};
constexpr size_t kAlteredValues = 20;

class BackupTest : public DumpTest {
 protected:
  void fill_plain() {
    for (const char* sql : kPlainTables) fill(sql);
    std::string hex;
    for (int byte = 0; byte < 256; ++byte) {
      char digits[3];
      snprintf(digits, sizeof digits, "%02X", static_cast<unsigned>(byte));
      hex += digits;
    }
    // Longer than one chunk, and not a whole number of them.
    fill("INSERT INTO imagens VALUES (1, 0x" + hex + "), (2, REPEAT(0x" + hex +
         ", 33)), (3, NULL), (4, REPEAT('x', 4096)), (5, 0x00)");
  }
  void fill_altered() {
    for (const char* sql : kAlteredTable) fill(sql);
  }
};

TEST_F(BackupTest, EveryKindOfTableComesBackEqual) {
  fill_plain();
  for (const bool exact : {false, true}) {
    options_.exact_values = exact;
    ASSERT_TRUE(backup()) << error();
    EXPECT_EQ(service_.altered_values(), 0u);
    admin_.run("DROP DATABASE copia");
    admin_.run("CREATE DATABASE copia");
    ASSERT_TRUE(restore()) << error();
    for (const char* table : {"numeros", "datas", "textos", "imagens", "vazia", "com espaço"})
      EXPECT_EQ(differing(table), 0u) << table << " exact " << exact;
    EXPECT_EQ(rows("loja", "SHOW TABLES"), rows("copia", "SHOW TABLES"));
    EXPECT_EQ(rows("loja", "SHOW CREATE TABLE vazia"), rows("copia", "SHOW CREATE TABLE vazia"));
  }
}

TEST_F(BackupTest, ValuesThatTheFormatAltersAreCountedOrExact) {
  fill_plain();
  fill_altered();
  options_.exact_values = false;
  ASSERT_TRUE(backup()) << error();
  EXPECT_EQ(service_.altered_values(), kAlteredValues);
  {
    // The text of the format is refused in places (binary of eight bits): the count is of values.
    MariaDbConnection target(port(), "copia");
    target.run("SET SESSION sql_mode = ''");
    ASSERT_TRUE(service_.restore(file_.wstring(), target, observer_, false)) << error();
  }
  EXPECT_EQ(differing("alterados"), kAlteredValues);

  options_.exact_values = true;
  ASSERT_TRUE(backup()) << error();
  EXPECT_EQ(service_.altered_values(), 0u);
  ASSERT_TRUE(restore()) << error();
  EXPECT_EQ(differing("alterados"), 0u);
  EXPECT_EQ(differing("textos"), 0u);
}

TEST_F(BackupTest, RoutinesAndViewsComeBack) {
  fill("CREATE TABLE pedidos (id INT PRIMARY KEY, valor DECIMAL(10,2))");
  fill("INSERT INTO pedidos VALUES (1, 10.50), (2, -3.25)");
  fill("CREATE VIEW a_total AS SELECT SUM(valor) AS total FROM pedidos");
  fill("CREATE VIEW z_positivos AS SELECT id, valor FROM pedidos WHERE valor > 0");
  fill(
      "CREATE PROCEDURE dobrar(IN quem INT)\nBEGIN\n  DECLARE v DECIMAL(10,2);\n"
      "  SELECT valor INTO v FROM pedidos WHERE id = quem;\n"
      "  IF v > 0 THEN\n    UPDATE pedidos SET valor = v * 2 WHERE id = quem;\n  END IF;\nEND");
  fill("CREATE FUNCTION soma(a INT, b INT) RETURNS INT DETERMINISTIC\nBEGIN\n  RETURN a + b;\nEND");
  ASSERT_TRUE(backup()) << error();
  ASSERT_TRUE(restore()) << error();
  MariaDbConnection target(port(), "copia");
  target.run("CALL dobrar(1)");
  const Rows expected = {{Cell("17.75")}};
  EXPECT_EQ(read_rows(target, "SELECT total FROM a_total"), expected);
  EXPECT_EQ(read_rows(target, "SELECT soma(2, soma(5, 10)), (SELECT COUNT(*) FROM z_positivos)"),
            (Rows{{Cell("17"), Cell("1")}}));
}

TEST_F(BackupTest, TheServersOwnClientLoadsTheDump) {
  fill_plain();
  ASSERT_TRUE(backup()) << error();
  const std::string command =
      "mariadb --no-defaults --default-character-set=latin1 -h 127.0.0.1 "
      "-u root -P " +
      std::to_string(port()) + " copia < '" + file_.string() + "'";
  ASSERT_EQ(system(command.c_str()), 0);
  for (const char* table : {"numeros", "datas", "textos", "imagens", "com espaço"})
    EXPECT_EQ(differing(table), 0u) << table;
}

TEST_F(BackupTest, AHundredThousandRowsComeBackInBlocks) {
  fill("CREATE TABLE grande (id INT PRIMARY KEY, nome VARCHAR(40), valor DECIMAL(12,2))");
  fill("INSERT INTO grande SELECT seq, CONCAT('cliente ', seq), seq / 7 FROM seq_1_to_100000");
  options_.records_in_block = 999;
  options_.exact_values = false;
  ASSERT_TRUE(backup()) << error();
  const std::string text = dump_text();
  size_t inserts = 0;
  for (size_t at = 0; (at = text.find("INSERT INTO", at)) != std::string::npos; ++at) ++inserts;
  EXPECT_EQ(inserts, 101u);
  ASSERT_TRUE(restore()) << error();
  EXPECT_EQ(rows("copia", "CHECKSUM TABLE grande")[0][1],
            rows("loja", "CHECKSUM TABLE grande")[0][1]);
}

TEST_F(BackupTest, ADroppedDatabaseIsMadeAgainWithItsName) {
  fill("CREATE TABLE t (id INT)");
  fill("INSERT INTO t VALUES (1)");
  options_.drop_database = true;
  ASSERT_TRUE(backup()) << error();
  fill("INSERT INTO t VALUES (2)");
  MariaDbConnection target(port());
  ASSERT_TRUE(service_.restore(file_.wstring(), target, observer_, false)) << error();
  EXPECT_EQ(rows("loja", "SELECT id FROM t"), (Rows{{Cell("1")}}));
}

TEST_F(BackupTest, AFailingStatementEndsTheRestoreOrIsPassedOver) {
  {
    std::ofstream file(file_, std::ios::binary);
    file << "CREATE TABLE a (id INT);\r\nINSERT INTO missing VALUES (1);\r\nCREATE TABLE b (id "
            "INT);\r\nCREATE TABLE cut (id";
  }
  EXPECT_FALSE(restore());
  EXPECT_NE(error().find("Linha: 2\r\nNúmero: 1146\r\n"), std::string::npos) << error();
  EXPECT_EQ(rows("copia", "SHOW TABLES"), (Rows{{Cell("a")}}));
  admin_.run("DROP TABLE copia.a");
  EXPECT_TRUE(restore(true));
  EXPECT_EQ(rows("copia", "SHOW TABLES"), (Rows{{Cell("a")}, {Cell("b")}}));
  EXPECT_NE(error().find("Linha: 4\r\n"), std::string::npos) << "the cut statement is an error";
}

TEST_F(BackupTest, AServerKilledInTheMiddleLeavesWhatWasWritten) {
  MariaDbServer server;
  MariaDbConnection connection(server.port());
  connection.run("CREATE DATABASE loja");
  connection.run("CREATE TABLE loja.t (id INT PRIMARY KEY, v VARCHAR(1000))");
  connection.run("INSERT INTO loja.t SELECT seq, REPEAT('x', 1000) FROM loja.seq_1_to_30000");
  MariaDbConnection source(server.port(), "loja");
  struct Killer final : MaintenanceObserver {
    explicit Killer(MariaDbServer& target) : victim(target) {}
    void status(const std::wstring&) override {}
    void command(std::wstring&) override {}
    void script_totals(long, long) override {}
    void progress(int64_t, int64_t value) override {
      if (value > 2000) victim.kill();
    }
    void pump() override {}
    MariaDbServer& victim;
  } killer(server);
  options_.exact_values = false;
  EXPECT_FALSE(service_.backup(file_.wstring(), source, killer, options_));
  EXPECT_NE(error().find("Mensagem original de erro:\r\n-\r\nLinha: "), std::string::npos);
  EXPECT_EQ(error().find("Número: 0\r\n"), std::string::npos) << error();
  const std::string text = dump_text();
  EXPECT_NE(text.find("LOCK TABLES `t` WRITE;\r\nINSERT INTO `t` VALUES \r\n('1', 'xxx"),
            std::string::npos);
  EXPECT_NE(text.find("('2000', 'xxx"), std::string::npos);
  EXPECT_EQ(text.find("UNLOCK TABLES"), std::string::npos);
}

TEST_F(BackupTest, MaintenanceRunsOnTheServer) {
  fill("CREATE TABLE t (id INT) ENGINE = InnoDB");
  MariaDbConnection source(port(), "loja");
  EXPECT_TRUE(service_.alter_engine(source, observer_, 1)) << error();
  EXPECT_EQ(rows("loja", "SHOW TABLE STATUS")[0][1], Cell("MyISAM"));
  EXPECT_TRUE(service_.optimize(source, observer_)) << error();
  EXPECT_TRUE(service_.repair(source, observer_, 1)) << error();
  EXPECT_FALSE(service_.alter_engine(source, observer_, 4)) << "an engine the server lacks";
  EXPECT_NE(error().find("Número: 1286\r\n"), std::string::npos) << error();
}

}  // namespace
}  // namespace kestrelon::testing
