// How the columns of a table are read so that no driver can change their values.
#pragma once

#include <string>
#include <vector>

#include "services/mysql/db_connection.h"

namespace kestrelon {

/// A stored column. What a driver may not hold (far dates, long decimals, bits, bytes) is asked of
/// the server as text.
struct ExactColumn {
  enum class Form : uint8_t {
    kNumber,  // digits, unquoted
    kText,    // text, quoted
    kHex      // pairs of digits of bytes, or of a text in `charset`
  };

  std::wstring name;
  std::wstring expression;  // what is selected
  std::wstring bytes;       // of a kHex column: the bytes whose pairs `expression` gives
  std::string charset;      // of a kHex column that is a text; empty for bytes
  Form form = Form::kText;
  /// Bytes of the longest value by the declaration.
  uint64_t most_bytes = 0;
  /// An ENUM that may hold the error value, which a strict session refuses.
  bool may_hold_enum_error = false;
};

/// The stored columns in the order of SHOW FULL COLUMNS, invisible ones included; generated ones
/// are none. Without Unicode in the connection texts are read as pairs of digits.
std::vector<ExactColumn> exact_columns(RecordSet& shown, bool has_unicode);

}  // namespace kestrelon
