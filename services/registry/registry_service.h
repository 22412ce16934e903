// The registry through plain path strings: what KN_REGISTRY offers, without its COM clothes.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "services/registry/registry_store.h"

namespace kestrelon {

/// The value name "@" means a key's default value everywhere.
class RegistryService {
 public:
  using Handle = RegistryStore::Handle;

  explicit RegistryService(RegistryStore& store) : store_(store) {}

  /// Writers make a missing key when set, and answer 0 for one when not.
  bool creates_missing_keys = true;

  Handle create_key(std::string_view path);
  Handle delete_key(std::string_view path);
  bool key_exists(std::string_view path);
  std::vector<std::string> subkeys(std::string_view path);

  Handle write(std::string_view path, std::string_view name, uint32_t type, std::string data);
  Handle write_string(std::string_view path, std::string_view name, std::string_view text);
  Handle write_double_word(std::string_view path, std::string_view name, int32_t number);
  /// `hex` is a text of hexadecimal pairs; another text answers 0.
  Handle write_binary(std::string_view path, std::string_view name, std::string_view hex);

  /// Nothing when the value is missing or of another type. A text ends at its first zero.
  std::optional<std::string> read_string(std::string_view path, std::string_view name);
  std::optional<int32_t> read_double_word(std::string_view path, std::string_view name);
  std::optional<std::string> read_binary(std::string_view path, std::string_view name);

  std::optional<RegistryValue> value(std::string_view path, std::string_view name);
  Handle delete_value(std::string_view path, std::string_view name);
  /// Values of one type, or of every type for -1.
  std::vector<RegistryValue> values(std::string_view path, int32_t type = -1);

  /// Ties a file extension (without its point) to a program; an empty icon writes none. The results
  /// of the writes, combined bit by bit.
  Handle add_shell(std::string_view extension, std::string_view description, std::string_view menu,
                   std::string_view text, std::string_view command, std::string_view icon);

 private:
  RegistryStore& store_;
};

/// Data of a text value up to its first zero, of a double word (0 when it is short).
std::string registry_text(const RegistryValue& value);
int32_t registry_number(const RegistryValue& value);

}  // namespace kestrelon
