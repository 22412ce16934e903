// IViewObjectEx: drawing into a device context of the container's choice, and hit tests.
#include "frame/control_frame.h"
#include "frame/himetric.h"
#include "frame/kit/shape.h"
#include "frame/region.h"

namespace kestrelon {

namespace {

// Clips a context to an outline whose corner lies at a point of it, for as long as this lives.
class OutlineClip {
 public:
  OutlineClip(HDC dc, HRGN outline, POINT corner) : dc_(dc), saved_(outline ? SaveDC(dc) : 0) {
    if (outline == nullptr) return;
    LPtoDP(dc, &corner, 1);  // clipping is in device units
    OffsetRgn(outline, corner.x, corner.y);
    ExtSelectClipRgn(dc, outline, RGN_AND);
    DeleteObject(outline);
  }
  ~OutlineClip() {
    if (saved_ != 0) RestoreDC(dc_, saved_);
  }
  OutlineClip(const OutlineClip&) = delete;
  OutlineClip& operator=(const OutlineClip&) = delete;

 private:
  HDC dc_;
  int saved_;
};

}  // namespace

void ControlFrame::draw_to(HDC dc, const RECT& bounds) {
  ensure_initialised();
  if (!surface_) set_size(width_, height_);
  if (!surface_) return;
  about_to_show();
  const int width = static_cast<int>(bounds.right - bounds.left);
  const int height = static_cast<int>(bounds.bottom - bounds.top);
  const COLORREF mask = mask_colour();
  const bool same_size = width == surface_.width() && height == surface_.height();
  const OutlineClip clip(dc, same_size ? outline() : nullptr, {bounds.left, bounds.top});
  if (has_alpha()) {
    constexpr BLENDFUNCTION kOver{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
    AlphaBlend(dc, bounds.left, bounds.top, width, height, surface_.dc(), 0, 0, surface_.width(),
               surface_.height(), kOver);
  } else if (mask != CLR_INVALID) {
    TransparentBlt(dc, bounds.left, bounds.top, width, height, surface_.dc(), 0, 0,
                   surface_.width(), surface_.height(), mask);
  } else if (same_size) {
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

void ControlFrame::draw_over_parent(HDC dc) {
  const HWND parent = GetParent(window_);
  POINT corner{};
  MapWindowPoints(window_, parent, &corner, 1);
  const int saved = SaveDC(dc);
  POINT origin{};
  OffsetViewportOrgEx(dc, -corner.x, -corner.y, &origin);
  SetBrushOrgEx(dc, origin.x - corner.x, origin.y - corner.y, nullptr);
  SendMessageW(parent, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0);
  SendMessageW(parent, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
  RestoreDC(dc, saved);
  draw_to(dc, {0, 0, width_, height_});
}

void ControlFrame::paint_window() {
  PAINTSTRUCT paint;
  const HDC dc = BeginPaint(window_, &paint);
  if (dc == nullptr) return;
  const RECT& area = paint.rcPaint;
  if (has_alpha()) {
    DibSection whole;
    if (whole.create(width_, height_)) {
      draw_over_parent(whole.dc());
      BitBlt(dc, area.left, area.top, area.right - area.left, area.bottom - area.top, whole.dc(),
             area.left, area.top, SRCCOPY);
    }
  } else if (surface_) {
    BitBlt(dc, area.left, area.top, area.right - area.left, area.bottom - area.top, surface_.dc(),
           area.left, area.top, SRCCOPY);
  }
  EndPaint(window_, &paint);
}

void ControlFrame::surface_changed() {
  ++full_repaints_;
  update_window_shape();
  invalidate();
}

void ControlFrame::surface_changed(const RECT& part) {
  ++part_repaints_;
  invalidate(part);
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
  const bool transparent = has_alpha() || mask_colour() != CLR_INVALID;
  if (aspect != (transparent ? DVASPECT_TRANSPARENT : DVASPECT_OPAQUE)) return DV_E_DVASPECT;
  *out = {0, 0, extent_.cx, extent_.cy};
  return S_OK;
}

STDMETHODIMP ControlFrame::GetViewStatus(DWORD* status) {
  if (status == nullptr) return E_POINTER;
  *status =
      !has_alpha() && mask_colour() == CLR_INVALID ? VIEWSTATUS_OPAQUE | VIEWSTATUS_SOLIDBKGND : 0;
  return S_OK;
}

STDMETHODIMP ControlFrame::QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG,
                                         DWORD* out) {
  if (bounds == nullptr || out == nullptr) return E_POINTER;
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  *out = HITRESULT_OUTSIDE;
  if (!PtInRect(bounds, point)) return S_OK;
  return call([&] {
    // The bounds are those of the container's choice, in its own units if it scales.
    const int width = static_cast<int>(bounds->right - bounds->left);
    const int height = static_cast<int>(bounds->bottom - bounds->top);
    const POINT own{MulDiv(static_cast<int>(point.x - bounds->left), width_, width),
                    MulDiv(static_cast<int>(point.y - bounds->top), height_, height)};
    if (hit(own)) *out = HITRESULT_HIT;
  });
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
