// A backup of 1,000,000 rows beside the server's own dump tool, in one run. Rows are read through
// the server's client library on both sides; memory is that of the process at its peak.
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <cstdlib>
#include <filesystem>

#include "services/mysql/mysql_service.h"
#include "tests/services/mariadb/mariadb_connection.h"
#include "tests/services/mariadb/mariadb_server.h"

namespace {

using namespace kestrelon;
using namespace kestrelon::testing;

constexpr long kRows = 1'000'000;

struct SilentObserver final : MaintenanceObserver {
  void status(const std::wstring&) override {}
  void command(std::wstring&) override {}
  void script_totals(long, long) override {}
  void progress(int64_t, int64_t) override {}
  void pump() override {}
};

// A server with one table of ten columns of the common kinds in each database.
class Shop {
 public:
  Shop() {
    for (const long rows : {kRows / 10, kRows}) {
      const std::string database = name(rows);
      MariaDbConnection admin(server_.port());
      admin.run("CREATE DATABASE " + database);
      MariaDbConnection(server_.port(), database)
          .run(
              "CREATE TABLE venda ENGINE=MyISAM AS SELECT seq AS id, CONCAT('cliente ', seq) AS "
              "nome,"
              " CONCAT('Rua das Laranjeiras, ', seq % 900) AS rua, seq * 3 AS codigo,"
              " CAST(seq / 7 AS DECIMAL(12,2)) AS valor, seq % 5 AS filial,"
              " DATE('2020-01-01') + INTERVAL seq % 2000 DAY AS dia,"
              " TIMESTAMP('2020-01-01') + INTERVAL seq SECOND AS momento,"
              " IF(seq % 3, 'aberto', NULL) AS estado, REPEAT('obs ', seq % 8) AS nota"
              " FROM seq_1_to_" +
              std::to_string(rows));
    }
  }
  static Shop& shared() {
    static Shop shop;
    return shop;
  }
  static std::string name(long rows) { return "loja_" + std::to_string(rows); }
  unsigned port() const { return server_.port(); }
  std::filesystem::path file() const {
    return std::filesystem::temp_directory_path() / "kestrelon-dump-bench.sql";
  }
  ~Shop() { std::filesystem::remove(file()); }

 private:
  MariaDbServer server_;
};

double peak_megabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024;
}

void backup(benchmark::State& state) {
  Shop& shop = Shop::shared();
  const long rows = state.range(0);
  BackupOptions options;
  options.clock = [] { return DateTime{{2026, 1, 1}}; };
  options.exact_values = state.range(1) != 0;
  for (auto _ : state) {
    MariaDbConnection connection(shop.port(), Shop::name(rows));
    SilentObserver observer;
    MysqlService service;
    if (!service.backup(shop.file().wstring(), connection, observer, options))
      state.SkipWithError("backup failed");
  }
  state.SetItemsProcessed(state.iterations() * rows);
  state.counters["peak MB"] = peak_megabytes();
}

void peer_mariadb_dump(benchmark::State& state) {
  Shop& shop = Shop::shared();
  const std::string command = "mariadb-dump --no-defaults -h 127.0.0.1 -u root -P " +
                              std::to_string(shop.port()) + " " + Shop::name(kRows) + " > '" +
                              shop.file().string() + "'";
  for (auto _ : state)
    if (system(command.c_str()) != 0) state.SkipWithError("mariadb-dump failed");
  state.SetItemsProcessed(state.iterations() * kRows);
}

BENCHMARK(backup)
    ->Args({kRows / 10, 0})
    ->Args({kRows, 0})
    ->Args({kRows, 1})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond)
    ->MinTime(3);
BENCHMARK(peer_mariadb_dump)->UseRealTime()->Unit(benchmark::kMillisecond)->MinTime(3);

}  // namespace

BENCHMARK_MAIN();
