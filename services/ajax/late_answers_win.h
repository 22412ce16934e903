// Requests whose time ran out before their answer came.
#pragma once

#include "services/late_object_win.h"

namespace kestrelon {

/// Whether an XMLHTTP object has its whole answer, or will have none. Throws ComError.
bool is_answered(LateObject& request);

/// At its end keeps a request of this thread that is not answered yet until it is. The system's
/// object let go in the middle still hears from the network, in memory that by then belongs to the
/// next request.
class KeptUntilAnswered {
 public:
  explicit KeptUntilAnswered(const LateObject& request) : request_(request) {}
  ~KeptUntilAnswered();
  KeptUntilAnswered(const KeptUntilAnswered&) = delete;
  KeptUntilAnswered& operator=(const KeptUntilAnswered&) = delete;

 private:
  LateObject request_;
};

}  // namespace kestrelon
