#include "services/mysql/block_tracker.h"

#include <algorithm>
#include <array>

namespace kestrelon {
namespace {

constexpr char upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

constexpr bool is_word_byte(char c) {
  return c == '_' || c == '$' || c == '@' || (c >= '0' && c <= '9') ||
         (upper(c) >= 'A' && upper(c) <= 'Z') || static_cast<unsigned char>(c) >= 0x80;
}

constexpr bool is_blank(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

size_t end_of_word(std::string_view text, size_t at) {
  while (at < text.size() && is_word_byte(text[at])) ++at;
  return at;
}

std::string upper_text(std::string_view text) {
  std::string word(text);
  for (char& c : word) c = upper(c);
  return word;
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
  return text;
}

template <size_t N>
bool is_one_of(std::string_view word, const std::array<std::string_view, N>& words) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

// Words behind which a statement begins, some of them at the end of a program's head.
constexpr std::array<std::string_view, 14> kStarters = {
    "BEGIN",         "THEN", "ELSE",    "DO",      "LOOP", "REPEAT", "SQL",
    "DETERMINISTIC", "DATA", "DEFINER", "INVOKER", "ROW",  "INT",    "TEXT"};
constexpr std::array<std::string_view, 3> kLoops = {"LOOP", "WHILE", "REPEAT"};

bool is_line_comment(std::string_view text, size_t at) {
  if (text[at] == '#') return true;
  return text[at] == '-' && at + 1 < text.size() && text[at + 1] == '-' &&
         (at + 2 == text.size() || is_blank(text[at + 2]));
}

size_t end_of_quoted(std::string_view text, size_t at, char quote) {
  for (; at < text.size(); ++at) {
    if (text[at] == '\\' && quote != '`')
      ++at;
    else if (text[at] == quote)
      return at + 1;
  }
  return std::string_view::npos;
}

}  // namespace

bool BlockTracker::opens(std::string_view word, std::string_view rest) const {
  if (word == "BEGIN") return true;
  if (after_end_) return false;  // END IF and its like
  if (word == "CASE") return true;
  if (!may_start_) return false;
  if (is_one_of(word, kLoops)) return true;
  if (word != "IF") return false;
  const std::string next = upper_text(trimmed(rest).substr(0, 4));
  return !next.starts_with("NOT ") || upper_text(rest).find("THEN") != std::string::npos;
}

void BlockTracker::take_word(std::string_view word, std::string_view rest) {
  const bool is_end = word == "END";
  if (is_end)
    --depth_;
  else if (opens(word, rest))
    ++depth_;
  after_end_ = is_end;
  may_start_ = is_one_of(word, kStarters);
}

void BlockTracker::feed(std::string_view line) {
  for (size_t at = 0; at < line.size();) {
    if (in_comment_) {
      const size_t end = line.find("*/", at);
      if (end == std::string_view::npos) return;
      in_comment_ = false;
      at = end + 2;
    } else if (quote_ != 0) {
      at = end_of_quoted(line, at, quote_);
      if (at == std::string_view::npos) return;
      quote_ = 0;
      may_start_ = true;
    } else if (const char c = line[at]; is_blank(c)) {
      ++at;
    } else if (is_line_comment(line, at)) {
      return;
    } else if (c == '/' && line.substr(at, 2) == "/*") {
      in_comment_ = true;
      at += 2;
    } else if (c == '\'' || c == '"' || c == '`') {
      quote_ = c;
      ++at;
      after_end_ = false;
    } else if (is_word_byte(c)) {
      const size_t end = end_of_word(line, at);
      take_word(upper_text(line.substr(at, end - at)), line.substr(end));
      at = end;
    } else {
      may_start_ = c == ';' || c == ')' || c == ':';
      after_end_ = false;
      ++at;
    }
  }
}

bool creates_program(std::string_view sql) {
  constexpr std::array<std::string_view, 5> kPrograms = {"PROCEDURE", "FUNCTION", "TRIGGER",
                                                         "EVENT", "PACKAGE"};
  constexpr std::array<std::string_view, 4> kOthers = {"TABLE", "VIEW", "DATABASE", "INDEX"};
  bool is_first = true;
  for (size_t at = 0; at < sql.size();) {
    if (is_word_byte(sql[at])) {
      const size_t end = end_of_word(sql, at);
      const std::string word = upper_text(sql.substr(at, end - at));
      if (is_first && word != "CREATE") return false;
      if (is_one_of(word, kPrograms)) return true;
      if (is_one_of(word, kOthers)) return false;
      is_first = false;
      at = end;
    } else if (sql[at] == '`' || sql[at] == '\'') {
      at = end_of_quoted(sql, at + 1, sql[at]);
    } else if (sql[at] == '(' || (is_first && !is_blank(sql[at]))) {
      return false;
    } else {
      ++at;
    }
  }
  return false;
}

std::string without_layout(std::string_view sql) {
  std::string plain;
  for (size_t at = 0; at < sql.size();) {
    size_t end = at + 1;
    if (is_line_comment(sql, at)) {
      end = std::min(sql.find('\n', at), sql.size());
      at = end;
    } else if (sql.substr(at, 2) == "/*") {
      end = sql.find("*/", at + 2);
      at = end = end == std::string_view::npos ? sql.size() : end + 2;
    } else if (sql[at] == '\'' || sql[at] == '"' || sql[at] == '`') {
      end = std::min(end_of_quoted(sql, at + 1, sql[at]), sql.size());
    } else if (is_blank(sql[at])) {
      at = end;
    } else if (is_word_byte(sql[at])) {
      end = end_of_word(sql, at);
    }
    if (at == end) continue;
    plain.append(sql.substr(at, end - at)).push_back('\n');
    at = end;
  }
  return plain;
}

}  // namespace kestrelon
