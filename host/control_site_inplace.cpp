// What a control asks of its place while it is active: window, frame, focus, capture, drawing.
#include <cmath>

#include "host/contained_box.h"
#include "host/control_site.h"
#include "host/extender.h"
#include "host/form.h"

namespace kestrelon::host {

HRESULT ControlSite::SaveObject() {
  return S_OK;
}
HRESULT ControlSite::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
  if (moniker) *moniker = nullptr;
  return E_NOTIMPL;
}
HRESULT ControlSite::GetContainer(IOleContainer** out) {
  if (!out) return E_POINTER;
  *out = nullptr;
  if (closed()) return E_NOINTERFACE;
  return form().dispatch()->QueryInterface(IID_IOleContainer, reinterpret_cast<void**>(out));
}
HRESULT ControlSite::ShowObject() {
  return S_OK;
}
HRESULT ControlSite::OnShowWindow(BOOL) {
  return S_OK;
}
HRESULT ControlSite::RequestNewObjectLayout() {
  if (closed()) return E_UNEXPECTED;
  const RECT before = bounds_;
  read_extent();
  const RECT wanted = std::exchange(bounds_, before);
  move(wanted);
  return S_OK;
}

HRESULT ControlSite::GetWindow(HWND* out) {
  if (!out) return E_POINTER;
  *out = closed() ? nullptr : container().hwnd();
  return *out ? S_OK : E_FAIL;
}
HRESULT ControlSite::ContextSensitiveHelp(BOOL) {
  return S_OK;
}
HRESULT ControlSite::CanInPlaceActivate() {
  return closed() ? S_FALSE : S_OK;
}
HRESULT ControlSite::OnInPlaceActivate() {
  WINBOOL no_redraw = FALSE;
  return OnInPlaceActivateEx(&no_redraw, 0);
}

HRESULT ControlSite::OnInPlaceActivateEx(WINBOOL* no_redraw, DWORD flags) {
  if (no_redraw) *no_redraw = FALSE;
  if (closed()) return E_UNEXPECTED;
  in_place_ = control_.as<IOleInPlaceObject>();
  if (flags & ACTIVATE_WINDOWLESS) {
    windowless_ = control_.as<IOleInPlaceObjectWindowless>();
    container().invalidate(bounds());
  }
  return S_OK;
}

HRESULT ControlSite::OnInPlaceDeactivate() {
  ui_active_ = false;
  in_place_.reset();
  windowless_.reset();
  if (!closed()) {
    form().item_left(*this);
    container().invalidate(bounds());
  }
  return S_OK;
}
HRESULT ControlSite::OnInPlaceDeactivateEx(WINBOOL) {
  return OnInPlaceDeactivate();
}

HRESULT ControlSite::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** doc,
                                      LPRECT place, LPRECT clip, LPOLEINPLACEFRAMEINFO info) {
  if (!frame || !doc || !place || !clip || !info) return E_POINTER;
  *frame = nullptr;
  *doc = nullptr;
  if (closed()) return E_UNEXPECTED;
  *frame = form().in_place_frame().detach();
  *place = bounds();
  *clip = clip_rect();
  info->fMDIApp = FALSE;
  info->hwndFrame = form().hwnd();
  info->haccel = nullptr;
  info->cAccelEntries = 0;
  return S_OK;
}

HRESULT ControlSite::RequestUIActivate() {
  return closed() ? S_FALSE : S_OK;
}
HRESULT ControlSite::OnUIActivate() {
  if (closed()) return E_UNEXPECTED;
  ui_active_ = true;
  form().item_ui_activated(*this);
  return S_OK;
}
HRESULT ControlSite::OnUIDeactivate(BOOL) {
  ui_active_ = false;
  if (!closed()) form().item_left(*this);
  return S_OK;
}
HRESULT ControlSite::Scroll(SIZE) {
  return S_FALSE;
}
HRESULT ControlSite::DiscardUndoState() {
  return S_OK;
}
HRESULT ControlSite::DeactivateAndUndo() {
  return deactivate();
}

HRESULT ControlSite::OnPosRectChange(LPCRECT place) {
  if (!place) return E_INVALIDARG;
  if (closed()) return E_UNEXPECTED;
  move(*place);
  return S_OK;
}

HRESULT ControlSite::CanWindowlessActivate() {
  return !closed() && form().allow_windowless ? S_OK : S_FALSE;
}
HRESULT ControlSite::GetCapture() {
  return !closed() && container().captured() == this ? S_OK : S_FALSE;
}
HRESULT ControlSite::SetCapture(WINBOOL capture) {
  if (closed() || !windowless_) return S_FALSE;
  if (capture)
    container().set_captured(this);
  else if (container().captured() == this)
    container().set_captured(nullptr);
  return S_OK;
}
HRESULT ControlSite::GetFocus() {
  return !closed() && container().focused() == this && ::GetFocus() == container().hwnd() ? S_OK
                                                                                          : S_FALSE;
}
HRESULT ControlSite::SetFocus(WINBOOL focus) {
  if (closed() || !windowless_) return S_FALSE;
  if (focus)
    container().set_focused(this);
  else if (container().focused() == this)
    container().set_focused(nullptr);
  return S_OK;
}

