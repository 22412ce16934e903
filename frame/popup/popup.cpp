#include "frame/popup/popup.h"

#include <algorithm>
#include <utility>

#include "frame/screen.h"
#include "frame/window_class.h"

namespace kestrelon {
namespace {

constexpr wchar_t kWindowClass[] = L"KestrelonPopup2012";

}  // namespace

RECT popup_rect(const PopupPlace& place, const RECT& work_area) {
  const LONG width = std::min(place.size.cx, work_area.right - work_area.left);
  const LONG below = work_area.bottom - place.anchor.bottom;
  const LONG above = place.anchor.top - work_area.top;
  const bool drops = place.size.cy <= below || below >= above;
  const LONG height = std::min(place.size.cy, std::max(drops ? below : above, LONG{1}));
  const LONG top = drops ? place.anchor.bottom : place.anchor.top - height;
  LONG left = place.align_right ? place.anchor.right - width : place.anchor.left;
  left = std::clamp(left, work_area.left, std::max(work_area.left, work_area.right - width));
  return {left, top, left + width, top + height};
}

bool Popup::open(HWND window, AutomationObject& control, PopupOwner& owner,
                 const PopupPlace& place) {
  close();
  if (window == nullptr || !IsWindowVisible(window)) return false;
  const AutomationObject::Hold hold(control);
  const ATOM atom = window_class(kWindowClass, procedure, CS_DROPSHADOW | CS_DBLCLKS);
  if (atom == 0) return false;
  watch_.start(window);  // another popup's owner may do anything when it hears of its end
  if (!watch_.running() || !IsWindow(window)) return false;
  control_ = &control;
  owner_ = &owner;
  const RECT where = popup_rect(place, work_area(place.anchor));
  CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE | WS_EX_TOPMOST, kWindowClass, nullptr,
                  WS_POPUP | WS_CLIPCHILDREN, where.left, where.top, where.right - where.left,
                  where.bottom - where.top, GetAncestor(window, GA_ROOT), nullptr,
                  module_instance(), this);
  if (window_ == nullptr) {
    watch_.stop();
    return false;
  }
  redraw();
  if (window_ != nullptr) ShowWindow(window_, SW_SHOWNOACTIVATE);
  return window_ != nullptr;
}

void Popup::close() {
  watch_.stop();
  owner_ = nullptr;
  if (window_ != nullptr) DestroyWindow(window_);  // WM_NCDESTROY clears window_
}

void Popup::end(PopupEnd why) {
  if (window_ == nullptr) return watch_.stop();
  const AutomationObject::Hold hold(*control_);
  PopupOwner* const owner = owner_;
  close();
  try {
    if (owner != nullptr) owner->popup_closed(why);
  } catch (...) {  // the popup is closed whatever its owner makes of it
  }
}

void Popup::redraw() {
  RECT client{};
  if (window_ == nullptr || !GetClientRect(window_, &client)) return;
  if (!surface_.resize(static_cast<int>(client.right), static_cast<int>(client.bottom))) return;
  owner_->popup_draw(surface_);
  if (window_ != nullptr) InvalidateRect(window_, nullptr, FALSE);
}

void Popup::invalidate(const RECT& part) {
  if (window_ != nullptr) InvalidateRect(window_, &part, FALSE);
}

void Popup::move(const PopupPlace& place) {
  if (window_ == nullptr) return;
  const RECT where = popup_rect(place, work_area(place.anchor));
  SetWindowPos(window_, nullptr, where.left, where.top, where.right - where.left,
               where.bottom - where.top, SWP_NOZORDER | SWP_NOACTIVATE);
  redraw();
}

LRESULT CALLBACK Popup::procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_NCCREATE) {
    auto* const popup =
        static_cast<Popup*>(reinterpret_cast<const CREATESTRUCTW*>(lparam)->lpCreateParams);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(popup));
    popup->window_ = window;
  }
  auto* const popup = reinterpret_cast<Popup*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (popup == nullptr) return DefWindowProcW(window, message, wparam, lparam);
  const AutomationObject::Hold hold(*popup->control_);
  if (message == WM_NCDESTROY) {
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    popup->window_ = nullptr;
    popup->watch_.stop();
    PopupOwner* const owner = std::exchange(popup->owner_, nullptr);
    // Destroyed with its owning window: nobody else has told the control.
    if (owner != nullptr) owner->popup_closed(PopupEnd::kControlGone);
    return DefWindowProcW(window, message, wparam, lparam);
  }
  try {
    return popup->handle(message, wparam, lparam);
  } catch (...) {
    return 0;
  }
}

LRESULT Popup::handle(UINT message, WPARAM wparam, LPARAM lparam) {
  const HWND window = window_;
  LRESULT result = 0;
  switch (message) {
    case WM_MOUSEACTIVATE:
      return MA_NOACTIVATE;
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      paint();
      return 0;
    default:
      if (owner_ != nullptr && owner_->popup_message(message, wparam, lparam, result))
        return result;
      return IsWindow(window) ? DefWindowProcW(window, message, wparam, lparam) : 0;
  }
}

void Popup::paint() {
  PAINTSTRUCT paint;
  const HDC dc = BeginPaint(window_, &paint);
  if (dc == nullptr) return;
  const RECT& area = paint.rcPaint;
  if (surface_)
    BitBlt(dc, area.left, area.top, area.right - area.left, area.bottom - area.top, surface_.dc(),
           area.left, area.top, SRCCOPY);
  EndPaint(window_, &paint);
}

}  // namespace kestrelon
