#include <windows.h>

#include <algorithm>

#include "base/system_file.h"

namespace kestrelon {
namespace {

constexpr size_t kLargestPiece = size_t{1} << 30;

HANDLE handle_of(intptr_t handle) {
  return reinterpret_cast<HANDLE>(handle);
}

// A wide name that no path of the system can spell.
bool is_unspeakable(const std::wstring& name) {
  return name.empty() || name.find(L'\0') != std::wstring::npos;
}

intptr_t open_handle(const std::wstring& name, DWORD access, DWORD disposition) {
  const HANDLE handle = CreateFileW(name.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
  return reinterpret_cast<intptr_t>(handle);
}

}  // namespace

FileKind file_kind(const std::wstring& name) {
  if (is_unspeakable(name)) return FileKind::kOther;
  const DWORD attributes = GetFileAttributesW(name.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    const DWORD error = GetLastError();
    const bool missing = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
    return missing ? FileKind::kNone : FileKind::kOther;
  }
  constexpr DWORD kNotPlain = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE;
  return (attributes & kNotPlain) != 0 ? FileKind::kOther : FileKind::kPlain;
}

std::optional<uint64_t> plain_file_size(const std::wstring& name) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (file_kind(name) != FileKind::kPlain ||
      !GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &data))
    return std::nullopt;
  return uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
}

bool remove_file(const std::wstring& name) {
  if (file_kind(name) != FileKind::kPlain) return false;
  const DWORD attributes = GetFileAttributesW(name.c_str());
  if ((attributes & FILE_ATTRIBUTE_READONLY) != 0)
    SetFileAttributesW(name.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
  return DeleteFileW(name.c_str()) != FALSE;
}

bool move_file(const std::wstring& from, const std::wstring& to) {
  return !is_unspeakable(from) && !is_unspeakable(to) &&
         MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE;
}

SystemFile SystemFile::open(const std::wstring& name) {
  if (file_kind(name) != FileKind::kPlain) return {};
  SystemFile file(open_handle(name, GENERIC_READ, OPEN_EXISTING));
  if (file && GetFileType(handle_of(file.handle_)) != FILE_TYPE_DISK) return {};
  return file;
}

SystemFile SystemFile::create(const std::wstring& name) {
  if (is_unspeakable(name)) return {};
  return SystemFile(open_handle(name, GENERIC_WRITE, CREATE_ALWAYS));
}

std::optional<uint64_t> SystemFile::size() const {
  LARGE_INTEGER size{};
  if (!GetFileSizeEx(handle_of(handle_), &size)) return std::nullopt;
  return static_cast<uint64_t>(size.QuadPart);
}

std::optional<size_t> SystemFile::read(std::span<uint8_t> room) {
  const auto piece = static_cast<DWORD>(std::min(room.size(), kLargestPiece));
  DWORD length = 0;
  if (!ReadFile(handle_of(handle_), room.data(), piece, &length, nullptr)) return std::nullopt;
  return length;
}

bool SystemFile::seek(uint64_t offset) {
  LARGE_INTEGER distance{};
  distance.QuadPart = static_cast<LONGLONG>(offset);
  return SetFilePointerEx(handle_of(handle_), distance, nullptr, FILE_BEGIN) != FALSE;
}

bool SystemFile::write(std::span<const uint8_t> bytes) {
  while (!bytes.empty()) {
    const auto piece = static_cast<DWORD>(std::min(bytes.size(), kLargestPiece));
    DWORD length = 0;
    if (!WriteFile(handle_of(handle_), bytes.data(), piece, &length, nullptr) || length == 0)
      return false;
    bytes = bytes.subspan(length);
  }
  return static_cast<bool>(*this);
}

bool SystemFile::close() {
  const intptr_t handle = std::exchange(handle_, kClosed);
  return handle != kClosed && CloseHandle(handle_of(handle)) != FALSE;
}

}  // namespace kestrelon
