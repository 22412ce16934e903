// A registry in memory, with names that differ by more than case.
#pragma once

#include <algorithm>
#include <map>
#include <string>

#include "services/registry/registry_store.h"

namespace kestrelon::testing {

class FakeRegistry final : public RegistryStore {
 public:
  using Values = std::map<std::string, std::pair<uint32_t, std::string>>;

  bool key_exists(const RegistryPath& key) override { return keys.count(full(key)) != 0; }
  Handle create_key(const RegistryPath& key) override {
    if (key.root == RegistryRoot::kNone) return 0;
    for (size_t at = 0; at != std::string::npos;) {
      at = key.sub_path.find('\\', at + 1);
      keys[full({key.root, key.sub_path.substr(0, at)})];
    }
    return kHandle;
  }
  Handle delete_key(const RegistryPath& key) override {
    if (!subkeys(key).empty()) return 0;
    return keys.erase(full(key)) != 0 ? kHandle : 0;
  }
  std::vector<std::string> subkeys(const RegistryPath& key) override {
    const std::string prefix = full(key) + "\\";
    std::vector<std::string> names;
    for (const auto& [path, values] : keys)
      if (path.starts_with(prefix) && path.find('\\', prefix.size()) == std::string::npos)
        names.push_back(path.substr(prefix.size()));
    return names;
  }
  std::optional<RegistryValue> value(const RegistryPath& key, const std::string& name) override {
    const auto found = keys.find(full(key));
    if (found == keys.end() || found->second.count(name) == 0) return std::nullopt;
    const auto& [type, data] = found->second.at(name);
    return RegistryValue{name, type, data};
  }
  std::vector<RegistryValue> values(const RegistryPath& key) override {
    std::vector<RegistryValue> all;
    for (const auto& [name, value] : keys[full(key)])
      all.push_back({name, value.first, value.second});
    return all;
  }
  Handle set_value(const RegistryPath& key, const RegistryValue& value) override {
    if (!key_exists(key)) return 0;
    keys[full(key)][value.name] = {value.type, value.data};
    return kHandle;
  }
  Handle delete_value(const RegistryPath& key, const std::string& name) override {
    return key_exists(key) && keys[full(key)].erase(name) != 0 ? kHandle : 0;
  }

  std::map<std::string, Values> keys;  // by root number and sub path

 private:
  static constexpr Handle kHandle = 0x44;

  static std::string full(const RegistryPath& key) {
    return std::to_string(static_cast<uint32_t>(key.root)) + "\\" + key.sub_path;
  }
};

}  // namespace kestrelon::testing
