// The library as a module: its handle, what keeps it loaded, and its type library.
#pragma once

#include "base/com_win.h"

namespace kestrelon {

/// The module that holds this code, whether the control server or a test program.
HINSTANCE module_instance();

/// Counts what keeps the server loaded: objects and LockServer calls.
void module_lock();
void module_unlock();
long module_locks();

/// Type information of one type of the embedded library, loaded once and kept. Empty when the
/// module carries no type library.
ComPtr<ITypeInfo> type_info(const GUID& guid);

/// The dispatch id of a member of one interface of the library, DISPID_UNKNOWN if it has none of
/// that name; looked up once and kept.
DISPID member_id(const GUID& interface_id, const wchar_t* name);

/// Drops cached type information; called when the module goes.
void release_type_infos();

/// Keeps the module loaded while it lives.
class ModuleLock {
 public:
  ModuleLock() { module_lock(); }
  ~ModuleLock() { module_unlock(); }
  ModuleLock(const ModuleLock&) = delete;
  ModuleLock& operator=(const ModuleLock&) = delete;
};

}  // namespace kestrelon
