// Whole files in and out, by wide name.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kestrelon {

/// Size in bytes, or nothing if there is no such plain file.
std::optional<uint64_t> file_size(const std::wstring& name);
/// The bytes of a file of at most `limit` bytes, or nothing if it is larger or cannot be read.
std::optional<std::vector<uint8_t>> read_file(const std::wstring& name, uint64_t limit);
/// Writes a new file over any old one. On failure no file is left.
bool write_file(const std::wstring& name, std::span<const uint8_t> bytes);
/// Deletes a file even if it is marked read-only. True if none exists afterwards.
bool delete_file(const std::wstring& name);

}  // namespace kestrelon
