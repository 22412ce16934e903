#include "services/registry/binary_text.h"
#include "services/registry/regedit4.h"

namespace kestrelon {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr size_t kPiece = 65536;

class Writer {
 public:
  Writer(RegistryService& registry, const RegExportOptions& options, const RegTextSink& out)
      : registry_(registry), options_(options), out_(out) {}

  void write_head() {
    line("REGEDIT4");
    if (options_.escaped) line(kEscapedMark);
    line({});
  }

  // Values come grouped by kind, not in the order of the registry.
  void write_key(std::string_view path) {
    const std::string shown = long_registry_path(path);
    if (options_.on_key) options_.on_key(shown);
    line("[" + shown + "]");
    if (const auto standard = registry_.value(path, "@")) write_default(*standard);
    for (const RegistryValue& value : registry_.values(path, registry_type::kString))
      if (!value.name.empty()) write_value(quoted(value.name), value);
    for (const RegistryValue& value : registry_.values(path, registry_type::kBinary))
      if (!value.name.empty() || options_.escaped) write_value(value_name(value), value);
    for (const RegistryValue& value : registry_.values(path, registry_type::kDoubleWord))
      if (!value.name.empty() || options_.escaped) write_value(value_name(value), value);
    if (options_.escaped) write_other_kinds(path);
    line({});
    if (!options_.subkeys || failed_) return;
    for (const std::string& name : registry_.subkeys(path))
      write_key(std::string(path) + "\\" + name);
  }

  bool flush() {
    failed_ = failed_ || !out_(text_);
    text_.clear();
    return !failed_;
  }

 private:
  void line(std::string_view text) {
    const auto bytes = code_.encode(std::string(text).append(kLineEnd));
    if (!bytes) {
      failed_ = true;
      return;
    }
    text_ += *bytes;
    if (text_.size() >= kPiece) flush();
  }

  std::string quoted(std::string_view text) const {
    std::string quoted = "\"";
    for (const char c : text) {
      if (options_.escaped && (c == '"' || c == '\\')) quoted.push_back('\\');
      quoted.push_back(c);
    }
    return quoted + "\"";
  }

  std::string value_name(const RegistryValue& value) const {
    return value.name.empty() ? "@" : quoted(value.name);
  }

  void write_default(const RegistryValue& value) {
    if (value.type == registry_type::kString) write_value("@", value);
  }

  void write_other_kinds(std::string_view path) {
    for (const RegistryValue& value : registry_.values(path))
      if (value.type != registry_type::kString && value.type != registry_type::kBinary &&
          !is_number(value))
        write_hex(value_name(value), "hex(" + hex_of(value.type) + "):", file_bytes(value));
  }

  static bool is_number(const RegistryValue& value) {
    return value.type == registry_type::kDoubleWord && value.data.size() == 4;
  }

  static std::string hex_of(uint32_t number, std::string_view digits = "0123456789abcdef",
                            size_t width = 1) {
    std::string text;
    while (number != 0 || text.size() < width) {
      text.insert(text.begin(), digits[number & 15]);
      number >>= 4;
    }
    return text;
  }

  // Lists of bytes hold texts in the code of the file.
  std::string file_bytes(const RegistryValue& value) {
    if (!is_text_kind(value.type)) return value.data;
    const auto bytes = code_.encode(value.data);
    failed_ = failed_ || !bytes;
    return bytes.value_or(std::string());
  }

  void write_hex(const std::string& name, const std::string& kind, std::string_view data) {
    std::string hex = bytes_to_hex_text(data);
    for (char& c : hex)
      if (c == ' ') c = ',';
    line(name + "=" + kind + hex);
  }

  // A text that a line cannot carry: it breaks the line, or holds more than the zero at its end.
  static bool needs_hex(std::string_view data) {
    const size_t zero = data.find('\0');
    return data.find_first_of("\r\n") != std::string_view::npos ||
           (zero != std::string_view::npos && zero + 1 != data.size());
  }

  void write_value(const std::string& name, const RegistryValue& value) {
    if (value.type == registry_type::kBinary) {
      write_hex(name, "hex:", value.data);
    } else if (value.type == registry_type::kDoubleWord) {
      if (is_number(value)) {
        const auto number = static_cast<uint32_t>(registry_number(value));
        line(name + "=dword:" + hex_of(number, "0123456789ABCDEF", 8));
      }
    } else if (options_.escaped && needs_hex(value.data)) {
      write_hex(name, "hex(1):", file_bytes(value));
    } else {
      line(name + "=" + quoted(registry_text(value)));
    }
  }

  RegistryService& registry_;
  const RegExportOptions& options_;
  const RegTextSink& out_;
  std::string text_;  // not yet given to the sink
  RegFileCode unchanged_;
  const RegFileCode& code_ = options_.code != nullptr ? *options_.code : unchanged_;
  bool failed_ = false;
};

}  // namespace

bool export_registry(RegistryService& registry, std::string_view path,
                     const RegExportOptions& options, const RegTextSink& out) {
  Writer writer(registry, options, out);
  writer.write_head();
  writer.write_key(path);
  return writer.flush();
}

}  // namespace kestrelon
