// What the system tells top-level windows only, for a control that is none.
#pragma once

#include <windows.h>

#include <functional>
#include <utility>

namespace kestrelon {

/// Owns a hidden top-level window. Lives on the thread that made it.
class SystemWatch {
 public:
  enum class News {
    kTime,         ///< the clock was set, or the machine woke from sleep
    kActivated,    ///< this program came to the front
    kDeactivated,  ///< another one did
  };

  SystemWatch() = default;
  SystemWatch(const SystemWatch&) = delete;
  SystemWatch& operator=(const SystemWatch&) = delete;
  ~SystemWatch() { stop(); }

  void start(std::function<void(News)> heard);
  void stop();

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

  HWND window_ = nullptr;
  std::function<void(News)> heard_;
};

/// Whether a window of this process is in front.
bool program_is_active();

}  // namespace kestrelon
