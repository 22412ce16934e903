#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "base/text.h"
#include "services/registry/binary_text.h"
#include "services/registry/regedit4.h"

namespace kestrelon {
namespace {

constexpr std::string_view kHead = "REGEDIT4";

constexpr char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

bool starts_with_word(std::string_view text, std::string_view word) {
  return text.size() >= word.size() && std::equal(word.begin(), word.end(), text.begin(),
                                                  [](char a, char b) { return a == lower(b); });
}

std::string_view trim(std::string_view text) {
  const size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::vector<std::string_view> split_lines(std::string_view text) {
  std::vector<std::string_view> lines;
  for (size_t at = 0;;) {
    const size_t end = text.find("\r\n", at);
    lines.push_back(trim(text.substr(at, end == std::string_view::npos ? end : end - at)));
    if (end == std::string_view::npos) return lines;
    at = end + 2;
  }
}

// A named value as the file has it: `@` or a name in quotes, "=", and the rest.
struct ValueLine {
  bool is_default = false;
  std::string name;
  std::string value;
};

class Reader {
 public:
  Reader(RegistryService& registry, std::vector<std::string_view> lines, bool is_escaped,
         const RegFileCode& code)
      : registry_(registry), lines_(std::move(lines)), is_escaped_(is_escaped), code_(code) {}

  bool read() {
    std::optional<std::string> key;
    for (at_ = 1; at_ < lines_.size(); ++at_) {
      const std::string_view line = lines_[at_];
      if (line.starts_with('[')) {
        key = read_key(line);
      } else if (key && !line.empty() && !line.starts_with(';')) {
        auto value = parse(line);
        if (value && !apply(*key, *value)) return false;
      }
    }
    return true;
  }

 private:
  // The key to which the following values belong; nothing behind a deletion.
  std::optional<std::string> read_key(std::string_view line) {
    std::string path(line);
    if (!is_escaped_) std::erase(path, '"');
    path = path.size() > 2 ? path.substr(1, path.size() - 2) : std::string();
    if (path.starts_with('-')) {
      registry_.delete_key(std::string_view(path).substr(1));
      return std::nullopt;
    }
    if (path.empty()) return std::nullopt;
    if (!registry_.key_exists(path)) registry_.create_key(path);
    return path;
  }

  // Position behind the closing quote of the text that opens at 0; npos when it is not closed.
  // Without escapes a quote closes a name only before "=".
  size_t end_of_quoted(std::string_view line) const {
    if (!is_escaped_) {
      for (size_t end = 1; (end = line.find('"', end)) != std::string_view::npos; ++end)
        if (trim(line.substr(end + 1)).starts_with('=')) return end + 1;
      return std::string_view::npos;
    }
    for (size_t i = 1; i < line.size(); ++i) {
      if (line[i] == '\\')
        ++i;
      else if (line[i] == '"')
        return i + 1;
    }
    return std::string_view::npos;
  }

  bool is_quoted(std::string_view value) const {
    if (value.size() < 2 || value.front() != '"') return false;
    return is_escaped_ ? end_of_quoted(value) == value.size() : value.back() == '"';
  }

  std::string unescaped(std::string_view text) const {
    if (!is_escaped_) return std::string(text);
    std::string plain;
    for (size_t i = 0; i < text.size(); ++i) {
      if (text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == '\\' || text[i + 1] == '"'))
        ++i;
      plain.push_back(text[i]);
    }
    return plain;
  }

  std::optional<ValueLine> parse(std::string_view line) const {
    const bool is_default = line.starts_with("@");
    const size_t end = is_default ? 1 : line.starts_with('"') ? end_of_quoted(line) : line.npos;
    if (end == std::string_view::npos) return std::nullopt;
    const std::string_view rest = trim(line.substr(end));
    if (!rest.starts_with('=')) return std::nullopt;
    ValueLine value;
    value.is_default = is_default;
    value.name = is_default ? "@" : unescaped(line.substr(1, end - 2));
    value.value = without_comment(trim(rest.substr(1)));
    return value;
  }

  // A comment may follow a value: behind the closing quote, or behind digits.
  std::string_view without_comment(std::string_view value) const {
    if (!value.starts_with('"')) return trim(value.substr(0, value.find(';')));
    if (is_quoted(value)) return value;
    for (size_t quote = value.rfind('"'); quote != 0 && quote != std::string_view::npos;
         quote = value.rfind('"', quote - 1)) {
      const std::string_view text = value.substr(0, quote + 1);
      if (is_quoted(text) && trim(value.substr(quote + 1)).starts_with(';')) return text;
    }
    return value;
  }

  // Joins the lines of a value of hexadecimal pairs that end in a backslash. False when the file or
  // the key ends first.
  bool join_lines(std::string& value) {
    while (value.ends_with('\\')) {
      if (at_ + 1 >= lines_.size() || lines_[at_ + 1].starts_with('[')) return false;
      value.pop_back();
      value += lines_[++at_];
    }
    return true;
  }

  bool apply(const std::string& key, ValueLine& line) {
    std::string& value = line.value;
    if (value == "-" || (value.empty() && line.is_default)) {
      // A quoted "@" names no value of its own, and does not delete the default one.
      if (line.is_default || line.name != "@") registry_.delete_value(key, line.name);
    } else if (starts_with_word(value, "hex:") || starts_with_word(value, "hex(")) {
      return join_lines(value) && (apply_hex(key, line), true);
    } else if (starts_with_word(value, "dword:")) {
      return apply_double_word(key, line);
    } else if (is_quoted(value)) {
      registry_.write_string(key, line.name,
                             unescaped(std::string_view(value).substr(1, value.size() - 2)));
    }
    return true;
  }

  // "hex:" or "hex(kind):"; a text that is no pairs of digits writes nothing.
  void apply_hex(const std::string& key, const ValueLine& line) {
    const std::string_view value = line.value;
    const size_t colon = value.find(':');
    if (colon == std::string_view::npos) return;
    if (value[3] == ':') {
      registry_.write_binary(key, line.name, value.substr(colon + 1));
      return;
    }
    const auto kind = parse_hex(value.substr(4, colon - 5));
    auto bytes = hex_text_to_bytes(value.substr(colon + 1));
    if (value[colon - 1] != ')' || !kind || !bytes) return;
    if (is_text_kind(*kind)) *bytes = code_.decode(*bytes);
    registry_.write(key, line.name, *kind, std::move(*bytes));
  }

  bool apply_double_word(const std::string& key, const ValueLine& line) {
    const std::string_view digits = std::string_view(line.value).substr(sizeof "dword:" - 1);
    const auto number = parse_hex(digits);
    // Fewer digits than eight at the very end of a file are those of a file that is cut.
    constexpr size_t kDigits = 8;
    if (!number || (digits.size() < kDigits && at_ + 1 == lines_.size())) return false;
    registry_.write_double_word(key, line.name, static_cast<int32_t>(*number));
    return true;
  }

  static std::optional<uint32_t> parse_hex(std::string_view digits) {
    if (digits.empty() || digits.size() > 8) return std::nullopt;
    uint32_t number = 0;
    for (const char c : digits) {
      const int value = hex_digit_value(static_cast<unsigned char>(c));
      if (value < 0) return std::nullopt;
      number = number << 4 | static_cast<uint32_t>(value);
    }
    return number;
  }

  RegistryService& registry_;
  std::vector<std::string_view> lines_;
  bool is_escaped_;
  const RegFileCode& code_;
  size_t at_ = 0;
};

}  // namespace

bool import_registry(RegistryService& registry, std::string_view text, const RegFileCode& code) {
  const bool remembered = std::exchange(registry.creates_missing_keys, true);
  const size_t head_end = text.find("\r\n");
  const std::string_view head = text.substr(0, head_end);
  if (head.size() != kHead.size() ||
      !std::equal(head.begin(), head.end(), kHead.begin(),
                  [](char a, char b) { return lower(a) == lower(b); })) {
    registry.creates_missing_keys = remembered;
    return false;
  }
  std::vector<std::string_view> lines = split_lines(text);
  const bool is_escaped = lines.size() > 1 && lines[1] == kEscapedMark;
  if (!Reader(registry, std::move(lines), is_escaped, code).read()) return false;
  registry.creates_missing_keys = remembered;
  return true;
}

}  // namespace kestrelon
