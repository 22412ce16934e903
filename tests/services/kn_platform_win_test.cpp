#include "services/kn_platform_win.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "services/digest_text.h"
#include "services/kn_files.h"
#include "services/kn_shell_win.h"

namespace kestrelon {
namespace {

// A folder whose name no ANSI code page can spell, gone at the end with what the test left in it.
class KnPlatformWin : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = environment_variable(L"TEMP") + L"\\kn ж漢 " + std::to_wstring(GetCurrentProcessId());
    ASSERT_TRUE(create_folders(machine_, folder_));
  }
  void TearDown() override { RemoveDirectoryW(folder_.c_str()); }

  void write(const std::wstring& path, const std::string& bytes) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
  }

  KnPlatform& machine_ = system_platform();
  std::wstring folder_;
};

TEST_F(KnPlatformWin, FindsComparesAndDeletesFilesWithWideNames) {
  const std::wstring file = folder_ + L"\\дata.txt", other = folder_ + L"\\b.txt";
  EXPECT_FALSE(file_exists(machine_, file));
  EXPECT_FALSE(file_exists(machine_, folder_ + L"\\*"));  // only the folders . and ..
  write(file, "123456789");
  write(other, "123456780");
  SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
  EXPECT_TRUE(file_exists(machine_, file));
  EXPECT_TRUE(file_exists(machine_, folder_ + L"\\*.txt"));
  EXPECT_FALSE(file_exists(machine_, folder_ + L"\\*.doc"));
  EXPECT_FALSE(file_exists(machine_, folder_));
  EXPECT_TRUE(file_exists(machine_, folder_, true));
  EXPECT_TRUE(file_exists(machine_, L"C:\\", true));
  EXPECT_FALSE(file_exists(machine_, file, true));
  EXPECT_FALSE(files_are_equal(machine_, file, other));
  EXPECT_TRUE(files_are_equal(machine_, file, file));
  EXPECT_FALSE(files_are_equal(machine_, folder_, folder_));
  EXPECT_TRUE(delete_file(machine_, file));
  EXPECT_TRUE(delete_file(machine_, other));
  EXPECT_FALSE(delete_file(machine_, folder_));
}

TEST_F(KnPlatformWin, MakesFoldersBeyondTheClassicLimit) {
  std::wstring deep = folder_;
  for (int i = 0; i < 6; ++i) deep += L"\\" + std::wstring(60, static_cast<wchar_t>(L'a' + i));
  ASSERT_GT(deep.size(), static_cast<size_t>(MAX_PATH));
  EXPECT_TRUE(create_folders(machine_, deep));
  EXPECT_TRUE(folder_exists(machine_, deep));
  for (; deep != folder_; deep.erase(deep.rfind(L'\\')))
    EXPECT_TRUE(RemoveDirectoryW((L"\\\\?\\" + deep).c_str())) << deep.size();
}

TEST_F(KnPlatformWin, DigestsAFileOnlyWithZlib) {
  const std::wstring file = folder_ + L"\\f";
  write(file, "123456789");
  EXPECT_EQ(crc32_of_file(machine_, file), machine_.has_zlib() ? L"CBF43926" : L"");
  EXPECT_EQ(machine_.open_file(L"NUL"), nullptr);
  EXPECT_EQ(machine_.open_file(folder_), nullptr);
  delete_file(machine_, file);
}

TEST_F(KnPlatformWin, KeepsLongIniValues) {
  const std::wstring file = folder_ + L"\\ж.ini", value(1000, L'ç');
  EXPECT_TRUE(write_ini(machine_, file, L"Seção", L"Chave", value));
  EXPECT_EQ(read_ini(machine_, file, L"seção", L"CHAVE"), value);
  EXPECT_EQ(read_ini(machine_, file, L"seção", L"outra"), L"");
  EXPECT_FALSE(write_ini(machine_, folder_ + L"\\none\\x.ini", L"s", L"k", L"v"));
  delete_file(machine_, file);
}

TEST_F(KnPlatformWin, IniFilesHoldWordsBeyondTheCodePageOrRefuseThem) {
  const std::wstring wide = folder_ + L"\\w.ini", old = folder_ + L"\\o.ini", word = L"漢字 ж";
  EXPECT_TRUE(write_ini(machine_, wide, L"s", word, word));
  EXPECT_EQ(read_ini(machine_, wide, L"s", word), word);
  EXPECT_EQ(machine_.ini_form(wide), KnPlatform::IniForm::kWide);
  EXPECT_TRUE(write_ini(machine_, wide, L"s", L"k", L"v"));
  EXPECT_EQ(read_ini(machine_, wide, L"s", word), word);
  write(old, "[s]\r\nk=v\r\n");
  EXPECT_FALSE(write_ini(machine_, old, L"s", L"k", word));
  EXPECT_EQ(read_ini(machine_, old, L"s", L"k"), L"v");
  EXPECT_TRUE(write_ini(machine_, old, L"s", L"k", L"w"));
  EXPECT_EQ(read_ini(machine_, old, L"s", L"k"), L"w");
  delete_file(machine_, wide);
  delete_file(machine_, old);
}

