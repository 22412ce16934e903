// The calls of the manager whose answers are as long as they please.
#include "services/nt_services/service_handle_win.h"

namespace kestrelon {
namespace {

// A buffer that is aligned for the manager's records.
class Answer {
 public:
  BYTE* bytes() { return reinterpret_cast<BYTE*>(words_.data()); }
  DWORD size() const { return static_cast<DWORD>(words_.size() * sizeof(uint64_t)); }
  void grow(DWORD size) { words_.resize(size / sizeof(uint64_t) + 1); }
  template <class Record>
  const Record* as() {
    return reinterpret_cast<const Record*>(bytes());
  }

 private:
  std::vector<uint64_t> words_ = std::vector<uint64_t>(1024);
};

// Asks until the answer fits: `ask(bytes, size, &needed)`.
template <class Ask>
void ask(Answer& answer, Ask&& call) {
  for (DWORD needed = 0; !call(answer.bytes(), answer.size(), &needed);) {
    const DWORD code = GetLastError();
    if ((code != ERROR_INSUFFICIENT_BUFFER && code != ERROR_MORE_DATA) || needed == 0)
      throw ServiceError{code};
    // What a list still lacks comes on top of what it holds.
    answer.grow(answer.size() + needed);
  }
}

std::wstring text_or_empty(const wchar_t* text) {
  return text == nullptr ? std::wstring() : std::wstring(text);
}

template <class Record>
std::vector<ServiceEntry> entries(const Record* records, DWORD count) {
  std::vector<ServiceEntry> list;
  list.reserve(count);
  for (DWORD i = 0; i < count; ++i) {
    DWORD state = 0;
    if constexpr (requires { records[i].ServiceStatusProcess; })
      state = records[i].ServiceStatusProcess.dwCurrentState;
    else
      state = records[i].ServiceStatus.dwCurrentState;
    list.push_back({text_or_empty(records[i].lpServiceName),
                    text_or_empty(records[i].lpDisplayName), static_cast<ServiceState>(state)});
  }
  return list;
}

bool is_delayed(SC_HANDLE service) {
  SERVICE_DELAYED_AUTO_START_INFO info{};
  DWORD needed = 0;
  return QueryServiceConfig2W(service, SERVICE_CONFIG_DELAYED_AUTO_START_INFO,
                              reinterpret_cast<BYTE*>(&info), sizeof info, &needed) &&
         info.fDelayedAutostart;
}

}  // namespace

ServiceConfig ServiceManager::config(const std::wstring& name) const {
  const ServiceHandle service = open_service(machine_, name, SERVICE_QUERY_CONFIG);
  Answer answer;
  ask(answer, [&](BYTE* bytes, DWORD size, DWORD* needed) {
    return QueryServiceConfigW(service.get(), reinterpret_cast<QUERY_SERVICE_CONFIGW*>(bytes), size,
                               needed);
  });
  const auto* found = answer.as<QUERY_SERVICE_CONFIGW>();
  ServiceConfig config{static_cast<ServiceStart>(found->dwStartType),
                       text_or_empty(found->lpServiceStartName),
                       text_or_empty(found->lpBinaryPathName), text_or_empty(found->lpDisplayName)};
  if (config.start == ServiceStart::kAutomatic && is_delayed(service.get()))
    config.start = ServiceStart::kDelayed;
  return config;
}

std::wstring ServiceManager::description(const std::wstring& name) const {
  const ServiceHandle service = open_service(machine_, name, SERVICE_QUERY_CONFIG);
  Answer answer;
  ask(answer, [&](BYTE* bytes, DWORD size, DWORD* needed) {
    return QueryServiceConfig2W(service.get(), SERVICE_CONFIG_DESCRIPTION, bytes, size, needed);
  });
  return text_or_empty(answer.as<SERVICE_DESCRIPTIONW>()->lpDescription);
}

std::vector<ServiceEntry> ServiceManager::services(bool active_only) const {
  const ServiceHandle manager = open_manager(machine_, SC_MANAGER_ENUMERATE_SERVICE);
  Answer answer;
  DWORD count = 0;
  ask(answer, [&](BYTE* bytes, DWORD size, DWORD* needed) {
    DWORD from_start = 0;
    return EnumServicesStatusExW(manager.get(), SC_ENUM_PROCESS_INFO, SERVICE_WIN32,
                                 active_only ? SERVICE_ACTIVE : SERVICE_STATE_ALL, bytes, size,
                                 needed, &count, &from_start, nullptr);
  });
  return entries(answer.as<ENUM_SERVICE_STATUS_PROCESSW>(), count);
}

std::vector<ServiceEntry> ServiceManager::dependents(const std::wstring& name,
                                                     bool active_only) const {
  const ServiceHandle service = open_service(machine_, name, SERVICE_ENUMERATE_DEPENDENTS);
  Answer answer;
  DWORD count = 0;
  ask(answer, [&](BYTE* bytes, DWORD size, DWORD* needed) {
    return EnumDependentServicesW(service.get(), active_only ? SERVICE_ACTIVE : SERVICE_STATE_ALL,
                                  reinterpret_cast<ENUM_SERVICE_STATUSW*>(bytes), size, needed,
                                  &count);
  });
  return entries(answer.as<ENUM_SERVICE_STATUSW>(), count);
}

}  // namespace kestrelon
