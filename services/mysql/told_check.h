// What the default form of a dump leaves out or changes beside values.
#pragma once

#include <string>

#include "services/mysql/alteration_log.h"
#include "services/mysql/db_connection.h"

namespace kestrelon {

/// True when the lines of the text, read back by their shape, give the same program.
bool comes_back_by_lines(const std::wstring& text);

/// True when lines of a structure would be read as more than one statement.
bool has_stray_lines(const std::wstring& text);

/// Tells of triggers and events, which the default form has no lines for.
void note_left_out(DbConnection& connection, AlterationLog& log);

/// Tells of rows that an INSERT without names of columns does not bring back: zeros that become new
/// numbers, invisible and generated columns.
void note_rows(DbConnection& connection, const std::wstring& table, AlterationLog& log);

}  // namespace kestrelon
