// The controls that stand on a control, as its container and the windows know them.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "base/com_win.h"
#include "chrome/us_tab/page_places.h"

namespace kestrelon {

/// What a program has brought from elsewhere: a control, a bare window, or both.
struct AddedControl {
  std::wstring name;         ///< for the list of places
  ComPtr<IDispatch> object;  ///< null for a bare window
  HWND window = nullptr;     ///< null for a control without one
  HWND former_parent = nullptr;
};

/// One contained control whose position can be read and set.
class MovableControl {
 public:
  MovableControl(std::wstring name, ComPtr<IDispatch> object, HWND window, double unit)
      : name_(std::move(name)), object_(std::move(object)), window_(window), unit_(unit) {}

  const std::wstring& name() const { return name_; }
  IDispatch* object() const { return object_.get(); }
  /// Twips in one unit of its positions.
  double unit() const { return unit_; }
  /// False for what has no position (any more).
  bool left(double& out) const;
  bool set_left(double left) const;
  /// The window of the control, null without one.
  HWND window() const;

 private:
  std::wstring name_;
  ComPtr<IDispatch> object_;
  HWND window_;
  double unit_;
};

/// Finds them: items of the form whose `Container` is the extender, or child windows where the
/// container does not tell.
class ContainedControls {
 public:
  ContainedControls(ComPtr<IDispatch> extender, HWND window)
      : extender_(std::move(extender)), window_(window) {}

  std::vector<MovableControl> list(const std::vector<AddedControl>& added) const;

 private:
  bool from_form(std::vector<MovableControl>& out) const;
  void from_windows(const std::vector<AddedControl>& added, std::vector<MovableControl>& out) const;

  ComPtr<IDispatch> extender_;
  HWND window_;
};

/// Twips in one unit of a control's positions: its container's `ScaleMode`, where it tells one.
double twips_per_unit_of(IDispatch* control);

}  // namespace kestrelon
