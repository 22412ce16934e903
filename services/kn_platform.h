// What the logic of the utility class needs from the machine. Windows stands behind it in
// kn_platform_win.cpp, a fake in the tests. No call raises; what fails answers empty or false.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "base/calendar.h"

namespace kestrelon {

/// A file open for reading from its start; closed by destruction.
class KnFile {
 public:
  virtual ~KnFile() = default;
  virtual uint64_t size() const = 0;
  /// Reads up to `buffer.size()` bytes and moves on; fewer only at the end of the file. Nothing
  /// when the read fails.
  virtual std::optional<size_t> read(std::span<uint8_t> buffer) = 0;
};

class KnPlatform {
 public:
  enum class Kind { kMissing, kFile, kDirectory };
  enum class IniForm { kNew, kAnsi, kWide };

  virtual ~KnPlatform() = default;

  virtual DateTime local_now() = 0;
  /// The decimal mark of the user's locale.
  virtual wchar_t decimal_mark() = 0;
  /// 32 random bits, for display and not for secrets.
  virtual uint32_t random_bits() = 0;
  /// True when the machine's zlib offers its crc32.
  virtual bool has_zlib() = 0;

  /// What stands at a path. Wildcards in the last name match; a file wins over a directory.
  virtual Kind find(const std::wstring& path) = 0;
  /// True for a drive letter ('A' to 'Z') in use.
  virtual bool drive_exists(wchar_t letter) = 0;
  /// Makes one level; false if it is already there.
  virtual bool create_directory(const std::wstring& path) = 0;
  virtual bool delete_file(const std::wstring& path) = 0;
  /// Null when the file is not there or cannot be read.
  virtual std::unique_ptr<KnFile> open_file(const std::wstring& path) = 0;

  /// Copies the value of a key into `buffer`, cut to its size less 1, and answers the copied
  /// length.
  virtual size_t read_ini(const std::wstring& file, const std::wstring& section,
                          const std::wstring& key, std::span<wchar_t> buffer) = 0;
  /// The form in which an INI file is kept; an empty file is a new one.
  virtual IniForm ini_form(const std::wstring& file) = 0;
  /// Gives a new INI file the mark by which the system keeps it in UTF-16.
  virtual bool begin_wide_ini(const std::wstring& file) = 0;
  /// True when the ANSI code page has every character of the text.
  virtual bool fits_page(const std::wstring& text) = 0;
  virtual bool write_ini(const std::wstring& file, const std::wstring& section,
                         const std::wstring& key, const std::wstring& value) = 0;
};

}  // namespace kestrelon
