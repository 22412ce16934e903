// A list box of 100,000 items, early bound, beside the system's own: filling, a text from its
// prefix, clearing, a page drawn. Wall clock, medians.
#include <windows.h>
//
#include <oleauto.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "contract/us_list_box.h"
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

constexpr int kItems = 100'000;
constexpr RECT kPlace{0, 0, 200, 300};

template <class Work>
double milliseconds(Work work) {
  const auto start = Clock::now();
  work();
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

template <class Prepare, class Work>
double median(Prepare prepare, Work work) {
  std::vector<double> times;
  for (int i = 0; i < 5; ++i) {
    prepare();
    times.push_back(milliseconds(work));
  }
  std::nth_element(times.begin(), times.begin() + 2, times.end());
  return times[2];
}

void report(const char* name, double ours, double system = 0) {
  std::printf("list box, %s: %.1f ms", name, ours);
  if (system > 0) std::printf(", the system's %.1f ms, ratio %.2f", system, ours / system);
  std::printf("\n");
}

std::vector<BSTR> make_texts() {
  std::vector<BSTR> texts;
  for (int i = 0; i < kItems; ++i)
    texts.push_back(SysAllocString(
        (L"Cliente n\u00famero " + std::to_wstring(i * 7919LL % 1'000'003)).c_str()));
  return texts;
}

}  // namespace

int main() {
  OleInitialize(nullptr);
  ClassLibrary library(library_path());
  Form form;
  form.create_object = [&](const std::wstring& prog_id) { return library.create(prog_id); };
  form.show();
  const auto site = form.add_control(L"Kestrelon2012.USListBox", L"", kPlace);
  ComPtr<_USListBox> list;
  site->control()->QueryInterface(IID__USListBox, list.put_void());
  const HWND system =
      CreateWindowExW(0, L"LISTBOX", L"", WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOINTEGRALHEIGHT,
                      220, 0, 200, 300, form.hwnd(), nullptr, nullptr, nullptr);
  const std::vector<BSTR> texts = make_texts();
  const VARIANT none{};
  const auto clear = [&] { list->Clear(); };
  const auto fill = [&] {
    list->DisableRefresh();
    long place = 0;
    for (const BSTR text : texts) list->AddItem(text, -1, none, 0, VARIANT_FALSE, &place);
    list->Refresh();
  };
  const auto refill = [&] {
    clear();
    fill();
  };
  const auto clear_system = [&] { SendMessageW(system, LB_RESETCONTENT, 0, 0); };
  const auto fill_system = [&] {
    SendMessageW(system, WM_SETREDRAW, FALSE, 0);
    for (const BSTR text : texts)
      SendMessageW(system, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
    SendMessageW(system, WM_SETREDRAW, TRUE, 0);
  };
  report("fill", median(clear, fill), median(clear_system, fill_system));
  const auto draw = [](HWND window) {
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
  };
  report("page", median([&] { list->Refresh(); }, [&] { draw(site->window()); }),
         median([] {}, [&] { draw(system); }));
  const auto find = [&](const wchar_t* sought, GRID_SEARCH_MODE mode) {
    const Bstr text(sought);
    long found = 0;
    return median([] {}, [&] { list->FindItem(text.get(), mode, VARIANT_FALSE, 0, &found); });
  };
  report("prefix", find(L"cliente numero x", Search_BeginsWith),
         median([] {},
                [&] {
                  SendMessageW(system, LB_FINDSTRING, static_cast<WPARAM>(-1),
                               reinterpret_cast<LPARAM>(L"cliente n\u00famero x"));
                }));
  report("contains", find(L"numero 99x", Search_Like));
  report("sort, first", median(refill, [&] { list->Sort(Sort_Ascending); }));
  report("sort, again",
         median([&] { list->Sort(Sort_Descending); }, [&] { list->Sort(Sort_Ascending); }));
  report("clear", median(refill, clear), median(fill_system, clear_system));
  for (const BSTR text : texts) SysFreeString(text);
  OleUninitialize();
  return 0;
}
