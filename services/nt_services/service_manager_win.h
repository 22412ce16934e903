// The system's service manager, asked for no more rights than each call needs.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "services/nt_services/service_phase.h"

namespace kestrelon {

/// A refusal by the service manager: its code and, behind 1066, the service's own.
struct ServiceError {
  uint32_t code;
  uint32_t service_code = 0;
};

/// The numbers of ENUM_SERVICE_START.
enum class ServiceStart : uint32_t { kAutomatic = 2, kManual = 3, kDisabled = 4, kDelayed = 5 };

struct ServiceSetup {
  std::wstring name, display_name, command, description;
  ServiceStart start = ServiceStart::kAutomatic;
  std::wstring account;   // empty: the local system
  std::wstring password;  // wiped by install()
  std::vector<std::wstring> dependencies;
};

struct ServiceStatus {
  ServiceState state = ServiceState::kUnknown;
  uint32_t process = 0;
  uint32_t exit_code = 0, service_code = 0;
  uint32_t wait_hint = 0;  // milliseconds
};

struct ServiceConfig {
  ServiceStart start = ServiceStart::kAutomatic;
  std::wstring account, command, display_name;
};

struct ServiceEntry {
  std::wstring name, display_name;
  ServiceState state = ServiceState::kUnknown;
};

/// Every call opens what it needs and throws ServiceError where the manager refuses.
class ServiceManager {
 public:
  /// `machine` is empty for this one.
  explicit ServiceManager(std::wstring machine) : machine_(std::move(machine)) {}

  bool exists(const std::wstring& name) const;
  /// Leaves no service behind when a part of it fails.
  void install(ServiceSetup& setup) const;
  void remove(const std::wstring& name) const;
  void start(const std::wstring& name, const std::vector<std::wstring>& arguments) const;
  void send(const std::wstring& name, ServiceOrder order) const;

  ServiceStatus status(const std::wstring& name) const;
  ServiceConfig config(const std::wstring& name) const;
  std::wstring description(const std::wstring& name) const;
  void set_start(const std::wstring& name, ServiceStart start) const;
  void set_display_name(const std::wstring& name, const std::wstring& text) const;
  void set_description(const std::wstring& name, const std::wstring& text) const;
  /// Restarts after a failure, `tries` times a day; 0 tries do nothing about failures.
  void set_recovery(const std::wstring& name, uint32_t seconds, uint32_t tries) const;

  std::vector<ServiceEntry> services(bool active_only) const;
  /// In the order in which they have to be stopped.
  std::vector<ServiceEntry> dependents(const std::wstring& name, bool active_only) const;

 private:
  std::wstring machine_;
};

}  // namespace kestrelon
