// Views, routines, triggers and events of an exact dump, each with its definer, mode, character
// set and collation.
#include <algorithm>

#include "base/decimal.h"
#include "base/text.h"
#include "services/mysql/exact_dump.h"
#include "services/mysql/file_errors.h"
#include "services/mysql/sql_text.h"
#include "services/mysql/utf8_text.h"

namespace kestrelon {
namespace {

std::wstring plain_view(const std::wstring& quoted, const std::wstring& columns) {
  return L"CREATE VIEW " + quoted + L" AS SELECT " + columns;
}

bool is_ascii(std::wstring_view text) {
  return std::all_of(text.begin(), text.end(), [](wchar_t c) { return code_unit(c) < 0x80; });
}

std::wstring hex_of(std::wstring_view text) {
  constexpr wchar_t kDigits[] = L"0123456789ABCDEF";
  std::wstring hex;
  for (const char c : to_utf8(text)) {
    const auto byte = static_cast<unsigned char>(c);
    hex.push_back(kDigits[byte >> 4]);
    hex.push_back(kDigits[byte & 15]);
  }
  return hex;
}

}  // namespace

// A view may ask another that comes later, or a function that asks a view: each stands for itself
// with its columns alone until all are there.
void ExactDump::write_stand_ins() {
  for (const std::wstring& name : views_) {
    const std::wstring quoted = quoted_name(name);
    std::wstring columns;
    try {
      const auto shown = connection_.execute(L"SHOW FULL COLUMNS FROM " + quoted + L";");
      for (; !shown->eof(); shown->move_next())
        columns +=
            (columns.empty() ? L"1 AS " : L", 1 AS ") + quoted_name(wide_field(*shown, L"Field"));
    } catch (const DbError&) {
      broken_views_.push_back(name);
      continue;
    }
    output_.statement(L"DROP VIEW IF EXISTS " + quoted);
    output_.statement(plain_view(quoted, columns));
  }
}

// What no server would take any more is kept as a comment.
void ExactDump::write_views() {
  for (const std::wstring& name : views_) {
    step(0, views_.size());
    const std::wstring quoted = quoted_name(name);
    const auto created = connection_.execute(L"SHOW CREATE VIEW " + quoted + L";");
    const std::wstring text = exact_create_text(*created, L"Create View");
    if (std::find(broken_views_.begin(), broken_views_.end(), name) != broken_views_.end()) {
      log_.altered(L"A view " + comment_text(quoted) +
                   L" refere-se a algo que não existe: ficou só como comentário.");
      output_.comment(L"View inválida: " + text);
      continue;
    }
    output_.comment(L"View: " + quoted);
    output_.statement(L"DROP VIEW IF EXISTS " + quoted);
    write_text(*created, text, L"VIEW " + quoted);
    output_.line({});
    ++totals_.objects;
  }
}

void ExactDump::write_programs(const ProgramKind& kind) {
  std::vector<std::wstring> names;
  try {
    const auto list = connection_.execute(kind.list);
    for (; !list->eof(); list->move_next())
      if (kind.database_field == nullptr || is_own_database(wide_field(*list, kind.database_field)))
        names.push_back(wide_field(*list, kind.name_field));
  } catch (const DbError&) {
    // Only servers that cannot have such programs may refuse to list them.
    if (kind.is_everywhere || session_.executes_immediate()) throw;
    return;
  }
  for (size_t i = 0; i < names.size(); ++i) {
    step(i, names.size());
    observer_.status(L"Efetuando backup da " + std::wstring(kind.label) + L" (" +
                     decimal_text(static_cast<int64_t>(i + 1)) + L" de " +
                     decimal_text(static_cast<int64_t>(names.size())) + L"): " + names[i]);
    write_program(kind, names[i]);
  }
}

void ExactDump::write_program(const ProgramKind& kind, const std::wstring& name) {
  const std::wstring quoted = quoted_name(name);
  const std::wstring label = std::wstring(kind.sql) + L" " + quoted;
  const auto created = connection_.execute(L"SHOW CREATE " + label + L";");
  const std::wstring text = exact_create_text(*created, kind.text_field);
  output_.comment(std::wstring(kind.label) + L": " + quoted);
  // Some programs can only be dropped in the mode they are of.
  output_.statement(L"SET SQL_MODE='" + wide_field(*created, L"sql_mode") + L"'");
  output_.statement(L"DROP " + std::wstring(kind.sql) + L" IF EXISTS " + quoted);
  const std::wstring collation = wide_field(*created, L"Database Collation");
  const bool has_own_collation = !collation.empty() && collation != session_.database_collation();
  if (has_own_collation) output_.statement(L"ALTER DATABASE COLLATE " + collation);
  const std::wstring zone = wide_field(*created, L"time_zone");
  if (!zone.empty()) output_.statement(L"SET TIME_ZONE='" + zone + L"'");
  write_text(*created, text, label);
  output_.statement(L"SET SQL_MODE='" + std::wstring(kExactMode) + L"', TIME_ZONE='+00:00'");
  if (has_own_collation)
    output_.statement(L"ALTER DATABASE COLLATE " + session_.database_collation());
  output_.line({});
  ++totals_.objects;
}

void ExactDump::set_texts(const std::wstring& client, const std::wstring& collation) {
  output_.statement(L"SET CHARACTER_SET_CLIENT=" + client + L", COLLATION_CONNECTION=" + collation);
}

// The server keeps a text in the character set of the session that made it. The file is UTF-8, so
// for another set and a text beyond ASCII the server itself turns the text round.
void ExactDump::write_text(RecordSet& created, const std::wstring& text,
                           const std::wstring& label) {
  check_text(text, label);
  std::wstring client = wide_field(created, L"character_set_client");
  std::wstring collation = wide_field(created, L"collation_connection");
  if (client.empty()) client = L"utf8mb4";
  if (collation.empty()) collation = L"utf8mb4_general_ci";
  const bool is_utf8 = client.starts_with(L"utf8");
  if (is_utf8 || is_ascii(text)) {
    set_texts(client, collation);
    output_.delimited(text);
  } else if (session_.executes_immediate()) {
    set_texts(client, collation);
    output_.statement(L"EXECUTE IMMEDIATE CONVERT(0x" + hex_of(text) + L" USING utf8mb4)");
  } else {
    log_.altered(L"O texto de " + comment_text(label) + L" volta com o conjunto de caracteres" +
                 L" utf8mb4 em lugar de " + client + L".");
    set_texts(L"utf8mb4", collation);
    output_.delimited(text);
  }
  output_.statement(L"SET NAMES utf8mb4");
}

}  // namespace kestrelon
