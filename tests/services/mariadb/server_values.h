// How an ADO provider shows the server's column types and moments; the numbers are those of the
// wire.
#pragma once

#include <charconv>
#include <string_view>

#include "services/mysql/db_connection.h"

namespace kestrelon::testing {

/// `length` is the column's display length.
inline int ado_type(int wire_type, unsigned charset, unsigned long length) {
  constexpr unsigned kBinaryCharset = 63;
  const bool is_binary = charset == kBinaryCharset;
  switch (wire_type) {
    case 1:   // tinyint
    case 2:   // smallint
    case 13:  // year
      return db_type::kSmallInt;
    case 3:  // int
    case 9:  // mediumint
      return db_type::kInteger;
    case 4:
      return db_type::kSingle;
    case 5:
      return db_type::kDouble;
    case 8:
      return db_type::kBigInt;
    case 0:
    case 246:
      return db_type::kNumeric;
    case 10:
    case 14:
      return db_type::kDate;
    case 11:
      return db_type::kTime;
    case 7:
    case 12:
      return db_type::kTimeStamp;
    case 16:  // bit
      return length == 1 ? db_type::kBoolean : db_type::kVarBinary;
    case 255:  // geometry
      return db_type::kLongVarBinary;
    case 249:
    case 250:
    case 251:
    case 252:  // blobs and texts
      return is_binary ? db_type::kLongVarBinary : db_type::kVarChar;
    default:
      return is_binary ? db_type::kVarBinary : db_type::kVarChar;
  }
}

/// "2024-01-31 10:20:30.5" or its parts; false for what is no moment of a day.
inline bool read_moment(std::string_view text, bool is_time, DbMoment& moment) {
  int numbers[7] = {};
  size_t count = 0;
  for (size_t at = 0; at < text.size() && count < 7; ++count) {
    size_t end = at;
    while (end < text.size() && text[end] >= '0' && text[end] <= '9') ++end;
    if (end == at) return false;
    std::from_chars(text.data() + at, text.data() + end, numbers[count]);
    const bool is_fraction = at > 0 && text[at - 1] == '.';
    for (size_t digits = end - at; is_fraction && digits < 6; ++digits) numbers[count] *= 10;
    at = end + 1;
  }
  if (!is_time) {
    moment = {numbers[0], numbers[1], numbers[2], numbers[3], numbers[4], numbers[5], numbers[6]};
  } else {
    if (numbers[0] > 23) return false;
    moment.hour = numbers[0];
    moment.minute = numbers[1];
    moment.second = numbers[2];
    moment.microsecond = numbers[3];
  }
  return true;
}

}  // namespace kestrelon::testing
