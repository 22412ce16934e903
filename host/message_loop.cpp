#include "host/message_loop.h"

#include <algorithm>
#include <vector>

#include "host/form.h"

namespace kestrelon::host {
namespace {

std::vector<Form*>& forms() {
  static std::vector<Form*> list;
  return list;
}

bool offered(MSG& message) {
  const std::vector<Form*> now = forms();
  for (Form* form : now) {
    if (std::find(forms().begin(), forms().end(), form) == forms().end()) continue;
    if (form->translate(message)) return true;
  }
  return false;
}

}  // namespace

void register_form(Form& form) {
  forms().push_back(&form);
}
void unregister_form(Form& form) {
  forms().erase(std::remove(forms().begin(), forms().end(), &form), forms().end());
}

void process_message(MSG& message) {
  if (offered(message)) return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

bool drain_messages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return false;
    }
    process_message(message);
  }
  return true;
}

bool pump_until(const std::function<bool()>& done, DWORD milliseconds) {
  const ULONGLONG end = GetTickCount64() + milliseconds;
  for (;;) {
    const bool running = drain_messages();
    if (done()) return true;
    const ULONGLONG now = GetTickCount64();
    if (!running || now >= end) return false;
    // A short sleep at most: `done` may depend on what no message tells.
    const DWORD wait = static_cast<DWORD>(std::min<ULONGLONG>(end - now, 10));
    MsgWaitForMultipleObjects(0, nullptr, FALSE, wait, QS_ALLINPUT);
  }
}

void pump_for(DWORD milliseconds) {
  pump_until([] { return false; }, milliseconds);
}

int run_message_loop() {
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) process_message(message);
  return static_cast<int>(message.wParam);
}

}  // namespace kestrelon::host
