// The exported functions of the library.
#include <windows.h>

#include <olectl.h>

#include <string_view>

#include "base/module_win.h"
#include "frame/platform.h"
#include "frame/window_class.h"
#include "imaging/dib_win.h"
#include "server/class_factory.h"
#include "server/registration.h"

using kestrelon::RegistrationScope;

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID process_ends) {
  if (reason == DLL_PROCESS_ATTACH) {
    DisableThreadLibraryCalls(instance);
    kestrelon::IsNtPlatform();  // cached before the first control exists
    kestrelon::start_imaging();
  } else if (reason == DLL_PROCESS_DETACH && process_ends == nullptr) {
    kestrelon::unregister_window_classes();
  }
  return TRUE;
}

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, LPVOID* out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  const kestrelon::ServerClass* const entry = kestrelon::find_class(clsid);
  if (entry == nullptr) return CLASS_E_CLASSNOTAVAILABLE;
  return kestrelon::guarded(iid, [&] {
    kestrelon::ComPtr<IClassFactory> factory;
    factory.attach(kestrelon::make_class_factory(*entry));
    return factory->QueryInterface(iid, out);
  });
}

STDAPI DllCanUnloadNow() {
  if (kestrelon::module_locks() != 0) return S_FALSE;
  kestrelon::release_type_infos();
  return S_OK;
}

STDAPI DllRegisterServer() {
  return kestrelon::guarded(IID_NULL,
                            [] { return kestrelon::register_server(RegistrationScope::kMachine); });
}

STDAPI DllUnregisterServer() {
  return kestrelon::guarded(
      IID_NULL, [] { return kestrelon::unregister_server(RegistrationScope::kMachine); });
}

STDAPI DllInstall(BOOL install, LPCWSTR command_line) {
  const bool user = command_line != nullptr && std::wstring_view(command_line) == L"user";
  const auto scope = user ? RegistrationScope::kUser : RegistrationScope::kMachine;
  return kestrelon::guarded(IID_NULL, [&] {
    return install ? kestrelon::register_server(scope) : kestrelon::unregister_server(scope);
  });
}
