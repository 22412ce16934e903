// The system's registry.
#pragma once

#include "services/registry/registry_store.h"

namespace kestrelon {

class WindowsRegistry final : public RegistryStore {
 public:
  /// The view of a 64-bit system: 32, 64, or 0 for that of the program itself.
  int word_size = 0;

  bool key_exists(const RegistryPath& key) override;
  Handle create_key(const RegistryPath& key) override;
  Handle delete_key(const RegistryPath& key) override;
  std::vector<std::string> subkeys(const RegistryPath& key) override;
  std::optional<RegistryValue> value(const RegistryPath& key, const std::string& name) override;
  std::vector<RegistryValue> values(const RegistryPath& key) override;
  Handle set_value(const RegistryPath& key, const RegistryValue& value) override;
  Handle delete_value(const RegistryPath& key, const std::string& name) override;

 private:
  uint32_t view() const;
};

}  // namespace kestrelon
