#include "server/registration.h"

#include <comcat.h>

#include <string>
#include <vector>

#include "base/decimal.h"
#include "frame/about.h"
#include "server/class_table.h"

namespace kestrelon {
namespace {

constexpr wchar_t kLibrary[] = L"Kestrelon2012";
constexpr wchar_t kVersion[] = L"1.0";

struct Key {
  std::wstring path;
  std::wstring name;  // empty for the default value
  std::wstring value;
};

std::wstring guid_text(const GUID& guid) {
  wchar_t text[40];
  StringFromGUID2(guid, text, ARRAYSIZE(text));
  return text;
}

std::wstring module_path() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length =
        GetModuleFileNameW(module_instance(), path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

class Registry {
 public:
  explicit Registry(RegistrationScope scope) {
    if (scope == RegistrationScope::kMachine) {
      root_ = HKEY_CLASSES_ROOT;
    } else {
      RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Classes", 0, nullptr, 0, KEY_ALL_ACCESS,
                      nullptr, &opened_, nullptr);
      root_ = opened_;
    }
  }
  ~Registry() {
    if (opened_ != nullptr) RegCloseKey(opened_);
  }
  Registry(const Registry&) = delete;
  Registry& operator=(const Registry&) = delete;

  HRESULT write(const Key& key) const {
    HKEY handle = nullptr;
    LSTATUS status = RegCreateKeyExW(root_, key.path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr,
                                     &handle, nullptr);
    if (status == ERROR_SUCCESS) {
      const auto bytes = static_cast<DWORD>((key.value.size() + 1) * sizeof(wchar_t));
      status = RegSetValueExW(handle, key.name.empty() ? nullptr : key.name.c_str(), 0, REG_SZ,
                              reinterpret_cast<const BYTE*>(key.value.c_str()), bytes);
      RegCloseKey(handle);
    }
    return HRESULT_FROM_WIN32(static_cast<DWORD>(status));
  }

  HRESULT remove_tree(const std::wstring& path) const {
    HKEY handle = nullptr;
    LSTATUS status = RegOpenKeyExW(root_, path.c_str(), 0, KEY_ALL_ACCESS, &handle);
    if (status == ERROR_FILE_NOT_FOUND) return S_OK;
    if (status != ERROR_SUCCESS) return HRESULT_FROM_WIN32(static_cast<DWORD>(status));
    wchar_t name[256];
    for (DWORD length = ARRAYSIZE(name); RegEnumKeyExW(handle, 0, name, &length, nullptr, nullptr,
                                                       nullptr, nullptr) == ERROR_SUCCESS;
         length = ARRAYSIZE(name)) {
      const HRESULT hr = remove_tree(path + L"\\" + name);
      if (FAILED(hr)) {
        RegCloseKey(handle);
        return hr;
      }
    }
    RegCloseKey(handle);
    status = RegDeleteKeyW(root_, path.c_str());
    return HRESULT_FROM_WIN32(static_cast<DWORD>(status));
  }

  /// Removes a key only when nothing is left in it: others may share it.
  void remove_if_empty(const std::wstring& path) const {
    HKEY handle = nullptr;
    if (RegOpenKeyExW(root_, path.c_str(), 0, KEY_READ, &handle) != ERROR_SUCCESS) return;
    DWORD keys = 1, values = 1;
    RegQueryInfoKeyW(handle, nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values, nullptr,
                     nullptr, nullptr, nullptr);
    RegCloseKey(handle);
    if (keys == 0 && values == 0) RegDeleteKeyW(root_, path.c_str());
  }

 private:
  HKEY root_ = nullptr;
  HKEY opened_ = nullptr;
};

std::wstring prog_id(const ServerClass& entry) {
  return std::wstring(kLibrary) + L"." + entry.info.name;
}

// The ProgID that names one version; the plain one is independent of it.
std::wstring versioned_prog_id(const ServerClass& entry) {
  return prog_id(entry) + L".1";
}

std::wstring class_path(const ServerClass& entry) {
  return L"CLSID\\" + guid_text(entry.info.clsid);
}

GUID library_id() {
  GUID id{};
  const auto info = type_info(server_classes().front().info.interface_id);
  ComPtr<ITypeLib> library;
  UINT index = 0;
  TLIBATTR* attributes = nullptr;
  if (info && SUCCEEDED(info->GetContainingTypeLib(library.put(), &index)) &&
      SUCCEEDED(library->GetLibAttr(&attributes))) {
    id = attributes->guid;
    library->ReleaseTLibAttr(attributes);
  }
  return id;
}

void add_control_keys(std::vector<Key>& keys, const ServerClass& entry, const std::wstring& path,
                      const std::wstring& module) {
  keys.push_back({path + L"\\Control", L"", L""});
  keys.push_back(
      {path + L"\\ToolboxBitmap32", L"", module + L", " + decimal_text(entry.toolbox_bitmap)});
  keys.push_back({path + L"\\MiscStatus", L"", L"0"});
  keys.push_back({path + L"\\MiscStatus\\1", L"", decimal_text(entry.misc_status)});
  keys.push_back({path + L"\\Verb", L"", L""});
  keys.push_back({path + L"\\Verb\\" + decimal_text(kAboutVerb), L"", L"&Sobre...,0,2"});
  keys.push_back(
      {path + L"\\Verb\\" + decimal_text(kPropertiesVerb), L"", L"&Propriedades...,0,2"});
  const std::wstring categories = path + L"\\Implemented Categories\\";
  for (const CATID& category : {CATID_Control, CATID_Programmable, CATID_PersistsToStreamInit,
                                CATID_PersistsToStorage, CATID_PersistsToPropertyBag}) {
    keys.push_back({categories + guid_text(category), L"", L""});
  }
}

std::vector<Key> class_keys(const ServerClass& entry, const std::wstring& module,
                            const std::wstring& library) {
  const std::wstring path = class_path(entry);
  const std::wstring clsid = guid_text(entry.info.clsid);
  if (entry.kind == ClassKind::kPage) {
    return {{path, L"", entry.description},
            {path + L"\\InprocServer32", L"", module},
            {path + L"\\InprocServer32", L"ThreadingModel", L"Apartment"}};
  }
  std::vector<Key> keys = {
      {prog_id(entry), L"", entry.description},
      {prog_id(entry) + L"\\CLSID", L"", clsid},
      {prog_id(entry) + L"\\CurVer", L"", versioned_prog_id(entry)},
      {versioned_prog_id(entry), L"", entry.description},
      {versioned_prog_id(entry) + L"\\CLSID", L"", clsid},
      {path, L"", entry.description},
      {path + L"\\ProgID", L"", versioned_prog_id(entry)},
      {path + L"\\VersionIndependentProgID", L"", prog_id(entry)},
      {path + L"\\InprocServer32", L"", module},
      {path + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
      {path + L"\\TypeLib", L"", library},
      {path + L"\\Version", L"", kVersion},
      {path + L"\\Programmable", L"", L""},
  };
  if (entry.kind == ClassKind::kControl) add_control_keys(keys, entry, path, module);
  return keys;
}

// The per-user forms are missing from the import library of the cross tools and from old systems.
template <class Function>
Function* automation_function(const char* name) {
  return reinterpret_cast<Function*>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"oleaut32.dll"), name)));
}

