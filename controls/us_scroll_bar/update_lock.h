// Holds a window's drawing back while its parts change.
#pragma once

#include <windows.h>

namespace kestrelon {

/// One window of the system can be locked at a time: where somebody else's is, this does nothing.
class UpdateLock {
 public:
  explicit UpdateLock(HWND window)
      : locked_(window != nullptr && LockWindowUpdate(window) != FALSE) {}
  ~UpdateLock() {
    if (locked_) LockWindowUpdate(nullptr);
  }
  UpdateLock(const UpdateLock&) = delete;
  UpdateLock& operator=(const UpdateLock&) = delete;

 private:
  bool locked_;
};

}  // namespace kestrelon
