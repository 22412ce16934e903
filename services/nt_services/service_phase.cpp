#include "services/nt_services/service_phase.h"

namespace kestrelon {
namespace {

constexpr uint32_t kAcceptStop = 1, kAcceptPauseContinue = 2, kAcceptShutdown = 4;

}  // namespace

uint32_t ServicePhase::accepted() const {
  switch (state_) {
    case ServiceState::kRunning:
    case ServiceState::kPaused:
      return kAcceptStop | kAcceptPauseContinue | kAcceptShutdown;
    case ServiceState::kPausing:
    case ServiceState::kContinuing:
      return kAcceptStop | kAcceptShutdown;
    default:
      return 0;
  }
}

bool ServicePhase::take(ServiceOrder order) {
  switch (order) {
    case ServiceOrder::kStop:
    case ServiceOrder::kShutdown:
      if ((accepted() & kAcceptStop) == 0) return false;
      enter(ServiceState::kStopping);
      return true;
    case ServiceOrder::kPause:
      if (state_ != ServiceState::kRunning) return false;
      enter(ServiceState::kPausing);
      return true;
    case ServiceOrder::kContinue:
      if (state_ != ServiceState::kPaused) return false;
      enter(ServiceState::kContinuing);
      return true;
    default:
      return is_own_order(order) && accepted() != 0;
  }
}

void ServicePhase::done(ServiceOrder order) {
  switch (order) {
    case ServiceOrder::kStop:
    case ServiceOrder::kShutdown:
      if (state_ == ServiceState::kStopping) enter(ServiceState::kStopped);
      break;
    case ServiceOrder::kPause:
      if (state_ == ServiceState::kPausing) enter(ServiceState::kPaused);
      break;
    case ServiceOrder::kContinue:
      if (state_ == ServiceState::kContinuing) enter(ServiceState::kRunning);
      break;
    case ServiceOrder::kInterrogate:
      if (state_ == ServiceState::kStarting) enter(ServiceState::kRunning);
      break;
    default:
      break;
  }
}

bool ServicePhase::beat() {
  if (!is_pending(state_)) return false;
  ++checkpoint_;
  return true;
}

void ServicePhase::enter(ServiceState state) {
  state_ = state;
  checkpoint_ = is_pending(state) ? 1 : 0;
}

}  // namespace kestrelon
