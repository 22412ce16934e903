#include "frame/sub_class.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/com_win.h"
#include "frame/window_procedure.h"

namespace kestrelon {
namespace {

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

[[noreturn]] void raise(int number, const wchar_t* text) {
  throw ComError(numbered_error(number), text, L".WindowProc");
}

// The state of one window lies in its properties: the former procedure, a number of clients for
// each message and in all, and the clients themselves.
class Attachments {
 public:
  explicit Attachments(HWND window) : window_(window) {}

  WNDPROC former() const {
    return reinterpret_cast<WNDPROC>(
        reinterpret_cast<LONG_PTR>(GetPropA(window_, window_key().c_str())));
  }
  bool set_former(WNDPROC procedure_before) {
    return put(window_key(), reinterpret_cast<LONG_PTR>(procedure_before));
  }
  void forget_former() { RemovePropA(window_, window_key().c_str()); }

  size_t total() const { return static_cast<size_t>(get(kTotal)); }
  std::vector<ISubclass*> clients(UINT message) const {
    std::vector<ISubclass*> out(static_cast<size_t>(get(count_key(message))));
    for (size_t i = 0; i < out.size(); ++i)
      out[i] = reinterpret_cast<ISubclass*>(get(client_key(message, i)));
    return out;
  }
  bool holds(UINT message, const ISubclass* client) const {
    const auto all = clients(message);
    return std::find(all.begin(), all.end(), client) != all.end();
  }

  bool add(UINT message, ISubclass* client) {
    const LONG_PTR count = get(count_key(message));
    if (!put(client_key(message, static_cast<size_t>(count)), reinterpret_cast<LONG_PTR>(client)))
      return false;
    return put(count_key(message), count + 1) && put(kTotal, get(kTotal) + 1);
  }
  void remove(UINT message, const ISubclass* client) {
    std::vector<ISubclass*> left = clients(message);
    std::erase(left, client);
    for (size_t i = 0; i < left.size(); ++i)
      put(client_key(message, i), reinterpret_cast<LONG_PTR>(left[i]));
    RemovePropA(window_, client_key(message, left.size()).c_str());
    put(count_key(message), static_cast<LONG_PTR>(left.size()));
    put(kTotal, get(kTotal) - 1);
  }
  // For a window on its way out.
  void remove_all() {
    std::vector<std::string> keys;
    EnumPropsExA(window_, collect_own, reinterpret_cast<LPARAM>(&keys));
    for (const std::string& key : keys) RemovePropA(window_, key.c_str());
    forget_former();
  }

 private:
  static constexpr char kTotal[] = "C";

  std::string window_key() const { return std::to_string(reinterpret_cast<LONG_PTR>(window_)); }
  static std::string count_key(UINT message) { return "C" + std::to_string(message); }
  static std::string client_key(UINT message, size_t index) {
    return "#" + std::to_string(message) + "." + std::to_string(index);
  }
  static BOOL CALLBACK collect_own(HWND, LPSTR key, HANDLE, ULONG_PTR out) {
    if (IS_INTRESOURCE(key)) return TRUE;
    const std::string text = key;
    const bool own = (text[0] == 'C' || text[0] == '#') &&
                     text.find_first_not_of("0123456789.", 1) == std::string::npos;
    if (own) reinterpret_cast<std::vector<std::string>*>(out)->push_back(text);
    return TRUE;
  }

  LONG_PTR get(const std::string& key) const {
    return reinterpret_cast<LONG_PTR>(GetPropA(window_, key.c_str()));
  }
  // A property of 0 is no property.
  bool put(const std::string& key, LONG_PTR value) {
    if (value != 0) return SetPropA(window_, key.c_str(), reinterpret_cast<HANDLE>(value)) != 0;
    RemovePropA(window_, key.c_str());
    return true;
  }

