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

/// The text of a SHOW CREATE result. Some drivers give such texts as bytes, or as bytes packed two
/// by two into characters: what does not contain CREATE is taken as such and read by the code page.
std::wstring show_create_text(RecordSet& result, size_t field);

/// "CREATE kind" as "CREATE kind IF NOT EXISTS", everywhere in the text.
std::wstring with_if_not_exists(std::wstring text, std::wstring_view kind);

/// True unless the row names another database in its field Db.
bool is_of_database(RecordSet& result, std::wstring_view database);

/// "(position of total): " in Portuguese; `offset` is added to the position the result tells.
std::wstring position_text(RecordSet& result, int offset);

}  // namespace kestrelon
