// Values of rows as the literals of a dump.
#pragma once

#include <cstdint>
#include <string>

#include "services/mysql/db_connection.h"
#include "services/mysql/numeric_text.h"

namespace kestrelon {

/// Appends literals to a line of the dump, in the bytes of the Western code page, and counts the
/// values that the server would read back as other than they were: commas in texts that look like
/// numbers, the words NULL, True and False held as text, line ends other than CR LF, characters
/// outside the code page, binary of type 204, empty blobs, fractions of seconds, doubles of more
/// than 15 digits.
class ValueWriter {
 public:
  explicit ValueWriter(NumberMarks marks) : marks_(std::move(marks)) {}

  /// A value of a field that is no blob (`is_blob`).
  void append(std::string& line, const DbValue& value, int field_type);

  /// A blob's bytes follow by `append_blob_bytes` between these two. `complete` tells that all
  /// bytes of the field were read; a field that is null is no blob.
  void begin_blob(std::string& line, int field_type);
  void append_blob_bytes(std::string& line, std::string_view bytes) const;
  void end_blob(std::string& line, bool is_null, bool complete);

  static bool is_blob(int field_type) {
    return field_type == db_type::kVarBinary || field_type == db_type::kLongVarBinary;
  }

  /// Values of other content after a restore.
  uint64_t altered() const { return altered_; }
  /// Goes back to an earlier count: the values since then are written anew.
  void forget_since(uint64_t count) { altered_ = count; }

 private:
  void append_text(std::string& line, std::wstring_view text, int field_type);
  bool append_told_text(std::string& line, std::wstring_view text, int field_type) const;
  void append_real(std::string& line, double value, bool single);
  void append_moment(std::string& line, const DbMoment& moment, int field_type);
  void append_bytes(std::string& line, std::string_view bytes, int field_type);

  NumberMarks marks_;
  uint64_t altered_ = 0;
  size_t blob_start_ = 0;
  int blob_type_ = 0;
};

}  // namespace kestrelon
