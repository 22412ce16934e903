// Statements of an SQL file, as the server's own client parts them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "services/mysql/dump_lines.h"

namespace kestrelon {

/// Quotes with their escapes, backticks, comments of every kind, DELIMITER lines. A comment between
/// statements is passed over, one inside is part of its statement; `/*!` and `/*M!` comments are
/// statements of their own and never parted. Memory is that of the longest statement.
class SqlSplitter {
 public:
  /// `sql_mode` is the session's at the start; later changes are read from the statements
  /// themselves, since two modes change what a quote is.
  explicit SqlSplitter(LineReader::Source source, std::string_view sql_mode = {});

  /// The next statement without its delimiter, valid until the next call; false at the end.
  /// Throws DbError when the bytes cannot be read.
  bool next(std::string_view& statement);

  /// Line of the file, from 1, on which the last statement began.
  long line() const { return line_; }
  /// Bytes of the file that were passed so far.
  int64_t position() const { return passed_ + static_cast<int64_t>(at_); }
  /// True at the end of a file that ends in the middle of a statement, a quote or a comment.
  bool is_cut() const { return is_cut_; }

 private:
  bool has(size_t offset);
  char peek(size_t offset = 0) { return has(offset) ? buffer_[at_ + offset] : '\0'; }
  bool at_text(std::string_view text);
  bool skip_between();
  bool skip_comment();
  bool take_delimiter_line();
  void skip_line();
  bool skip_past(std::string_view end);
  bool skip_quoted(char quote);
  bool skip_inside();
  bool is_plain_comment();
  bool is_line_comment();
  void drop_passed();
  void read_modes(std::string_view statement);
  void set_modes(std::string_view modes);

  static constexpr size_t kBlock = 1 << 18;

  LineReader::Source source_;
  std::string buffer_;
  size_t at_ = 0;
  int64_t passed_ = 0;  // bytes dropped from the front of the buffer
  size_t counted_ = 0;  // bytes of the buffer whose line ends are counted
  long lines_ = 1;
  long line_ = 1;
  std::string delimiter_ = ";";
  int version_comments_ = 0;  // open ones, 0 or 1
  bool is_read_ = false;      // to the end of the file
  bool is_cut_ = false;
  bool ansi_quotes_ = false;
  bool no_backslash_escapes_ = false;
};

}  // namespace kestrelon