  HWND window_;
};

// The last client's farewell. A procedure that has to stay finds its way on by the property.
void restore(HWND window, Attachments& attachments) {
  if (withdraw_procedure(window, procedure, attachments.former())) attachments.forget_former();
}

// The clients of one kind, in the order of attachment. One that an earlier client detached is
// passed over.
class ClientCalls {
 public:
  ClientCalls(HWND window, UINT message, WPARAM wparam, LPARAM lparam)
      : window_(window), message_(message), wparam_(wparam), lparam_(lparam) {
    for (ISubclass* const client : Attachments(window).clients(message))
      calls_.push_back({client, client->MsgResponse()});
  }
  bool any(eMsgResponse response) const {
    return std::any_of(calls_.begin(), calls_.end(),
                       [&](const Call& call) { return call.response == response; });
  }
  // True when a client that was to go before has consumed the message instead.
  bool run(eMsgResponse response, LRESULT& answer) const {
    bool consumed = false;
    for (const Call& call : calls_) {
      if (call.response != response || !Attachments(window_).holds(message_, call.client)) continue;
      try {
        const LRESULT given = call.client->WindowProc(window_, message_, wparam_, lparam_);
        if (response != eMsgResponse::kBefore) {
          answer = given;
        } else if (took_over(call.client)) {
          consumed = true;
          answer = given;
        }
      } catch (...) {  // a failing client does not keep the message from the others
      }
    }
    return consumed;
  }

 private:
  // Whether a client, unless it is gone, has set kConsume for the message it was called with.
  bool took_over(ISubclass* client) const {
    if (!Attachments(window_).holds(message_, client) ||
        client->MsgResponse() != eMsgResponse::kConsume)
      return false;
    client->set_MsgResponse(eMsgResponse::kBefore);
    return true;
  }

  struct Call {
    ISubclass* client;
    eMsgResponse response;
  };
  HWND window_;
  UINT message_;
  WPARAM wparam_;
  LPARAM lparam_;
  std::vector<Call> calls_;
};

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  const WNDPROC former = Attachments(window).former();
  if (former == nullptr) return DefWindowProcW(window, message, wparam, lparam);
  LRESULT answer = 0;
  try {
    const ClientCalls calls(window, message, wparam, lparam);
    const bool consumed = calls.run(eMsgResponse::kBefore, answer);
    if (calls.any(eMsgResponse::kConsume))
      calls.run(eMsgResponse::kConsume, answer);
    else if (!consumed && IsWindow(window))
      answer = call_procedure(former, window, message, wparam, lparam);
    calls.run(eMsgResponse::kAfter, answer);
    if (message == WM_NCDESTROY) Attachments(window).remove_all();
  } catch (...) {  // out of memory; no exception may cross a window procedure
  }
  return answer;
}

}  // namespace

void AttachMessage(ISubclass* client, HWND hWnd, UINT uMsg) {
  if (client == nullptr) throw ComError(E_POINTER);
  if (!IsWindow(hWnd)) raise(kInvalidWindow, L"Invalid window");
  DWORD process = 0;
  GetWindowThreadProcessId(hWnd, &process);
  if (process != GetCurrentProcessId())
    raise(kForeignWindow, L"The window belongs to another process");
  Attachments attachments(hWnd);
  if (attachments.holds(uMsg, client))
    raise(kAlreadyAttached, L"Message already handled by another class");
  if (attachments.former() == nullptr) {
    const WNDPROC former = window_procedure(hWnd);
    // Stored first: messages may come as soon as the procedure is in place.
    if (former == nullptr || !attachments.set_former(former) ||
        replace_procedure(hWnd, procedure) == nullptr) {
      attachments.forget_former();
      raise(kCannotSubclass, L"The window cannot be subclassed");
    }
  }
  if (attachments.add(uMsg, client)) return;
  if (attachments.total() == 0) restore(hWnd, attachments);
  throw ComError(E_OUTOFMEMORY);
}

void DetachMessage(ISubclass* client, HWND hWnd, UINT uMsg) {
  if (!IsWindow(hWnd)) return;
  Attachments attachments(hWnd);
  if (!attachments.holds(uMsg, client)) return;
  attachments.remove(uMsg, client);
  if (attachments.total() == 0) restore(hWnd, attachments);
}

}  // namespace kestrelon
