#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "base/system_file.h"

namespace kestrelon {
namespace {

void append_utf8(std::string& path, uint32_t code) {
  const auto put = [&path](uint32_t byte) { path.push_back(static_cast<char>(byte)); };
  if (code < 0x80) return put(code);
  int trailing = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
  put((0xFF00u >> (trailing + 1) & 0xFF) | code >> 6 * trailing);
  while (trailing-- > 0) put(0x80 | (code >> 6 * trailing & 0x3F));
}

// Wide characters of this system are code points. A name that no path can spell is empty.
std::string path_of(const std::wstring& name) {
  std::string path;
  for (const wchar_t c : name) {
    const uint32_t code = std::char_traits<wchar_t>::to_int_type(c);
    if (code == 0 || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) return {};
    append_utf8(path, code);
  }
  return path;
}

// Calls again what a signal broke off.
template <class Call>
ssize_t until_done(Call&& call) {
  ssize_t result = 0;
  do {
    result = call();
  } while (result < 0 && errno == EINTR);
  return result;
}

}  // namespace

FileKind file_kind(const std::wstring& name) {
  const std::string path = path_of(name);
  struct stat status {};
  if (path.empty()) return FileKind::kOther;
  if (stat(path.c_str(), &status) != 0)
    return errno == ENOENT || errno == ENOTDIR ? FileKind::kNone : FileKind::kOther;
  return S_ISREG(status.st_mode) ? FileKind::kPlain : FileKind::kOther;
}

std::optional<uint64_t> plain_file_size(const std::wstring& name) {
  struct stat status {};
  if (stat(path_of(name).c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  return static_cast<uint64_t>(status.st_size);
}

bool remove_file(const std::wstring& name) {
  return unlink(path_of(name).c_str()) == 0;
}

bool move_file(const std::wstring& from, const std::wstring& to) {
  return rename(path_of(from).c_str(), path_of(to).c_str()) == 0;
}

SystemFile SystemFile::open(const std::wstring& name) {
  if (file_kind(name) != FileKind::kPlain) return {};
  return SystemFile(::open(path_of(name).c_str(), O_RDONLY | O_CLOEXEC));
}

SystemFile SystemFile::create(const std::wstring& name) {
  const std::string path = path_of(name);
  if (path.empty()) return {};
  return SystemFile(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
}

std::optional<uint64_t> SystemFile::size() const {
  struct stat status {};
  if (fstat(static_cast<int>(handle_), &status) != 0) return std::nullopt;
  return static_cast<uint64_t>(status.st_size);
}

std::optional<size_t> SystemFile::read(std::span<uint8_t> room) {
  const ssize_t length =
      until_done([&] { return ::read(static_cast<int>(handle_), room.data(), room.size()); });
  if (length < 0) return std::nullopt;
  return static_cast<size_t>(length);
}

bool SystemFile::seek(uint64_t offset) {
  return lseek(static_cast<int>(handle_), static_cast<off_t>(offset), SEEK_SET) >= 0;
}

bool SystemFile::write(std::span<const uint8_t> bytes) {
  while (!bytes.empty()) {
    const ssize_t length =
        until_done([&] { return ::write(static_cast<int>(handle_), bytes.data(), bytes.size()); });
    if (length <= 0) return false;
    bytes = bytes.subspan(static_cast<size_t>(length));
  }
  return static_cast<bool>(*this);
}

bool SystemFile::close() {
  const intptr_t handle = std::exchange(handle_, kClosed);
  return handle != kClosed && ::close(static_cast<int>(handle)) == 0;
}

}  // namespace kestrelon
