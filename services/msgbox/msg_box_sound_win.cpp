#include "services/msgbox/msg_box_sound_win.h"

#include <windows.h>
//
#include <mmsystem.h>

#include <string>

#include "base/module_win.h"
#include "base/resource_ids.h"

namespace kestrelon {
namespace {

// The system's names of the events, in the order of the icons.
constexpr const wchar_t* kEvents[] = {nullptr, L"SystemHand", L"SystemQuestion",
                                      L"SystemExclamation", L"SystemAsterisk"};

using PlaySoundFunction = BOOL(WINAPI*)(LPCWSTR, HMODULE, DWORD);

PlaySoundFunction play_sound() {
  static const auto function = [] {
    const HMODULE library = LoadLibraryW(L"winmm.dll");
    return library == nullptr ? nullptr
                              : reinterpret_cast<PlaySoundFunction>(
                                    reinterpret_cast<void*>(GetProcAddress(library, "PlaySoundW")));
  }();
  return function;
}

}  // namespace

bool scheme_has_sound(msg_box::Icon icon) {
  const wchar_t* const event = kEvents[static_cast<size_t>(icon)];
  if (event == nullptr) return false;
  const std::wstring key =
      std::wstring(L"AppEvents\\Schemes\\Apps\\.Default\\") + event + L"\\.Current";
  DWORD bytes = 0;
  return RegGetValueW(HKEY_CURRENT_USER, key.c_str(), nullptr, RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ,
                      nullptr, nullptr, &bytes) == ERROR_SUCCESS &&
         bytes > sizeof(wchar_t);
}

void play_msg_box_sound(msg_box::Icon icon) {
  if (!scheme_has_sound(icon)) return;
  const int number = IDR_SOUND_CRITICAL - 1 + static_cast<int>(icon);
  const HRSRC resource = FindResourceW(module_instance(), MAKEINTRESOURCEW(number), L"SOUNDS");
  const HGLOBAL loaded = resource == nullptr ? nullptr : LoadResource(module_instance(), resource);
  // The bytes stay where they are as long as the library is loaded.
  const void* const bytes = loaded == nullptr ? nullptr : LockResource(loaded);
  if (bytes == nullptr || play_sound() == nullptr) return;
  play_sound()(static_cast<LPCWSTR>(bytes), nullptr, SND_MEMORY | SND_ASYNC | SND_NODEFAULT);
}

}  // namespace kestrelon
