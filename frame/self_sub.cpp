#include "frame/self_sub.h"

#include <algorithm>

#include "frame/window_procedure.h"

namespace kestrelon {
namespace {

// A set of messages, or all of them.
class MessageSet {
 public:
  bool holds(UINT message) const {
    return all_ || std::find(messages_.begin(), messages_.end(), message) != messages_.end();
  }
  void add(UINT message) {
    if (message == ALL_MESSAGES)
      all_ = true;
    else if (!holds(message))
      messages_.push_back(message);
  }
  void remove(UINT message) {
    if (message == ALL_MESSAGES) {
      all_ = false;
      messages_.clear();
    } else {
      std::erase(messages_, message);
    }
  }

 private:
  bool all_ = false;
  std::vector<UINT> messages_;
};

}  // namespace

// One window that one object listens to. A running call keeps it alive when all others have let go.
struct cSelfSub::Hook {
  cSelfSub* listener = nullptr;  // null once the listening has ended
  SelfSubOwner* owner = nullptr;
  HWND window = nullptr;
  LPARAM user = 0;
  MessageSet before, after;

  void call(bool is_before, bool& handled, LRESULT& answer, UINT message, WPARAM wparam,
            LPARAM lparam) const {
    try {
      owner->WindowProcHook(is_before, handled, answer, window, message, wparam, lparam, user);
    } catch (...) {  // no exception may cross a window procedure
    }
  }
};

// All listeners of one window behind one procedure. Hangs at the window by a property that owns it.
struct cSelfSub::Chain : std::enable_shared_from_this<Chain> {
  using Hooks = std::vector<std::shared_ptr<Hook>>;

  HWND window = nullptr;
  WNDPROC former = nullptr;
  Hooks hooks;                      // the newest last
  std::shared_ptr<Chain> property;  // itself, for as long as the window names it

  static std::shared_ptr<Chain> of(HWND window) {
    auto* const chain = static_cast<Chain*>(GetPropW(window, kProperty));
    return chain == nullptr ? nullptr : chain->shared_from_this();
  }
  static std::shared_ptr<Chain> install(HWND window) {
    const auto chain = std::make_shared<Chain>();
    chain->window = window;
    chain->former = window_procedure(window);
    if (!SetPropW(window, kProperty, chain.get())) return nullptr;
    chain->property = chain;
    if (replace_procedure(window, procedure) != nullptr) return chain;
    chain->forget();
    return nullptr;
  }
  void remove(const std::shared_ptr<Hook>& hook) {
    std::erase(hooks, hook);
    if (hooks.empty() && withdraw_procedure(window, procedure, former)) forget();
  }
  void forget() {
    RemovePropW(window, kProperty);
    property.reset();
  }

  // The message through the first `count` of these hooks, from the newest inwards, and the window
  // itself.
  LRESULT pass_on(const Hooks& all, size_t count, UINT message, WPARAM wparam,
                  LPARAM lparam) const {
    if (count == 0)  // a callback may have destroyed the window
      return IsWindow(window) ? call_procedure(former, window, message, wparam, lparam) : 0;
    const Hook& hook = *all[count - 1];
    bool handled = false;
    LRESULT answer = 0;
    if (hook.listener != nullptr && hook.before.holds(message))
      hook.call(true, handled, answer, message, wparam, lparam);
    if (handled) return answer;
    answer = pass_on(all, count - 1, message, wparam, lparam);
    if (hook.listener != nullptr && hook.after.holds(message))
      hook.call(false, handled, answer, message, wparam, lparam);
    return answer;
  }

  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    const std::shared_ptr<Chain> chain = of(window);
    if (chain == nullptr) return DefWindowProcW(window, message, wparam, lparam);
    const Hooks hooks = chain->hooks;
    const LRESULT answer = chain->pass_on(hooks, hooks.size(), message, wparam, lparam);
    if (message == WM_NCDESTROY && chain->property != nullptr) {
      chain->forget();  // first, so that nobody gives a dying window its procedure back
      for (const auto& hook : Hooks(chain->hooks))
        if (hook->listener != nullptr) hook->listener->sc_UnSubclass(window);
    }
    return answer;
  }

 private:
  static constexpr wchar_t kProperty[] = L"Kestrelon2012.cSelfSub";
};

bool cSelfSub::sc_Subclass(HWND lng_hWnd, LPARAM lParamUser, int, SelfSubOwner* oCallback, bool) {
  DWORD process = 0;
  if (!IsWindow(lng_hWnd) || find(lng_hWnd) != nullptr) return false;
  const DWORD thread = GetWindowThreadProcessId(lng_hWnd, &process);
  if (process != GetCurrentProcessId() || thread != GetCurrentThreadId()) return false;
  std::shared_ptr<Chain> chain = Chain::of(lng_hWnd);
  if (chain == nullptr) chain = Chain::install(lng_hWnd);
  if (chain == nullptr) return false;
  const auto hook = std::make_shared<Hook>();
  hook->listener = this;
  hook->owner = oCallback == nullptr ? this : oCallback;
  hook->window = lng_hWnd;
  hook->user = lParamUser;
  hooks_.push_back(hook);
  chain->hooks.push_back(hook);
  return true;
}

void cSelfSub::sc_UnSubclass(HWND lng_hWnd) {
  const std::shared_ptr<Hook> hook = find(lng_hWnd);
  if (hook == nullptr) return;
  hook->listener = nullptr;
  std::erase(hooks_, hook);
  if (const auto chain = Chain::of(lng_hWnd)) chain->remove(hook);
}

void cSelfSub::sc_Terminate() {
  while (!hooks_.empty()) sc_UnSubclass(hooks_.back()->window);
}

void cSelfSub::sc_AddMsg(HWND lng_hWnd, UINT uMsg, eMsgWhen When) {
  const std::shared_ptr<Hook> hook = find(lng_hWnd);
  if (hook == nullptr) return;
  if (When & MSG_BEFORE) hook->before.add(uMsg);
  if (When & MSG_AFTER) hook->after.add(uMsg);
}

void cSelfSub::sc_DelMsg(HWND lng_hWnd, UINT uMsg, eMsgWhen When) {
  const std::shared_ptr<Hook> hook = find(lng_hWnd);
  if (hook == nullptr) return;
  if (When & MSG_BEFORE) hook->before.remove(uMsg);
  if (When & MSG_AFTER) hook->after.remove(uMsg);
}

std::shared_ptr<cSelfSub::Hook> cSelfSub::find(HWND window) const {
  for (const auto& hook : hooks_)
    if (hook->window == window) return hook;
  return nullptr;
}

}  // namespace kestrelon
