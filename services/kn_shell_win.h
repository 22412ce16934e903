// What the utility class forwards to the shell, the window manager and the system. Nothing here
// raises or shows a dialog, but for the folder picker.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace kestrelon {

/// The platform's own opinion of an address.
bool is_valid_url(const std::wstring& url);

/// Bytes that the caller may still write on the drive of a path or letter; 0 when it cannot be
/// told.
double free_disk_space(const std::wstring& path);

/// The value of an environment variable, "" when there is none.
std::wstring environment_variable(const wchar_t* name);

/// The system's text for an error number as it stands, line end included, at most 255 characters.
std::wstring system_error_text(long number);

/// Opens an address, a file or a folder with the program that the shell has for it.
bool open_by_shell(const std::wstring& target);

// Windows that are none answer false.
bool set_window_topmost(HWND window, bool topmost);
/// Flashes caption and taskbar entry until the window comes to the front, or stops it.
bool flash_window(HWND window, bool flash);
bool set_taskbar_entry(HWND window, bool shown);

/// Asks the user for a folder; nothing when none is chosen. Lets messages run meanwhile.
std::optional<std::wstring> select_folder(HWND owner, const std::wstring& title,
                                          const std::wstring& start, bool offer_new);

/// Processes by file name in any case, ".exe" understood.
bool is_process_running(const std::wstring& name);
/// Ends every process of that name but this one; true when there was one and none withstood.
bool end_processes(const std::wstring& name);

bool is_64_bit_windows();
bool is_administrator();
bool is_online();
bool register_common_controls();

/// False on a window station that no user sees: nothing may wait for an answer there.
bool is_attended();

/// The name of the program's file without its extension.
std::wstring program_name();

}  // namespace kestrelon
