#include "services/mysql/statement_text.h"

#include <algorithm>

#include "services/mysql/file_errors.h"
#include "services/mysql/sql_assignment.h"
#include "services/mysql/utf8_text.h"

namespace kestrelon {
namespace {

constexpr char kDigits[] = "0123456789ABCDEF";

void append_hex(std::string& out, std::string_view bytes) {
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    out.push_back(kDigits[byte >> 4]);
    out.push_back(kDigits[byte & 15]);
  }
}

// Length of the well-formed character at the start of the bytes, 0 for none.
size_t character_length(std::string_view bytes) {
  const auto lead = static_cast<unsigned char>(bytes[0]);
  if (lead < 0x80) return 1;
  const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || bytes.size() < length) return 0;
  for (size_t i = 1; i < length; ++i)
    if ((static_cast<unsigned char>(bytes[i]) & 0xC0) != 0x80) return 0;
  const auto second = static_cast<unsigned char>(bytes[1]);
  if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
      (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F))
    return 0;
  return length;
}

bool is_ascii(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

char unescaped(char letter) {
  switch (letter) {
    case 'n':
      return '\n';
    case 'r':
      return '\r';
    case 't':
      return '\t';
    case 'b':
      return '\b';
    case '0':
      return '\0';
    case 'Z':
      return '\x1A';
    default:
      return letter;
  }
}

// The bytes of the quoted text that begins at `at`, and where it ends.
std::string quoted_bytes(std::string_view sql, size_t& at) {
  const char quote = sql[at++];
  std::string bytes;
  while (at < sql.size()) {
    const char c = sql[at++];
    if (c == '\\' && at < sql.size()) {
      bytes.push_back(unescaped(sql[at++]));
    } else if (c == quote && at < sql.size() && sql[at] == quote) {
      bytes.push_back(sql[at++]);
    } else if (c == quote) {
      return bytes;
    } else {
      bytes.push_back(c);
    }
  }
  return bytes;
}

// Quoted texts that are no UTF-8 hold bytes, and come as digits. A text that is longer than that of
// its bytes cannot come of it, so no name in quotes is taken for one.
std::string with_bytes_as_digits(std::string_view sql) {
  std::string plain;
  plain.reserve(sql.size() + sql.size() / 2);
  for (size_t at = 0; at < sql.size();) {
    if (sql[at] != '\'' && sql[at] != '"') {
      const size_t end = std::min(sql.find_first_of("'\"", at), sql.size());
      plain.append(sql, at, end - at);
      at = end;
      continue;
    }
    const size_t start = at;
    const std::string bytes = quoted_bytes(sql, at);
    const std::string_view literal = sql.substr(start, at - start);
    if (is_utf8(literal)) {
      plain += literal;
    } else {
      plain += "0x";
      append_hex(plain, bytes);
    }
  }
  return plain;
}

}  // namespace

bool is_utf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const size_t length = character_length(bytes);
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

void StatementText::follow_charset(std::string_view statement) {
  if (const auto names = assigned_value(statement, "NAMES")) client_ = named_ = *names;
  if (const auto client = assigned_value(statement, "CHARACTER_SET_CLIENT"))
    client_ = *client == "@" ? named_ : *client;
  if (client_ == "@" || find_word(client_, "DEFAULT") == 0) client_ = named_ = "utf8mb4";
}

void StatementText::read(std::string_view statement, std::wstring& sql) {
  if (is_ascii(statement)) {
    sql.assign(statement.begin(), statement.end());
    follow_charset(statement);
    return;
  }
  if (find_word(client_, "UTF8") == 0) {
    if (is_utf8(statement)) {
      from_utf8(statement, sql);
      return;
    }
    const std::string digits = with_bytes_as_digits(statement);
    if (!is_utf8(digits))
      throw DbError(kBadFormat, L"O comando tem bytes que não são texto em UTF-8.");
    from_utf8(digits, sql);
    return;
  }
  const bool is_name = std::all_of(client_.begin(), client_.end(), [](char c) {
    return c == '_' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  });
  if (!executes_immediate_ || !is_name)
    throw DbError(kBadFormat,
                  L"O comando está em um conjunto de caracteres que a conexão não"
                  L" transporta.");
  std::string digits = "EXECUTE IMMEDIATE CONVERT(0x";
  append_hex(digits, statement);
  digits += " USING " + client_ + ")";
  sql.assign(digits.begin(), digits.end());
}

}  // namespace kestrelon