using RegisterForUser = HRESULT WINAPI(ITypeLib*, OLECHAR*, OLECHAR*);
using UnregisterForUser = HRESULT WINAPI(REFGUID, WORD, WORD, LCID, SYSKIND);

HRESULT register_library(RegistrationScope scope, const std::wstring& module) {
  ComPtr<ITypeLib> library;
  const HRESULT hr = LoadTypeLibEx(module.c_str(), REGKIND_NONE, library.put());
  if (FAILED(hr)) return hr;
  const auto path = const_cast<wchar_t*>(module.c_str());
  if (scope == RegistrationScope::kMachine) return RegisterTypeLib(library.get(), path, nullptr);
  auto* const for_user = automation_function<RegisterForUser>("RegisterTypeLibForUser");
  return for_user != nullptr ? for_user(library.get(), path, nullptr) : E_NOTIMPL;
}

HRESULT unregister_library(RegistrationScope scope) {
  constexpr SYSKIND kSystem = sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32;
  const GUID id = library_id();
  HRESULT hr = E_NOTIMPL;
  if (scope == RegistrationScope::kMachine) {
    hr = UnRegisterTypeLib(id, 1, 0, LOCALE_NEUTRAL, kSystem);
  } else if (auto* const for_user =
                 automation_function<UnregisterForUser>("UnRegisterTypeLibForUser")) {
    hr = for_user(id, 1, 0, LOCALE_NEUTRAL, kSystem);
  }
  return hr == TYPE_E_REGISTRYACCESS ? S_OK : hr;  // it was not there
}

}  // namespace

HRESULT register_server(RegistrationScope scope) {
  const std::wstring module = module_path();
  HRESULT hr = register_library(scope, module);
  const Registry registry(scope);
  const std::wstring library = guid_text(library_id());
  for (const ServerClass& entry : server_classes()) {
    for (const Key& key : class_keys(entry, module, library)) {
      if (SUCCEEDED(hr)) hr = registry.write(key);
    }
  }
  if (FAILED(hr)) unregister_server(scope);
  return hr;
}

HRESULT unregister_server(RegistrationScope scope) {
  HRESULT hr = S_OK;
  const Registry registry(scope);
  for (const ServerClass& entry : server_classes()) {
    for (const std::wstring& path : {prog_id(entry), versioned_prog_id(entry), class_path(entry)}) {
      const HRESULT removed = registry.remove_tree(path);
      if (FAILED(removed)) hr = removed;
    }
  }
  const HRESULT library = unregister_library(scope);
  registry.remove_if_empty(L"TypeLib\\" + guid_text(library_id()) + L"\\" + kVersion);
  registry.remove_if_empty(L"TypeLib\\" + guid_text(library_id()));
  if (scope == RegistrationScope::kUser) {
    // A user's hive starts without these; registering made them.
    for (const wchar_t* path : {L"CLSID", L"TypeLib", L"Interface"}) registry.remove_if_empty(path);
  }
  return FAILED(hr) ? hr : library;
}

}  // namespace kestrelon
