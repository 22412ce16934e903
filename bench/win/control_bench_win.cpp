// The library as a host meets it: time to load it, a full repaint of a check box beside the
// system's own button control drawing itself, and a thousand controls from creation to first paint.
// Wall clock, medians.
#include <windows.h>
//
#include <oleauto.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "frame/dib_section.h"
#include "host/class_library.h"
#include "host/control_site.h"
#include "host/form.h"
#include "host/late_bound.h"
#include "host/message_loop.h"
#include "tests/library_path.h"

namespace {

using namespace kestrelon;
using namespace kestrelon::host;
using Clock = std::chrono::steady_clock;

constexpr int kWidth = 200, kHeight = 30;

template <class Work>
double microseconds(Work work) {
  const auto start = Clock::now();
  work();
  return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

template <class Work>
double median_microseconds(Work work) {
  std::vector<double> times(101);
  work();
  for (double& time : times) time = microseconds(work);
  std::nth_element(times.begin(), times.begin() + 50, times.end());
  return times[50];
}

void measure_repaint(Form& form) {
  const auto site = form.add_control(L"Kestrelon2012.USCheckBox", L"", RECT{0, 0, kWidth, kHeight});
  const auto control = site->control_dispatch();
  put_property(control.get(), L"Caption", Variant(L"&Emitir nota fiscal"));
  put_property(control.get(), L"BackStyle", Variant(1L));
  const double ours = median_microseconds([&] { call_method(control.get(), L"Refresh"); });

  const HWND button =
      CreateWindowExW(0, L"BUTTON", L"&Emitir nota fiscal", WS_CHILD | WS_VISIBLE | BS_AUTOCHECKBOX,
                      0, 60, kWidth, kHeight, form.hwnd(), nullptr, nullptr, nullptr);
  DibSection memory;
  memory.create(kWidth, kHeight);
  const double system = median_microseconds([&] {
    SendMessageW(button, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(memory.dc()),
                 PRF_CLIENT | PRF_ERASEBKGND);
  });
  std::printf("check box %d x %d, full repaint: %.0f us, the system's button %.0f us, ratio %.2f\n",
              kWidth, kHeight, ours, system, ours / system);
  DestroyWindow(button);
  form.remove(*site);
}

void measure_thousand(Form& form) {
  constexpr int kControls = 1000;
  std::vector<ComPtr<ControlSite>> sites;
  const double ours = microseconds([&] {
    for (int i = 0; i < kControls; ++i) {
      const int x = i % 10 * 60, y = i / 10 * 20;
      sites.push_back(
          form.add_control(L"Kestrelon2012.USCheckBox", L"", RECT{x, y, x + 58, y + 18}));
      UpdateWindow(sites.back()->window());
    }
  });
  for (const auto& site : sites) form.remove(*site);
  sites.clear();

  std::vector<HWND> windows;
  const double system = microseconds([&] {
    for (int i = 0; i < kControls; ++i) {
      windows.push_back(CreateWindowExW(0, L"BUTTON", L"", WS_CHILD | WS_VISIBLE | BS_AUTOCHECKBOX,
                                        i % 10 * 60, i / 10 * 20, 58, 18, form.hwnd(), nullptr,
                                        nullptr, nullptr));
      UpdateWindow(windows.back());
    }
  });
  for (const HWND window : windows) DestroyWindow(window);
  std::printf(
      "create, activate, first paint of %d: %.0f ms, bare system buttons %.0f ms, ratio %.2f\n",
      kControls, ours / 1000, system / 1000, ours / system);
}

void measure_library() {
  const std::wstring path = library_path();
  const double load = microseconds([&] {
    const HMODULE module = LoadLibraryW(path.c_str());
    FreeLibrary(module);
  });
  WIN32_FILE_ATTRIBUTE_DATA facts{};
  GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &facts);
  std::printf("library: %.2f MB, loaded and freed in %.1f ms\n", facts.nFileSizeLow / 1048576.0,
              load / 1000);
}

}  // namespace

int main() {
  OleInitialize(nullptr);
  measure_library();
  {
    const ClassLibrary library(library_path());
    Form form;
    form.create_object = [&](const std::wstring& prog_id) { return library.create(prog_id); };
    form.show();
    measure_repaint(form);
    measure_thousand(form);
    form.unload();
  }
  OleUninitialize();
}
