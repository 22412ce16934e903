// The registry calls that the service stands on.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "services/registry/registry_path.h"

namespace kestrelon {

/// Kinds of values, the numbers of RegistryType that the service treats apart.
namespace registry_type {
inline constexpr uint32_t kString = 1;
inline constexpr uint32_t kExpandString = 2;
inline constexpr uint32_t kBinary = 3;
inline constexpr uint32_t kDoubleWord = 4;
inline constexpr uint32_t kMultiString = 7;
}  // namespace registry_type

/// Kinds whose data is text, or texts with a zero behind each.
constexpr bool is_text_kind(uint32_t type) {
  return type == registry_type::kString || type == registry_type::kExpandString ||
         type == registry_type::kMultiString;
}

struct RegistryValue {
  std::string name;  // empty for the key's default value
  uint32_t type = 0;
  std::string data;  // as stored, of any length; UTF-8 where the kind is one of text
};

/// No call raises; failures answer 0, false or nothing. A "handle" is the number of the key handle
/// that was used, closed again before the call returns; it tells success by not being 0.
class RegistryStore {
 public:
  using Handle = int32_t;

  virtual ~RegistryStore() = default;

  virtual bool key_exists(const RegistryPath& key) = 0;
  virtual Handle create_key(const RegistryPath& key) = 0;
  /// Deletes a key that has no subkeys.
  virtual Handle delete_key(const RegistryPath& key) = 0;
  virtual std::vector<std::string> subkeys(const RegistryPath& key) = 0;

  virtual std::optional<RegistryValue> value(const RegistryPath& key, const std::string& name) = 0;
  virtual std::vector<RegistryValue> values(const RegistryPath& key) = 0;
  virtual Handle set_value(const RegistryPath& key, const RegistryValue& value) = 0;
  virtual Handle delete_value(const RegistryPath& key, const std::string& name) = 0;
};

}  // namespace kestrelon
