// Names of files and folders, as text alone. Folders are parted by backslashes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kestrelon {

/// What follows the last point of the name, without the point; "" when there is none in the name.
std::wstring file_extension(std::wstring_view path);

/// The folder part with its last backslash; "" when there is none.
std::wstring folder_part(std::wstring_view path);

/// True for a name that is not blank and holds none of \ / : * ? " < > | CR LF.
bool is_valid_file_name(std::wstring_view name);

/// The folder named by `path` without backslashes at its end, but "C:\" for the root of a drive.
std::wstring without_trailing_separator(std::wstring_view path);

/// `path` and the folders above it that can be made, outermost first; neither a drive nor the
/// server and share of a network path is among them.
std::vector<std::wstring> folder_levels(std::wstring_view path);

/// The address to hand to a browser: as it stands with a scheme of two letters or more ("mailto:"
/// and its like), after "http://" when it begins with "www.", otherwise "", so that no program is
/// started by its path.
std::wstring browsable_url(std::wstring_view text);

}  // namespace kestrelon
