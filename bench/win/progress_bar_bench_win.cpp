// A progress bar, early bound, beside the system's own: a million values of which few change a
// pixel, and a thousand that all do. Wall clock, medians.
#include <windows.h>
//
#include <commctrl.h>
#include <oleauto.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "contract/us_progress_bar.h"
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

template <class Work>
double median(Work work) {
  std::vector<double> times;
  for (int i = 0; i < 5; ++i) {
    const auto start = Clock::now();
    work();
    times.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
  }
  std::nth_element(times.begin(), times.begin() + 2, times.end());
  return times[2];
}

void report(const char* name, double ours, double system) {
  std::printf("progress bar, %s: %.1f ms, the system's %.1f ms, ratio %.2f\n", name, ours, system,
              ours / system);
}

}  // namespace

int main() {
  OleInitialize(nullptr);
  ClassLibrary library(library_path());
  Form form;
  form.create_object = [&](const std::wstring& prog_id) { return library.create(prog_id); };
  form.show();
  const auto site = form.add_control(L"Kestrelon2012.USProgressBar", L"", RECT{10, 10, 210, 30});
  const auto bar = query<_USProgressBar>(site->control());
  const HWND peer = CreateWindowW(PROGRESS_CLASSW, L"", WS_CHILD | WS_VISIBLE, 10, 40, 200, 20,
                                  form.hwnd(), nullptr, nullptr, nullptr);
  if (!bar || peer == nullptr) return 1;
  drain_messages();
  constexpr int kMany = 1'000'000, kFew = 1000;
  bar->put_Max(kMany * 1000.0);
  SendMessageW(peer, PBM_SETRANGE32, 0, kMany);
  report("1,000,000 values that change nothing to be seen", median([&] {
           for (int i = 1; i <= kMany; ++i) bar->put_Value(i);
         }),
         median([&] {
           for (int i = 1; i <= kMany; ++i)
             SendMessageW(peer, PBM_SETPOS, static_cast<WPARAM>(i & 1023), 0);
         }));
  bar->put_Max(kFew);
  bar->put_Decimals(1);
  SendMessageW(peer, PBM_SETRANGE32, 0, kFew);
  report("1,000 values that each change the text or a pixel", median([&] {
           for (int i = 1; i <= kFew; ++i) bar->put_Value(i);
         }),
         median([&] {
           for (int i = 1; i <= kFew; ++i) {
             SendMessageW(peer, PBM_SETPOS, static_cast<WPARAM>(i), 0);
             UpdateWindow(peer);
           }
         }));
  DestroyWindow(peer);
  OleUninitialize();
  return 0;
}
