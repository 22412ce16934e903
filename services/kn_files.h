// File queries of the utility class over the machine's file system.
#pragma once

#include <string>
#include <string_view>

#include "services/kn_platform.h"

namespace kestrelon {

/// Files are read in blocks of this many bytes.
inline constexpr size_t kFileBlock = 65536;

/// A file of any attributes at `path`, whose last name may hold wildcards; with `folder_only` a
/// folder. A blank path is nothing.
bool file_exists(KnPlatform& platform, std::wstring_view path, bool folder_only = false);

bool folder_exists(KnPlatform& platform, std::wstring_view path);

/// "C", "C:" or a path that begins with a drive.
bool drive_exists(KnPlatform& platform, std::wstring_view path);

/// Makes the folder and the missing ones above it; true when it stands afterwards.
bool create_folders(KnPlatform& platform, std::wstring_view path);

/// Deletes one file; wildcards are refused, so that a slip cannot empty a folder.
bool delete_file(KnPlatform& platform, std::wstring_view path);

/// True when both files can be read and hold the same bytes.
bool files_are_equal(KnPlatform& platform, std::wstring_view first, std::wstring_view second);

/// Longest name of an INI file that the system opens, in characters.
inline constexpr size_t kLongestIniName = 259;

/// Value of a key of an INI file, of any length; "" when missing, when a name is empty or the
/// file's is too long.
std::wstring read_ini(KnPlatform& platform, std::wstring_view file, std::wstring_view section,
                      std::wstring_view key);

/// Writes a key. False when a name is empty, the file's is too long, or the file cannot be written.
/// A text beyond the ANSI code page makes a new file a UTF-16 one and is refused by an old ANSI
/// one.
bool write_ini(KnPlatform& platform, std::wstring_view file, std::wstring_view section,
               std::wstring_view key, std::wstring_view value);

}  // namespace kestrelon
