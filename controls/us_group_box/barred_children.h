// Keeps input from the windows that stand in another, which itself goes on taking it.
#pragma once

#include <functional>
#include <vector>

#include "frame/self_sub.h"

namespace kestrelon {

class BarredChildren final : private SelfSubOwner {
 public:
  /// Tells whether a child that was barred is to take input again; asked when the bar goes.
  using Wanted = std::function<bool(HWND)>;
  explicit BarredChildren(Wanted wanted) : wanted_(std::move(wanted)) {}

  bool barred() const { return barred_; }
  /// Bars all children that are there; call again when one has come.
  void bar(HWND parent);
  void release();

 private:
  // A child that its own program enables meanwhile stays barred.
  void WindowProcHook(bool before, bool& handled, LRESULT& result, HWND window, UINT message,
                      WPARAM wparam, LPARAM lparam, LPARAM user) override;

  Wanted wanted_;
  cSelfSub listener_;
  std::vector<HWND> windows_;  // disabled by this object
  bool barred_ = false;
};

}  // namespace kestrelon
