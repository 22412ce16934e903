#include "services/nt_services/kn_ntservices_win.h"

#include <algorithm>

#include "services/event_text_win.h"
#include "services/late_object_win.h"
#include "services/nt_services/service_text.h"
#include "services/out_array_win.h"

namespace kestrelon {
namespace {

constexpr uint32_t kNotActive = 1062, kTimeout = 1460, kInvalidParameter = 87, kDied = 1067;

ULONGLONG end_of(long seconds) {
  return GetTickCount64() + static_cast<ULONGLONG>(std::max(seconds, 0L)) * 1000;
}

const wchar_t* wait_text(ServiceState wanted) {
  switch (wanted) {
    case ServiceState::kStopped:
      return L" parar...";
    case ServiceState::kPaused:
      return L" pausar...";
    default:
      return L" iniciar...";
  }
}

bool is_start(ENUM_SERVICE_START start) {
  return start >= Start_Automatic && start <= Start_Delayed;
}

void put_text(SAFEARRAY* array, LONG index, const std::wstring& text) {
  SafeArrayPutElement(array, &index, Bstr(text).get());
}

void fill_names(SAFEARRAY** place, const std::vector<ServiceEntry>& services,
                std::wstring ServiceEntry::*text) {
  fill_array(place, VT_BSTR, services, [text](SAFEARRAY* array, LONG i, const ServiceEntry& entry) {
    put_text(array, i, entry.*text);
  });
}

void wipe(std::wstring& text) {
  SecureZeroMemory(text.data(), text.size() * sizeof(wchar_t));
}

}  // namespace

template <class Body>
bool KN_NTSERVICES::attempt(Body&& body) {
  // Messages run during the waits, so a handler may set another machine or meet another error.
  const ServiceManager manager(machine_);
  ServiceError error{0};
  try {
    body(manager);
  } catch (const ServiceError& refusal) {
    error = refusal;
  }
  error_ = error;
  return error.code == 0;
}

template <class Read, class Value>
Value KN_NTSERVICES::read(Read&& reading, Value otherwise) {
  attempt([&](const ServiceManager& manager) { otherwise = reading(manager); });
  return otherwise;
}

std::wstring KN_NTSERVICES::err_description() const {
  return service_error_text(error_.code, error_.service_code);
}

bool KN_NTSERVICES::service_exists(const std::wstring& name) {
  return read([&](const ServiceManager& manager) { return manager.exists(name); }, false);
}

bool KN_NTSERVICES::install_service(const std::wstring& name, const std::wstring& display_name,
                                    const std::wstring& program, const std::wstring& description,
                                    ENUM_SERVICE_START start, const std::wstring& user,
                                    std::wstring password, const std::wstring& dependencies) {
  const bool done = attempt([&](const ServiceManager& manager) {
    if (!is_start(start) || program.empty()) throw ServiceError{kInvalidParameter};
    ServiceSetup setup{name,
                       display_name,
                       program,
                       description,
                       static_cast<ServiceStart>(start),
                       account_name(user),
                       password,
                       name_list(dependencies)};
    manager.install(setup);
  });
  wipe(password);
  return done;
}

bool KN_NTSERVICES::uninstall_service(const std::wstring& name, long seconds) {
  return attempt([&](const ServiceManager& manager) {
    if (manager.status(name).state != ServiceState::kStopped)
      send_and_wait(manager, name, ServiceOrder::kStop, ServiceState::kStopped, end_of(seconds));
    manager.remove(name);
  });
}

bool KN_NTSERVICES::start_service(const std::wstring& name, const std::wstring& arguments,
                                  long seconds) {
  return attempt([&](const ServiceManager& manager) {
    const ULONGLONG end = end_of(seconds);
    manager.start(name, split_arguments(arguments));
    if (seconds > 0) wait_for(manager, name, ServiceState::kRunning, end);
  });
}

bool KN_NTSERVICES::stop_service(const std::wstring& name, long seconds, bool with_dependents) {
  return attempt([&](const ServiceManager& manager) {
    const ULONGLONG end = end_of(seconds);
    if (with_dependents) stop_dependents(manager, name, end);
    manager.send(name, ServiceOrder::kStop);
    if (seconds > 0) wait_for(manager, name, ServiceState::kStopped, end);
  });
}

bool KN_NTSERVICES::pause_service(const std::wstring& name, long seconds) {
  return attempt([&](const ServiceManager& manager) {
    manager.send(name, ServiceOrder::kPause);
    if (seconds > 0) wait_for(manager, name, ServiceState::kPaused, end_of(seconds));
  });
}

bool KN_NTSERVICES::continue_service(const std::wstring& name, long seconds) {
  return attempt([&](const ServiceManager& manager) {
    manager.send(name, ServiceOrder::kContinue);
    if (seconds > 0) wait_for(manager, name, ServiceState::kRunning, end_of(seconds));
  });
}

bool KN_NTSERVICES::restart_service(const std::wstring& name, long seconds) {
  return attempt([&](const ServiceManager& manager) {
    const ULONGLONG end = end_of(seconds);
    std::vector<ServiceEntry> stopped = stop_dependents(manager, name, end);
    if (manager.status(name).state != ServiceState::kStopped)
      send_and_wait(manager, name, ServiceOrder::kStop, ServiceState::kStopped, end);
    stopped.push_back({name, {}, ServiceState::kStopped});
    std::rotate(stopped.begin(), stopped.end() - 1, stopped.end());
    std::reverse(stopped.begin() + 1, stopped.end());
    for (const ServiceEntry& entry : stopped) {
      manager.start(entry.name, {});
      wait_for(manager, entry.name, ServiceState::kRunning, end);
    }
  });
}

bool KN_NTSERVICES::send_command(const std::wstring& name, long code) {
  return attempt([&](const ServiceManager& manager) {
    const auto order = static_cast<ServiceOrder>(code);
    if (!is_own_order(order)) throw ServiceError{kInvalidParameter};
    manager.send(name, order);
  });
}

bool KN_NTSERVICES::set_recovery(const std::wstring& name, long seconds, long tries) {
  return attempt([&](const ServiceManager& manager) {
    manager.set_recovery(name, static_cast<uint32_t>(std::max(seconds, 0L)),
                         static_cast<uint32_t>(std::max(tries, 0L)));
  });
}

long KN_NTSERVICES::enum_services(SAFEARRAY** names, SAFEARRAY** display_names, SAFEARRAY** states,
                                  bool active_only) {
  std::vector<ServiceEntry> found;
  if (!attempt([&](const ServiceManager& manager) { found = manager.services(active_only); }))
    return -1;
  fill_names(names, found, &ServiceEntry::name);
  fill_names(display_names, found, &ServiceEntry::display_name);
  fill_array(states, VT_I4, found, [](SAFEARRAY* array, LONG i, const ServiceEntry& entry) {
    auto state = static_cast<long>(entry.state);
    SafeArrayPutElement(array, &i, &state);
  });
  return static_cast<long>(found.size());
}

long KN_NTSERVICES::dependent_services(const std::wstring& name, SAFEARRAY** names) {
  std::vector<ServiceEntry> found;
  if (!attempt([&](const ServiceManager& manager) { found = manager.dependents(name, false); }))
    return -1;
  fill_names(names, found, &ServiceEntry::name);
  return static_cast<long>(found.size());
}

ENUM_SERVICE_STATE KN_NTSERVICES::state(const std::wstring& name) {
  return read(
      [&](const ServiceManager& manager) {
        return static_cast<ENUM_SERVICE_STATE>(manager.status(name).state);
      },
      Service_Unknown);
}

std::wstring KN_NTSERVICES::account(const std::wstring& name) {
  return read([&](const ServiceManager& m) { return m.config(name).account; }, std::wstring());
}

std::wstring KN_NTSERVICES::path_name(const std::wstring& name) {
  return read([&](const ServiceManager& m) { return m.config(name).command; }, std::wstring());
}

long KN_NTSERVICES::process_id(const std::wstring& name) {
  return read(
      [&](const ServiceManager& manager) {
        return static_cast<long>(manager.status(name).process);
      },
      0L);
}

ENUM_SERVICE_START KN_NTSERVICES::start_type(const std::wstring& name) {
  return read(
      [&](const ServiceManager& manager) {
        return static_cast<ENUM_SERVICE_START>(manager.config(name).start);
      },
      ENUM_SERVICE_START{});
}

void KN_NTSERVICES::set_start_type(const std::wstring& name, ENUM_SERVICE_START start) {
  attempt([&](const ServiceManager& manager) {
    if (!is_start(start)) throw ServiceError{kInvalidParameter};
    manager.set_start(name, static_cast<ServiceStart>(start));
  });
}

std::wstring KN_NTSERVICES::display_name(const std::wstring& name) {
  return read([&](const ServiceManager& m) { return m.config(name).display_name; }, std::wstring());
}

void KN_NTSERVICES::set_display_name(const std::wstring& name, const std::wstring& text) {
  attempt([&](const ServiceManager& manager) { manager.set_display_name(name, text); });
}

std::wstring KN_NTSERVICES::description(const std::wstring& name) {
  return read([&](const ServiceManager& m) { return m.description(name); }, std::wstring());
}

void KN_NTSERVICES::set_description(const std::wstring& name, const std::wstring& text) {
  attempt([&](const ServiceManager& manager) { manager.set_description(name, text); });
}

void KN_NTSERVICES::send_and_wait(const ServiceManager& manager, const std::wstring& name,
                                  ServiceOrder order, ServiceState wanted, ULONGLONG end) {
  try {
    manager.send(name, order);
  } catch (const ServiceError& error) {
    // One that stopped by itself meanwhile is where it should be.
    if (order != ServiceOrder::kStop || error.code != kNotActive) throw;
  }
  wait_for(manager, name, wanted, end);
}

void KN_NTSERVICES::wait_for(const ServiceManager& manager, const std::wstring& name,
                             ServiceState wanted, ULONGLONG end) {
  for (;;) {
    const ServiceStatus status = manager.status(name);
    if (status.state == wanted) return;
    if (status.state == ServiceState::kStopped)
      throw ServiceError{status.exit_code != 0 ? status.exit_code : kDied, status.service_code};
    if (GetTickCount64() >= end) throw ServiceError{kTimeout};
    tell_wait(name, wanted);
    MsgWaitForMultipleObjectsEx(0, nullptr, poll_interval(status.wait_hint), QS_ALLINPUT,
                                MWMO_INPUTAVAILABLE);
    pump_messages();
  }
}

void KN_NTSERVICES::tell_wait(const std::wstring& name, ServiceState wanted) {
  if (events().empty()) return;
  EventText text(L"Aguardando o serviço " + name + wait_text(wanted));
  raise_status(text.text);
}

std::vector<ServiceEntry> KN_NTSERVICES::stop_dependents(const ServiceManager& manager,
                                                         const std::wstring& name, ULONGLONG end) {
  std::vector<ServiceEntry> running = manager.dependents(name, true);
  for (const ServiceEntry& entry : running)
    send_and_wait(manager, entry.name, ServiceOrder::kStop, ServiceState::kStopped, end);
  return running;
}

}  // namespace kestrelon
