// The host's message loop, with the keys that belong to forms.
#pragma once

#include <windows.h>

#include <functional>

namespace kestrelon::host {

class Form;

/// Forms enter here while they live, so that the loop can offer them each key.
void register_form(Form& form);
void unregister_form(Form& form);

/// Handles one message as the loop does: offered to the forms, else translated and dispatched.
void process_message(MSG& message);
/// Handles what waits; true unless WM_QUIT came, which is posted again for the outer loop.
bool drain_messages();
/// Runs until `done` answers true or the time is over; true when it answered.
bool pump_until(const std::function<bool()>& done, DWORD milliseconds);
void pump_for(DWORD milliseconds);
/// Runs until WM_QUIT and answers its exit code.
int run_message_loop();

}  // namespace kestrelon::host
