// A window of the system inside a control: an edit box, for one. The user takes it for a part of
// the control, so keys, mouse, focus and hover of it are the control's own.
#pragma once

#include <windows.h>

#include "base/automation_win.h"

namespace kestrelon {

/// What an inner window needs of the control it is in; implemented by ControlFrame. Everything here
/// may end in a handler of the host's, which may do anything; the caller holds the control.
class InnerWindowHost {
 public:
  virtual HWND host_window() const = 0;
  virtual AutomationObject& host_object() = 0;
  virtual void inner_added(class InnerWindow& window) = 0;
  virtual void inner_removed(class InnerWindow& window) = 0;
  /// The focus has come to an inner window or gone from it to `other`.
  virtual void inner_focus(bool gained, HWND other) = 0;
  /// A key message before the window has it, as the control's own. What handlers make of the key
  /// is left in `wparam`; false when it is not to reach the window.
  virtual bool inner_key(UINT message, WPARAM& wparam) = 0;
  /// A mouse message, its point in pixels of the control.
  virtual void inner_mouse(UINT message, WPARAM wparam, POINT point) = 0;
  /// Whether the control keeps a key for itself that dialogs would take.
  virtual bool inner_wants_key(int key) = 0;

 protected:
  ~InnerWindowHost() = default;
};

/// Owns the window. Derived classes say what kind it is and what they listen to.
class InnerWindow {
 public:
  explicit InnerWindow(InnerWindowHost& host) : host_(host) {}
  virtual ~InnerWindow() { destroy(); }
  InnerWindow(const InnerWindow&) = delete;
  InnerWindow& operator=(const InnerWindow&) = delete;

  void destroy();
  HWND hwnd() const { return window_; }
  bool has_focus() const { return window_ != nullptr && GetFocus() == window_; }
  /// In pixels of the control.
  void move(const RECT& place);
  void show(bool visible);
  void enable(bool enabled);

  /// Messages that the system sends to the parent, handed back; see ControlFrame.
  virtual void command(UINT /*code*/) {}
  virtual LRESULT notify(NMHDR& /*header*/) { return 0; }
  /// A brush for the background, colours set in the context; null for the system's own.
  virtual HBRUSH colors(HDC) { return nullptr; }

 protected:
  /// Makes the window in the control's; false without one or when the system refuses.
  bool create(const wchar_t* window_class, DWORD style, DWORD extended_style, const RECT& place);
  /// First look at a message; true when `result` is the answer.
  virtual bool message(UINT, WPARAM, LPARAM, LRESULT& /*result*/) { return false; }
  /// The window's own work on a message.
  LRESULT call_former(UINT message, WPARAM wparam, LPARAM lparam);
  InnerWindowHost& host() const { return host_; }

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT handle(UINT message, WPARAM wparam, LPARAM lparam);
  bool as_controls_own(UINT message, WPARAM& wparam, LPARAM lparam, LRESULT& result);

  InnerWindowHost& host_;
  HWND window_ = nullptr;
  WNDPROC former_ = nullptr;
};

}  // namespace kestrelon
