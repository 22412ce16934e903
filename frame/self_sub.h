// `cSelfSub`: messages of other windows, before or after their own procedure has seen them.
#pragma once

#include <windows.h>

#include <memory>
#include <vector>

namespace kestrelon {

enum eMsgWhen { MSG_BEFORE = 1, MSG_AFTER = 2, MSG_BEFORE_AFTER = 3 };

/// Stands for every message.
inline constexpr UINT ALL_MESSAGES = static_cast<UINT>(-1);

/// Who is told of the messages.
class SelfSubOwner {
 public:
  /// Called before the former procedure, where setting bHandled keeps the message from it and
  /// lReturn is the answer; or after it, where lReturn holds its answer and may be changed.
  /// Anything may be done here, destroying the window, the cSelfSub or the owner included. What it
  /// throws is dropped.
  virtual void WindowProcHook(bool bBefore, bool& bHandled, LRESULT& lReturn, HWND lng_hWnd,
                              UINT uMsg, WPARAM wParam, LPARAM lParam, LPARAM lParamUser) = 0;

 protected:
  ~SelfSubOwner() = default;
};

/// Listens to any number of windows of this process, on the thread that owns them. Goes on working,
/// and lets go cleanly in any order, when others subclass the same windows before or after it. A
/// window that dies is forgotten. Derive and override WindowProcHook to be one's own owner.
class cSelfSub : public SelfSubOwner {
 public:
  cSelfSub() = default;
  cSelfSub(const cSelfSub&) = delete;
  cSelfSub& operator=(const cSelfSub&) = delete;
  virtual ~cSelfSub() { sc_Terminate(); }

  /// Starts listening. Nothing happens, and the answer is false, unless lng_hWnd is a window of
  /// this process and thread that this object does not listen to yet. The owner must outlive the
  /// listening; without one this object itself is called. nOrdinal and bIdeSafety are kept for
  /// their callers and have no meaning here.
  bool sc_Subclass(HWND lng_hWnd, LPARAM lParamUser = 0, int nOrdinal = 1,
                   SelfSubOwner* oCallback = nullptr, bool bIdeSafety = true);
  void sc_UnSubclass(HWND lng_hWnd);
  void sc_Terminate();
  /// Messages of windows that are not listened to are ignored.
  void sc_AddMsg(HWND lng_hWnd, UINT uMsg, eMsgWhen When = MSG_AFTER);
  void sc_DelMsg(HWND lng_hWnd, UINT uMsg, eMsgWhen When = MSG_AFTER);

  void WindowProcHook(bool, bool&, LRESULT&, HWND, UINT, WPARAM, LPARAM, LPARAM) override {}

 private:
  struct Hook;
  struct Chain;
  std::shared_ptr<Hook> find(HWND window) const;

  std::vector<std::shared_ptr<Hook>> hooks_;
};

}  // namespace kestrelon
