// Pictures that the pages show.
#pragma once

#include <string>

namespace kestrelon::host {

/// The full path of a file of resources/samples, looked for upwards from the program; the name
/// alone when it is not found.
std::wstring sample_file(const std::wstring& name);

}  // namespace kestrelon::host
