#include "services/registry/registry_store_win.h"

#include <windows.h>

#include <string_view>

#include "services/mysql/utf8_text.h"
#include "services/registry/regedit4_code.h"

namespace kestrelon {
namespace {

constexpr REGSAM kWriteAccess = 0x20006;  // KEY_WRITE

HKEY root_handle(const RegistryPath& key) {
  // Predefined handles are the sign-extended 32-bit numbers.
  return reinterpret_cast<HKEY>(
      static_cast<LONG_PTR>(static_cast<LONG>(static_cast<uint32_t>(key.root))));
}

std::wstring wide(std::string_view text) {
  std::wstring units;
  from_utf8(text, units);
  return units;
}

// Data as the registry has it: texts in UTF-16, with a zero at their end.
std::string stored_data(const RegistryValue& value) {
  if (!is_text_kind(value.type)) return value.data;
  std::string data = *Utf16FileCode().encode(value.data);
  const bool is_ended = data.ends_with(std::string_view("\0\0", 2));
  if (!data.empty() && !is_ended) data.append(2, '\0');
  return data;
}

std::string own_data(uint32_t type, std::string_view data) {
  return is_text_kind(type) ? Utf16FileCode().decode(data) : std::string(data);
}

// A key open for the time of one call, made with all keys above it if `creates`.
class OpenKey {
 public:
  OpenKey(const RegistryPath& path, REGSAM access, bool creates = false) {
    if (path.root == RegistryRoot::kNone) return;
    const std::wstring sub_path = wide(path.sub_path);
    if (creates)
      RegCreateKeyExW(root_handle(path), sub_path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                      access, nullptr, &key_, nullptr);
    else
      RegOpenKeyExW(root_handle(path), sub_path.c_str(), 0, access, &key_);
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
    RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &subkeys, &subkey_name, nullptr, &values,
                     &value_name, &data, nullptr, nullptr);
  }
};

constexpr DWORD kMostName = 16384;  // characters, with the terminator

}  // namespace

uint32_t WindowsRegistry::view() const {
  return word_size == 64 ? KEY_WOW64_64KEY : word_size == 32 ? KEY_WOW64_32KEY : 0;
}

bool WindowsRegistry::key_exists(const RegistryPath& key) {
  return static_cast<bool>(OpenKey(key, KEY_READ | view()));
}

RegistryStore::Handle WindowsRegistry::create_key(const RegistryPath& path) {
  const OpenKey key(path, KEY_READ | KEY_WRITE | view(), true);
  return handle_if(key ? ERROR_SUCCESS : ERROR_CANTOPEN, key.get());
}

RegistryStore::Handle WindowsRegistry::delete_key(const RegistryPath& path) {
  // Without a sub path the call would delete the root's own content.
  if (path.sub_path.empty()) return 0;
  const size_t slash = path.sub_path.rfind('\\');
  RegistryPath parent = path;
  parent.sub_path.resize(slash == std::string::npos ? 0 : slash);
  const OpenKey key(parent, KEY_READ | view());
  if (!key) return 0;
  const std::string name = path.sub_path.substr(slash + 1);  // from 0 without a backslash
  return name.empty()
             ? 0
             : handle_if(RegDeleteKeyExW(key.get(), wide(name).c_str(), view(), 0), key.get());
}

std::vector<std::string> WindowsRegistry::subkeys(const RegistryPath& path) {
  std::vector<std::string> names;
  const OpenKey key(path, KEY_READ | view());
  if (!key) return names;
  std::wstring name(Limits(key.get()).subkey_name + 1, L'\0');
  for (DWORD index = 0;;) {
    auto length = static_cast<DWORD>(name.size());
    const LSTATUS status =
        RegEnumKeyExW(key.get(), index, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
    if (status == ERROR_MORE_DATA && name.size() < kMostName) {
      name.resize(kMostName);
      continue;
    }
    if (status != ERROR_SUCCESS) return names;
    names.push_back(to_utf8({name.data(), length}));
    ++index;
  }
}

std::optional<RegistryValue> WindowsRegistry::value(const RegistryPath& path,
                                                    const std::string& name) {
  const OpenKey key(path, KEY_READ | view());
  if (!key) return std::nullopt;
  RegistryValue value;
  value.name = name;
  const std::wstring wide_name = wide(name);
  for (DWORD size = 0;;) {
    DWORD type = 0;
    const bool asks = value.data.empty();
    size = static_cast<DWORD>(value.data.size());
    const LSTATUS status =
        RegQueryValueExW(key.get(), wide_name.c_str(), nullptr, &type,
                         asks ? nullptr : reinterpret_cast<BYTE*>(value.data.data()), &size);
    value.type = type;
    if (status == ERROR_MORE_DATA || (status == ERROR_SUCCESS && asks && size > 0)) {
      value.data.resize(size);
      continue;
    }
    if (status != ERROR_SUCCESS) return std::nullopt;
    value.data = own_data(type, std::string_view(value.data).substr(0, size));
    return value;
  }
}

std::vector<RegistryValue> WindowsRegistry::values(const RegistryPath& path) {
  std::vector<RegistryValue> values;
  const OpenKey key(path, KEY_READ | view());
  if (!key) return values;
  const Limits limits(key.get());
  std::wstring name(limits.value_name + 1, L'\0');
  std::string data(limits.data + 1, '\0');
  for (DWORD index = 0;;) {
    auto name_length = static_cast<DWORD>(name.size());
    auto size = static_cast<DWORD>(data.size());
    DWORD type = 0;
    const LSTATUS status = RegEnumValueW(key.get(), index, name.data(), &name_length, nullptr,
                                         &type, reinterpret_cast<BYTE*>(data.data()), &size);
    if (status == ERROR_MORE_DATA && (name.size() < kMostName || size > data.size())) {
      name.resize(kMostName);
      if (size > data.size()) data.resize(size);
      continue;
    }
    if (status != ERROR_SUCCESS) return values;
    values.push_back({to_utf8({name.data(), name_length}), type,
                      own_data(type, std::string_view(data).substr(0, size))});
    ++index;
  }
}

RegistryStore::Handle WindowsRegistry::set_value(const RegistryPath& path,
                                                 const RegistryValue& value) {
  const OpenKey key(path, kWriteAccess | view());
  if (!key) return 0;
  const std::string data = stored_data(value);
  return handle_if(
      RegSetValueExW(key.get(), wide(value.name).c_str(), 0, value.type,
                     reinterpret_cast<const BYTE*>(data.data()), static_cast<DWORD>(data.size())),
      key.get());
}

RegistryStore::Handle WindowsRegistry::delete_value(const RegistryPath& path,
                                                    const std::string& name) {
  const OpenKey key(path, kWriteAccess | view());
  if (!key) return 0;
  return handle_if(RegDeleteValueW(key.get(), wide(name).c_str()), key.get());
}

}  // namespace kestrelon
