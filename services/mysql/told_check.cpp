#include "services/mysql/told_check.h"

#include <optional>

#include "base/text.h"
#include "services/mysql/block_tracker.h"
#include "services/mysql/sql_text.h"
#include "services/mysql/statement_gatherer.h"

namespace kestrelon {
namespace {

std::wstring count_zeros(const std::wstring& table, const std::wstring& column) {
  return L"SELECT COUNT(*) FROM " + table + L" WHERE " + column + L"=0;";
}

std::wstring count_values(const std::wstring& table, const std::wstring& column) {
  return L"SELECT COUNT(" + column + L") FROM " + table + L";";
}

bool holds(std::wstring_view text, std::wstring_view word) {
  return find_ignoring_case(text, word) != std::wstring_view::npos;
}

// The one statement that a restore makes of the lines; nothing if it makes none or more.
std::optional<std::string> read_by_lines(const std::wstring& text) {
  StatementGatherer gatherer;
  std::optional<std::string> whole;
  for (const std::wstring_view line : split(text, L"\n")) {
    if (whole) return std::nullopt;
    std::wstring_view own = line;
    if (own.ends_with(L'\r')) own.remove_suffix(1);
    if (own.find(L'\r') != std::wstring_view::npos) return std::nullopt;
    whole = gatherer.feed(to_ansi(own));
  }
  return whole;
}

// Rows that a query counts; 0 when the server does not tell.
uint64_t counted(DbConnection& connection, const std::wstring& sql) {
  try {
    const auto row = connection.execute(sql);
    if (row->eof()) return 0;
    uint64_t count = 0;
    for (const wchar_t c : wide_field(*row, 0))
      if (is_digit(c)) count = count * 10 + static_cast<uint64_t>(c - L'0');
    return count;
  } catch (const DbError&) {
    return 0;
  }
}

void note_list(DbConnection& connection, const wchar_t* sql, const wchar_t* field,
               const std::wstring& what, AlterationLog& log) {
  try {
    const auto list = connection.execute(sql);
    for (; !list->eof(); list->move_next())
      log.altered(what + L" " + comment_text(quoted_name(wide_field(*list, field))) +
                  L" não faz parte deste formato e ficou de fora.");
  } catch (const DbError&) {
    // A server, or a user, without them.
  }
}

}  // namespace

bool comes_back_by_lines(const std::wstring& text) {
  const auto whole = read_by_lines(text);
  return whole && without_layout(*whole) == without_layout(to_ansi(text));
}

bool has_stray_lines(const std::wstring& text) {
  return !read_by_lines(text);
}

void note_left_out(DbConnection& connection, AlterationLog& log) {
  note_list(connection, L"SHOW TRIGGERS;", L"Trigger", L"A trigger", log);
  note_list(connection, L"SHOW EVENTS;", L"Name", L"O evento", log);
}

void note_rows(DbConnection& connection, const std::wstring& table, AlterationLog& log) {
  const std::wstring name = quoted_name(table);
  const std::wstring shown_name = comment_text(name);
  try {
    const auto shown = connection.execute(L"SHOW FULL COLUMNS FROM " + name + L";");
    for (; !shown->eof(); shown->move_next()) {
      const std::wstring extra = wide_field(*shown, L"Extra");
      const std::wstring column = quoted_name(wide_field(*shown, L"Field"));
      const std::wstring where = L" da tabela " + shown_name;
      if (holds(extra, L"auto_increment")) {
        const uint64_t zeros = counted(connection, count_zeros(name, column));
        if (zeros > 0)
          log.altered(
              L"O zero da coluna " + comment_text(column) + where + L" volta como um número novo.",
              zeros);
      } else if (holds(extra, L"INVISIBLE")) {
        log.altered(L"A coluna invisível " + comment_text(column) + where + L" ficou de fora.",
                    counted(connection, count_values(name, column)));
      } else if (holds(extra, L"VIRTUAL GENERATED") || holds(extra, L"STORED GENERATED") ||
                 holds(extra, L"PERSISTENT")) {
        log.altered(L"A coluna gerada " + comment_text(column) + where +
                    L" é recusada na restauração por servidores em modo estrito.");
      }
    }
  } catch (const DbError&) {
    // The rows themselves will tell.
  }
}

}  // namespace kestrelon
