// The sounds of the message box.
#pragma once

#include "services/msgbox/msg_box_rules.h"

namespace kestrelon {

/// Plays the library's sound of an icon and returns at once; silent where the user's sound scheme
/// has none for it.
void play_msg_box_sound(msg_box::Icon icon);

/// Whether the user's scheme has a sound for an icon.
bool scheme_has_sound(msg_box::Icon icon);

}  // namespace kestrelon
