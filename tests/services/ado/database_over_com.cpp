// KN_MYSQL through the registered library, over an ADO-shaped connection to a real server.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "host/event_sink.h"
#include "host/late_bound.h"
#include "services/mysql/utf8_text.h"
#include "tests/services/ado/ado_objects.h"
#include "tests/services/ado/wire_client.h"

namespace kestrelon::testing {
namespace {

using host::make_com;
using ::testing::Contains;
using ::testing::HasSubstr;

unsigned server_port() {
  const char* const port = std::getenv("KESTRELON_DB_PORT");
  return port == nullptr ? 0 : static_cast<unsigned>(std::atoi(port));
}

// A bar that keeps what it was given, and refuses a value beyond its range as a real one does.
class Progress final : public host::LateBound {
 public:
  Progress() : LateBound(L"Progress") {
    property(
        L"Max", [this] { return Variant(max); },
        [this](const VARIANT& given) { max = host::to_long(given); });
    property(
        L"Value", [this] { return Variant(value); },
        [this](const VARIANT& given) {
          if (host::to_long(given) > max)
            throw ComError(numbered_error(380), L"Invalid property value");
          value = host::to_long(given);
        });
  }

  long max = 100;
  long value = 0;
};

class DatabaseOverCom : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { OleInitialize(nullptr); }
  static void TearDownTestSuite() { OleUninitialize(); }

  DatabaseOverCom() : admin_(server_port(), "mysql") {
    for (const char* sql : {"DROP DATABASE IF EXISTS loja", "DROP DATABASE IF EXISTS copia",
                            "CREATE DATABASE loja CHARACTER SET utf8mb4",
                            "CREATE DATABASE copia CHARACTER SET utf8mb4"})
      admin_.query(sql);
    CLSID clsid;
    EXPECT_EQ(CLSIDFromProgID(L"Kestrelon2012.KN_MYSQL", &clsid), S_OK) << "is it registered?";
    EXPECT_EQ(
        CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, service_.put_void()),
        S_OK);
    sink_ = host::EventSink::connect(service_.get(), nullptr);
    host::put_property(service_.get(), L"ExactValues", Variant(true));
  }
  ~DatabaseOverCom() override {
    if (sink_) sink_->disconnect();
    std::error_code error;
    std::filesystem::remove(file_, error);
  }

  void fill(const std::string& sql) { WireClient(server_port(), "loja").query(sql); }
  Variant path() const { return Variant(file_.wstring()); }
  static Variant database(const std::string& name) {
    return Variant(make_ado_connection(server_port(), name).get());
  }
  bool call(const wchar_t* name, std::vector<Variant> arguments) {
    const Variant result = host::call_method(service_.get(), name, std::move(arguments));
    return V_VT(&result) == VT_BOOL && V_BOOL(&result) != VARIANT_FALSE;
  }
  std::string error() {
    return to_utf8(host::to_text(host::get_property(service_.get(), L"ErrDescription")));
  }
  long altered() { return host::to_long(host::get_property(service_.get(), L"AlteredValues")); }
  std::string checksum(const std::string& database, const std::string& table) {
    WireClient client(server_port(), database);
    return client.query("CHECKSUM TABLE `" + table + "`").rows.at(0).at(1).value_or("none");
  }
  static auto rows_of(const std::string& database, const std::string& table) {
    return WireClient(server_port(), database).query("SELECT * FROM `" + table + "`").rows;
  }
  void write_file(const std::string& text) { std::ofstream(file_, std::ios::binary) << text; }

  WireClient admin_;
  ComPtr<IDispatch> service_;
  ComPtr<host::EventSink> sink_;
  std::filesystem::path file_ = std::filesystem::temp_directory_path() / "kestrelon-com-dump.sql";
  Variant bar_{static_cast<IDispatch*>(nullptr)};
};

