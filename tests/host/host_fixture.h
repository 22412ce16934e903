// What the tests of the host share: COM for the process, and probes on forms.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/form.h"
#include "tests/host/probe_control.h"

namespace kestrelon::host {

class HostTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { OleInitialize(nullptr); }
  static void TearDownTestSuite() { OleUninitialize(); }
};

inline ComPtr<IUnknown> make_probe(const ProbeOptions& options) {
  return make_com<ProbeControl>(options).as<IUnknown>();
}

inline ComPtr<ControlSite> add_probe(Form& form, const std::wstring& name,
                                     const ProbeOptions& options = {},
                                     ContainerWindow* box = nullptr,
                                     const RECT& bounds = make_rect(10, 10, 60, 40)) {
  return form.add_object(make_probe(options), name, bounds, box);
}

inline ProbeControl* probe_of(const ComPtr<ControlSite>& site) {
  return dynamic_cast<ProbeControl*>(site->control());
}

MATCHER_P4(RectIs, left, top, width, height, "") {
  *result_listener << arg.left << "," << arg.top << " " << width_of(arg) << "x" << height_of(arg);
  return arg.left == left && arg.top == top && width_of(arg) == width && height_of(arg) == height;
}

}  // namespace kestrelon::host
