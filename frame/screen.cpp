#include "frame/screen.h"

#include <atomic>

#include "frame/himetric.h"

namespace kestrelon {
namespace {

using GetDpiForWindowFunction = UINT(WINAPI*)(HWND);

GetDpiForWindowFunction get_dpi_for_window() {
  static const auto function = reinterpret_cast<GetDpiForWindowFunction>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow")));
  return function;
}

enum class Contrast { kUnknown, kNormal, kHigh };
std::atomic<Contrast> contrast{Contrast::kUnknown};

Contrast ask_contrast() {
  HIGHCONTRASTW answer{};
  answer.cbSize = sizeof answer;
  const bool high = SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof answer, &answer, 0) &&
                    (answer.dwFlags & HCF_HIGHCONTRASTON) != 0;
  return high ? Contrast::kHigh : Contrast::kNormal;
}

}  // namespace

Scale system_scale() {
  return Scale(screen_resolution().x);
}

Scale window_scale(HWND window) {
  const auto ask = get_dpi_for_window();
  const UINT dpi = ask != nullptr && window != nullptr ? ask(window) : 0;
  return dpi != 0 ? Scale(static_cast<int>(dpi)) : system_scale();
}

RECT work_area(const RECT& near_to) {
  MONITORINFO info{};
  info.cbSize = sizeof info;
  if (GetMonitorInfoW(MonitorFromRect(&near_to, MONITOR_DEFAULTTONEAREST), &info))
    return info.rcWork;
  return {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
}

bool high_contrast() {
  if (contrast == Contrast::kUnknown) contrast = ask_contrast();
  return contrast == Contrast::kHigh;
}

void screen_settings_changed() {
  contrast = Contrast::kUnknown;
}

bool animations_wanted() {
  BOOL wanted = TRUE;
  SystemParametersInfoW(SPI_GETCLIENTAREAANIMATION, 0, &wanted, 0);
  return wanted != FALSE;
}

}  // namespace kestrelon
