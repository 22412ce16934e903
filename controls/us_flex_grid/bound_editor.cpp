#include "controls/us_flex_grid/bound_editor.h"

#include <ocidl.h>

#include <algorithm>
#include <vector>

#include "base/text.h"
#include "controls/us_flex_grid/bound_watch.h"
#include "controls/us_flex_grid/container_units.h"
#include "frame/screen.h"

namespace kestrelon {
namespace {

constexpr long kMoveHeight = 1, kMoveWidth = 2, kMoveLeft = 4, kMoveTop = 8;

std::wstring window_text(HWND window) {
  std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)), L'\0');
  // A password box or a dying window may give less than it promised.
  text.resize(
      static_cast<size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1)));
  return text;
}

bool is_combo(HWND window) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, 64);
  CharUpperW(name);
  return wcsstr(name, L"COMBO") != nullptr;
}

}  // namespace

bool BoundEditor::put(const wchar_t* name, const Variant& value) {
  try {
    control_.put_property(name, value);
    return true;
  } catch (const ComError&) {  // a control lacks the member or refuses the value
    return false;
  }
}

HWND BoundEditor::find_window() {
  try {
    const auto handle = static_cast<LONG_PTR>(number_of(control_.get_property(L"hWnd")));
    if (const HWND window = reinterpret_cast<HWND>(handle); IsWindow(window)) return window;
  } catch (const ComError&) {
  }
  HWND window = nullptr;
  const ComPtr<IOleInPlaceObject> object = query<IOleInPlaceObject>(control_.get());
  if (object && SUCCEEDED(object->GetWindow(&window)) && IsWindow(window)) return window;
  return nullptr;
}

void BoundEditor::take(IDispatch* control, const std::wstring& text) {
  drop();
  control_ = LateObject(ComPtr<IDispatch>(control));
  window_ = find_window();
  set_text(text);
  taken_ = this->text();
}

void BoundEditor::set_text(const std::wstring& text) {
  if (!put(L"Text", Variant(text)) && window_ != nullptr) SetWindowTextW(window_, text.c_str());
}

std::wstring BoundEditor::text() {
  try {
    Variant text = control_.get_property(L"Text");
    if (text.change(VT_BSTR)) return to_wstring(V_BSTR(&text));
  } catch (const ComError&) {
  }
  return window_ != nullptr ? window_text(window_) : taken_;
}

void BoundEditor::open(HWND grid, const BoundLook& look) {
  grid_ = grid;
  active_ = true;
  if (window_ == nullptr) {
    put(L"Visible", Variant(true));  // some have a window only while they show
    window_ = find_window();
  }
  if (window_ != nullptr && GetParent(window_) != grid) saved_parent_ = SetParent(window_, grid);
  put(L"ForeColor", Variant(static_cast<long>(look.fore_color)));
  put(L"BackColor", Variant(static_cast<long>(look.back_color)));
  put(L"FontBold", Variant(look.bold));
  put(L"FontItalic", Variant(look.italic));
  put(L"FontUnderline", Variant(look.underline));
  put(L"FontStrikeThru", Variant(look.strikethrough));
  put(L"FontName", Variant(look.font_name));
  put(L"FontSize", Variant(look.font_size));
}

double BoundEditor::unit_pixels() {
  for (const wchar_t* const above : {L"Container", L"Parent"}) try {
      const auto mode =
          static_cast<long>(number_of(control_.get_object(above).get_property(L"ScaleMode")));
      return pixels_per_unit(mode, window_scale(window_).dpi());
    } catch (const ComError&) {
    }
  return 1;
}

void BoundEditor::move_side(const wchar_t* name, int pixels, double unit) {
  put(name, Variant(static_cast<float>(pixels / unit)));
}

// The container's members come first, since only they tell the control of its place; a container
// that does not follow is overruled by the window's own place.
void BoundEditor::place(const RECT& cell, long bits) {
  if (window_ == nullptr || !active_) return;
  const double unit = unit_pixels();
  if ((bits & kMoveLeft) != 0) move_side(L"Left", cell.left, unit);
  if ((bits & kMoveTop) != 0) move_side(L"Top", cell.top, unit);
  if ((bits & kMoveWidth) != 0) move_side(L"Width", cell.right - cell.left, unit);
  if ((bits & kMoveHeight) != 0) move_side(L"Height", cell.bottom - cell.top, unit);
  if (!IsWindow(window_)) return;
  RECT now{};
  GetWindowRect(window_, &now);
  MapWindowPoints(nullptr, GetParent(window_), reinterpret_cast<POINT*>(&now), 2);
  RECT wanted = now;
  if ((bits & kMoveLeft) != 0) OffsetRect(&wanted, cell.left - wanted.left, 0);
  if ((bits & kMoveTop) != 0) OffsetRect(&wanted, 0, cell.top - wanted.top);
  if ((bits & kMoveWidth) != 0) wanted.right = wanted.left + (cell.right - cell.left);
  // The height of a combo box is that of its list.
  if ((bits & kMoveHeight) != 0 && !is_combo(window_))
    wanted.bottom = wanted.top + (cell.bottom - cell.top);
  if (EqualRect(&now, &wanted)) return;
  SetWindowPos(window_, nullptr, wanted.left, wanted.top, wanted.right - wanted.left,
               wanted.bottom - wanted.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void BoundEditor::show() {
  put(L"Enabled", Variant(true));
  put(L"Visible", Variant(true));
  if (window_ != nullptr && IsWindow(window_)) {
    EnableWindow(window_, TRUE);
    ShowWindow(window_, SW_SHOWNA);
    SetWindowPos(window_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  }
  try {
    control_.call(L"ZOrder");
  } catch (const ComError&) {
  }
  if (!active_) return;
  if (window_ != nullptr) BoundWatch::start(grid_, window_, owner_);
  try {
    control_.call(L"SetFocus");
  } catch (const ComError&) {
  }
  if (!active_ || window_ == nullptr || !IsWindow(window_)) return;
  if (!has_focus()) SetFocus(window_);
  if (is_combo(window_)) SendMessageW(window_, CB_SHOWDROPDOWN, TRUE, 0);
}

bool BoundEditor::has_focus() const {
  const HWND focus = GetFocus();
  return window_ != nullptr && focus != nullptr && (focus == window_ || IsChild(window_, focus));
}

void BoundEditor::close(bool keep_focus) {
  if (!active_) return drop();
  active_ = false;
  BoundWatch::stop(window_);
  const LateObject control = control_;
  const HWND window = window_, parent = saved_parent_;
  if (keep_focus && has_focus() && IsWindow(grid_)) SetFocus(grid_);
  put(L"Visible", Variant(false));
  if (window != nullptr && IsWindow(window)) {
    ShowWindow(window, SW_HIDE);
    if (parent != nullptr && IsWindow(parent)) SetParent(window, parent);
  }
  if (control_.get() == control.get()) drop();
}

void BoundEditor::drop() {
  if (window_ != nullptr) BoundWatch::stop(window_);
  active_ = false;
  window_ = saved_parent_ = nullptr;
  taken_.clear();
  const LateObject last = std::exchange(control_, LateObject());  // its end may call back
}

}  // namespace kestrelon
