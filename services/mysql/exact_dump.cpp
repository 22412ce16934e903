#include "services/mysql/exact_dump.h"

#include <algorithm>

#include "base/decimal.h"
#include "base/text.h"
#include "services/kn_format_ex.h"
#include "services/mysql/file_errors.h"
#include "services/mysql/sql_text.h"
#include "services/mysql/utf8_text.h"

namespace kestrelon {
namespace {

// Settings of the reading session: nothing limits or reshapes what the server shows.
constexpr wchar_t kReading[] =
    L"SET SESSION sql_mode='', SESSION time_zone='+00:00', SESSION sql_select_limit=DEFAULT,"
    L" SESSION sql_quote_show_create=1;";

}  // namespace

ExactDump::ExactDump(const std::wstring& path, DbConnection& connection,
                     MaintenanceObserver& observer, const BackupOptions& options,
                     AlterationLog& log)
    : connection_(connection),
      observer_(observer),
      options_(options),
      log_(log),
      output_(path),
      session_(connection) {}

ExactDump::~ExactDump() {
  if (!has_snapshot_) return;
  try {
    connection_.execute(L"COMMIT;");
  } catch (const std::exception&) {
    // The connection is gone, and its transaction with it.
  }
}

void ExactDump::write() {
  prepare_session();
  begin_snapshot();
  list_tables();
  write_head();
  write_tables();
  write_stand_ins();
  // Text field 2 of routines stands behind the mode.
  constexpr ProgramKind kKinds[] = {
      {L"PROCEDURE", L"procedure", L"SHOW PROCEDURE STATUS;", L"Name", L"Db", L"Create Procedure",
       true},
      {L"FUNCTION", L"function", L"SHOW FUNCTION STATUS;", L"Name", L"Db", L"Create Function",
       true},
      {L"PACKAGE", L"package", L"SHOW PACKAGE STATUS;", L"Name", L"Db", L"Create Package", false},
      {L"PACKAGE BODY", L"package body", L"SHOW PACKAGE BODY STATUS;", L"Name", L"Db",
       L"Create Package Body", false}};
  for (const ProgramKind& kind : kKinds) write_programs(kind);
  write_views();
  write_programs({L"TRIGGER", L"trigger", L"SHOW TRIGGERS;", L"Trigger", nullptr,
                  L"SQL Original Statement", true});
  write_programs({L"EVENT", L"event", L"SHOW EVENTS;", L"Name", L"Db", L"Create Event", true});
  write_end();
}

void ExactDump::prepare_session() {
  connection_.execute(kReading);
  connection_.execute(L"SET NAMES utf8mb4;");
  has_unicode_ = reads_unicode(connection_);
  if (!has_unicode_)
    log_.note(
        L"A conexão não entrega todos os caracteres (driver sem Unicode): os textos das linhas"
        L" foram lidos em hexadecimal.");
  names_have_case_ = database_names_have_case(connection_);
  // Some room is left for what a driver adds.
  constexpr int64_t kMostStatement = 1'000'000;
  most_statement_ =
      static_cast<size_t>(std::clamp<int64_t>(session_.most_packet() / 4 * 3, 512, kMostStatement));
}

// A transaction that the caller began is not ended; the rows are then those it sees.
void ExactDump::begin_snapshot() {
  if (session_.in_transaction()) {
    log_.note(L"A conexão tem uma transação aberta: a cópia foi feita dentro dela.");
    return;
  }
  connection_.execute(L"SET TRANSACTION ISOLATION LEVEL REPEATABLE READ;");
  connection_.execute(L"START TRANSACTION WITH CONSISTENT SNAPSHOT;");
  has_snapshot_ = true;
}

std::wstring ExactDump::moment_text() const {
  const DateTime now = options_.clock();
  return format_moment(now, L"DD/MM/YYYY") + L" " + format_moment(now, L"HH:MM:SS");
}

void ExactDump::write_head() {
  output_.line(kExactMark);
  output_.comment(L"Criado por: " + options_.application_title);
  output_.comment(L"Data/Hora: " + moment_text());
  output_.comment(L"Versão do MySql: " + session_.version());
  output_.comment(L"Base de dados: " + session_.database());
  const std::wstring information = lines_of_comment(options_.additional_information);
  for (const std::wstring_view line : split(information, L"\n"))
    if (!line.empty()) output_.comment(L"Informações adicionais: " + std::wstring(line));
  output_.comment(L"Cliente do servidor: mariadb --comments base < arquivo");
  output_.line({});
  write_settings();
  write_database();
}

void ExactDump::write_settings() {
  output_.statement(
      L"SET @kestrelon_client=@@CHARACTER_SET_CLIENT, "
      L"@kestrelon_results=@@CHARACTER_SET_RESULTS, "
      L"@kestrelon_collation=@@COLLATION_CONNECTION, @kestrelon_zone=@@TIME_ZONE, "
      L"@kestrelon_mode=@@SQL_MODE, @kestrelon_foreign=@@FOREIGN_KEY_CHECKS, "
      L"@kestrelon_unique=@@UNIQUE_CHECKS");
  output_.statement(L"SET NAMES utf8mb4");
  output_.statement(std::wstring(L"SET SQL_MODE='") + kExactMode +
                    L"', TIME_ZONE='+00:00', FOREIGN_KEY_CHECKS=0, UNIQUE_CHECKS=0");
  output_.statement(
      L"/*M!100201 SET @kestrelon_checks=@@CHECK_CONSTRAINT_CHECKS, CHECK_CONSTRAINT_CHECKS=0 */");
}

void ExactDump::write_database() {
  if (options_.drop_database) {
    const std::wstring database = quoted_name(session_.database());
    const auto created = connection_.execute(L"SHOW CREATE DATABASE " + database + L";");
    output_.statement(L"DROP DATABASE IF EXISTS " + database);
    output_.statement(wide_field(*created, 1));
    output_.statement(L"USE " + database);
  } else if (!session_.database_collation().empty()) {
    output_.statement(L"ALTER DATABASE COLLATE " + session_.database_collation());
  }
  output_.line({});
}

void ExactDump::write_end() {
  output_.line({});
  output_.statement(
      L"SET SQL_MODE=@kestrelon_mode, TIME_ZONE=@kestrelon_zone, "
      L"FOREIGN_KEY_CHECKS=@kestrelon_foreign, UNIQUE_CHECKS=@kestrelon_unique");
  output_.statement(L"/*M!100201 SET CHECK_CONSTRAINT_CHECKS=@kestrelon_checks */");
  output_.statement(
      L"SET CHARACTER_SET_CLIENT=@kestrelon_client, CHARACTER_SET_RESULTS=@kestrelon_results, "
      L"COLLATION_CONNECTION=@kestrelon_collation");
  output_.comment(L"Fim do arquivo: " + moment_text());
  totals_.statements = output_.statements();
  output_.line(closing_line(totals_));
  output_.complete();
  observer_.progress(100, 100);
  observer_.status(L"O backup de " + decimal_text(totals_.tables) + L" tabela(s) foi concluído.");
}

void ExactDump::step(size_t done, size_t total) {
  observer_.progress(static_cast<int64_t>(total), static_cast<int64_t>(done));
  observer_.pump();
  if (observer_.is_cancelled()) throw cancelled_error();
}

std::wstring ExactDump::position(size_t index) const {
  return L"(" + decimal_text(static_cast<int64_t>(index + 1)) + L" de " +
         decimal_text(static_cast<int64_t>(tables_.size())) + L"): ";
}

bool ExactDump::is_own_database(const std::wstring& name) const {
  return names_have_case_ ? name == session_.database()
                          : equals_ignoring_case(name, session_.database());
}

// A text that may be read by its field's name, whatever the driver makes of it.
std::wstring ExactDump::create_text(std::wstring_view what, const std::wstring& name,
                                    std::wstring_view field) {
  const auto created =
      connection_.execute(L"SHOW CREATE " + std::wstring(what) + L" " + quoted_name(name) + L";");
  std::wstring text = exact_create_text(*created, field);
  check_text(text, std::wstring(what) + L" " + quoted_name(name));
  return text;
}

// Without Unicode in the connection nobody can tell a character that was lost from a question mark.
void ExactDump::check_text(const std::wstring& text, const std::wstring& label) {
  if (!has_unicode_ && text.find(L'?') != std::wstring::npos)
    log_.altered(L"A estrutura de " + comment_text(label) +
                 L" pode ter perdido caracteres: o driver da conexão não tem Unicode.");
}

}  // namespace kestrelon
