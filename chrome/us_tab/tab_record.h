// One tab as it is kept and saved.
#pragma once

#include <ocidl.h>
#include <olectl.h>

#include <string>

#include "base/com_win.h"

namespace kestrelon {

struct TabRecord {
  std::wstring caption;
  bool enabled = true;
  ComPtr<IPictureDisp> picture;
};

/// A control whose page lies further out than a window can: where it belongs, and what it answered
/// when it was put as near to there as can be.
struct FarControl {
  std::wstring name;
  double home = 0;
  double shown = 0;
};

}  // namespace kestrelon
