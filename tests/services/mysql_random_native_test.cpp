// Random schemas and rows: what comes back is what went out.
#include <random>

#include "tests/services/mariadb/dump_fixture.h"
#include "tests/services/mariadb/server_objects.h"

namespace kestrelon::testing {
namespace {

class RandomSchema {
 public:
  explicit RandomSchema(unsigned seed) : random_(seed) {}

  /// A table of random columns, and rows for it.
  std::vector<std::string> statements(int number) {
    const std::string table = name(number);
    std::string create = "CREATE TABLE " + table + " (";
    std::vector<int> kinds;
    const int columns = 1 + pick(7);
    for (int i = 0; i < columns; ++i) {
      kinds.push_back(pick(kKinds));
      if (i > 0) create += ", ";
      create += name(i) + " " + kTypes[kinds.back()];
      if (pick(8) == 0 && i > 0) create += " INVISIBLE DEFAULT NULL";
    }
    std::vector<std::string> all = {create + ") ENGINE=" + (pick(3) ? "InnoDB" : "Aria")};
    for (int row = pick(12); row > 0; --row) {
      std::string insert = "INSERT IGNORE INTO " + table + " (";
      std::string values;
      for (int i = 0; i < columns; ++i) {
        insert += (i > 0 ? "," : "") + name(i);
        values += (i > 0 ? "," : "") + value(kinds[static_cast<size_t>(i)]);
      }
      all.push_back(insert + ") VALUES (" + values + ")");
    }
    return all;
  }

 private:
  static constexpr int kKinds = 22;
  static constexpr const char* kTypes[kKinds] = {"TINYINT",
                                                 "SMALLINT UNSIGNED",
                                                 "INT",
                                                 "BIGINT",
                                                 "BIGINT UNSIGNED",
                                                 "DECIMAL(65,20)",
                                                 "FLOAT",
                                                 "DOUBLE",
                                                 "BIT(37)",
                                                 "DATE",
                                                 "TIME(6)",
                                                 "DATETIME(6)",
                                                 "TIMESTAMP(3) NULL",
                                                 "YEAR",
                                                 "VARCHAR(60)",
                                                 "TEXT CHARACTER SET latin1",
                                                 "CHAR(9) CHARACTER SET utf16",
                                                 "LONGTEXT",
                                                 "VARBINARY(90)",
                                                 "LONGBLOB",
                                                 "ENUM('a','','ç','x,y')",
                                                 "VARCHAR(30) CHARACTER SET cp932"};

  int pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

  // Unlike for each number, whatever else it holds.
  std::string name(int number) {
    static constexpr const char* kOdd[] = {"a",  "b c", "''", "``", "\"", "ação", "--",   "/*",
                                           "*/", ";",   "#",  "\\", "%s", "日本", "x\ny", "0"};
    return "`" + std::string(kOdd[number % 16]) + std::to_string(number) + "`";
  }

  std::string digits(int most) {
    std::string text = pick(2) ? "-" : "";
    for (int i = 1 + pick(most); i > 0; --i) text.push_back(static_cast<char>('0' + pick(10)));
    return text;
  }

  std::string bytes() {
    std::string hex = "0x";
    for (int i = 1 + pick(40); i > 0; --i) {
      hex.push_back("0123456789ABCDEF"[pick(16)]);
      hex.push_back("0123456789ABCDEF"[pick(16)]);
    }
    return pick(9) == 0 ? "REPEAT(" + hex + ", 3000)" : hex;
  }

  std::string text() {
    static constexpr const char* kPieces[] = {
        "a",   "''",   "\\\\", "\\n",  "\\r\\n",       "\\0", "\\Z", "ç",
        "€",   "日本", "😀",    ";",    "--  ",         "/*",  "*/",  "NULL",
        "1,5", "\"",   "`",    "END;", "DELIMITER //", "%",   "\t",  " "};
    std::string literal = "'";
    for (int i = pick(8); i > 0; --i) literal += kPieces[pick(24)];
    return literal + "'";
  }

  std::string moment() {
    static constexpr const char* kEdges[] = {"'9999-12-31 23:59:59.999999'",
                                             "'0000-00-00'",
                                             "'1000-01-01 00:00:00'",
                                             "'2024-02-29 12:30:01.000001'",
                                             "'1969-12-31 23:59:59'",
                                             "'838:59:59'",
                                             "'-838:59:59'",
                                             "'2023-00-00'",
                                             "'2038-01-19 03:14:07'",
                                             "'2026-03-09 10:20:30.5'"};
    return kEdges[pick(10)];
  }

  std::string value(int kind) {
    if (pick(6) == 0) return "NULL";
    if (kind < 5) return digits(20);
    if (kind == 5) return digits(40) + "." + std::to_string(pick(1'000'000));
    // No singles below the smallest: they become a zero with a sign, which no text carries.
    if (kind == 6) return digits(12) + "e" + std::to_string(pick(60) - 30);
    if (kind == 7) return digits(12) + "e" + std::to_string(pick(300) - 150);
    if (kind == 8 || kind == 18 || kind == 19) return bytes();
    if (kind < 13) return moment();
    if (kind == 13) return std::to_string(1901 + pick(250));
    return text();
  }

  std::mt19937 random_;
};

TEST_F(DumpTest, RandomSchemasComeBackEqual) {
  constexpr unsigned kRounds = 60;
  constexpr int kTables = 3;
  for (unsigned seed = 0; seed < kRounds; ++seed) {
    if (seed > 0)
      for (const char* database : {"loja", "copia"}) {
        admin_.run(std::string("DROP DATABASE ") + database);
        admin_.run(std::string("CREATE DATABASE ") + database + " CHARACTER SET utf8mb4");
      }
    RandomSchema schema(seed);
    std::vector<std::string> all = {"SET SESSION sql_mode='ALLOW_INVALID_DATES'"};
    for (int i = 0; i < kTables; ++i)
      for (std::string& sql : schema.statements(static_cast<int>(seed) + i))
        all.push_back(std::move(sql));
    fill_all(all);
    ASSERT_TRUE(backup()) << seed << error();
    ASSERT_EQ(service_.altered_values(), 0u) << seed;
    ASSERT_TRUE(restore()) << seed << error();
    ASSERT_EQ(server_objects(port(), "copia"), server_objects(port(), "loja")) << seed;
  }
}

}  // namespace
}  // namespace kestrelon::testing
