// The program of the tests as a service: what it hears goes to a file, one event a line.
#pragma once

#include <string>
#include <vector>

namespace kestrelon::testing {

/// The command line that makes this program serve under a name.
std::wstring service_command();

/// The arguments that a service of the tests is started with: where it writes, and what it does.
std::wstring service_arguments(const std::wstring& log, const wchar_t* manner = L"serve");

std::vector<std::string> lines_of(const std::wstring& file);

}  // namespace kestrelon::testing
