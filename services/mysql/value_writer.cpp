#include "services/mysql/value_writer.h"

#include <algorithm>

#include "base/decimal.h"
#include "base/text.h"
#include "services/kn_format_ex.h"

namespace kestrelon {
namespace {

constexpr char kHexDigits[] = "0123456789abcdef";
constexpr std::string_view kNull = "NULL";

void append_hex(std::string& line, std::string_view bytes) {
  const size_t start = line.size();
  line.resize(start + bytes.size() * 2);
  char* out = line.data() + start;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    *out++ = kHexDigits[byte >> 4];
    *out++ = kHexDigits[byte & 15];
  }
}

void append_number(std::string& line, int value, int width) {
  char digits[12];
  int count = 0;
  for (unsigned left = static_cast<unsigned>(std::max(value, 0)); left != 0; left /= 10)
    digits[count++] = static_cast<char>('0' + left % 10);
  while (count < width) digits[count++] = '0';
  while (count > 0) line.push_back(digits[--count]);
}

// The bare words reach the server unquoted.
bool is_bare_word(std::wstring_view text) {
  return text == L"True" || text == L"False" || text == L"NULL";
}

bool is_number_type(int type) {
  return (type >= db_type::kSmallInt && type <= db_type::kCurrency) || type == db_type::kDecimal ||
         (type >= db_type::kTinyInt && type <= db_type::kUnsignedBigInt) ||
         type == db_type::kNumeric || type == db_type::kVarNumeric;
}

}  // namespace

// Writes a text as the format has it and answers whether it comes back equal.
bool ValueWriter::append_told_text(std::string& line, std::wstring_view text,
                                   int field_type) const {
  bool equal = true;
  const bool comma_is_point = text.find(L',') != std::wstring_view::npos &&
                              (field_type == db_type::kDouble || field_type == db_type::kCurrency ||
                               is_numeric(text, marks_));
  line.push_back('\'');
  for (size_t i = 0; i < text.size(); ++i) {
    const wchar_t c = text[i];
    if (c >= 0x80) {
      const std::string bytes = to_ansi({&c, 1});
      equal = equal && bytes.front() != '?';
      line += bytes;
    } else if (c == L'\\' || c == L'\'') {
      line.append({'\\', static_cast<char>(c)});
    } else if (c == L'\n') {
      equal = equal && i > 0 && text[i - 1] == L'\r';
    } else if (c == L'\r') {
      equal = equal && i + 1 < text.size() && text[i + 1] == L'\n';
      line += "\\r\\n";
    } else if (c == L',' && comma_is_point) {
      equal = equal && is_number_type(field_type);
      line.push_back('.');
    } else {
      line.push_back(static_cast<char>(c));
    }
  }
  line.push_back('\'');
  return equal;
}

void ValueWriter::append_text(std::string& line, std::wstring_view text, int field_type) {
  bool equal = false;
  if (is_bare_word(text))
    line += to_ansi(text);
  else
    equal = append_told_text(line, text, field_type);
  if (!equal) ++altered_;
}

void ValueWriter::append_real(std::string& line, double value, bool single) {
  const int digits = single ? 7 : 15;
  const double back = rounded_to(value, digits);
  const bool equal = single ? static_cast<float>(back) == static_cast<float>(value) : back == value;
  if (!equal) ++altered_;
  line.push_back('\'');
  line += general_text(value, digits);
  line.push_back('\'');
}

void ValueWriter::append_moment(std::string& line, const DbMoment& moment, int field_type) {
  const bool listed = field_type >= db_type::kDate && field_type <= db_type::kTimeStamp;
  const bool has_time = field_type != db_type::kDate;
  const bool has_fraction = moment.microsecond != 0;
  const bool equal = listed && !(has_time && has_fraction);
  if (!equal) ++altered_;
  line.push_back('\'');
  if (!listed) {
    // A date of another type goes out as the host shows it.
    const DateTime shown{
        {moment.year, moment.month, moment.day}, moment.hour, moment.minute, moment.second};
    line += to_ansi(format_moment(shown, L"c"));
  } else {
    append_number(line, moment.year, 4);
    line.push_back('-');
    append_number(line, moment.month, 2);
    line.push_back('-');
    append_number(line, moment.day, 2);
    if (has_time) {
      line.push_back(' ');
      append_number(line, moment.hour, 2);
      line.push_back(':');
      append_number(line, moment.minute, 2);
      line.push_back(':');
      append_number(line, moment.second, 2);
    }
  }
  line.push_back('\'');
}

// Binary of a type that the format does not know goes out as text.
void ValueWriter::append_bytes(std::string& line, std::string_view bytes, int field_type) {
  const bool equal = append_told_text(line, from_ansi(bytes), field_type) &&
                     std::none_of(bytes.begin(), bytes.end(),
                                  [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
  if (!equal) ++altered_;
}

void ValueWriter::append(std::string& line, const DbValue& value, int field_type) {
  switch (value.kind) {
    case DbValue::Kind::kNull:
      line += kNull;
      break;
    case DbValue::Kind::kText:
      append_text(line, value.text, field_type);
      break;
    case DbValue::Kind::kNumber:
      line.push_back('\'');
      for (const wchar_t c : value.text)
        line.push_back(c == L',' ? '.' : static_cast<char>(c < 0x80 ? c : L'?'));
      line.push_back('\'');
      break;
    case DbValue::Kind::kReal:
      append_real(line, value.real, field_type == db_type::kSingle);
      break;
    case DbValue::Kind::kBoolean:
      line += value.boolean ? "True" : "False";
      break;
    case DbValue::Kind::kMoment:
      append_moment(line, value.moment, field_type);
      break;
    case DbValue::Kind::kBytes:
      append_bytes(line, value.bytes, field_type);
      break;
  }
}

void ValueWriter::begin_blob(std::string& line, int field_type) {
  blob_start_ = line.size();
  blob_type_ = field_type;
  line += blob_type_ == db_type::kVarBinary ? "'0x" : "0x";
}

void ValueWriter::append_blob_bytes(std::string& line, std::string_view bytes) const {
  append_hex(line, bytes);
}

void ValueWriter::end_blob(std::string& line, bool is_null, bool complete) {
  const bool is_quoted = line[blob_start_] == '\'';
  const bool is_empty = line.size() == blob_start_ + (is_quoted ? 3 : 2);
  bool equal = complete;
  if (is_empty) {
    line.resize(blob_start_);
    line += kNull;
    equal = is_null;
  } else if (is_quoted) {
    line.push_back('\'');
    equal = false;
  }
  if (!equal) ++altered_;
}

}  // namespace kestrelon
