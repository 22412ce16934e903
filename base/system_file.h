// One open file of the system, by wide name. The form for each system is in a file of its own.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace kestrelon {

/// What a name stands for.
enum class FileKind { kNone, kPlain, kOther };

/// Folders, devices, what may not be looked at and names that no path can spell are `kOther`.
FileKind file_kind(const std::wstring& name);

class SystemFile {
 public:
  SystemFile() = default;
  SystemFile(SystemFile&& other) noexcept : handle_(std::exchange(other.handle_, kClosed)) {}
  SystemFile& operator=(SystemFile&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~SystemFile() { close(); }

  /// A plain file for reading. Others may read and write it meanwhile.
  static SystemFile open(const std::wstring& name);
  /// A new file for writing, over any old one.
  static SystemFile create(const std::wstring& name);

  explicit operator bool() const { return handle_ != kClosed; }
  /// Size in bytes now; nothing if the system does not say.
  std::optional<uint64_t> size() const;
  /// Reads at most the room given: 0 at the end, nothing on an error.
  std::optional<size_t> read(std::span<uint8_t> room);
  /// Writes all of it or answers false.
  bool write(std::span<const uint8_t> bytes);
  bool write(std::string_view text) {
    return write({reinterpret_cast<const uint8_t*>(text.data()), text.size()});
  }
  /// The next read begins so many bytes behind the start.
  bool seek(uint64_t offset);
  /// True if the file was open and the system took everything.
  bool close();

 private:
  static constexpr intptr_t kClosed = -1;

  explicit SystemFile(intptr_t handle) : handle_(handle) {}

  intptr_t handle_ = kClosed;
};

/// Size of a plain file that need not be opened for it, else nothing.
std::optional<uint64_t> plain_file_size(const std::wstring& name);
/// Gives a file another name, over any file that has it.
bool move_file(const std::wstring& from, const std::wstring& to);
/// Removes a file even if it is marked read-only.
bool remove_file(const std::wstring& name);

}  // namespace kestrelon
