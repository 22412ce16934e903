// What ends a popup, watched without the help of container or message loop.
#pragma once

#include <windows.h>

#include "frame/private_timer.h"
#include "frame/self_sub.h"

namespace kestrelon {

enum class PopupEnd {
  kPressOutside,
  kProgramLeft,  ///< another window was activated
  kControlMoved,
  kControlGone,  ///< hidden, disabled or destroyed
  kReplaced,     ///< another popup of the thread opened
};

class PopupWatcher {
 public:
  virtual HWND popup_window() const = 0;
  virtual void end(PopupEnd why) = 0;

 protected:
  ~PopupWatcher() = default;
};

/// Listens to presses anywhere in the thread, to the control's top-level window, and looks after
/// the control ten times a second, since windows between the two may move or hide unheard.
class PopupWatch final : private SelfSubOwner {
 public:
  explicit PopupWatch(PopupWatcher& watcher) : watcher_(watcher) {}
  ~PopupWatch() { stop(); }
  PopupWatch(const PopupWatch&) = delete;
  PopupWatch& operator=(const PopupWatch&) = delete;

  void start(HWND control);
  void stop();
  bool running() const { return control_ != nullptr; }
  /// The popup open on this thread, null for none.
  static PopupWatch* current();
  /// To be told by a control's frame: its window is hidden, disabled or about to be destroyed.
  static void control_gone(HWND window);
  void end(PopupEnd why) { watcher_.end(why); }

 private:
  static LRESULT CALLBACK mouse_hook(int code, WPARAM wparam, LPARAM lparam);
  void WindowProcHook(bool before, bool& handled, LRESULT& result, HWND window, UINT message,
                      WPARAM wparam, LPARAM lparam, LPARAM user) override;
  void look();
  bool is_outside(HWND window) const;

  PopupWatcher& watcher_;
  HWND control_ = nullptr;
  RECT place_{};  // the control's when the popup opened; screen
  HHOOK hook_ = nullptr;
  cSelfSub top_level_;
  PrivateTimer timer_;
};

}  // namespace kestrelon
