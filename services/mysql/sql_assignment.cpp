#include "services/mysql/sql_assignment.h"

#include <algorithm>

namespace kestrelon {
namespace {

constexpr size_t kMostLength = 4096;

constexpr bool is_blank(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr char upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

constexpr bool is_word(char c) {
  return c == '_' || c == '@' || (c >= '0' && c <= '9') || (upper(c) >= 'A' && upper(c) <= 'Z');
}

size_t skip_blanks(std::string_view text, size_t at) {
  while (at < text.size() && is_blank(text[at])) ++at;
  return at;
}

// The value that begins at `at`: quoted, a word, or that of a variable.
std::string value_at(std::string_view text, size_t at) {
  if (at >= text.size() || text[at] == '@') return "@";
  const char quote = text[at];
  if (quote == '\'' || quote == '"') {
    const size_t end = std::min(text.find(quote, at + 1), text.size());
    return std::string(text.substr(at + 1, end - at - 1));
  }
  size_t end = at;
  while (end < text.size() && is_word(text[end])) ++end;
  return std::string(text.substr(at, end - at));
}

}  // namespace

size_t find_word(std::string_view text, std::string_view word, size_t from) {
  const auto found = std::search(
      text.begin() + static_cast<std::ptrdiff_t>(std::min(from, text.size())), text.end(),
      word.begin(), word.end(), [](char c, char w) { return upper(c) == w; });
  return found == text.end() ? std::string_view::npos : static_cast<size_t>(found - text.begin());
}

std::optional<std::string> assigned_value(std::string_view statement, std::string_view name) {
  std::optional<std::string> value;
  if (statement.size() > kMostLength) return value;
  if (find_word(statement.substr(0, 3), "SET") != 0 && !statement.starts_with("/*")) return value;
  // NAMES takes its value without a sign.
  const bool has_sign = name != "NAMES";
  for (size_t at = 0; (at = find_word(statement, name, at)) != std::string_view::npos;) {
    const bool is_whole = at == 0 || !is_word(statement[at - 1]);
    at += name.size();
    size_t behind = skip_blanks(statement, at);
    if (behind < statement.size() && statement[behind] == ':') ++behind;
    const bool has_equals = behind < statement.size() && statement[behind] == '=';
    if (!is_whole || has_equals != has_sign) continue;
    value = value_at(statement, skip_blanks(statement, behind + (has_sign ? 1 : 0)));
  }
  return value;
}

}  // namespace kestrelon
