#include "services/kn_shell_win.h"

#include <commctrl.h>
#include <shellapi.h>
#include <shlobj.h>
#include <tlhelp32.h>

#include "base/text.h"

namespace kestrelon {
namespace {

// A function of a system library that is not worth loading before it is called.
template <class Function>
Function late_function(const wchar_t* library, const char* name) {
  const HMODULE module = LoadLibraryW(library);
  if (module == nullptr) return nullptr;
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

// Calls `work` for each process of a name.
template <class Work>
void for_each_process(std::wstring_view name, const Work& work) {
  name = trim_blanks(name);
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  if (snapshot == INVALID_HANDLE_VALUE || name.empty()) return;
  PROCESSENTRY32W entry = {};
  entry.dwSize = sizeof entry;
  for (BOOL more = Process32FirstW(snapshot, &entry); more;
       more = Process32NextW(snapshot, &entry)) {
    const std::wstring_view file = entry.szExeFile;
    if (equals_ignoring_case(file, name) ||
        equals_ignoring_case(file, std::wstring(name) + L".exe"))
      work(entry.th32ProcessID);
  }
  CloseHandle(snapshot);
}

int CALLBACK on_folder_dialog(HWND dialog, UINT message, LPARAM, LPARAM start) {
  if (message == BFFM_INITIALIZED && start != 0)
    SendMessageW(dialog, BFFM_SETSELECTIONW, TRUE, start);
  return 0;
}

}  // namespace

bool is_valid_url(const std::wstring& url) {
  using IsValidUrl = HRESULT(WINAPI*)(IBindCtx*, LPCWSTR, DWORD);
  const auto ask = late_function<IsValidUrl>(L"urlmon.dll", "IsValidURL");
  return ask != nullptr && !url.empty() && ask(nullptr, url.c_str(), 0) == S_OK;
}

double free_disk_space(const std::wstring& path) {
  std::wstring folder = path;
  if (folder.size() == 1) folder += L':';
  if (!folder.empty() && folder.back() != L'\\') folder += L'\\';
  ULARGE_INTEGER bytes = {};
  if (folder.empty() || !GetDiskFreeSpaceExW(folder.c_str(), &bytes, nullptr, nullptr)) return 0;
  return static_cast<double>(bytes.QuadPart);
}

std::wstring environment_variable(const wchar_t* name) {
  std::wstring value(GetEnvironmentVariableW(name, nullptr, 0), L'\0');
  value.resize(GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size())));
  return value;
}

std::wstring system_error_text(long number) {
  constexpr DWORD kLongest = 255;
  wchar_t text[kLongest + 1] = {};
  DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                static_cast<DWORD>(number), 0, text, kLongest, nullptr);
  while (length > 0 && (text[length - 1] == L'\r' || text[length - 1] == L'\n')) --length;
  return {text, length};
}

bool open_by_shell(const std::wstring& target) {
  SHELLEXECUTEINFOW info = {};
  info.cbSize = sizeof info;
  info.fMask = SEE_MASK_FLAG_NO_UI;  // a missing handler is an answer, not a dialog
  info.lpVerb = L"open";
  info.lpFile = target.c_str();
  info.nShow = SW_SHOWNORMAL;
  return ShellExecuteExW(&info) != FALSE;
}

