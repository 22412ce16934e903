#include "services/mysql/sql_splitter.h"

#include <algorithm>
#include <array>

#include "services/mysql/file_errors.h"
#include "services/mysql/sql_assignment.h"

namespace kestrelon {
namespace {

constexpr bool is_blank(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr char upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

// `word` is in upper case.
bool begins_with(std::string_view text, std::string_view word) {
  return text.size() >= word.size() && std::equal(word.begin(), word.end(), text.begin(),
                                                  [](char w, char c) { return w == upper(c); });
}

// Bytes that need a look inside a statement whose delimiter begins with ';'.
constexpr std::array<bool, 256> special_bytes() {
  std::array<bool, 256> special{};
  for (const char c : {'\'', '"', '`', '#', '-', '/', '*', ';'})
    special[static_cast<unsigned char>(c)] = true;
  return special;
}
constexpr std::array<bool, 256> kSpecial = special_bytes();

}  // namespace

SqlSplitter::SqlSplitter(LineReader::Source source, std::string_view sql_mode)
    : source_(std::move(source)) {
  set_modes(sql_mode);
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (at_text(kByteOrderMark)) at_ += kByteOrderMark.size();
}

bool SqlSplitter::has(size_t offset) {
  while (at_ + offset >= buffer_.size()) {
    if (is_read_) return false;
    const size_t size = buffer_.size();
    buffer_.resize(size + kBlock);
    const auto length = source_({reinterpret_cast<uint8_t*>(buffer_.data()) + size, kBlock});
    if (!length) throw read_error();
    buffer_.resize(size + *length);
    is_read_ = *length == 0;
  }
  return true;
}

bool SqlSplitter::at_text(std::string_view text) {
  return has(text.size() - 1) && buffer_.compare(at_, text.size(), text) == 0;
}

// Room is made only between statements, so that a statement stays in one piece.
void SqlSplitter::drop_passed() {
  constexpr size_t kMostPassed = 1 << 20;
  lines_ += std::count(buffer_.begin() + static_cast<std::ptrdiff_t>(counted_),
                       buffer_.begin() + static_cast<std::ptrdiff_t>(at_), '\n');
  counted_ = at_;
  if (at_ < kMostPassed && at_ < buffer_.size()) return;
  passed_ += static_cast<int64_t>(at_);
  buffer_.erase(0, at_);
  at_ = counted_ = 0;
}

void SqlSplitter::skip_line() {
  for (;;) {
    const size_t end = buffer_.find('\n', at_);
    if (end != std::string::npos) {
      at_ = end + 1;
      return;
    }
    at_ = buffer_.size();
    if (!has(0)) return;
  }
}

bool SqlSplitter::skip_past(std::string_view end) {
  for (;;) {
    const size_t found = buffer_.find(end, at_);
    if (found != std::string::npos) {
      at_ = found + end.size();
      return true;
    }
    // The end may lie across two blocks.
    if (buffer_.size() >= at_ + end.size()) at_ = buffer_.size() - end.size() + 1;
    if (!has(buffer_.size() - at_)) {
      at_ = buffer_.size();
      return false;
    }
  }
}

bool SqlSplitter::skip_quoted(char quote) {
  const bool has_escapes =
      quote != '`' && !no_backslash_escapes_ && !(quote == '"' && ansi_quotes_);
  const char escape = has_escapes ? '\\' : quote;
  ++at_;
  while (has(0)) {
    while (at_ < buffer_.size() && buffer_[at_] != quote && buffer_[at_] != escape) ++at_;
    if (at_ == buffer_.size()) continue;
    if (buffer_[at_++] == quote) return true;
    if (has(0)) ++at_;
  }
  return false;
}

bool SqlSplitter::is_line_comment() {
  if (peek() == '#') return true;
  return peek() == '-' && peek(1) == '-' && (!has(2) || static_cast<unsigned char>(peek(2)) <= ' ');
}

// The comment of a version that no server has is one for other readers.
bool SqlSplitter::is_plain_comment() {
  if (!at_text("/*")) return false;
  return at_text("/*M!999999") || !(at_text("/*!") || at_text("/*M!"));
}

bool SqlSplitter::skip_comment() {
  if (is_line_comment()) {
    skip_line();
    return true;
  }
  at_ += 2;
  if (skip_past("*/")) return true;
  is_cut_ = true;
  return false;
}

bool SqlSplitter::take_delimiter_line() {
  constexpr std::string_view kWord = "DELIMITER";
  if (!has(kWord.size()) || !begins_with(std::string_view(buffer_).substr(at_), kWord) ||
      !is_blank(buffer_[at_ + kWord.size()]))
    return false;
  const size_t start = at_ + kWord.size();
  skip_line();
  std::string_view line = std::string_view(buffer_).substr(start, at_ - start);
  while (!line.empty() && is_blank(line.front())) line.remove_prefix(1);
  const auto end = std::find_if(line.begin(), line.end(), is_blank);
  if (end != line.begin()) delimiter_.assign(line.begin(), end);
  return true;
}

// Passes over what stands between statements; false at the end of the file.
bool SqlSplitter::skip_between() {
  while (has(0)) {
    if (is_blank(buffer_[at_]))
      ++at_;
    else if (is_line_comment() || is_plain_comment())
      skip_comment();
    else if (at_text(delimiter_))
      at_ += delimiter_.size();
    else if (!take_delimiter_line())
      return true;
    drop_passed();
  }
  return false;
}

// One step inside a statement; false at the end of the file.
bool SqlSplitter::skip_inside() {
  const char c = buffer_[at_];
  if (c == '\'' || c == '"' || c == '`') return skip_quoted(c);
  if (is_line_comment() && version_comments_ == 0) {
    skip_line();
    return true;
  }
  if (is_line_comment()) {
    // Inside a version comment a line of comment ends with the comment around it, too.
    while (has(0) && buffer_[at_] != '\n' && !at_text("*/")) ++at_;
    return true;
  }
  if (is_plain_comment()) {
    at_ += 2;
    return skip_past("*/");
  }
  if (c == '/' && at_text("/*")) {
    version_comments_ = 1;
    at_ += 2;
  } else if (c == '*' && version_comments_ != 0 && at_text("*/")) {
    version_comments_ = 0;
    at_ += 2;
  } else {
    ++at_;
  }
  return true;
}

bool SqlSplitter::next(std::string_view& statement) {
  if (!skip_between()) return false;
  drop_passed();
  line_ = lines_;
  const size_t start = at_;
  version_comments_ = 0;
  const bool is_common = delimiter_.front() == ';';
  while (has(0)) {
    if (is_common) {
      while (at_ < buffer_.size() && !kSpecial[static_cast<unsigned char>(buffer_[at_])]) ++at_;
      if (at_ == buffer_.size()) continue;
    }
    if (version_comments_ == 0 && buffer_[at_] == delimiter_.front() && at_text(delimiter_)) {
      size_t end = at_;
      while (end > start && is_blank(buffer_[end - 1])) --end;
      at_ += delimiter_.size();
      statement = std::string_view(buffer_).substr(start, end - start);
      read_modes(statement);
      return true;
    }
    if (!skip_inside()) break;
  }
  is_cut_ = true;
  return false;
}

void SqlSplitter::set_modes(std::string_view modes) {
  ansi_quotes_ = find_word(modes, "ANSI_QUOTES", 0) != std::string_view::npos;
  no_backslash_escapes_ = find_word(modes, "NO_BACKSLASH_ESCAPES", 0) != std::string_view::npos;
}

// A mode that comes out of a variable is the usual one, which the file kept there.
void SqlSplitter::read_modes(std::string_view statement) {
  if (const auto modes = assigned_value(statement, "SQL_MODE")) set_modes(*modes);
}

}  // namespace kestrelon
