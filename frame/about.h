// The About window of the library: the only window it opens without being asked for one by a
// property.
#pragma once

#include <windows.h>

namespace kestrelon {

/// The dispatch id and OLE verb that containers show as "About".
inline constexpr LONG kAboutVerb = 1;
/// Shows the control's property pages, as the system's own verb for it (OLEIVERB_PROPERTIES) does.
inline constexpr LONG kPropertiesVerb = 2;

/// Shows the window over `owner` (or the desktop) and returns when it is closed.
void show_about_window(HWND owner);

}  // namespace kestrelon
