// Assignments of session variables, read from the statements of a file.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kestrelon {

/// What the statement last assigns to the variable, as "SET x = y" has it, in or out of a version
/// comment: the content of a quoted text, a bare word, or "@" for a value kept in a variable. What
/// only reads (@@x) or keeps (@old_x = ...) is none. `name` is in upper case.
std::optional<std::string> assigned_value(std::string_view statement, std::string_view name);

/// Position of `word`, which is in upper case, at or after `from` in any case; npos when absent.
size_t find_word(std::string_view text, std::string_view word, size_t from = 0);

}  // namespace kestrelon
