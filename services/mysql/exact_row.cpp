#include "services/mysql/exact_row.h"

#include <algorithm>

#include "base/decimal.h"
#include "services/mysql/file_errors.h"
#include "services/mysql/utf8_text.h"

namespace kestrelon {
namespace {

using Form = ExactColumn::Form;
using Kind = DbValue::Kind;

// The letter behind the backslash; 0 for a character that stands for itself.
constexpr char escape_of(uint32_t c) {
  switch (c) {
    case '\'':
    case '\\':
      return static_cast<char>(c);
    case '\n':
      return 'n';
    case '\r':
      return 'r';
    case 0:
      return '0';
    case 0x1A:
      return 'Z';
    default:
      return 0;
  }
}

void append_quoted_bytes(std::string& line, std::string_view utf8) {
  line.push_back('\'');
  for (const char c : utf8) {
    if (const char letter = escape_of(static_cast<unsigned char>(c)))
      line.append({'\\', letter});
    else
      line.push_back(c);
  }
  line.push_back('\'');
}

void append_quoted(std::string& line, std::wstring_view text) {
  line.push_back('\'');
  for (size_t i = 0; i < text.size(); ++i) {
    const uint32_t c = std::char_traits<wchar_t>::to_int_type(text[i]);
    if (c >= 0x80) {
      size_t end = i + 1;
      while (end < text.size() && static_cast<uint32_t>(text[end]) >= 0x80) ++end;
      line += to_utf8(text.substr(i, end - i));
      i = end - 1;
    } else if (const char letter = escape_of(c)) {
      line.append({'\\', letter});
    } else {
      line.push_back(static_cast<char>(c));
    }
  }
  line.push_back('\'');
}

// Digits, signs and exponents alone go out without quotes.
void append_number(std::string& line, std::wstring_view text) {
  const size_t start = line.size();
  for (const wchar_t c : text) {
    const bool is_of_number =
        (c >= L'0' && c <= L'9') || c == L'-' || c == L'+' || c == L'.' || c == L'e' || c == L'E';
    if (!is_of_number && c != L',') {
      line.resize(start);
      append_quoted(line, text);
      return;
    }
    line.push_back(c == L',' ? '.' : static_cast<char>(c));
  }
  if (line.size() == start) line += "''";
}

// The fewest digits that read as the same number.
void append_shortest(std::string& line, double value) {
  int digits = 15;
  while (digits < 17 && rounded_to(value, digits) != value) ++digits;
  line += general_text(value, digits);
}

void append_two(std::string& line, int value) {
  line.push_back(static_cast<char>('0' + value / 10 % 10));
  line.push_back(static_cast<char>('0' + value % 10));
}

// A driver that makes a moment of a text that was asked for.
void append_moment(std::string& line, const DbMoment& moment) {
  line.push_back('\'');
  append_two(line, moment.year / 100);
  append_two(line, moment.year);
  for (const auto& [mark, part] :
       {std::pair('-', moment.month), std::pair('-', moment.day), std::pair(' ', moment.hour),
        std::pair(':', moment.minute), std::pair(':', moment.second)}) {
    line.push_back(mark);
    append_two(line, part);
  }
  line.push_back('.');
  for (const int part : {moment.microsecond / 10000, moment.microsecond / 100, moment.microsecond})
    append_two(line, part);
  line.push_back('\'');
}

void append_value(std::string& line, const DbValue& value, Form form) {
  switch (value.kind) {
    case Kind::kNull:
      line += "NULL";
      break;
    case Kind::kBytes:
      append_quoted_bytes(line, value.bytes);
      break;
    case Kind::kReal:
      append_shortest(line, value.real);
      break;
    case Kind::kBoolean:
      line.push_back(value.boolean ? '1' : '0');
      break;
    case Kind::kMoment:
      append_moment(line, value.moment);
      break;
    case Kind::kNumber:
      append_number(line, value.text);
      break;
    case Kind::kText:
      if (form == Form::kNumber)
        append_number(line, value.text);
      else
        append_quoted(line, value.text);
      break;
  }
}

// Where a literal of text may be cut: neither within an escape nor within a character.
size_t cut_of(std::string_view content, size_t limit) {
  if (content.size() <= limit) return content.size();
  size_t cut = limit;
  while (cut > 0 && (static_cast<unsigned char>(content[cut]) & 0xC0) == 0x80) --cut;
  size_t backslashes = 0;
  while (backslashes < cut && content[cut - 1 - backslashes] == '\\') ++backslashes;
  return cut - backslashes % 2;
}

// Bytes that a quoted text has on the server.
size_t plain_length(std::string_view content) {
  size_t length = 0;
  for (size_t i = 0; i < content.size(); ++i, ++length)
    if (content[i] == '\\') ++i;
  return length;
}

}  // namespace

void ExactRow::append_hex(RecordSet& rows, const SelectedColumn& selected) {
  const size_t start = text_.size();
  for (size_t i = 0; i < selected.fields; ++i) {
    const DbValue value = rows.value(selected.first_field + i);
    if (value.kind == Kind::kNull) {
      // A value without its later pieces cannot be: the server gave up on one.
      if (i > 0) throw DbError(kBadFormat, L"O servidor não entregou um valor por inteiro.");
      text_ += "NULL";
      return;
    }
    if (text_.size() == start)
      text_ += selected.column->charset.empty() ? "0x" : "_" + selected.column->charset + " 0x";
    if (value.kind == Kind::kBytes)
      text_ += value.bytes;
    else
      for (const wchar_t c : value.text) text_.push_back(static_cast<char>(c));
  }
  if (text_.ends_with("0x")) {
    text_.resize(start);
    text_ += "''";
  }
}

void ExactRow::append(RecordSet& rows, const SelectedColumn& selected) {
  const size_t start = text_.size();
  if (selected.column->form == Form::kHex)
    append_hex(rows, selected);
  else
    append_value(text_, rows.value(selected.first_field), selected.column->form);
  const std::string_view written = std::string_view(text_).substr(start);
  if (selected.column->may_hold_enum_error && (written == "''" || written == "0")) {
    text_.resize(start);
    text_.push_back('0');
    needs_leniency_ = true;
  }
}

void ExactRow::read(RecordSet& rows) {
  text_.assign(1, '(');
  starts_.clear();
  needs_leniency_ = false;
  for (const SelectedColumn& selected : columns_) {
    if (text_.size() > 1) text_.push_back(',');
    starts_.push_back(text_.size());
    append(rows, selected);
  }
  text_.push_back(')');
  starts_.push_back(text_.size());
}

// The value is checked where it is used: a server with a smaller limit than it was written for
// would else put NULL in its place.
std::string ExactRow::fill_variable(std::string_view literal, const SelectedColumn& selected,
                                    size_t number, size_t limit, ExactOutput& output) const {
  const std::string variable = "@kestrelon_" + std::to_string(number);
  const size_t digits = literal.find("0x");
  const bool is_hex = selected.column->form == Form::kHex;
  std::string_view content = literal.substr(is_hex ? digits + 2 : 1);
  if (!is_hex) content.remove_suffix(1);
  const size_t length = is_hex ? content.size() / 2 : plain_length(content);
  for (bool is_first = true; !content.empty(); is_first = false) {
    const size_t size = is_hex ? std::min(content.size(), limit / 2 * 2) : cut_of(content, limit);
    std::string sql = "SET " + variable + "=";
    if (!is_first) sql += "CONCAT(" + variable + ",";
    sql += is_hex ? "0x" : "'";
    sql += content.substr(0, size);
    if (!is_hex) sql.push_back('\'');
    if (!is_first) sql.push_back(')');
    output.statement_bytes(sql);
    content.remove_prefix(size);
  }
  std::string use = variable;
  if (!selected.column->charset.empty())
    use = "CONVERT(" + variable + " USING " + selected.column->charset + ")";
  return "IF(LENGTH(" + variable + ")=" + std::to_string(length) + "," + use +
         ",(SELECT 1 UNION SELECT 2))";
}

void ExactRow::move_long_values(size_t limit, ExactOutput& output) {
  std::vector<std::string> literals;
  for (size_t i = 0; i < columns_.size(); ++i)
    literals.push_back(text_.substr(starts_[i], starts_[i + 1] - starts_[i] - 1));
  size_t size = text_.size();
  for (size_t moved = 1; size > limit && moved <= literals.size(); ++moved) {
    const auto longest = std::max_element(
        literals.begin(), literals.end(),
        [](const std::string& a, const std::string& b) { return a.size() < b.size(); });
    constexpr size_t kWorthMoving = 200;
    if (longest->size() < kWorthMoving) break;
    const auto column = static_cast<size_t>(longest - literals.begin());
    std::string use = fill_variable(*longest, columns_[column], moved, limit, output);
    size = size - longest->size() + use.size();
    *longest = std::move(use);
  }
  text_ = "(";
  for (const std::string& literal : literals) text_ += literal + ",";
  text_.back() = ')';
}

}  // namespace kestrelon