TEST_F(KnPlatformWin, KnowsTheClockAndTheDrives) {
  const DateTime now = machine_.local_now();
  EXPECT_TRUE(is_real_date(now.date));
  EXPECT_TRUE(drive_exists(machine_, L"c:"));
  EXPECT_GT(free_disk_space(L"C"), 0);
  EXPECT_EQ(free_disk_space(L"C"), free_disk_space(L"C:\\"));
  EXPECT_EQ(free_disk_space(L""), 0);
  EXPECT_EQ(free_disk_space(L"no drive"), 0);
  EXPECT_EQ(environment_variable(L"KESTRELON_NOT_SET"), L"");
}

TEST(KnShellWin, TheSystemIsToldApartFromTheProcess) {
  SYSTEM_INFO info;
  GetNativeSystemInfo(&info);
  EXPECT_EQ(is_64_bit_windows(), info.wProcessorArchitecture == PROCESSOR_ARCHITECTURE_AMD64);
}

TEST(KnShellWin, ToldErrorsAreTheSystems) {
  const std::wstring text = system_error_text(ERROR_ACCESS_DENIED);
  EXPECT_GT(text.size(), 5u);
  EXPECT_EQ(text.find(L'\0'), std::wstring::npos);
  EXPECT_EQ(system_error_text(-77777), L"");
}

TEST(KnShellWin, ProcessesAreFoundAndEndedByName) {
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started = {};
  wchar_t command[] = L"cmd.exe /c copy %ComSpec% \"%TEMP%\\knvictim.exe\"";
  ASSERT_TRUE(CreateProcessW(nullptr, command, nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                             nullptr, &startup, &started));
  WaitForSingleObject(started.hProcess, 20000);
  CloseHandle(started.hProcess);
  CloseHandle(started.hThread);
  const std::wstring victim = environment_variable(L"TEMP") + L"\\knvictim.exe";
  std::wstring line = L"\"" + victim + L"\" /c pause";
  ASSERT_FALSE(is_process_running(L"knvictim.exe"));
  EXPECT_FALSE(end_processes(L"knvictim"));
  ASSERT_TRUE(CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, CREATE_NEW_CONSOLE,
                             nullptr, nullptr, &startup, &started));
  EXPECT_TRUE(is_process_running(L"KNVICTIM"));
  EXPECT_TRUE(end_processes(L"knvictim.exe"));
  EXPECT_EQ(WaitForSingleObject(started.hProcess, 20000), WAIT_OBJECT_0);
  EXPECT_FALSE(is_process_running(L"knvictim.exe"));
  CloseHandle(started.hProcess);
  CloseHandle(started.hThread);
  DeleteFileW(victim.c_str());
}

TEST(KnShellWin, WindowsAreKeptInFrontFlashedAndListed) {
  const HWND window =
      CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"kn", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                      50, 50, nullptr, nullptr, nullptr, nullptr);
  ASSERT_NE(window, nullptr);
  const auto style = [window] { return GetWindowLongPtrW(window, GWL_EXSTYLE); };
  EXPECT_TRUE(set_window_topmost(window, true));
  EXPECT_TRUE(style() & WS_EX_TOPMOST);
  EXPECT_TRUE(set_window_topmost(window, false));
  EXPECT_FALSE(style() & WS_EX_TOPMOST);
  EXPECT_TRUE(set_taskbar_entry(window, true));
  EXPECT_EQ(style() & (WS_EX_APPWINDOW | WS_EX_TOOLWINDOW), WS_EX_APPWINDOW);
  EXPECT_TRUE(set_taskbar_entry(window, false));
  EXPECT_EQ(style() & (WS_EX_APPWINDOW | WS_EX_TOOLWINDOW), WS_EX_TOOLWINDOW);
  EXPECT_TRUE(IsWindowVisible(window));
  EXPECT_TRUE(flash_window(window, true));
  EXPECT_TRUE(flash_window(window, false));
  DestroyWindow(window);
  EXPECT_FALSE(set_window_topmost(window, true));
  EXPECT_FALSE(flash_window(window, true));
  EXPECT_FALSE(set_taskbar_entry(window, true));
}

TEST(KnShellWin, TheShellIsAskedWithoutDialogs) {
  EXPECT_FALSE(open_by_shell(L"C:\\none\\none.xyz"));
  EXPECT_TRUE(register_common_controls());
  EXPECT_FALSE(is_valid_url(L""));
  EXPECT_TRUE(is_valid_url(L"http://localhost/"));
}

}  // namespace
}  // namespace kestrelon
