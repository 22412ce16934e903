#include "base/module_win.h"

#include <atomic>
#include <map>
#include <mutex>
#include <string>

namespace kestrelon {
namespace {

std::atomic<long> g_locks{0};

struct GuidLess {
  bool operator()(const GUID& a, const GUID& b) const { return memcmp(&a, &b, sizeof a) < 0; }
};

struct TypeCache {
  std::mutex mutex;
  ComPtr<ITypeLib> library;
  std::map<GUID, ComPtr<ITypeInfo>, GuidLess> infos;
  std::map<GUID, std::map<std::wstring, DISPID, std::less<>>, GuidLess> member_ids;
};

// Never destroyed by the run-time: COM may be gone by then. release_type_infos() empties it in
// time.
TypeCache& cache() {
  static TypeCache* const instance = new TypeCache;
  return *instance;
}

}  // namespace

HINSTANCE module_instance() {
  static const HINSTANCE instance = [] {
    HMODULE module = nullptr;
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<LPCWSTR>(&g_locks), &module);
    return module;
  }();
  return instance;
}

void module_lock() {
  ++g_locks;
}
void module_unlock() {
  --g_locks;
}
long module_locks() {
  return g_locks;
}

ComPtr<ITypeInfo> type_info(const GUID& guid) {
  TypeCache& types = cache();
  const std::lock_guard lock(types.mutex);
  if (const auto found = types.infos.find(guid); found != types.infos.end()) return found->second;
  if (!types.library) {
    wchar_t path[MAX_PATH * 4];
    const DWORD length = GetModuleFileNameW(module_instance(), path, ARRAYSIZE(path));
    if (length == 0 || length == ARRAYSIZE(path)) return {};
    if (FAILED(LoadTypeLibEx(path, REGKIND_NONE, types.library.put()))) return {};
  }
  ComPtr<ITypeInfo> info;
  if (FAILED(types.library->GetTypeInfoOfGuid(guid, info.put()))) return {};
  types.infos.emplace(guid, info);
  return info;
}

DISPID member_id(const GUID& interface_id, const wchar_t* name) {
  TypeCache& types = cache();
  {
    const std::lock_guard lock(types.mutex);
    const auto& known = types.member_ids[interface_id];
    if (const auto found = known.find(name); found != known.end()) return found->second;
  }
  DISPID id = DISPID_UNKNOWN;
  auto* text = const_cast<wchar_t*>(name);
  const auto info = type_info(interface_id);
  if (!info || FAILED(info->GetIDsOfNames(&text, 1, &id))) id = DISPID_UNKNOWN;
  const std::lock_guard lock(types.mutex);
  types.member_ids[interface_id].emplace(name, id);
  return id;
}

void release_type_infos() {
  TypeCache& types = cache();
  const std::lock_guard lock(types.mutex);
  types.infos.clear();
  types.member_ids.clear();
  types.library.reset();
}

}  // namespace kestrelon
