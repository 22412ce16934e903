// IViewObjectEx: drawing into a device context of the container's choice, and hit tests.
#include "frame/control_frame.h"
#include "frame/himetric.h"
#include "frame/kit/shape.h"
#include "frame/region.h"

namespace kestrelon {

void ControlFrame::draw_to(HDC dc, const RECT& bounds) {
  ensure_initialised();
  if (!surface_) set_size(width_, height_);
  if (!surface_) return;
  const int width = static_cast<int>(bounds.right - bounds.left);
  const int height = static_cast<int>(bounds.bottom - bounds.top);
  const COLORREF mask = mask_colour();
  if (mask != CLR_INVALID) {
    TransparentBlt(dc, bounds.left, bounds.top, width, height, surface_.dc(), 0, 0,
                   surface_.width(), surface_.height(), mask);
  } else if (width == surface_.width() && height == surface_.height()) {
    BitBlt(dc, bounds.left, bounds.top, width, height, surface_.dc(), 0, 0, SRCCOPY);
  } else {
    const int saved = SaveDC(dc);
    SetStretchBltMode(dc, HALFTONE);
    SetBrushOrgEx(dc, 0, 0, nullptr);
    StretchBlt(dc, bounds.left, bounds.top, width, height, surface_.dc(), 0, 0, surface_.width(),
               surface_.height(), SRCCOPY);
    RestoreDC(dc, saved);
  }
}

void ControlFrame::surface_changed() {
  update_window_shape();
  invalidate();
}

void ControlFrame::update_window_shape() {
  if (window_ == nullptr) return;
  const COLORREF mask = mask_colour();
  if (mask == CLR_INVALID) {
    if (shaped_) SetWindowRgn(window_, nullptr, TRUE);
    shaped_ = false;
    return;
  }
  const HRGN wanted = region_from_rects(mask_to_rects(surface_.pixels(), mask));
  const HRGN present = CreateRectRgn(0, 0, 0, 0);
  const bool same =
      shaped_ && GetWindowRgn(window_, present) != ERROR && EqualRgn(present, wanted) != FALSE;
  DeleteObject(present);
  if (same) {
    DeleteObject(wanted);
  } else {
    shaped_ = true;
    SetWindowRgn(window_, wanted, TRUE);  // the system owns the region from here on
  }
}

STDMETHODIMP ControlFrame::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC dc,
                                LPCRECTL bounds, LPCRECTL, BOOL(STDMETHODCALLTYPE*)(ULONG_PTR),
                                ULONG_PTR) {
  if (dc == nullptr) return E_INVALIDARG;
  if (aspect != DVASPECT_CONTENT && aspect != DVASPECT_OPAQUE && aspect != DVASPECT_TRANSPARENT)
    return DV_E_DVASPECT;
  return call([&] {
    RECT place = place_;
    if (bounds != nullptr) {
      place = {bounds->left, bounds->top, bounds->right, bounds->bottom};
    } else if (!in_place_active_) {
      place = {0, 0, width_, height_};
    }
    draw_to(dc, place);
  });
}

STDMETHODIMP ControlFrame::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
  view_aspects_ = aspects;
  view_flags_ = flags;
  view_sink_ = ComPtr<IAdviseSink>(sink);
  if (sink != nullptr && (flags & ADVF_PRIMEFIRST) != 0) invalidate();
  return S_OK;
}

STDMETHODIMP ControlFrame::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
  if (aspects != nullptr) *aspects = view_aspects_;
  if (flags != nullptr) *flags = view_flags_;
  return sink != nullptr ? view_sink_.copy_to(sink) : S_OK;
}

STDMETHODIMP ControlFrame::GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, SIZEL* size) {
  return GetExtent(aspect, size);
}

STDMETHODIMP ControlFrame::GetRect(DWORD aspect, RECTL* out) {
  if (out == nullptr) return E_POINTER;
  *out = {};
  const bool transparent = mask_colour() != CLR_INVALID;
  if (aspect != (transparent ? DVASPECT_TRANSPARENT : DVASPECT_OPAQUE)) return DV_E_DVASPECT;
  *out = {0, 0, extent_.cx, extent_.cy};
  return S_OK;
}

STDMETHODIMP ControlFrame::GetViewStatus(DWORD* status) {
  if (status == nullptr) return E_POINTER;
  *status = mask_colour() == CLR_INVALID ? VIEWSTATUS_OPAQUE | VIEWSTATUS_SOLIDBKGND : 0;
  return S_OK;
}

STDMETHODIMP ControlFrame::QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG,
                                         DWORD* out) {
  if (bounds == nullptr || out == nullptr) return E_POINTER;
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  *out = PtInRect(bounds, point) ? HITRESULT_HIT : HITRESULT_OUTSIDE;
  return S_OK;
}

STDMETHODIMP ControlFrame::QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT area, LONG,
                                        DWORD* out) {
  if (bounds == nullptr || area == nullptr || out == nullptr) return E_POINTER;
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  RECT common{};
  *out = IntersectRect(&common, bounds, area) ? HITRESULT_HIT : HITRESULT_OUTSIDE;
  return S_OK;
}

}  // namespace kestrelon
