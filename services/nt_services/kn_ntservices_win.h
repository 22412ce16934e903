// KN_NTSERVICES: installs and controls Windows services, and runs as one.
#pragma once

#include "base/automation_win.h"
#include "kn_ntservices_glue.h"
#include "services/nt_services/service_manager_win.h"

namespace kestrelon {

class KN_NTSERVICES final : public KN_NTSERVICESGlue<KN_NTSERVICES, AutomationObject> {
 public:
  const std::wstring& machine() const { return machine_; }
  void set_machine(const std::wstring& machine) { machine_ = machine; }
  std::wstring err_description() const;
  long err_number() const { return static_cast<long>(error_.code); }

  bool service_exists(const std::wstring& name);
  bool install_service(const std::wstring& name, const std::wstring& display_name,
                       const std::wstring& program, const std::wstring& description,
                       ENUM_SERVICE_START start, const std::wstring& user, std::wstring password,
                       const std::wstring& dependencies);
  bool uninstall_service(const std::wstring& name, long seconds);
  bool start_service(const std::wstring& name, const std::wstring& arguments, long seconds);
  bool stop_service(const std::wstring& name, long seconds, bool with_dependents);
  bool pause_service(const std::wstring& name, long seconds);
  bool continue_service(const std::wstring& name, long seconds);
  bool restart_service(const std::wstring& name, long seconds);
  bool send_command(const std::wstring& name, long code);
  bool set_recovery(const std::wstring& name, long seconds, long tries);
  long enum_services(SAFEARRAY** names, SAFEARRAY** display_names, SAFEARRAY** states,
                     bool active_only);
  long dependent_services(const std::wstring& name, SAFEARRAY** names);

  ENUM_SERVICE_STATE state(const std::wstring& name);
  std::wstring account(const std::wstring& name);
  std::wstring path_name(const std::wstring& name);
  long process_id(const std::wstring& name);
  ENUM_SERVICE_START start_type(const std::wstring& name);
  void set_start_type(const std::wstring& name, ENUM_SERVICE_START start);
  std::wstring display_name(const std::wstring& name);
  void set_display_name(const std::wstring& name, const std::wstring& text);
  std::wstring description(const std::wstring& name);
  void set_description(const std::wstring& name, const std::wstring& text);

  bool run_as_service(const std::wstring& name);
  void report_stopped(long code);

 private:
  // Runs a call with the manager of the moment; a refusal is kept and answered with false.
  template <class Body>
  bool attempt(Body&& body);
  // A property of a service; `otherwise` when it cannot be read.
  template <class Read, class Value>
  Value read(Read&& reading, Value otherwise);

  void send_and_wait(const ServiceManager& manager, const std::wstring& name, ServiceOrder order,
                     ServiceState wanted, ULONGLONG end);
  // Looks at a service until it is in a state, letting messages run; `end` is a tick count.
  void wait_for(const ServiceManager& manager, const std::wstring& name, ServiceState wanted,
                ULONGLONG end);
  void tell_wait(const std::wstring& name, ServiceState wanted);
  // Stops what depends on a service and runs; in the order in which it was stopped.
  std::vector<ServiceEntry> stop_dependents(const ServiceManager& manager, const std::wstring& name,
                                            ULONGLONG end);

  void on_order(ServiceOrder order);
  void raise_order(ServiceOrder order);
  void make_window();
  static LRESULT CALLBACK window_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  void on_final_release() override;

  std::wstring machine_;
  ServiceError error_{0};
  HWND window_ = nullptr;  // hidden, of the host's thread, while the program is a service
};

}  // namespace kestrelon
