// A timer that belongs to one object and needs no window of that object's.
#pragma once

#include <windows.h>

#include <functional>

namespace kestrelon {

/// Runs a function at intervals on the thread that started it, from that thread's message loop. As
/// every timer of the system it yields to input and drawing: missed intervals are not made up for.
class PrivateTimer {
 public:
  PrivateTimer() = default;
  PrivateTimer(const PrivateTimer&) = delete;
  PrivateTimer& operator=(const PrivateTimer&) = delete;
  ~PrivateTimer();

  /// Starts, or starts anew with another interval (milliseconds, at least 1) and function. `tick`
  /// may do anything, stopping or destroying the timer included; what it throws is dropped. False
  /// when the system has no timer left.
  bool start(UINT milliseconds, std::function<void()> tick);
  /// No tick comes after this, not even one that was due.
  void stop();
  bool running() const { return running_; }

 private:
  bool make_window();
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

  HWND window_ = nullptr;  // takes messages only; kept between runs
  std::function<void()> tick_;
  bool running_ = false;
};

}  // namespace kestrelon
