// The group rule of option buttons, through the host's own objects.
#pragma once

#include "base/com_win.h"

namespace kestrelon {

/// Gives `Value` = False to every chosen USOptionButton on the same container as the one whose
/// window is `own_window`, except that one. `extender` is the host's object for it, with `Parent`;
/// without one nothing happens. Members that fail, as they do on controls without a window, are
/// passed over.
void clear_option_group(const ComPtr<IDispatch>& extender, long own_window);

}  // namespace kestrelon
