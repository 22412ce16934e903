// The life of a service as its program reports it: which orders it takes in a state, what they lead
// to, and what follows when the program has carried them out.
#pragma once

#include <cstdint>

namespace kestrelon {

/// The numbers of ENUM_SERVICE_STATE and of the service manager.
enum class ServiceState : uint32_t {
  kUnknown = 0,
  kStopped = 1,
  kStarting = 2,
  kStopping = 3,
  kRunning = 4,
  kContinuing = 5,
  kPausing = 6,
  kPaused = 7
};

constexpr bool is_pending(ServiceState state) {
  return state == ServiceState::kStarting || state == ServiceState::kStopping ||
         state == ServiceState::kContinuing || state == ServiceState::kPausing;
}

/// The numbers by which the service manager sends orders; 128 to 255 are the service's own.
enum class ServiceOrder : uint32_t {
  kStop = 1,
  kPause = 2,
  kContinue = 3,
  kInterrogate = 4,
  kShutdown = 5,
  kFirstOwn = 128,
  kLastOwn = 255
};

constexpr bool is_own_order(ServiceOrder order) {
  return order >= ServiceOrder::kFirstOwn && order <= ServiceOrder::kLastOwn;
}

/// Not safe for threads; the owner locks it.
class ServicePhase {
 public:
  ServiceState state() const { return state_; }
  /// Grows while a state is pending, so that the manager sees life; 0 in the lasting states.
  uint32_t checkpoint() const { return checkpoint_; }
  /// The orders taken in this state, as SERVICE_ACCEPT_... bits.
  uint32_t accepted() const;

  void begin() { enter(ServiceState::kStarting); }
  /// True when the order is one that the program has to hear of; the state has changed by then.
  bool take(ServiceOrder order);
  /// The program has carried out an order (or the start, given as kInterrogate). A later order that
  /// came meanwhile keeps its state.
  void done(ServiceOrder order);
  void stop() { enter(ServiceState::kStopped); }
  /// A sign of life; true when there is one to be given.
  bool beat();

 private:
  void enter(ServiceState state);

  ServiceState state_ = ServiceState::kStopped;
  uint32_t checkpoint_ = 0;
};

}  // namespace kestrelon
