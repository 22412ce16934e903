// Handles of the service manager for the time of a call.
#pragma once

#include <windows.h>
#include <winsvc.h>

#include <string>
#include <utility>

#include "services/nt_services/service_manager_win.h"

namespace kestrelon {

[[noreturn]] inline void throw_service_error() {
  throw ServiceError{GetLastError()};
}

/// A call of the manager that answers 0 for a refusal.
inline void service_check(BOOL answer) {
  if (!answer) throw_service_error();
}

class ServiceHandle {
 public:
  explicit ServiceHandle(SC_HANDLE handle) : handle_(handle) {
    if (handle_ == nullptr) throw_service_error();
  }
  ServiceHandle(ServiceHandle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  ServiceHandle& operator=(ServiceHandle&&) = delete;
  ~ServiceHandle() {
    if (handle_ != nullptr) CloseServiceHandle(handle_);
  }
  SC_HANDLE get() const { return handle_; }

 private:
  SC_HANDLE handle_;
};

inline ServiceHandle open_manager(const std::wstring& machine, DWORD access) {
  return ServiceHandle(
      OpenSCManagerW(machine.empty() ? nullptr : machine.c_str(), nullptr, access));
}

inline ServiceHandle open_service(const std::wstring& machine, const std::wstring& name,
                                  DWORD access) {
  const ServiceHandle manager = open_manager(machine, SC_MANAGER_CONNECT);
  return ServiceHandle(OpenServiceW(manager.get(), name.c_str(), access));
}

}  // namespace kestrelon
