// The scroll bars that the platform draws, flat ones where its control library still has them.
#pragma once

#include <windows.h>

namespace kestrelon {

/// The calls on one window's bars; each goes to the flat engine while the bars are under its
/// control.
class PlatformBars {
 public:
  explicit PlatformBars(HWND window = nullptr) : window_(window) {}

  bool flat() const { return flat_; }
  /// Puts the bars under the flat engine in one of its modes (FSB_...). False where there is none.
  bool make_flat(int mode);
  void make_plain();

  bool get_info(int bar, SCROLLINFO& info) const;
  void set_info(int bar, const SCROLLINFO& info, bool redraw) const;
  void show(int bar, bool shown) const;
  void enable(int bar, bool enabled) const;

 private:
  HWND window_;
  bool flat_ = false;
};

}  // namespace kestrelon
