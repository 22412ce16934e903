#include "services/registry/registry_service.h"

#include "services/registry/binary_text.h"

namespace kestrelon {
namespace {

constexpr size_t kDoubleWordSize = 4;

std::string value_name(std::string_view name) {
  return name == "@" ? std::string() : std::string(name);
}

}  // namespace

std::string registry_text(const RegistryValue& value) {
  return value.data.substr(0, value.data.find('\0'));
}

int32_t registry_number(const RegistryValue& value) {
  uint32_t number = 0;
  if (value.data.size() >= kDoubleWordSize)
    for (size_t i = kDoubleWordSize; i-- > 0;)
      number = number << 8 | static_cast<unsigned char>(value.data[i]);
  return static_cast<int32_t>(number);
}

RegistryService::Handle RegistryService::create_key(std::string_view path) {
  return store_.create_key(split_registry_path(path));
}

RegistryService::Handle RegistryService::delete_key(std::string_view path) {
  return store_.delete_key(split_registry_path(path));
}

bool RegistryService::key_exists(std::string_view path) {
  return store_.key_exists(split_registry_path(path));
}

std::vector<std::string> RegistryService::subkeys(std::string_view path) {
  return store_.subkeys(split_registry_path(path));
}

RegistryService::Handle RegistryService::write(std::string_view path, std::string_view name,
                                               uint32_t type, std::string data) {
  const RegistryPath key = split_registry_path(path);
  if (!store_.key_exists(key)) {
    if (!creates_missing_keys) return 0;
    store_.create_key(key);
  }
  return store_.set_value(key, {value_name(name), type, std::move(data)});
}

RegistryService::Handle RegistryService::write_string(std::string_view path, std::string_view name,
                                                      std::string_view text) {
  return write(path, name, registry_type::kString, std::string(text));
}

RegistryService::Handle RegistryService::write_double_word(std::string_view path,
                                                           std::string_view name, int32_t number) {
  std::string data;
  for (auto left = static_cast<uint32_t>(number); data.size() < kDoubleWordSize; left >>= 8)
    data.push_back(static_cast<char>(left & 0xFF));
  return write(path, name, registry_type::kDoubleWord, std::move(data));
}

RegistryService::Handle RegistryService::write_binary(std::string_view path, std::string_view name,
                                                      std::string_view hex) {
  auto bytes = hex_text_to_bytes(hex);
  return bytes ? write(path, name, registry_type::kBinary, std::move(*bytes)) : 0;
}

std::optional<RegistryValue> RegistryService::value(std::string_view path, std::string_view name) {
  return store_.value(split_registry_path(path), value_name(name));
}

std::optional<std::string> RegistryService::read_string(std::string_view path,
                                                        std::string_view name) {
  const auto found = value(path, name);
  if (!found ||
      (found->type != registry_type::kString && found->type != registry_type::kExpandString))
    return std::nullopt;
  return registry_text(*found);
}

std::optional<int32_t> RegistryService::read_double_word(std::string_view path,
                                                         std::string_view name) {
  const auto found = value(path, name);
  if (!found || found->type != registry_type::kDoubleWord || found->data.size() < kDoubleWordSize)
    return std::nullopt;
  return registry_number(*found);
}

std::optional<std::string> RegistryService::read_binary(std::string_view path,
                                                        std::string_view name) {
  const auto found = value(path, name);
  if (!found || found->type != registry_type::kBinary) return std::nullopt;
  return bytes_to_hex_text(found->data);
}

RegistryService::Handle RegistryService::delete_value(std::string_view path,
                                                      std::string_view name) {
  return store_.delete_value(split_registry_path(path), value_name(name));
}

std::vector<RegistryValue> RegistryService::values(std::string_view path, int32_t type) {
  std::vector<RegistryValue> found = store_.values(split_registry_path(path));
  if (type != -1)
    std::erase_if(found, [&](const RegistryValue& value) {
      return value.type != static_cast<uint32_t>(type);
    });
  return found;
}

RegistryService::Handle RegistryService::add_shell(std::string_view extension,
                                                   std::string_view description,
                                                   std::string_view menu, std::string_view text,
                                                   std::string_view command,
                                                   std::string_view icon) {
  std::string name(extension);
  for (char& c : name)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  const std::string file_class = "HKCR\\" + name + "file";
  const std::string verb = file_class + "\\shell\\" + std::string(menu);
  Handle result = write_string("HKCR\\." + name, "@", name + "file");
  result &= write_string(file_class, "@", description);
  result &= write_string(verb, "@", text);
  result &= write_string(verb + "\\command", "@", command);
  if (!icon.empty()) result &= write_string(file_class + "\\DefaultIcon", "@", icon);
  return result;
}

}  // namespace kestrelon
