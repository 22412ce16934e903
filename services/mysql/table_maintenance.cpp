#include "services/mysql/table_maintenance.h"

#include <array>
#include <string_view>

#include "base/decimal.h"
#include "services/mysql/sql_text.h"

namespace kestrelon {
namespace {

constexpr long kInvalidArgument = 5;

constexpr std::array<std::wstring_view, 5> kEngineClauses = {
    L" ENGINE = InnoDB;", L" ENGINE = MyISAM;", L" ENGINE = HEAP;", L" ENGINE = BDB;",
    L" ENGINE = ISAM;"};
constexpr std::array<std::wstring_view, 8> kFlushArguments = {
    L"HOSTS, LOGS, PRIVILEGES, STATUS, TABLES, TABLES WITH READ LOCK, QUERY CACHE",
    L"HOSTS",
    L"LOGS",
    L"PRIVILEGES",
    L"STATUS",
    L"TABLES",
    L"TABLES WITH READ LOCK",
    L"QUERY CACHE"};
constexpr std::array<std::wstring_view, 3> kRepairModes = {L"QUICK", L"EXTENDED", L"USE_FRM"};

template <size_t N>
std::wstring choice(const std::array<std::wstring_view, N>& texts, int number) {
  if (number < 0 || static_cast<size_t>(number) >= N)
    throw DbError(kInvalidArgument, L"Chamada de procedimento ou argumento inválido.");
  return std::wstring(texts[static_cast<size_t>(number)]);
}

// Runs `statements` (given the name of a table) for each table, then shows `label` with the
// counter.
template <class Statements>
void for_each_table(DbConnection& connection, MaintenanceObserver& observer,
                    std::wstring_view label, Statements&& statements) {
  const auto tables = connection.execute(L"SHOW TABLE STATUS;");
  for (; !tables->eof(); tables->move_next()) {
    observer.pump();
    observer.progress(tables->record_count(), tables->absolute_position());
    const std::wstring name = named_text(*tables, L"Name");
    statements(name);
    observer.status(std::wstring(label) + L" " + position_text(*tables, 1) + name);
  }
}

}  // namespace

void alter_tables_engine(DbConnection& connection, MaintenanceObserver& observer, int engine) {
  const std::wstring clause = choice(kEngineClauses, engine);
  for_each_table(connection, observer, L"Alterando tabela", [&](const std::wstring& name) {
    connection.execute(L"LOCK TABLES " + name + L" WRITE;");
    connection.execute(L"ALTER TABLE " + name + clause);
    connection.execute(L"UNLOCK TABLES;");
  });
  observer.status(L"Engine das tabelas alterado com sucesso.");
}

void optimize_tables(DbConnection& connection, MaintenanceObserver& observer) {
  for_each_table(connection, observer, L"Otimizando tabela", [&](const std::wstring& name) {
    connection.execute(L"OPTIMIZE TABLE " + name + L";");
  });
  observer.status(L"Tabelas otimizadas com sucesso.");
}

void repair_tables(DbConnection& connection, MaintenanceObserver& observer, int mode) {
  const std::wstring mode_word = choice(kRepairModes, mode);
  for_each_table(connection, observer, L"Reparando tabela", [&](const std::wstring& name) {
    connection.execute(L"LOCK TABLES " + name + L" WRITE;");
    connection.execute(L"REPAIR TABLE " + name + L" " + mode_word + L";");
    connection.execute(L"UNLOCK TABLES;");
  });
  connection.execute(L"UNLOCK TABLES;");
  observer.status(L"Tabelas reparadas com sucesso.");
}

void flush_server(DbConnection& connection, MaintenanceObserver& observer, int what) {
  constexpr int kUnknownFlush = 50015;
  if (what < 0 || static_cast<size_t>(what) >= kFlushArguments.size()) {
    observer.status(L"Erro: " + decimal_text(kUnknownFlush));
    return;
  }
  connection.execute(L"FLUSH " + choice(kFlushArguments, what));
}

}  // namespace kestrelon