bool set_window_topmost(HWND window, bool topmost) {
  return IsWindow(window) && SetWindowPos(window, topmost ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0,
                                          0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

bool flash_window(HWND window, bool flash) {
  if (!IsWindow(window)) return false;
  FLASHWINFO info = {};
  info.cbSize = sizeof info;
  info.hwnd = window;
  info.dwFlags = flash ? FLASHW_ALL | FLASHW_TIMERNOFG : FLASHW_STOP;
  FlashWindowEx(&info);
  return true;
}

bool set_taskbar_entry(HWND window, bool shown) {
  if (!IsWindow(window)) return false;
  const bool visible = IsWindowVisible(window) != FALSE;
  const LONG_PTR style =
      GetWindowLongPtrW(window, GWL_EXSTYLE) & ~(WS_EX_APPWINDOW | WS_EX_TOOLWINDOW);
  // The taskbar looks at the style only when a window appears.
  if (visible) ShowWindow(window, SW_HIDE);
  SetWindowLongPtrW(window, GWL_EXSTYLE, style | (shown ? WS_EX_APPWINDOW : WS_EX_TOOLWINDOW));
  if (visible) ShowWindow(window, SW_SHOWNA);
  return true;
}

std::optional<std::wstring> select_folder(HWND owner, const std::wstring& title,
                                          const std::wstring& start, bool offer_new) {
  BROWSEINFOW info = {};
  info.hwndOwner = owner;
  info.lpszTitle = title.c_str();
  info.ulFlags =
      BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE | (offer_new ? 0u : BIF_NONEWFOLDERBUTTON);
  info.lpfn = on_folder_dialog;
  info.lParam = start.empty() ? 0 : reinterpret_cast<LPARAM>(start.c_str());
  const PIDLIST_ABSOLUTE chosen = SHBrowseForFolderW(&info);
  if (chosen == nullptr) return std::nullopt;
  wchar_t path[MAX_PATH] = {};
  const bool has_path = SHGetPathFromIDListW(chosen, path) != FALSE;
  CoTaskMemFree(chosen);
  return has_path ? std::optional<std::wstring>(path) : std::nullopt;
}

bool is_process_running(const std::wstring& name) {
  bool found = false;
  for_each_process(name, [&](DWORD) { found = true; });
  return found;
}

bool end_processes(const std::wstring& name) {
  bool found = false;
  bool all_ended = true;
  for_each_process(name, [&](DWORD id) {
    if (id == GetCurrentProcessId()) return;
    found = true;
    const HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, id);
    all_ended = process != nullptr && TerminateProcess(process, 1) && all_ended;
    if (process != nullptr) CloseHandle(process);
  });
  return found && all_ended;
}

bool is_64_bit_windows() {
  BOOL wow64 = FALSE;
  return sizeof(void*) == 8 || (IsWow64Process(GetCurrentProcess(), &wow64) && wow64);
}

bool is_administrator() {
  SID_IDENTIFIER_AUTHORITY authority = SECURITY_NT_AUTHORITY;
  PSID group = nullptr;
  if (!AllocateAndInitializeSid(&authority, 2, SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_ADMINS,
                                0, 0, 0, 0, 0, 0, &group))
    return false;
  BOOL member = FALSE;
  const bool told = CheckTokenMembership(nullptr, group, &member) != FALSE;
  FreeSid(group);
  return told && member;
}

bool is_online() {
  using ConnectedState = BOOL(WINAPI*)(DWORD*, DWORD);
  const auto ask = late_function<ConnectedState>(L"wininet.dll", "InternetGetConnectedState");
  DWORD flags = 0;
  return ask != nullptr && ask(&flags, 0);
}

bool register_common_controls() {
  INITCOMMONCONTROLSEX info = {sizeof info, ICC_WIN95_CLASSES | ICC_DATE_CLASSES |
                                                ICC_USEREX_CLASSES | ICC_COOL_CLASSES |
                                                ICC_INTERNET_CLASSES};
  return InitCommonControlsEx(&info) != FALSE;
}

// Services and scheduled tasks run on a window station that no user sees.
bool is_attended() {
  USEROBJECTFLAGS flags = {};
  return GetUserObjectInformationW(GetProcessWindowStation(), UOI_FLAGS, &flags, sizeof flags,
                                   nullptr) &&
         (flags.dwFlags & WSF_VISIBLE) != 0;
}

std::wstring program_name() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH - 1);
  std::wstring name(path);
  name.erase(0, name.rfind(L'\\') + 1);
  return name.substr(0, name.rfind(L'.'));
}

}  // namespace kestrelon
