// What the database services need from a connection. Behind it stands the caller's ADO-style object
// on Windows, a client library elsewhere.
#pragma once

#include <cstdint>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace kestrelon {

/// Field types by their ADO numbers, as far as the dump treats them apart.
namespace db_type {
inline constexpr int kSmallInt = 2;
inline constexpr int kInteger = 3;
inline constexpr int kSingle = 4;
inline constexpr int kDouble = 5;
inline constexpr int kCurrency = 6;
inline constexpr int kBoolean = 11;
inline constexpr int kDecimal = 14;
inline constexpr int kTinyInt = 16;
inline constexpr int kUnsignedBigInt = 21;  // 16 to 21 are the whole numbers
inline constexpr int kBigInt = 20;
inline constexpr int kNumeric = 131;
inline constexpr int kDate = 133;
inline constexpr int kTime = 134;
inline constexpr int kTimeStamp = 135;
inline constexpr int kVarNumeric = 139;
inline constexpr int kVarChar = 200;
inline constexpr int kVarBinary = 204;
inline constexpr int kLongVarBinary = 205;
}  // namespace db_type

/// A failure told by the server or by the connection. `number` is what a caller sees as the error
/// number.
struct DbError : std::exception {
  DbError(long code, std::wstring text) : number(code), description(std::move(text)) {}
  const char* what() const noexcept override { return "database error"; }

  long number;
  std::wstring description;
};

/// A date with time. A time alone stands on 30 December 1899, as in a host's date value.
struct DbMoment {
  int year = 1899;
  int month = 12;
  int day = 30;
  int hour = 0;
  int minute = 0;
  int second = 0;
  int microsecond = 0;
};

/// The value of a field of the current row.
struct DbValue {
  enum class Kind : uint8_t {
    kNull,
    kText,     // text
    kNumber,   // text: a number as digits, its decimal mark a comma or a point
    kReal,     // real: a double, or a single when the field's type is kSingle
    kBoolean,  // boolean
    kMoment,   // moment
    kBytes     // bytes
  };

  Kind kind = Kind::kNull;
  bool boolean = false;
  double real = 0;
  DbMoment moment;
  /// Views stay valid until the record set moves, closes or is asked for another value.
  std::wstring_view text;
  std::string_view bytes;
};

/// Rows of a result. Fields are numbered from 0. Any call may throw DbError.
class RecordSet {
 public:
  virtual ~RecordSet() = default;

  virtual bool eof() = 0;
  virtual bool bof() = 0;
  virtual void move_next() = 0;
  /// Rows of the result, -1 when the connection does not know.
  virtual int64_t record_count() = 0;
  /// Position of the current row from 1; what the connection tells when there is none.
  virtual int64_t absolute_position() = 0;

  virtual void set_page_size(int rows) = 0;
  /// Pages of the set size, -1 when the connection does not know: pages follow until the rows end.
  virtual int64_t page_count() = 0;
  /// Stands on the first row of a page, from 1. Pages are asked for in order.
  virtual void set_absolute_page(int64_t page) = 0;

  virtual size_t field_count() = 0;
  virtual int field_type(size_t field) = 0;
  virtual std::optional<size_t> find_field(std::wstring_view name) = 0;
  virtual DbValue value(size_t field) = 0;
  /// Length in bytes of a binary field of the current row.
  virtual int64_t actual_size(size_t field) = 0;
  /// The next bytes of a binary field, at most `size`; empty at its end or for a null.
  virtual std::string_view get_chunk(size_t field, int size) = 0;

  virtual void close() = 0;
};

class DbConnection {
 public:
  virtual ~DbConnection() = default;

  virtual std::wstring default_database() = 0;
  /// Runs a statement; the result is without rows (`eof`) when it gives none. Never null.
  virtual std::unique_ptr<RecordSet> execute(std::wstring_view sql) = 0;
  /// Opens the rows of a table for paging, reusing the object of a result that is no longer needed.
  virtual std::unique_ptr<RecordSet> open_rows(std::unique_ptr<RecordSet> reuse,
                                               std::wstring_view sql) = 0;
};

}  // namespace kestrelon
