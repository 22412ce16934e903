#include "services/mysql/statement_gatherer.h"

#include <utility>

namespace kestrelon {
namespace {

constexpr char upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

// `word` is in upper case.
bool begins_with_word(std::string_view line, std::string_view word) {
  if (line.size() < word.size()) return false;
  for (size_t i = 0; i < word.size(); ++i)
    if (upper(line[i]) != word[i]) return false;
  return true;
}

}  // namespace

bool starts_command(std::string_view line) {
  if (line.empty()) return false;
  const char c = upper(line.front());
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z');
}

std::optional<std::string> StatementGatherer::feed(std::string_view line) {
  constexpr std::string_view kBlockEnd = "END;";
  if (!gathering_) {
    if (!starts_command(line)) return std::nullopt;
    statement_ = line;
    gathering_ = true;
  } else if (begins_with_word(line, "BEGIN")) {
    in_block_ = true;
    statement_.append("\r\n").append(line);
  } else if (line.size() == kBlockEnd.size() && begins_with_word(line, kBlockEnd)) {
    in_block_ = false;
    statement_.append("\r\n").append(line);
  } else {
    statement_.append(line);
  }
  if (in_block_ || !line.ends_with(';')) return std::nullopt;
  gathering_ = false;
  return std::exchange(statement_, {});
}

}  // namespace kestrelon
