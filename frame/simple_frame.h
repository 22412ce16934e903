// A control that other controls stand on: its window's messages pass by the container.
#pragma once

#include <windows.h>
//
#include <ocidl.h>

#include "base/com_win.h"

namespace kestrelon {

/// The container's filter of one message, around the control's own handling. A container draws and
/// feeds the windowless controls on the frame from there, and in a designer takes what the control
/// must not have. Does nothing for a control that is no frame (OLEMISC_SIMPLEFRAME) or a container
/// without frames.
class FrameFilter {
 public:
  FrameFilter(const ComPtr<ISimpleFrameSite>& site, HWND window, UINT message, WPARAM wparam,
              LPARAM lparam);
  FrameFilter(const FrameFilter&) = delete;
  FrameFilter& operator=(const FrameFilter&) = delete;

  /// The container has dealt with the message, and result() is its answer.
  bool taken() const { return taken_; }
  LRESULT result() const { return result_; }
  /// Shows the container the control's own answer; answers what becomes of it.
  LRESULT after(LRESULT own);

 private:
  ComPtr<ISimpleFrameSite> site_;
  HWND window_;
  UINT message_;
  WPARAM wparam_;
  LPARAM lparam_;
  LRESULT result_ = 0;
  DWORD cookie_ = 0;
  bool taken_ = false;
};

}  // namespace kestrelon
