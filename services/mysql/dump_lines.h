// The lines of a dump file: bytes of the Western code page.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/system_file.h"
#include "services/mysql/dump_target.h"

namespace kestrelon {

/// Writes a file line by line, each ending in CR LF and given to the system before the next, so
/// that a run that breaks leaves what was written (see DumpTarget where). Throws DbError when the
/// file cannot be made or written.
class LineWriter {
 public:
  explicit LineWriter(const std::wstring& path) : target_(path) {}

  /// Characters outside the code page become '?'.
  void line(std::wstring_view text);
  void blank() { bytes({}); }
  /// A line that is in the code page already.
  void bytes(std::string_view text);
  void complete() { target_.complete(); }

  /// Lines written so far.
  long count() const { return count_; }

 private:
  DumpTarget target_;
  std::string line_;  // with its end, for one write
  long count_ = 0;
};

/// Reads lines that end in CR LF, LF or CR; the last one may lack its end. Memory is that of the
/// longest line.
class LineReader {
 public:
  /// Fills the room given or a part of it: 0 at the end, nothing on an error.
  using Source = std::function<std::optional<size_t>(std::span<uint8_t> room)>;

  explicit LineReader(Source source) : source_(std::move(source)) {}

  /// The next line without its end, valid until the next call; false at the end of the file.
  /// Throws DbError when the bytes cannot be read.
  bool next(std::string& line);

 private:
  bool fill();

  static constexpr size_t kBlock = 65536;

  Source source_;
  std::string block_;
  size_t at_ = 0;
  bool after_cr_ = false;
};

/// Opens a file for reading; throws DbError when it is missing or cannot be read. Gives its length.
SystemFile open_lines(const std::wstring& path, int64_t& length);

}  // namespace kestrelon
