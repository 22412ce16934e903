#include "chrome/us_status_bar/system_watch.h"

#include <optional>

#include "frame/window_class.h"

namespace kestrelon {
namespace {

std::optional<SystemWatch::News> news_of(UINT message, WPARAM wparam) {
  using News = SystemWatch::News;
  const bool woke = message == WM_POWERBROADCAST &&
                    (wparam == PBT_APMRESUMEAUTOMATIC || wparam == PBT_APMRESUMESUSPEND);
  if (message == WM_TIMECHANGE || woke) return News::kTime;
  if (message == WM_ACTIVATEAPP) return wparam != 0 ? News::kActivated : News::kDeactivated;
  return {};
}

}  // namespace

void SystemWatch::start(std::function<void(News)> heard) {
  heard_ = std::move(heard);
  if (window_ != nullptr) return;
  const ATOM name = window_class(L"Kestrelon2012.SystemWatch", procedure, 0);
  if (name == 0) return;
  window_ = CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, MAKEINTATOM(name), nullptr,
                            WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
  if (window_ != nullptr)
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

void SystemWatch::stop() {
  if (window_ == nullptr) return;
  SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
  DestroyWindow(std::exchange(window_, nullptr));
}

LRESULT CALLBACK SystemWatch::procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* const watch = reinterpret_cast<SystemWatch*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  const auto news = news_of(message, wparam);
  if (watch == nullptr || !news) return DefWindowProcW(window, message, wparam, lparam);
  try {
    const auto heard = watch->heard_;  // a copy: the call may end the watch
    heard(*news);
  } catch (...) {
    return 0;
  }
  return 0;
}

bool program_is_active() {
  DWORD process = 0;
  GetWindowThreadProcessId(GetForegroundWindow(), &process);
  return process == GetCurrentProcessId();
}

}  // namespace kestrelon
