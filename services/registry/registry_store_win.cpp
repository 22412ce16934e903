#include "services/registry/registry_store_win.h"

#include <windows.h>

#include <algorithm>
#include <string_view>

namespace kestrelon {
namespace {

constexpr REGSAM kWriteAccess = 0x20006;  // KEY_WRITE

HKEY root_handle(const RegistryPath& key) {
  // Predefined handles are the sign-extended 32-bit numbers.
  return reinterpret_cast<HKEY>(
      static_cast<LONG_PTR>(static_cast<LONG>(static_cast<uint32_t>(key.root))));
}

// The ANSI calls take at most 260 characters of a path; a longer one is walked in such steps.
constexpr size_t kMostStep = 255;

// Length of the first step of a path, up to a backslash if the path is longer.
size_t step_length(std::string_view path) {
  if (path.size() <= kMostStep) return path.size();
  const size_t slash = path.rfind('\\', kMostStep);
  return slash == std::string_view::npos ? path.size() : slash;
}

// A key open for the time of one call, made with all keys above it if `creates`.
class OpenKey {
 public:
  OpenKey(const RegistryPath& path, REGSAM access, bool creates = false) {
    if (path.root == RegistryRoot::kNone) return;
    HKEY above = root_handle(path);
    for (std::string_view rest = path.sub_path;;) {
      const std::string step(rest.substr(0, step_length(rest)));
      rest.remove_prefix(std::min(step.size() + 1, rest.size()));
      HKEY next = nullptr;
      const LSTATUS status =
          creates ? RegCreateKeyExA(above, step.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                    access, nullptr, &next, nullptr)
                  : RegOpenKeyExA(above, step.c_str(), 0, access, &next);
      if (key_ != nullptr) RegCloseKey(key_);
      above = key_ = status == ERROR_SUCCESS ? next : nullptr;
      if (key_ == nullptr || rest.empty()) return;
    }
  }
  ~OpenKey() {
    if (key_ != nullptr) RegCloseKey(key_);
  }
  OpenKey(const OpenKey&) = delete;
  OpenKey& operator=(const OpenKey&) = delete;

  explicit operator bool() const { return key_ != nullptr; }
  HKEY get() const { return key_; }

 private:
  HKEY key_ = nullptr;
};

RegistryStore::Handle handle_if(LSTATUS status, HKEY key) {
  return status == ERROR_SUCCESS
             ? static_cast<RegistryStore::Handle>(reinterpret_cast<LONG_PTR>(key))
             : 0;
}

// Longest name and data of a key; both may grow while it is read.
struct Limits {
  DWORD subkeys = 0;
  DWORD subkey_name = 0;
  DWORD values = 0;
  DWORD value_name = 0;
  DWORD data = 0;

  explicit Limits(HKEY key) {
    RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, &subkeys, &subkey_name, nullptr, &values,
                     &value_name, &data, nullptr, nullptr);
  }
};

constexpr DWORD kMostName = 16384;  // characters, with the terminator

}  // namespace

bool WindowsRegistry::key_exists(const RegistryPath& key) {
  return static_cast<bool>(OpenKey(key, KEY_READ));
}

RegistryStore::Handle WindowsRegistry::create_key(const RegistryPath& path) {
  const OpenKey key(path, KEY_READ | KEY_WRITE, true);
  return handle_if(key ? ERROR_SUCCESS : ERROR_CANTOPEN, key.get());
}

RegistryStore::Handle WindowsRegistry::delete_key(const RegistryPath& path) {
  // Without a sub path the call would delete the root's own content.
  if (path.sub_path.empty()) return 0;
  const size_t slash = path.sub_path.rfind('\\');
  RegistryPath parent = path;
  parent.sub_path.resize(slash == std::string::npos ? 0 : slash);
  const OpenKey key(parent, KEY_READ);
  if (!key) return 0;
  const std::string name = path.sub_path.substr(slash + 1);  // from 0 without a backslash
  return name.empty() ? 0 : handle_if(RegDeleteKeyA(key.get(), name.c_str()), key.get());
}

std::vector<std::string> WindowsRegistry::subkeys(const RegistryPath& path) {
  std::vector<std::string> names;
  const OpenKey key(path, KEY_READ);
  if (!key) return names;
  std::string name(Limits(key.get()).subkey_name + 1, '\0');
  for (DWORD index = 0;;) {
    auto length = static_cast<DWORD>(name.size());
    const LSTATUS status =
        RegEnumKeyExA(key.get(), index, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
    if (status == ERROR_MORE_DATA && name.size() < kMostName) {
      name.resize(kMostName);
      continue;
    }
    if (status != ERROR_SUCCESS) return names;
    names.emplace_back(name.data(), length);
    ++index;
  }
}

std::optional<RegistryValue> WindowsRegistry::value(const RegistryPath& path,
                                                    const std::string& name) {
  const OpenKey key(path, KEY_READ);
  if (!key) return std::nullopt;
  RegistryValue value;
  value.name = name;
  for (DWORD size = 0;;) {
    DWORD type = 0;
    const bool asks = value.data.empty();
    size = static_cast<DWORD>(value.data.size());
    const LSTATUS status =
        RegQueryValueExA(key.get(), name.c_str(), nullptr, &type,
                         asks ? nullptr : reinterpret_cast<BYTE*>(value.data.data()), &size);
    value.type = type;
    if (status == ERROR_MORE_DATA || (status == ERROR_SUCCESS && asks && size > 0)) {
      value.data.resize(size);
      continue;
    }
    if (status != ERROR_SUCCESS) return std::nullopt;
    value.data.resize(size);
    return value;
  }
}

std::vector<RegistryValue> WindowsRegistry::values(const RegistryPath& path) {
  std::vector<RegistryValue> values;
  const OpenKey key(path, KEY_READ);
  if (!key) return values;
  const Limits limits(key.get());
  std::string name(limits.value_name + 1, '\0');
  std::string data(limits.data + 1, '\0');
  for (DWORD index = 0;;) {
    auto name_length = static_cast<DWORD>(name.size());
    auto size = static_cast<DWORD>(data.size());
    DWORD type = 0;
    const LSTATUS status = RegEnumValueA(key.get(), index, name.data(), &name_length, nullptr,
                                         &type, reinterpret_cast<BYTE*>(data.data()), &size);
    if (status == ERROR_MORE_DATA && (name.size() < kMostName || size > data.size())) {
      name.resize(kMostName);
      if (size > data.size()) data.resize(size);
      continue;
    }
    if (status != ERROR_SUCCESS) return values;
    values.push_back({std::string(name.data(), name_length), type, data.substr(0, size)});
    ++index;
  }
}

RegistryStore::Handle WindowsRegistry::set_value(const RegistryPath& path,
                                                 const RegistryValue& value) {
  const OpenKey key(path, kWriteAccess);
  if (!key) return 0;
  return handle_if(RegSetValueExA(key.get(), value.name.c_str(), 0, value.type,
                                  reinterpret_cast<const BYTE*>(value.data.data()),
                                  static_cast<DWORD>(value.data.size())),
                   key.get());
}

RegistryStore::Handle WindowsRegistry::delete_value(const RegistryPath& path,
                                                    const std::string& name) {
  const OpenKey key(path, kWriteAccess);
  if (!key) return 0;
  return handle_if(RegDeleteValueA(key.get(), name.c_str()), key.get());
}

}  // namespace kestrelon
