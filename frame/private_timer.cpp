#include "frame/private_timer.h"

namespace kestrelon {
namespace {

constexpr UINT_PTR kTimer = 1;

}  // namespace

PrivateTimer::~PrivateTimer() {
  if (window_ == nullptr) return;
  SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
  DestroyWindow(window_);
}

bool PrivateTimer::make_window() {
  if (window_ != nullptr) return true;
  window_ = CreateWindowExW(0, L"Static", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr,
                            nullptr);
  if (window_ == nullptr) return false;
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
  return true;
}

bool PrivateTimer::start(UINT milliseconds, std::function<void()> tick) {
  tick_ = std::move(tick);
  running_ = make_window() && SetTimer(window_, kTimer, milliseconds, nullptr) != 0;
  return running_;
}

void PrivateTimer::stop() {
  if (!running_) return;
  running_ = false;
  KillTimer(window_, kTimer);
}

LRESULT CALLBACK PrivateTimer::procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* const timer = reinterpret_cast<PrivateTimer*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (message != WM_TIMER || timer == nullptr || !timer->running_)
    return DefWindowProcW(window, message, wparam, lparam);
  try {
    const auto tick = timer->tick_;  // a copy: the call may replace or end the timer
    tick();
  } catch (...) {
    return 0;
  }
  return 0;
}

}  // namespace kestrelon