TEST_F(DatabaseOverCom, EveryTableHasItsChecksumAfterBackupAndRestore) {
  fill(
      "CREATE TABLE numeros (id INT PRIMARY KEY, b BIGINT, u BIGINT UNSIGNED, d DECIMAL(20,6),"
      " f FLOAT, r DOUBLE, y YEAR, flag BIT(1), bits BIT(8))");
  fill(
      "INSERT INTO numeros VALUES (1,-9223372036854775808,18446744073709551615,"
      "-12345678901234.567891,-1.5,0.1e0+0.2e0,2026,b'1',b'10101010'),"
      "(2,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL),(3,1,0,0.000001,3.25,-1e-300,1901,b'0',b'0')");
  fill(
      "CREATE TABLE datas (id INT PRIMARY KEY, d DATE, h TIME, dt DATETIME(6), ts TIMESTAMP NULL)");
  fill(
      "INSERT INTO datas VALUES (1,'2024-02-29','23:59:59','2026-03-09 10:20:30.5','2026-03-09 "
      "12:00:01'),(2,'1000-01-01','-838:59:59','1850-07-04 18:30:00',NULL),"
      "(3,NULL,'00:00:00','1899-12-29 06:00:00',NULL)");
  fill("CREATE TABLE textos (id INT PRIMARY KEY, v VARCHAR(200), t TEXT, j JSON)");
  fill(
      "INSERT INTO textos VALUES (1,'O''Brien \\\\ \\\"x\\\"','a\\r\\nb\\nc','{\"a\": 1}'),"
      "(2,'1,5','😀 ação','[]'),(3,'NULL','',NULL),(4,'True',NULL,NULL)");
  fill("CREATE TABLE imagens (id INT PRIMARY KEY, b LONGBLOB, v VARBINARY(300))");
  std::string hex;
  for (unsigned byte = 0; byte < 256; ++byte) {
    hex.push_back("0123456789ABCDEF"[byte >> 4]);
    hex.push_back("0123456789ABCDEF"[byte & 15]);
  }
  fill("INSERT INTO imagens VALUES (1,0x" + hex + ",0x" + hex + "),(2,REPEAT(0x" + hex +
       ",33),''),(3,NULL,NULL),(4,'',0x00)");
  fill("CREATE TABLE vazia (id INT PRIMARY KEY)");
  fill("CREATE TABLE `com espaço` (id INT PRIMARY KEY)");
  fill("INSERT INTO `com espaço` SELECT seq FROM seq_1_to_1000");
  fill("CREATE VIEW soma AS SELECT SUM(id) AS total FROM numeros");

  const auto progress = make_com<Progress>();
  const Variant bar(static_cast<IDispatch*>(progress.get()));
  ASSERT_TRUE(call(L"Backup", {path(), database("loja"), bar})) << error();
  EXPECT_EQ(altered(), 0);
  EXPECT_EQ(progress->max, 100);
  EXPECT_EQ(progress->value, 100);
  EXPECT_THAT(sink_->log(), Contains(L"Status(\"O backup de 6 tabela(s) foi concluído.\")"));
  EXPECT_THAT(sink_->log(), Contains(L"Status(\"Efetuando backup da view (5 de 7): soma\")"));

  ASSERT_TRUE(call(L"Restore", {path(), database("copia"), bar})) << error();
  for (const char* table : {"numeros", "datas", "textos", "imagens", "vazia", "com espaço"}) {
    EXPECT_EQ(rows_of("copia", table), rows_of("loja", table)) << table;
    EXPECT_EQ(checksum("copia", table), checksum("loja", table)) << table;
  }
  EXPECT_EQ(WireClient(server_port(), "copia").query("SELECT total FROM soma").rows.at(0).at(0),
            "6");
}

TEST_F(DatabaseOverCom, WithoutExactValuesTheAlteredOnesAreCounted) {
  fill("CREATE TABLE t (id INT, v VARCHAR(20), b VARBINARY(8), dt DATETIME(6))");
  fill(
      "INSERT INTO t VALUES (1,'1.234','','2026-03-09 10:20:30'),(2,'NULL',NULL,NULL),"
      "(3,'a\\nb',0x41,'2026-03-09 10:20:30.25'),(4,'日','x',NULL),(5,'ação',NULL,NULL)");
  host::put_property(service_.get(), L"ExactValues", Variant(false));
  ASSERT_TRUE(call(L"Backup", {path(), database("loja")})) << error();
  EXPECT_EQ(altered(), 7);
}

