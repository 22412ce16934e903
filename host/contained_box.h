// A hosted control that other items stand on.
#pragma once

#include "host/container_window.h"

namespace kestrelon::host {

class ControlSite;

/// The window belongs to the control, which shows its messages to the container before and after
/// its own handling; windowless items on it live by that.
class ContainedBox final : public ContainerWindow {
 public:
  explicit ContainedBox(ControlSite& site) : site_(site) {}
  ~ContainedBox() override { adopt(nullptr); }

  IDispatch* container_dispatch() override;
  /// The control's window, or null while it has none.
  void stand_on(HWND window) { adopt(window); }
  /// Draws the control with what lies behind it.
  void paint_background(HDC hdc) override;

  /// True when the message is done with and `result` is the answer.
  bool before(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result);
  void after(UINT message, WPARAM wparam);

 private:
  ControlSite& site_;
  bool painting_ = false;
};

}  // namespace kestrelon::host
