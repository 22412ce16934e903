#include "chrome/us_tab/contained_controls.h"

#include <algorithm>

#include "base/decimal.h"
#include "frame/himetric.h"
#include "services/late_object_win.h"

namespace kestrelon {
namespace {

constexpr double kTwipsPerInch = 1440;

double twips_per_pixel() {
  return kTwipsPerInch / screen_resolution().x;
}

bool same_object(IDispatch* a, IDispatch* b) {
  return query<IUnknown>(a).get() == query<IUnknown>(b).get();
}

// The name with its place in an array of controls, where it is in one.
std::wstring name_of(LateObject& control) {
  Variant name = control.get_property(L"Name");
  if (!name.change(VT_BSTR)) return {};
  std::wstring out = to_wstring(V_BSTR(&name));
  try {
    Variant index = control.get_property(L"Index");
    if (index.change(VT_I4)) out += L"(" + decimal_text(V_I4(&index)) + L")";
  } catch (const ComError&) {  // not in an array
  }
  return out;
}

double number_in(LateObject& object, const wchar_t* name) {
  Variant value = object.get_property(name);
  if (!value.change(VT_R8)) throw ComError(DISP_E_TYPEMISMATCH);
  return V_R8(&value);
}

}  // namespace

double twips_per_unit_of(IDispatch* control) {
  try {
    LateObject container = LateObject(ComPtr<IDispatch>(control)).get_object(L"Container");
    switch (number_of(container.get_property(L"ScaleMode"))) {
      case 2:
        return kTwipsPerInch / 72;  // points
      case 3:
        return twips_per_pixel();
      case 4:
        return kTwipsPerInch / 12;  // characters
      case 5:
        return kTwipsPerInch;
      case 6:
        return kTwipsPerInch / 25.4;
      case 7:
        return kTwipsPerInch / 2.54;
      default:
        return 1;
    }
  } catch (const ComError&) {  // it tells none
    return 1;
  }
}

bool MovableControl::left(double& out) const {
  if (!object_) {
    RECT place{};
    if (!IsWindow(window_) || !GetWindowRect(window_, &place)) return false;
    MapWindowPoints(nullptr, GetParent(window_), reinterpret_cast<POINT*>(&place), 2);
    out = static_cast<double>(place.left);
    return true;
  }
  try {
    LateObject control(object_);
    out = number_in(control, L"Left");
    return true;
  } catch (const ComError&) {  // a line, a timer, or a control that is gone
    return false;
  }
}

bool MovableControl::set_left(double left) const {
  if (!object_) {
    RECT place{};
    if (!IsWindow(window_) || !GetWindowRect(window_, &place)) return false;
    MapWindowPoints(nullptr, GetParent(window_), reinterpret_cast<POINT*>(&place), 2);
    return SetWindowPos(window_, nullptr, static_cast<int>(left), place.top, 0, 0,
                        SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE) != FALSE;
  }
  try {
    LateObject(object_).put_property(L"Left", Variant(left));
    return true;
  } catch (const ComError&) {
    return false;
  }
}

HWND MovableControl::window() const {
  if (window_ != nullptr || !object_) return window_;
  try {
    return reinterpret_cast<HWND>(
        static_cast<LONG_PTR>(number_of(LateObject(object_).get_property(L"hWnd"))));
  } catch (const ComError&) {  // drawn by the container
    return nullptr;
  }
}

// False when the container tells nothing of its controls.
bool ContainedControls::from_form(std::vector<MovableControl>& out) const {
  if (!extender_) return false;
  try {
    LateObject controls = LateObject(extender_).get_object(L"Parent").get_object(L"Controls");
    const int64_t count = number_of(controls.get_property(L"Count"));
    for (int64_t i = 0; i < count; ++i) try {
        LateObject control =
            object_of(controls.call(DISPID{DISPID_VALUE}, {Variant(static_cast<long>(i))}));
        if (!control || !same_object(control.get_object(L"Container").get(), extender_.get()))
          continue;
        out.emplace_back(name_of(control), ComPtr<IDispatch>(control.get()), nullptr, 1);
      } catch (const ComError&) {  // an item without a container, such as a menu
      }
    return true;
  } catch (const ComError&) {
    return false;
  }
}

void ContainedControls::from_windows(const std::vector<AddedControl>& added,
                                     std::vector<MovableControl>& out) const {
  if (window_ == nullptr) return;
  for (HWND child = GetWindow(window_, GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    const bool known = std::any_of(added.begin(), added.end(),
                                   [&](const AddedControl& each) { return each.window == child; });
    if (!known)
      out.emplace_back(L"#" + decimal_text(reinterpret_cast<LONG_PTR>(child)), nullptr, child,
                       twips_per_pixel());
  }
}

std::vector<MovableControl> ContainedControls::list(const std::vector<AddedControl>& added) const {
  std::vector<MovableControl> out;
  if (!from_form(out)) from_windows(added, out);
  for (const AddedControl& each : added) {
    const double unit = each.object ? twips_per_unit_of(each.object.get()) : twips_per_pixel();
    out.emplace_back(each.name, each.object, each.window, unit);
  }
  return out;
}

}  // namespace kestrelon
