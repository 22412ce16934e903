// A splitter of SQL files that holds the whole text and goes character by character: what the
// streaming one is compared with. It knows the usual modes of quotes alone.
#pragma once

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrelon::testing {

inline bool blank(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

// Hands out the bytes of a text, which outlives it.
inline std::function<std::optional<size_t>(std::span<uint8_t>)> source_of(std::string_view text) {
  return [text](std::span<uint8_t> room) mutable -> std::optional<size_t> {
    const std::string_view part = text.substr(0, room.size());
    std::copy(part.begin(), part.end(), room.begin());
    text.remove_prefix(part.size());
    return part.size();
  };
}

// Reads a statement character by character, each with the name of what it stands in.
class PlainSplitter {
 public:
  explicit PlainSplitter(std::string text) : text_(std::move(text)) {
    if (text_.rfind("\xEF\xBB\xBF", 0) == 0) at_ = 3;
  }

  std::vector<std::string> all() {
    std::vector<std::string> statements;
    for (std::string one; next(one);) statements.push_back(one);
    return statements;
  }

 private:
  bool here(const std::string& what) const { return text_.compare(at_, what.size(), what) == 0; }
  char at(size_t offset) const { return at_ + offset < text_.size() ? text_[at_ + offset] : '\0'; }
  bool line_comment() const {
    return at(0) == '#' ||
           (here("--") && (at_ + 2 >= text_.size() || static_cast<unsigned char>(at(2)) <= ' '));
  }
  bool plain_comment() const {
    return here("/*") && (here("/*M!999999") || !(here("/*!") || here("/*M!")));
  }
  void pass(const std::string& what) {
    const size_t found = text_.find(what, at_);
    at_ = found == std::string::npos ? text_.size() + 1 : found + what.size();
  }
  void pass_line() {
    pass("\n");
    if (at_ > text_.size()) at_ = text_.size();
  }
  bool delimiter_line() {
    const std::string word = "DELIMITER";
    if (at_ + word.size() >= text_.size()) return false;
    for (size_t i = 0; i < word.size(); ++i)
      if (toupper(static_cast<unsigned char>(at(i))) != word[i]) return false;
    if (!blank(at(word.size()))) return false;
    const size_t start = at_ + word.size();
    pass_line();
    size_t from = start;
    while (from < at_ && blank(text_[from])) ++from;
    size_t to = from;
    while (to < at_ && !blank(text_[to])) ++to;
    if (to > from) delimiter_ = text_.substr(from, to - from);
    return true;
  }

  bool next(std::string& statement) {
    for (;;) {
      if (at_ >= text_.size()) return false;
      if (blank(at(0))) {
        ++at_;
      } else if (line_comment()) {
        pass_line();
      } else if (plain_comment()) {
        at_ += 2;
        pass("*/");
      } else if (here(delimiter_)) {
        at_ += delimiter_.size();
      } else if (!delimiter_line()) {
        break;
      }
    }
    const size_t start = at_;
    bool in_version = false;
    while (at_ < text_.size()) {
      const char c = at(0);
      if (!in_version && here(delimiter_)) {
        statement = text_.substr(start, at_ - start);
        while (!statement.empty() && blank(statement.back())) statement.pop_back();
        at_ += delimiter_.size();
        return true;
      }
      if (c == '\'' || c == '"' || c == '`') {
        for (++at_; at_ < text_.size() && at(0) != c; ++at_)
          if (at(0) == '\\' && c != '`') ++at_;
        ++at_;
      } else if (line_comment() && !in_version) {
        pass_line();
      } else if (line_comment()) {
        while (at_ < text_.size() && at(0) != '\n' && !here("*/")) ++at_;
      } else if (plain_comment()) {
        at_ += 2;
        pass("*/");
      } else if (here("/*")) {
        in_version = true;
        at_ += 2;
      } else if (in_version && here("*/")) {
        in_version = false;
        at_ += 2;
      } else {
        ++at_;
      }
    }
    return false;
  }

  std::string text_;
  std::string delimiter_ = ";";
  size_t at_ = 0;
};

}  // namespace kestrelon::testing
