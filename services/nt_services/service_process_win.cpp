#include "services/nt_services/service_process_win.h"

#include <winsvc.h>

#include <vector>

#include "services/nt_services/service_text.h"

namespace kestrelon::service_process {
namespace {

constexpr DWORD kBeat = 1000;      // milliseconds between two signs of life in a pending state
constexpr DWORD kWaitHint = 5000;  // milliseconds until the next one at the latest

// Never destroyed: the manager's threads may still be here when the process ends.
struct Service {
  SRWLOCK lock = SRWLOCK_INIT;
  std::wstring name, arguments;
  ServicePhase phase;
  uint32_t exit_code = 0;
  SERVICE_STATUS_HANDLE handle = nullptr;
  HWND listener = nullptr;  // null while no service runs
  HANDLE entered = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  HANDLE stopped = CreateEventW(nullptr, FALSE, FALSE, nullptr);
};

Service& service() {
  static Service& one = *new Service;
  return one;
}

class Locked {
 public:
  Locked() { AcquireSRWLockExclusive(&service().lock); }
  ~Locked() { ReleaseSRWLockExclusive(&service().lock); }
  Locked(const Locked&) = delete;
  Locked& operator=(const Locked&) = delete;
};

// Tells the manager the present state; within the lock, so that states arrive in their order.
void report() {
  Service& one = service();
  SERVICE_STATUS status{};
  status.dwServiceType = SERVICE_WIN32_OWN_PROCESS;
  status.dwCurrentState = static_cast<DWORD>(one.phase.state());
  status.dwControlsAccepted = one.phase.accepted();
  status.dwCheckPoint = one.phase.checkpoint();
  status.dwWaitHint = is_pending(one.phase.state()) ? kWaitHint : 0;
  if (one.exit_code != 0) {
    status.dwWin32ExitCode = ERROR_SERVICE_SPECIFIC_ERROR;
    status.dwServiceSpecificExitCode = one.exit_code;
  }
  SetServiceStatus(one.handle, &status);
}

void post(ServiceOrder order) {
  PostMessageW(service().listener, kOrderMessage, static_cast<WPARAM>(order), 0);
}

// The state has changed; what has stopped gives the place free.
void changed() {
  report();
  if (service().phase.state() != ServiceState::kStopped) return;
  service().listener = nullptr;
  SetEvent(service().stopped);
}

DWORD WINAPI on_order(DWORD control, DWORD, void*, void*) {
  const Locked locked;
  const auto order = static_cast<ServiceOrder>(control);
  if (order == ServiceOrder::kInterrogate) return NO_ERROR;
  if (service().listener == nullptr || !service().phase.take(order))
    return ERROR_CALL_NOT_IMPLEMENTED;
  report();
  post(order);
  return NO_ERROR;
}

bool enter(DWORD count, wchar_t** texts) {
  const Locked locked;
  Service& one = service();
  one.handle = RegisterServiceCtrlHandlerExW(one.name.c_str(), on_order, nullptr);
  if (one.handle == nullptr) return false;
  std::vector<std::wstring> given;
  for (DWORD i = 1; i < count; ++i) given.emplace_back(texts[i]);
  one.arguments = join_arguments(given);
  one.phase.begin();
  report();
  post(ServiceOrder::kInterrogate);
  SetEvent(one.entered);
  return true;
}

void WINAPI service_main(DWORD count, wchar_t** texts) {
  if (!enter(count, texts)) return;
  while (WaitForSingleObject(service().stopped, kBeat) == WAIT_TIMEOUT) {
    const Locked locked;
    if (service().phase.beat()) report();
  }
}

DWORD WINAPI dispatch(void*) {
  const SERVICE_TABLE_ENTRYW table[] = {{service().name.data(), service_main}, {nullptr, nullptr}};
  return StartServiceCtrlDispatcherW(table) ? NO_ERROR : GetLastError();
}

// Takes the place of the one service.
bool claim(const std::wstring& name, HWND listener) {
  const Locked locked;
  Service& one = service();
  if (one.listener != nullptr) return false;
  one.name = name;
  one.listener = listener;
  one.exit_code = 0;
  ResetEvent(one.entered);
  ResetEvent(one.stopped);
  return true;
}

}  // namespace

uint32_t run(const std::wstring& name, HWND listener) {
  if (!claim(name, listener)) return ERROR_SERVICE_ALREADY_RUNNING;
  // The manager's threads return through this code whenever they please.
  HMODULE self = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                     reinterpret_cast<LPCWSTR>(&dispatch), &self);
  const HANDLE thread = CreateThread(nullptr, 0, dispatch, nullptr, 0, nullptr);
  DWORD code = thread == nullptr ? GetLastError() : NO_ERROR;
  if (thread != nullptr) {
    const HANDLE either[] = {service().entered, thread};
    if (WaitForMultipleObjects(2, either, FALSE, INFINITE) != WAIT_OBJECT_0) {
      GetExitCodeThread(thread, &code);
      if (code == NO_ERROR) code = ERROR_SERVICE_START_HANG;
    }
    CloseHandle(thread);
  }
  if (code == NO_ERROR) return 0;
  const Locked locked;
  service().listener = nullptr;
  return code;
}

std::wstring arguments() {
  const Locked locked;
  return service().arguments;
}

void done(ServiceOrder order) {
  const Locked locked;
  if (service().listener == nullptr) return;
  service().phase.done(order);
  changed();
}

void stop(uint32_t code) {
  const Locked locked;
  if (service().listener == nullptr) return;
  service().exit_code = code;
  service().phase.stop();
  changed();
}

}  // namespace kestrelon::service_process