HRESULT ControlSite::GetDC(LPCRECT area, DWORD flags, HDC* out) {
  if (!out) return E_POINTER;
  *out = nullptr;
  if (closed() || !container().hwnd()) return E_UNEXPECTED;
  // A context of its own, not the window's private one: the clip must not outlive the loan.
  HDC hdc = GetDCEx(container().hwnd(), nullptr, DCX_CACHE | DCX_CLIPCHILDREN | DCX_CLIPSIBLINGS);
  if (!hdc) return E_FAIL;
  RECT clip = bounds();
  if (area) IntersectRect(&clip, &clip, area);
  IntersectClipRect(hdc, clip.left, clip.top, clip.right, clip.bottom);
  if (flags & OLEDC_PAINTBKGND) container().paint_background(hdc);
  *out = hdc;
  return S_OK;
}
HRESULT ControlSite::ReleaseDC(HDC hdc) {
  ::ReleaseDC(container().hwnd(), hdc);
  return S_OK;
}

HRESULT ControlSite::InvalidateRect(LPCRECT area, WINBOOL) {
  if (closed()) return E_UNEXPECTED;
  RECT dirty = bounds();
  if (area) IntersectRect(&dirty, &dirty, area);
  container().invalidate(dirty);
  return S_OK;
}
HRESULT ControlSite::InvalidateRgn(HRGN region, WINBOOL erase) {
  RECT box = {};
  if (!region) return InvalidateRect(nullptr, erase);
  GetRgnBox(region, &box);
  return InvalidateRect(&box, erase);
}
HRESULT ControlSite::ScrollRect(INT, INT, LPCRECT scroll, LPCRECT) {
  // What lies behind would scroll too; drawing anew is always right.
  return InvalidateRect(scroll, FALSE);
}
HRESULT ControlSite::AdjustRect(LPRECT area) {
  if (!area) return E_INVALIDARG;
  RECT visible = {};
  const BOOL some = IntersectRect(&visible, area, &bounds());
  *area = visible;
  return some ? S_OK : S_FALSE;
}
HRESULT ControlSite::OnDefWindowMessage(UINT message, WPARAM wparam, LPARAM lparam,
                                        LRESULT* result) {
  if (!result) return E_POINTER;
  *result = 0;
  if (closed() || message == WM_SETCURSOR || message == WM_CONTEXTMENU) return S_FALSE;
  *result = DefWindowProcW(container().hwnd(), message, wparam, lparam);
  return S_OK;
}

HRESULT ControlSite::OnControlInfoChanged() {
  if (!closed()) read_control_info();
  return S_OK;
}
HRESULT ControlSite::LockInPlaceActive(WINBOOL) {
  return S_OK;
}
HRESULT ControlSite::GetExtendedControl(IDispatch** out) {
  if (!out) return E_POINTER;
  *out = extender_.get();
  (*out)->AddRef();
  return S_OK;
}

HRESULT ControlSite::TransformCoords(POINTL* himetric, POINTF* point, DWORD flags) {
  if (!himetric || !point) return E_POINTER;
  // The container's unit is the twip, as the ScaleUnits ambient says; positions are handed on as
  // they are, because the control's origin is the container's business.
  constexpr double kTwipsPerHimetric = 1440.0 / 2540.0;
  if (flags & XFORMCOORDS_HIMETRICTOCONTAINER) {
    point->x = static_cast<float>(himetric->x * kTwipsPerHimetric);
    point->y = static_cast<float>(himetric->y * kTwipsPerHimetric);
  } else if (flags & XFORMCOORDS_CONTAINERTOHIMETRIC) {
    himetric->x = std::lround(point->x / kTwipsPerHimetric);
    himetric->y = std::lround(point->y / kTwipsPerHimetric);
  } else {
    return E_INVALIDARG;
  }
  return S_OK;
}

HRESULT ControlSite::TranslateAccelerator(MSG*, DWORD) {
  return S_FALSE;
}

HRESULT ControlSite::OnFocus(WINBOOL got_focus) {
  if (!closed()) form().item_focus_changed(*this, got_focus != FALSE);
  return S_OK;
}
HRESULT ControlSite::ShowPropertyFrame() {
  return S_FALSE;
}

HRESULT ControlSite::PreMessageFilter(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                      LRESULT* result, DWORD* cookie) {
  if (!result || !cookie) return E_POINTER;
  *cookie = 0;
  const ComPtr<ControlSite> alive(this);
  if (closed() || !box_ || box_->hwnd() != window) return S_OK;
  return box_->before(message, wparam, lparam, *result) ? S_FALSE : S_OK;
}

HRESULT ControlSite::PostMessageFilter(HWND window, UINT message, WPARAM wparam, LPARAM,
                                       LRESULT* result, DWORD) {
  if (!result) return E_POINTER;
  const ComPtr<ControlSite> alive(this);
  if (!closed() && box_ && box_->hwnd() == window) box_->after(message, wparam);
  return S_OK;
}

}  // namespace kestrelon::host
