#include "base/file_bytes.h"

#include <filesystem>
#include <fstream>
#include <system_error>
#include <type_traits>

namespace kestrelon {
namespace fs = std::filesystem;
namespace {

// A wide name that no path of the system can spell gives none.
std::optional<fs::path> path_of(const std::wstring& name) {
  if (name.empty() || name.find(L'\0') != std::wstring::npos) return std::nullopt;
  try {
    if constexpr (std::is_same_v<fs::path::value_type, wchar_t>) {
      return fs::path(name);
    } else {
      // Wide characters of the native build are code points; the C locale would refuse most.
      return fs::path(std::u32string(name.begin(), name.end()));
    }
  } catch (const std::system_error&) {
    return std::nullopt;
  }
}

}  // namespace

std::optional<uint64_t> file_size(const std::wstring& name) {
  const auto path = path_of(name);
  std::error_code error;
  if (!path || !fs::is_regular_file(*path, error)) return std::nullopt;
  const uint64_t size = fs::file_size(*path, error);
  if (error) return std::nullopt;
  return size;
}

std::optional<std::vector<uint8_t>> read_file(const std::wstring& name, uint64_t limit) {
  const auto size = file_size(name);
  if (!size || *size > limit) return std::nullopt;
  std::ifstream file(*path_of(name), std::ios::binary);
  std::vector<uint8_t> bytes(static_cast<size_t>(*size));
  file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  if (!file) return std::nullopt;
  return bytes;
}

bool write_file(const std::wstring& name, std::span<const uint8_t> bytes) {
  const auto path = path_of(name);
  if (!path) return false;
  std::ofstream file(*path, std::ios::binary | std::ios::trunc);
  if (!file) return false;
  file.write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (file) return true;
  delete_file(name);
  return false;
}

bool delete_file(const std::wstring& name) {
  const auto path = path_of(name);
  if (!path) return false;
  std::error_code error;
  if (!fs::exists(fs::symlink_status(*path, error))) return true;
  if (fs::is_directory(*path, error)) return false;
  fs::permissions(*path, fs::perms::owner_write, fs::perm_options::add, error);
  return fs::remove(*path, error) && !error;
}

}  // namespace kestrelon