TEST_F(DatabaseOverCom, AFailingStatementTellsTheProvidersError) {
  write_file(
      "CREATE TABLE a (id INT);\r\nINSERT INTO missing VALUES (1);\r\nCREATE TABLE b (id INT);");
  EXPECT_FALSE(call(L"Restore", {path(), database("copia"), bar_}));
  EXPECT_THAT(error(), HasSubstr("Linha: 2\r\nNúmero: -2147217900\r\nDescrição: [MariaDB](1146)"));
  EXPECT_TRUE(call(L"Restore", {path(), database("copia"), bar_, Variant(true)}));
  EXPECT_EQ(WireClient(server_port(), "copia").query("SHOW TABLES").rows.size(), 2u);
  EXPECT_FALSE(call(L"Backup", {path(), Variant(static_cast<IDispatch*>(nullptr))}));
  EXPECT_FALSE(call(L"Restore", {Variant(L"Z:\\missing.sql"), database("copia"), bar_}));
  EXPECT_THAT(error(), HasSubstr("Número: 53\r\n"));
}

TEST_F(DatabaseOverCom, AListenerMayChangeACommandBeforeItRuns) {
  write_file("CREATE TABLE a (id INT);\r\n");
  sink_->set_handler([](const std::wstring& name, DISPPARAMS& params) {
    if (name == L"ComandoSqlOnRestore")
      host::set_event_argument(params, 0, Variant(L"CREATE TABLE outra (id INT);"));
  });
  EXPECT_TRUE(call(L"Restore", {path(), database("copia"), bar_}));
  EXPECT_EQ(WireClient(server_port(), "copia").query("SHOW TABLES").rows.at(0).at(0), "outra");
}

TEST_F(DatabaseOverCom, AScriptRunsLineByLineAndCountsItsErrors) {
  write_file(
      "-- comment\r\n  CREATE TABLE a (id INT)\r\nBAD COMMAND\r\n\r\nINSERT INTO a VALUES (1)");
  const Variant errors =
      host::call_method(service_.get(), L"ExecuteSqlByLine", {path(), database("copia")});
  EXPECT_EQ(host::to_long(errors), 1);
  EXPECT_THAT(sink_->log(), Contains(L"ErrorsOnExecuteSqlByLines(3, 1)"));
  EXPECT_THAT(sink_->log(), Contains(L"ComandoSqlOnRestore(\"BAD COMMAND Erro:-2147217900\")"));
}

TEST_F(DatabaseOverCom, MaintenanceTellsTheCounterAndTheEnd) {
  fill("CREATE TABLE t (id INT) ENGINE = InnoDB");
  EXPECT_TRUE(call(L"AlterTablesEngine", {database("loja"), Variant(1L)})) << error();
  EXPECT_TRUE(call(L"OptimizeTables", {database("loja")})) << error();
  EXPECT_TRUE(call(L"RepairTables", {database("loja")})) << error();
  host::call_method(service_.get(), L"Flush", {database("loja"), Variant(5L)});
  host::call_method(service_.get(), L"Flush", {database("loja"), Variant(8L)});
  const std::vector<std::wstring> expected = {
      L"Andamento(1, 1, False)",
      L"Status(\"Alterando tabela (2 de 1): t\")",
      L"Status(\"Engine das tabelas alterado com sucesso.\")",
      L"Andamento(1, 1, False)",
      L"Status(\"Otimizando tabela (2 de 1): t\")",
      L"Status(\"Tabelas otimizadas com sucesso.\")",
      L"Andamento(1, 1, False)",
      L"Status(\"Reparando tabela (2 de 1): t\")",
      L"Status(\"Tabelas reparadas com sucesso.\")",
      L"Status(\"Erro: 50015\")"};
  EXPECT_EQ(sink_->log(), expected);
}

}  // namespace
}  // namespace kestrelon::testing
