#include "services/nt_services/service_manager_win.h"

#include <algorithm>

#include "services/nt_services/service_handle_win.h"
#include "services/nt_services/service_text.h"

namespace kestrelon {
namespace {

constexpr uint32_t kDay = 24 * 60 * 60;  // seconds
constexpr uint32_t kMostTries = 100;
constexpr uint32_t kMostSeconds = 0xFFFFFFFFu / 1000;

// What CreateService and ChangeServiceConfig know; the delay is set apart.
DWORD plain_start(ServiceStart start) {
  return start == ServiceStart::kDelayed ? SERVICE_AUTO_START : static_cast<DWORD>(start);
}

void write_delay(SC_HANDLE service, bool delays) {
  SERVICE_DELAYED_AUTO_START_INFO info{delays};
  service_check(ChangeServiceConfig2W(service, SERVICE_CONFIG_DELAYED_AUTO_START_INFO, &info));
}

void write_description(SC_HANDLE service, std::wstring text) {
  SERVICE_DESCRIPTIONW info{text.data()};
  service_check(ChangeServiceConfig2W(service, SERVICE_CONFIG_DESCRIPTION, &info));
}

const wchar_t* or_null(const std::wstring& text) {
  return text.empty() ? nullptr : text.c_str();
}

DWORD order_right(ServiceOrder order) {
  if (is_own_order(order)) return SERVICE_USER_DEFINED_CONTROL;
  return order == ServiceOrder::kStop ? SERVICE_STOP : SERVICE_PAUSE_CONTINUE;
}

ServiceState state_of(DWORD state) {
  return state <= SERVICE_PAUSED ? static_cast<ServiceState>(state) : ServiceState::kUnknown;
}

}  // namespace

bool ServiceManager::exists(const std::wstring& name) const {
  try {
    open_service(machine_, name, SERVICE_QUERY_STATUS);
    return true;
  } catch (const ServiceError& error) {
    if (error.code == ERROR_SERVICE_DOES_NOT_EXIST || error.code == ERROR_INVALID_NAME)
      return false;
    // A service that may not be looked at is there all the same.
    const bool reached = error.code == ERROR_ACCESS_DENIED;
    if (reached) open_manager(machine_, SC_MANAGER_CONNECT);
    if (reached) return true;
    throw;
  }
}

void ServiceManager::install(ServiceSetup& setup) const {
  const ServiceHandle manager = open_manager(machine_, SC_MANAGER_CREATE_SERVICE);
  const std::wstring dependencies = multi_text(setup.dependencies);
  const std::wstring command = quoted_program(setup.command);
  const SC_HANDLE made =
      CreateServiceW(manager.get(), setup.name.c_str(), or_null(setup.display_name),
                     SERVICE_CHANGE_CONFIG | DELETE, SERVICE_WIN32_OWN_PROCESS,
                     plain_start(setup.start), SERVICE_ERROR_NORMAL, command.c_str(), nullptr,
                     nullptr, setup.dependencies.empty() ? nullptr : dependencies.c_str(),
                     or_null(setup.account), or_null(setup.password));
  const DWORD code = made == nullptr ? GetLastError() : ERROR_SUCCESS;
  SecureZeroMemory(setup.password.data(), setup.password.size() * sizeof(wchar_t));
  if (made == nullptr) throw ServiceError{code};
  const ServiceHandle service(made);
  try {
    if (!setup.description.empty()) write_description(service.get(), setup.description);
    if (setup.start == ServiceStart::kDelayed) write_delay(service.get(), true);
  } catch (const ServiceError&) {
    DeleteService(service.get());
    throw;
  }
}

void ServiceManager::remove(const std::wstring& name) const {
  service_check(DeleteService(open_service(machine_, name, DELETE).get()));
}

void ServiceManager::start(const std::wstring& name,
                           const std::vector<std::wstring>& arguments) const {
  std::vector<const wchar_t*> texts;
  for (const std::wstring& argument : arguments) texts.push_back(argument.c_str());
  const ServiceHandle service = open_service(machine_, name, SERVICE_START);
  service_check(StartServiceW(service.get(), static_cast<DWORD>(texts.size()),
                              texts.empty() ? nullptr : texts.data()));
}

void ServiceManager::send(const std::wstring& name, ServiceOrder order) const {
  const ServiceHandle service = open_service(machine_, name, order_right(order));
  SERVICE_STATUS status;
  service_check(ControlService(service.get(), static_cast<DWORD>(order), &status));
}

ServiceStatus ServiceManager::status(const std::wstring& name) const {
  const ServiceHandle service = open_service(machine_, name, SERVICE_QUERY_STATUS);
  SERVICE_STATUS_PROCESS status{};
  DWORD size = 0;
  service_check(QueryServiceStatusEx(service.get(), SC_STATUS_PROCESS_INFO,
                                     reinterpret_cast<BYTE*>(&status), sizeof status, &size));
  return {state_of(status.dwCurrentState), status.dwProcessId, status.dwWin32ExitCode,
          status.dwServiceSpecificExitCode, status.dwWaitHint};
}

void ServiceManager::set_start(const std::wstring& name, ServiceStart start) const {
  const ServiceHandle service = open_service(machine_, name, SERVICE_CHANGE_CONFIG);
  service_check(ChangeServiceConfigW(service.get(), SERVICE_NO_CHANGE, plain_start(start),
                                     SERVICE_NO_CHANGE, nullptr, nullptr, nullptr, nullptr, nullptr,
                                     nullptr, nullptr));
  if (start == ServiceStart::kDelayed || start == ServiceStart::kAutomatic)
    write_delay(service.get(), start == ServiceStart::kDelayed);
}

void ServiceManager::set_display_name(const std::wstring& name, const std::wstring& text) const {
  const ServiceHandle service = open_service(machine_, name, SERVICE_CHANGE_CONFIG);
  service_check(ChangeServiceConfigW(service.get(), SERVICE_NO_CHANGE, SERVICE_NO_CHANGE,
                                     SERVICE_NO_CHANGE, nullptr, nullptr, nullptr, nullptr, nullptr,
                                     nullptr, text.c_str()));
}

void ServiceManager::set_description(const std::wstring& name, const std::wstring& text) const {
  write_description(open_service(machine_, name, SERVICE_CHANGE_CONFIG).get(), text);
}

void ServiceManager::set_recovery(const std::wstring& name, uint32_t seconds,
                                  uint32_t tries) const {
  // Setting an action that restarts takes the right to start.
  const ServiceHandle service = open_service(machine_, name, SERVICE_CHANGE_CONFIG | SERVICE_START);
  const DWORD delay = std::min(seconds, kMostSeconds) * 1000;
  std::vector<SC_ACTION> actions(std::min(tries, kMostTries), SC_ACTION{SC_ACTION_RESTART, delay});
  // The last action goes on for ever, and an empty list changes nothing.
  actions.push_back({SC_ACTION_NONE, 0});
  SERVICE_FAILURE_ACTIONSW info{};
  info.dwResetPeriod = kDay;
  info.cActions = static_cast<DWORD>(actions.size());
  info.lpsaActions = actions.data();
  service_check(ChangeServiceConfig2W(service.get(), SERVICE_CONFIG_FAILURE_ACTIONS, &info));
}

}  // namespace kestrelon
