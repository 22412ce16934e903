// The form as the frame window of its active control.
#pragma once

#include <windows.h>
//
#include <oleidl.h>

#include "base/com_win.h"

namespace kestrelon::host {

class Form;

ComPtr<IOleInPlaceFrame> make_in_place_frame(Form& form);
/// The form goes; the object may still be held by a control and answers nothing from then on.
void detach_in_place_frame(IOleInPlaceFrame* frame);

}  // namespace kestrelon::host
