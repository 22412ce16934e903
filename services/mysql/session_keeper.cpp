#include "services/mysql/session_keeper.h"

#include "base/text.h"
#include "services/mysql/sql_text.h"
#include "services/mysql/utf8_text.h"

namespace kestrelon {
namespace {

struct Setting {
  const wchar_t* name;
  bool is_text;
};

// Order matters: quotes in a text are safe in every mode, so the mode may come first.
constexpr Setting kSettings[] = {{L"sql_mode", true},
                                 {L"time_zone", true},
                                 {L"character_set_client", true},
                                 {L"character_set_results", true},
                                 {L"collation_connection", true},
                                 {L"foreign_key_checks", false},
                                 {L"unique_checks", false},
                                 {L"autocommit", false},
                                 {L"sql_select_limit", false},
                                 {L"sql_quote_show_create", false}};

std::wstring literal(const std::wstring& text) {
  std::wstring quoted = L"'";
  for (const wchar_t c : text) quoted.append(c == L'\'' ? 2 : 1, c);
  return quoted + L"'";
}

int64_t whole_number(const std::wstring& text) {
  int64_t number = 0;
  for (const wchar_t c : text)
    if (is_digit(c) && number < INT64_MAX / 100) number = number * 10 + (c - L'0');
  return number;
}

// A c with cedilla, the euro and a character of two UTF-16 units.
constexpr char kProbe[] = "\xC3\xA7\xE2\x82\xAC\xF0\x9F\x98\x80";
constexpr wchar_t kProbeHex[] = L"C3A7E282ACF09F9880";

}  // namespace

SessionKeeper::SessionKeeper(DbConnection& connection) : connection_(connection) {
  read_own_variables();
  read_mariadb_variables();
}

void SessionKeeper::read_own_variables() {
  std::wstring sql = L"SELECT ";
  for (const Setting& setting : kSettings) sql.append(L"@@SESSION.").append(setting.name) += L", ";
  sql += L"@@GLOBAL.max_allowed_packet, DATABASE(), VERSION(), @@SESSION.collation_database;";
  const auto row = connection_.execute(sql);
  size_t field = 0;
  for (const Setting& setting : kSettings) {
    const std::wstring value = wide_field(*row, field++);
    give_back_ += give_back_.empty() ? L"SET " : L", ";
    give_back_.append(L"SESSION ").append(setting.name) += L"=";
    if (setting.is_text)
      give_back_ += value.empty() && setting.name[0] == L'c' ? L"NULL" : literal(value);
    else
      give_back_ += value;
    if (field == 1) sql_mode_ = value;
  }
  most_packet_ = whole_number(wide_field(*row, field++));
  database_ = wide_field(*row, field++);
  version_ = wide_field(*row, field++);
  database_collation_ = wide_field(*row, field++);
}

void SessionKeeper::read_mariadb_variables() {
  try {
    const auto row =
        connection_.execute(L"SELECT @@SESSION.in_transaction, @@SESSION.check_constraint_checks;");
    if (row->eof()) return;
    in_transaction_ = wide_field(*row, 0) == L"1";
    give_back_mariadb_ = L"SET SESSION check_constraint_checks=" + wide_field(*row, 1);
  } catch (const DbError&) {
    // Another kind of server has neither.
  }
}

bool SessionKeeper::executes_immediate() const {
  if (find_ignoring_case(version_, L"MariaDB") == std::wstring::npos) return false;
  const auto parts = split(version_, L".");
  const int64_t major = whole_number(std::wstring(parts[0]));
  return major > 10 ||
         (major == 10 && parts.size() > 1 && whole_number(std::wstring(parts[1])) > 6);
}

void SessionKeeper::run_quietly(const std::wstring& sql) noexcept {
  try {
    connection_.execute(sql + L";");
  } catch (const std::exception&) {
    // The connection is gone, and its session with it.
  }
}

SessionKeeper::~SessionKeeper() {
  if (undoes_) {
    run_quietly(L"ROLLBACK");
    run_quietly(L"UNLOCK TABLES");
  }
  run_quietly(give_back_);
  if (!give_back_mariadb_.empty()) run_quietly(give_back_mariadb_);
}

bool reads_unicode(DbConnection& connection) {
  std::wstring expected;
  from_utf8(kProbe, expected);
  const auto row =
      connection.execute(std::wstring(L"SELECT CONVERT(0x") + kProbeHex + L" USING utf8mb4);");
  return wide_field(*row, 0) == expected;
}

bool sends_unicode(DbConnection& connection) {
  std::wstring probe;
  from_utf8(kProbe, probe);
  const auto row = connection.execute(L"SELECT HEX('" + probe + L"');");
  return wide_field(*row, 0) == kProbeHex;
}

}  // namespace kestrelon
