// Texts of the service manager: command lines, lists of names, accounts and errors.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kestrelon {

/// A command line whose program is quoted if its path has blanks, since the system would otherwise
/// try every program that the path begins with. The path ends behind ".exe", else with the text.
std::wstring quoted_program(std::wstring_view command);

/// The names between ";", without blanks around them and without empty ones.
std::vector<std::wstring> name_list(std::wstring_view names);

/// Names as the service manager takes them: a zero behind each, and one at the end.
std::wstring multi_text(const std::vector<std::wstring>& names);

/// The account of a service by its full name; a plain user is one of the machine itself.
std::wstring account_name(std::wstring_view user);

/// The arguments in a text, separated by blanks; quotes keep blanks together and a doubled quote
/// within them is one. join_arguments is the inverse.
std::vector<std::wstring> split_arguments(std::wstring_view text);
std::wstring join_arguments(const std::vector<std::wstring>& arguments);

/// What to tell a user about a code of the service manager; `service_code` is the service's own,
/// used where the code says that it has one (1066).
std::wstring service_error_text(uint32_t code, uint32_t service_code = 0);

/// Milliseconds between two looks at a service that asked for `hint` milliseconds.
uint32_t poll_interval(uint32_t hint);

}  // namespace kestrelon
