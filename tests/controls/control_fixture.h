// One control of the built library on a form of our own container.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/class_library.h"
#include "host/control_site.h"
#include "host/event_sink.h"
#include "host/form.h"
#include "host/input.h"
#include "host/late_bound.h"
#include "host/message_loop.h"
#include "host/persistence.h"
#include "host/property_bag.h"
#include "tests/library_path.h"

namespace kestrelon::host {

/// The library as it was built, next to the test programs' folder; loaded once a process.
inline ClassLibrary& library() {
  static auto* const instance = new ClassLibrary(library_path());
  return *instance;
}

class ControlTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { OleInitialize(nullptr); }
  static void TearDownTestSuite() { OleUninitialize(); }

  ControlTest() {
    quicken_mouse_leave();
    form_.create_object = [](const std::wstring& prog_id) { return library().create(prog_id); };
  }

  /// Places a control as a saved form does: with properties read from a bag (an empty one by
  /// default).
  ComPtr<ControlSite> place(const std::wstring& class_name, const RECT& bounds,
                            PropertyBag* bag = nullptr) {
    ControlState state;
    const auto empty = make_com<PropertyBag>();
    state.bag = bag != nullptr ? bag : empty.get();
    return form_.add_control(L"Kestrelon2012." + class_name, L"", bounds, nullptr, state);
  }
  /// Places a control as a designer does when it is drawn on the form.
  ComPtr<ControlSite> place_new(const std::wstring& class_name, const RECT& bounds) {
    return form_.add_control(L"Kestrelon2012." + class_name, L"", bounds);
  }

  static std::vector<std::wstring> take_log(ControlSite& site) {
    auto log = site.events()->log();
    site.events()->clear_log();
    return log;
  }
  /// Event names alone, movements left out: their number depends on the system.
  static std::vector<std::wstring> take_names(ControlSite& site) {
    std::vector<std::wstring> names;
    for (const std::wstring& line : take_log(site)) {
      const std::wstring name = line.substr(0, line.find(L'('));
      if (name != L"MouseMove") names.push_back(name);
    }
    return names;
  }
  static Variant get(ControlSite& site, const wchar_t* name) {
    return get_property(site.control_dispatch().get(), name);
  }
  static void put(ControlSite& site, const wchar_t* name, const Variant& value) {
    put_property(site.control_dispatch().get(), name, value);
  }
  static long number(ControlSite& site, const wchar_t* name) { return to_long(get(site, name)); }

  Form form_;
};

/// What a control shows, drawn by itself into memory: 0x00RRGGBB, top-down.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<uint32_t> pixels;
  uint32_t at(int x, int y) const {
    return pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
  }
  bool operator==(const Picture&) const = default;
};

Picture draw_control(ControlSite& site, int width, int height, COLORREF behind = RGB(255, 0, 255));

}  // namespace kestrelon::host
