#include "frame/cross_comm.h"

#include <algorithm>

namespace kestrelon {
namespace {

constexpr char kWindowTitle[] = "GDI+Safe Patch";
constexpr UINT_PTR kShutDownTimer = 1;
constexpr UINT kShutDownDelay = 1000;  // milliseconds

// What GdiplusStartup takes, version 1.
struct StartupInput {
  UINT32 version = 1;
  void* debug_callback = nullptr;
  BOOL suppress_background_thread = FALSE;
  BOOL suppress_external_codecs = FALSE;
};
using Startup = int(WINAPI*)(ULONG_PTR* token, const StartupInput* input, void* output);
using Shutdown = void(WINAPI*)(ULONG_PTR token);

template <class Function>
Function find_export(HMODULE library, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

}  // namespace

cCrossComm& cCrossComm::instance() {
  static cCrossComm* const shared = new cCrossComm;
  return *shared;
}

ULONG_PTR cCrossComm::ManageGDIToken(HWND window) {
  if (token_ == 0) start_library();
  if (token_ != 0 && window_ == nullptr)
    make_window(IsWindow(window) ? GetAncestor(window, GA_ROOT) : HWND_MESSAGE);
  return token_;
}

void cCrossComm::AddRef(HWND client) {
  const auto place = std::lower_bound(clients_.begin(), clients_.end(), client);
  if (place == clients_.end() || *place != client) clients_.insert(place, client);
  if (window_ != nullptr) KillTimer(window_, kShutDownTimer);
  ManageGDIToken(client);
}

void cCrossComm::RemoveRef(HWND client) {
  const auto place = std::lower_bound(clients_.begin(), clients_.end(), client);
  if (place == clients_.end() || *place != client) return;
  clients_.erase(place);
  if (!clients_.empty() || token_ == 0) return;
  // The window may have gone with its form.
  if (window_ == nullptr) make_window(HWND_MESSAGE);
  if (window_ == nullptr || SetTimer(window_, kShutDownTimer, kShutDownDelay, nullptr) == 0)
    shut_down();
}

void cCrossComm::set_CapturedControl(ICrossComm* control) {
  ICrossComm* const before = captured_;
  captured_ = control;
  if (before != nullptr && before != control && control != nullptr) before->ReleaseMouseCapture();
}

void cCrossComm::start_library() {
  library_ = LoadLibraryW(L"gdiplus.dll");
  if (library_ == nullptr) return;
  const auto start = find_export<Startup>(library_, "GdiplusStartup");
  const StartupInput input;
  if (start != nullptr && start(&token_, &input, nullptr) == 0 && token_ != 0) {
    if (!lock_) lock_.emplace();
    return;
  }
  token_ = 0;
  FreeLibrary(library_);
  library_ = nullptr;
}

void cCrossComm::shut_down() {
  if (token_ != 0) {
    if (const auto stop = find_export<Shutdown>(library_, "GdiplusShutdown")) stop(token_);
    token_ = 0;
    FreeLibrary(library_);
    library_ = nullptr;
  }
  if (const HWND window = window_) {
    window_ = nullptr;
    SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(former_));
    DestroyWindow(window);
  }
  lock_.reset();
}

void cCrossComm::make_window(HWND parent) {
  window_ = CreateWindowExA(0, "Static", kWindowTitle, WS_CHILD, 0, 0, 0, 0, parent, nullptr,
                            module_instance(), nullptr);
  if (window_ == nullptr) return;
  former_ = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrA(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&procedure)));
}

LRESULT CALLBACK cCrossComm::procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  cCrossComm& shared = instance();
  if (message == WM_TIMER && wparam == kShutDownTimer) {
    KillTimer(window, kShutDownTimer);
    if (shared.clients_.empty()) shared.shut_down();
    return 0;
  }
  const WNDPROC former = shared.former_;
  if (message == WM_NCDESTROY && window == shared.window_) {
    // The form goes; the token stays for the clients of others, or until its time is up.
    shared.make_window(HWND_MESSAGE);
    if (shared.clients_.empty()) SetTimer(shared.window_, kShutDownTimer, kShutDownDelay, nullptr);
  }
  return CallWindowProcA(former, window, message, wparam, lparam);
}

}  // namespace kestrelon
