// This program as a Windows service. The manager's dispatcher blocks the thread that calls it and
// brings its orders there, so it has one of its own; what the program has to hear is posted to a
// window of the host's thread.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

#include "services/nt_services/service_phase.h"

namespace kestrelon::service_process {

/// Posted with the order in wParam; kInterrogate stands for the start.
inline constexpr UINT kOrderMessage = WM_APP + 1;

/// Meets the manager and answers 0, or the code of its refusal (1063: the program was not started
/// as a service). `listener` then gets the orders. Once at a time for the whole process.
uint32_t run(const std::wstring& name, HWND listener);

/// What the service was started with.
std::wstring arguments();

/// The listener has carried out an order: the lasting state is reported.
void done(ServiceOrder order);

/// The service has stopped, with a failure if the code is not 0. Does nothing while none runs.
void stop(uint32_t code);

}  // namespace kestrelon::service_process
