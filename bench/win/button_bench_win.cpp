// A form full of buttons: created, painted, given another theme, crossed by the pointer; with the
// number of times each button was drawn. Peers are the system's own buttons on the same form. Wall
// clock; the pointer's journey is input through the whole system.
#include <windows.h>
//
#include <oleauto.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

#include "frame/control_frame.h"
#include "host/class_library.h"
#include "host/control_site.h"
#include "host/form.h"
#include "host/input.h"
#include "host/late_bound.h"
#include "host/message_loop.h"
#include "host/property_bag.h"
#include "tests/library_path.h"

namespace {

using namespace kestrelon;
using namespace kestrelon::host;
using Clock = std::chrono::steady_clock;

constexpr int kButtons = 500, kColumns = 20;
constexpr int kWidth = 48, kHeight = 22;

RECT place_of(int i) {
  const int x = i % kColumns * (kWidth + 2), y = i / kColumns * (kHeight + 2);
  return {x, y, x + kWidth, y + kHeight};
}

double milliseconds(const std::function<void()>& work) {
  const auto start = Clock::now();
  work();
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// A form with one kind of button on it.
class Subject {
 public:
  virtual ~Subject() = default;
  virtual void create() = 0;
  virtual void change_look(int round) = 0;
  virtual long repaints() const { return 0; }

  const std::vector<HWND>& windows() const { return windows_; }
  void paint_all() const {
    for (const HWND window : windows_) {
      InvalidateRect(window, nullptr, TRUE);
      UpdateWindow(window);
    }
  }
  void cross() const {
    for (const HWND window : windows_) {
      mouse_move(window, kWidth / 3, kHeight / 2);
      mouse_move(window, kWidth / 2, kHeight / 2);  // inside: shows nothing new
    }
    mouse_away();
  }

 protected:
  std::vector<HWND> windows_;
};

class Ours final : public Subject {
 public:
  explicit Ours(Form& form) : form_(form) {}
  ~Ours() override {
    for (const auto& site : sites_) form_.remove(*site);
  }
  void create() override {
    ControlState state;
    state.bag = bag_.get();
    for (int i = 0; i < kButtons; ++i) {
      sites_.push_back(
          form_.add_control(L"Kestrelon2012.USButton", L"", place_of(i), nullptr, state));
      windows_.push_back(sites_.back()->window());
    }
  }
  void change_look(int round) override {
    for (const auto& site : sites_)
      put_property(site->control_dispatch().get(), L"Theme", Variant(long{round % 3}));
    for (const HWND window : windows_) UpdateWindow(window);
  }
  long repaints() const override {
    const UINT message = RegisterWindowMessageW(kFullRepaintsMessage);
    long total = 0;
    for (const HWND window : windows_)
      total += static_cast<long>(SendMessageW(window, message, 0, 0));
    return total;
  }

 private:
  Form& form_;
  ComPtr<PropertyBag> bag_ = make_com<PropertyBag>();
  std::vector<ComPtr<ControlSite>> sites_;
};

class Systems final : public Subject {
 public:
  explicit Systems(Form& form) : form_(form) {}
  ~Systems() override {
    for (const HWND window : windows_) DestroyWindow(window);
  }
  void create() override {
    for (int i = 0; i < kButtons; ++i) {
      const RECT place = place_of(i);
      windows_.push_back(CreateWindowExW(
          0, L"BUTTON", L"OK", WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPSIBLINGS, place.left,
          place.top, kWidth, kHeight, form_.hwnd(), nullptr, nullptr, nullptr));
    }
  }
  void change_look(int) override {
    for (const HWND window : windows_) SendMessageW(window, WM_THEMECHANGED, 0, 0);
    paint_all();
  }

 private:
  Form& form_;
};

struct Result {
  double time;
  double repaints;  // a button
};

struct Results {
  Result create, paint, look, cross;
};

Result measure(Subject& subject, const std::function<void()>& work) {
  const long before = subject.repaints();
  const double time = milliseconds(work);
  return {time, static_cast<double>(subject.repaints() - before) / kButtons};
}

Results measure_all(Subject& subject) {
  Results out{};
  out.create = measure(subject, [&] { subject.create(); });
  out.paint = measure(subject, [&] { subject.paint_all(); });
  std::vector<Result> looks;
  for (int round = 0; round < 7; ++round)
    looks.push_back(measure(subject, [&] { subject.change_look(round); }));
  std::nth_element(looks.begin(), looks.begin() + 3, looks.end(),
                   [](const Result& a, const Result& b) { return a.time < b.time; });
  out.look = looks[3];
  mouse_away();
  pump_for(100);
  out.cross = measure(subject, [&] { subject.cross(); });
  return out;
}

void print(const char* what, const Result& ours, const Result& system) {
  std::printf("%-28s %8.1f ms, the system's %8.1f ms, ratio %5.2f, %.2f full repaints a button\n",
              what, ours.time, system.time, ours.time / system.time, ours.repaints);
}

}  // namespace

int main() {
  OleInitialize(nullptr);
  {
    const ClassLibrary library(library_path());
    Form form;
    form.create_object = [&](const std::wstring& prog_id) { return library.create(prog_id); };
    quicken_mouse_leave();
    bring_up(form);
    SetWindowPos(form.hwnd(), nullptr, 0, 0, 1020, 680, SWP_NOZORDER);
    Results system{}, ours{};
    {
      Systems subject(form);
      system = measure_all(subject);
    }
    {
      Ours subject(form);
      ours = measure_all(subject);
    }
    std::printf("%d buttons on one form\n", kButtons);
    print("created and activated", ours.create, system.create);
    print("shown again", ours.paint, system.paint);
    print("another theme", ours.look, system.look);
    print("crossed by the pointer", ours.cross, system.cross);
    form.unload();
  }
  OleUninitialize();
}
