// Pieces of SQL and of result rows that the database services share.
#pragma once

#include <string>
#include <string_view>

#include "services/mysql/db_connection.h"

namespace kestrelon {

/// A name in backticks; backticks of its own are doubled.
std::wstring quoted_name(std::wstring_view name);

/// Field of the current row as text, bytes read by the Western code page. Throws without a row or
/// for a null.
std::wstring row_text(RecordSet& result, size_t field);

/// The same by the field's name; a null is empty.
std::wstring named_text(RecordSet& result, std::wstring_view field);

/// Field of the current row as text, bytes read as UTF-8; a null is empty. Throws without a row.
std::wstring wide_field(RecordSet& result, size_t field);
/// The same by the field's name; empty without such a field.
std::wstring wide_field(RecordSet& result, std::wstring_view field);

/// A text for a line of comment: line ends and other control characters become blanks, so that no
/// name can leave its comment.
std::wstring comment_text(std::wstring_view text);

/// The text of a SHOW CREATE result. Some drivers give such texts as bytes, or as bytes packed two
/// by two into characters: what does not contain CREATE is taken as such and read by the code page.
std::wstring show_create_text(RecordSet& result, size_t field);

/// The text of a SHOW CREATE result by its field's name, in a session of UTF-8. Throws when the
/// server gives none, as it does without the right to read it.
std::wstring exact_create_text(RecordSet& result, std::wstring_view field);

/// A text of several lines, each trimmed of blanks, parted by LF.
std::wstring lines_of_comment(std::wstring_view text);

/// "CREATE kind" as "CREATE kind IF NOT EXISTS", everywhere in the text.
std::wstring with_if_not_exists(std::wstring text, std::wstring_view kind);

/// True unless the row names another database in its field Db.
bool is_of_database(RecordSet& result, std::wstring_view database, bool names_have_case);

/// True on a server that tells `LOJA` and `loja` apart.
bool database_names_have_case(DbConnection& connection);

/// "(position of total): " in Portuguese; `offset` is added to the position the result tells.
std::wstring position_text(RecordSet& result, int offset);

}  // namespace kestrelon
