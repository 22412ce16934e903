// The text of an exact dump on its way into the file: UTF-8, lines ending in LF.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "services/mysql/dump_target.h"

namespace kestrelon {

class ExactOutput {
 public:
  explicit ExactOutput(const std::wstring& path) : target_(path) {}

  /// A statement of one or more lines, without its delimiter.
  void statement(std::wstring_view sql);
  /// The same in UTF-8; it may be long.
  void statement_bytes(std::string_view sql);
  /// A statement that holds delimiters of its own, between two DELIMITER lines.
  void delimited(std::wstring_view sql);
  /// A line of comment; what would end it becomes blanks.
  void comment(std::wstring_view text);
  /// A line as it stands.
  void line(std::string_view text);
  void complete();

  int64_t statements() const { return statements_; }
  long lines() const { return lines_; }

 private:
  void write(std::string_view bytes);
  void flush();

  DumpTarget target_;
  std::string pending_;
  int64_t statements_ = 0;
  long lines_ = 0;
};

}  // namespace kestrelon
