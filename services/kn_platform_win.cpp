#include "services/kn_platform_win.h"

#include <windows.h>

#include <ntsecapi.h>

#include <algorithm>
#include <random>

#include "imaging/zlib_api_win.h"
#include "services/code_page_win.h"

namespace kestrelon {
namespace {

class Handle {
 public:
  explicit Handle(HANDLE handle) : handle_(handle) {}
  ~Handle() {
    if (*this) CloseHandle(handle_);
  }
  Handle(Handle&& other) noexcept : handle_(other.handle_) { other.handle_ = nullptr; }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  explicit operator bool() const { return handle_ != nullptr && handle_ != INVALID_HANDLE_VALUE; }
  HANDLE get() const { return handle_; }

 private:
  HANDLE handle_;
};

// Paths that exceed the classic limit go to the system in the form that knows none.
std::wstring system_path(const std::wstring& path) {
  constexpr size_t kLongestFolder = 247;
  if (path.size() <= kLongestFolder || path.starts_with(L"\\\\?\\")) return path;
  std::wstring full(32768, L'\0');
  const DWORD length =
      GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
  if (length == 0 || length >= full.size()) return path;
  full.resize(length);
  if (full.starts_with(L"\\\\")) return L"\\\\?\\UNC\\" + full.substr(2);
  return L"\\\\?\\" + full;
}

class DiskFile final : public KnFile {
 public:
  DiskFile(Handle handle, uint64_t size) : handle_(std::move(handle)), size_(size) {}

  uint64_t size() const override { return size_; }
  std::optional<size_t> read(std::span<uint8_t> buffer) override {
    constexpr size_t kLargest = size_t{1} << 30;
    DWORD length = 0;
    if (!ReadFile(handle_.get(), buffer.data(),
                  static_cast<DWORD>(std::min(buffer.size(), kLargest)), &length, nullptr))
      return std::nullopt;
    return length;
  }

 private:
  Handle handle_;
  uint64_t size_;
};

KnPlatform::Kind kind_of(DWORD attributes) {
  return attributes & FILE_ATTRIBUTE_DIRECTORY ? KnPlatform::Kind::kDirectory
                                               : KnPlatform::Kind::kFile;
}

KnPlatform::Kind find_by_pattern(const std::wstring& pattern) {
  WIN32_FIND_DATAW found;
  const HANDLE search = FindFirstFileW(pattern.c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return KnPlatform::Kind::kMissing;
  KnPlatform::Kind kind;
  do kind = kind_of(found.dwFileAttributes);
  while (kind != KnPlatform::Kind::kFile && FindNextFileW(search, &found));
  FindClose(search);
  return kind;
}

// Where the system looks for an INI file: a bare name stands for one of the Windows folder.
std::wstring ini_path(const std::wstring& file) {
  if (file.find_first_of(L"\\/:") != std::wstring::npos) return file;
  wchar_t folder[MAX_PATH] = {};
  GetWindowsDirectoryW(folder, MAX_PATH);
  return std::wstring(folder) + L'\\' + file;
}

class SystemPlatform final : public KnPlatform {
 public:
  DateTime local_now() override {
    SYSTEMTIME now;
    GetLocalTime(&now);
    return {{now.wYear, now.wMonth, now.wDay}, now.wHour, now.wMinute, now.wSecond};
  }

  wchar_t decimal_mark() override {
    wchar_t mark[8] = {};
    GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, mark, 8);
    return mark[0] != 0 ? mark[0] : L',';
  }

  uint32_t random_bits() override { return static_cast<uint32_t>(random_()); }

  bool has_zlib() override { return is_zlib_enabled(); }

  Kind find(const std::wstring& path) override {
    if (path.find_first_of(L"*?") != std::wstring::npos) return find_by_pattern(path);
    const DWORD attributes = GetFileAttributesW(system_path(path).c_str());
    return attributes == INVALID_FILE_ATTRIBUTES ? Kind::kMissing : kind_of(attributes);
  }

  bool drive_exists(wchar_t letter) override {
    return (GetLogicalDrives() >> (letter - L'A') & 1) != 0;
  }

  bool create_directory(const std::wstring& path) override {
    return CreateDirectoryW(system_path(path).c_str(), nullptr) != FALSE;
  }

  bool delete_file(const std::wstring& path) override {
    return DeleteFileW(system_path(path).c_str()) != FALSE;
  }

  std::unique_ptr<KnFile> open_file(const std::wstring& path) override {
    Handle handle(CreateFileW(system_path(path).c_str(), GENERIC_READ,
                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                              OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    // A device or a pipe by a file's name could keep a reader waiting for ever.
    LARGE_INTEGER size;
    if (!handle || GetFileType(handle.get()) != FILE_TYPE_DISK ||
        !GetFileSizeEx(handle.get(), &size))
      return nullptr;
    return std::make_unique<DiskFile>(std::move(handle), static_cast<uint64_t>(size.QuadPart));
  }

  size_t read_ini(const std::wstring& file, const std::wstring& section, const std::wstring& key,
                  std::span<wchar_t> buffer) override {
    return GetPrivateProfileStringW(section.c_str(), key.c_str(), L"", buffer.data(),
                                    static_cast<DWORD>(buffer.size()), file.c_str());
  }

  IniForm ini_form(const std::wstring& file) override {
    const auto opened = open_file(ini_path(file));
    uint8_t mark[2] = {};
    const size_t length = opened ? opened->read(mark).value_or(0) : 0;
    if (length == 0) return IniForm::kNew;
    return length == 2 && mark[0] == 0xFF && mark[1] == 0xFE ? IniForm::kWide : IniForm::kAnsi;
  }

  bool begin_wide_ini(const std::wstring& file) override {
    const Handle handle(CreateFileW(ini_path(file).c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
    constexpr uint8_t kMark[] = {0xFF, 0xFE};
    DWORD written = 0;
    return handle && WriteFile(handle.get(), kMark, sizeof kMark, &written, nullptr) != FALSE;
  }

  bool fits_page(const std::wstring& text) override {
    return text.empty() || page_bytes(text).has_value();
  }

  bool write_ini(const std::wstring& file, const std::wstring& section, const std::wstring& key,
                 const std::wstring& value) override {
    return WritePrivateProfileStringW(section.c_str(), key.c_str(), value.c_str(), file.c_str()) !=
           FALSE;
  }

 private:
  static std::mt19937::result_type random_seed() {
    std::mt19937::result_type seed = GetTickCount();
    RtlGenRandom(&seed, sizeof seed);
    return seed;
  }

  std::mt19937 random_{random_seed()};
};

}  // namespace

KnPlatform& system_platform() {
  static SystemPlatform platform;
  return platform;
}

}  // namespace kestrelon
