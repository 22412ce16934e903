// The lines of a dump file: bytes of the Western code page.
#pragma once

#include <cstdint>
#include <fstream>
#include <istream>
#include <string>
#include <string_view>

#include "services/mysql/dump_target.h"

namespace kestrelon {

/// Writes a file line by line, each ending in CR LF and flushed before the next, so that a run that
/// breaks leaves what was written (see DumpTarget where). Throws DbError when the file cannot be
/// made or written.
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
  long count_ = 0;
};

/// Reads lines that end in CR LF, LF or CR; the last one may lack its end. Memory is that of the
/// longest line.
class LineReader {
 public:
  /// `bytes` must outlive the reader.
  explicit LineReader(std::istream& bytes) : bytes_(bytes) {}

  /// The next line without its end, valid until the next call; false at the end of the file.
  /// Throws DbError when the bytes cannot be read.
  bool next(std::string& line);

 private:
  bool fill();

  static constexpr size_t kBlock = 65536;

  std::istream& bytes_;
  std::string block_;
  size_t at_ = 0;
  bool after_cr_ = false;
};

/// Opens a file for reading; throws DbError when it is missing or cannot be read. Gives its length.
std::ifstream open_lines(const std::wstring& path, int64_t& length);

}  // namespace kestrelon
