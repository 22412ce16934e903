// `cCrossComm`: keeps the graphics library started for as long as any control of the process needs
// it.
#pragma once

#include <windows.h>

#include <optional>
#include <vector>

#include "base/module_win.h"

namespace kestrelon {

class cCrossComm;

/// A control that takes part.
class ICrossComm {
 public:
  /// Asks the control that holds the mouse to let go of it.
  virtual void ReleaseMouseCapture() = 0;
  virtual cCrossComm& CrossTalkClass() = 0;

 protected:
  ~ICrossComm() = default;
};

/// One in a process, used on the thread of the windows. The library is started with the first
/// client and shut down some time after the last has gone, whatever the order of unloading, so that
/// a form which closes while the next one loads does not restart it. The module stays loaded until
/// then.
class cCrossComm {
 public:
  static cCrossComm& instance();

  /// Starts the library if it is not running, and its hidden window below the top-level parent of
  /// `window` if there is none. Answers the token, 0 without the library.
  ULONG_PTR ManageGDIToken(HWND window);
  /// 0 while the library is not running.
  ULONG_PTR gdiToken() const { return token_; }

  /// Clients are told apart by their window; adding one twice is adding it once.
  void AddRef(HWND client);
  void RemoveRef(HWND client);

  /// The control that holds the mouse, or null. A control that takes over has the former one let
  /// go.
  ICrossComm* CapturedControl() const { return captured_; }
  void set_CapturedControl(ICrossComm* control);

 private:
  cCrossComm() = default;
  ~cCrossComm() = delete;  // outlives everything: at process end the library must not be called

  void start_library();
  void shut_down();
  void make_window(HWND parent);
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

  std::vector<HWND> clients_;  // sorted
  HMODULE library_ = nullptr;
  ULONG_PTR token_ = 0;
  HWND window_ = nullptr;
  WNDPROC former_ = nullptr;
  std::optional<ModuleLock> lock_;  // while the window needs our procedure, or the library is open
  ICrossComm* captured_ = nullptr;
};

}  // namespace kestrelon
