#include "frame/platform.h"

#include "base/com_win.h"

namespace kestrelon {
namespace {

struct SystemFacts {
  bool nt = false;
  bool before_windows7 = false;

  static SystemFacts ask() {
    OSVERSIONINFOA info = {};
    static_assert(sizeof info == 148);
    info.dwOSVersionInfoSize = sizeof info;
    SystemFacts facts;
    if (!GetVersionExA(&info)) return facts;
    facts.nt = (info.dwPlatformId & VER_PLATFORM_WIN32_NT) != 0;
    facts.before_windows7 =
        info.dwMajorVersion < 6 || (info.dwMajorVersion == 6 && info.dwMinorVersion < 1);
    return facts;
  }
};

const SystemFacts& system_facts() {
  static const SystemFacts facts = SystemFacts::ask();
  return facts;
}

using TrackFunction = BOOL(WINAPI*)(TRACKMOUSEEVENT*);

TrackFunction find_track_function() {
  if (IsFunctionExported("TrackMouseEvent", "User32"))
    return reinterpret_cast<TrackFunction>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("User32"), "TrackMouseEvent")));
  if (IsFunctionExported("_TrackMouseEvent", "Comctl32"))  // stays loaded from here on
    return reinterpret_cast<TrackFunction>(
        reinterpret_cast<void*>(GetProcAddress(LoadLibraryA("Comctl32"), "_TrackMouseEvent")));
  return nullptr;
}

}  // namespace

HWND WindowOfObject(IDispatch* object) {
  if (object == nullptr) return nullptr;
  wchar_t hwnd[] = L"hWnd";
  LPOLESTR names = hwnd;
  DISPID id = DISPID_UNKNOWN;
  if (FAILED(object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id))) return nullptr;
  DISPPARAMS nothing = {};
  Variant value;
  if (FAILED(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &nothing,
                            &value, nullptr, nullptr)) ||
      !value.change(VT_I8))
    return nullptr;
  // A Long holds all of a handle: the rest is its sign.
  return reinterpret_cast<HWND>(static_cast<LONG_PTR>(V_I8(&value)));
}

bool IsNtPlatform() {
  return system_facts().nt;
}

bool IsBeforeWindows7() {
  return system_facts().before_windows7;
}

bool IsFunctionExported(const char* name, const char* library) {
  if (name == nullptr || library == nullptr) return false;
  HMODULE module = GetModuleHandleA(library);
  const bool loaded_here = module == nullptr;
  if (loaded_here) module = LoadLibraryA(library);
  if (module == nullptr) return false;
  const bool exported = GetProcAddress(module, name) != nullptr;
  if (loaded_here) FreeLibrary(module);
  return exported;
}

void TrackMouseLeave(HWND window) {
  static const TrackFunction track = find_track_function();
  if (track == nullptr) return;
  TRACKMOUSEEVENT request = {};
  request.cbSize = sizeof request;
  request.dwFlags = TME_LEAVE;
  request.hwndTrack = window;
  track(&request);
}

void SetWindowOpacity(IDispatch* form, BYTE alpha) {
  if (!IsNtPlatform()) return;
  const HWND window = WindowOfObject(form);
  if (window == nullptr) return;
  SetWindowLongA(window, GWL_EXSTYLE, WS_EX_LAYERED);
  SetLayeredWindowAttributes(window, 0, alpha, LWA_ALPHA);
}

}  // namespace kestrelon
