// In-place activation, with a window of the control's own or within the container's.
#include "frame/about.h"
#include "frame/control_frame.h"
#include "frame/himetric.h"
#include "frame/screen.h"

namespace kestrelon {

STDMETHODIMP ControlFrame::DoVerb(LONG verb, MSG* message, IOleClientSite*, LONG, HWND parent,
                                  LPCRECT place) {
  return call([&]() -> HRESULT {
    switch (verb) {
      case OLEIVERB_PRIMARY:
      case OLEIVERB_SHOW:
      case OLEIVERB_INPLACEACTIVATE:
      case OLEIVERB_UIACTIVATE:
        if (place != nullptr && !in_place_active_) place_ = *place;
        return activate(verb, message);
      case OLEIVERB_HIDE:
        UIDeactivate();
        if (window_ != nullptr) ShowWindow(window_, SW_HIDE);
        return S_OK;
      case OLEIVERB_DISCARDUNDOSTATE:
        return S_OK;
      case kPropertiesVerb:
      case OLEIVERB_PROPERTIES:
        return show_pages(parent);
      case kAboutVerb:
        about();
        return S_OK;
      default:
        return verb > 0 ? OLEOBJ_S_INVALIDVERB : E_NOTIMPL;
    }
  });
}

HRESULT ControlFrame::activate(LONG verb, MSG* message) {
  if (!site_) return E_UNEXPECTED;
  const HRESULT hr = activate_in_place();
  if (FAILED(hr)) return hr;
  if (window_ != nullptr && !IsWindowVisible(window_)) ShowWindow(window_, SW_SHOWNA);
  if ((traits_.misc_status & OLEMISC_NOUIACTIVATE) != 0) return S_OK;
  if (verb == OLEIVERB_UIACTIVATE || (verb == OLEIVERB_PRIMARY && ambient_.user_mode())) {
    const HRESULT ui = activate_ui();
    if (FAILED(ui)) return ui;
    if (message != nullptr && window_ != nullptr && message->message >= WM_MOUSEFIRST &&
        message->message <= WM_MOUSELAST) {
      PostMessageW(window_, message->message, message->wParam, message->lParam);
    }
  }
  return S_OK;
}

HRESULT ControlFrame::activate_in_place() {
  if (in_place_active_) return S_OK;
  ensure_initialised();
  const ComPtr<IOleClientSite> site = site_;
  in_place_site_ = site.as<IOleInPlaceSite>();
  if (!in_place_site_) return E_FAIL;
  if (traits_.windowless) {
    windowless_site_ = site.as<IOleInPlaceSiteWindowless>();
    if (windowless_site_ && windowless_site_->CanWindowlessActivate() != S_OK)
      windowless_site_.reset();
  }
  windowless_ = static_cast<bool>(windowless_site_);
  if (in_place_site_->CanInPlaceActivate() != S_OK) return E_FAIL;
  if (windowless_) {
    BOOL redraw = FALSE;
    windowless_site_->OnInPlaceActivateEx(&redraw, ACTIVATE_WINDOWLESS);
  } else {
    in_place_site_->OnInPlaceActivate();
  }
  in_place_active_ = true;

  HWND parent = nullptr;
  RECT place = place_, clip = place_;
  OLEINPLACEFRAMEINFO frame_info{};
  frame_info.cb = sizeof frame_info;
  in_place_site_->GetWindow(&parent);
  in_place_site_->GetWindowContext(in_place_frame_.put(), in_place_document_.put(), &place, &clip,
                                   &frame_info);
  if (!windowless_ && !create_window(parent, place)) {
    in_place_active_ = false;
    in_place_site_->OnInPlaceDeactivate();
    in_place_site_.reset();
    return E_FAIL;
  }
  // What the control asked for while its window was made, the container may have granted without
  // telling an object that was not yet active.
  if (!windowless_)
    in_place_site_->GetWindowContext(in_place_frame_.put(), in_place_document_.put(), &place, &clip,
                                     &frame_info);
  SetObjectRects(&place, &clip);
  if (windowless_) {
    scale_ = window_scale(parent);
    visible_ = true;
    shown();
  }
  return S_OK;
}

HRESULT ControlFrame::activate_ui() {
  if (ui_active_) return S_OK;
  ui_active_ = true;
  const ComPtr<IOleInPlaceSite> site = in_place_site_;
  site->OnUIActivate();
  if (!ui_active_ || !in_place_active_) return S_OK;  // the container changed its mind
  auto* const active = static_cast<IOleInPlaceActiveObject*>(this);
  if (in_place_frame_) {
    in_place_frame_->SetActiveObject(active, nullptr);
    in_place_frame_->SetBorderSpace(nullptr);
  }
  if (in_place_document_) {
    in_place_document_->SetActiveObject(active, nullptr);
    in_place_document_->SetBorderSpace(nullptr);
  }
  if (windowless_) {
    windowless_site_->SetFocus(TRUE);
  } else if (window_ != nullptr && ::GetFocus() != window_ && !IsChild(window_, ::GetFocus())) {
    ::SetFocus(window_);
  }
  return S_OK;
}

STDMETHODIMP ControlFrame::UIDeactivate() {
  if (!ui_active_) return S_OK;
  ui_active_ = false;
  return call([&] {
    if (in_place_document_) in_place_document_->SetActiveObject(nullptr, nullptr);
    if (in_place_frame_) in_place_frame_->SetActiveObject(nullptr, nullptr);
    const ComPtr<IOleInPlaceSite> site = in_place_site_;
    if (site) site->OnUIDeactivate(FALSE);
  });
}

STDMETHODIMP ControlFrame::InPlaceDeactivate() {
  if (!in_place_active_) return S_OK;
  return call([&] {
    UIDeactivate();
    if (!in_place_active_) return;
    in_place_active_ = false;
    leave_watch_.stop();
    stop_drops();
    if (window_ != nullptr) {
      DestroyWindow(window_);  // WM_NCDESTROY clears window_
    } else if (visible_) {
      visible_ = false;
      hidden();
    }
    in_place_frame_.reset();
    in_place_document_.reset();
    windowless_site_.reset();
    const ComPtr<IOleInPlaceSite> site = std::move(in_place_site_);
    in_place_site_ = nullptr;
    if (site) site->OnInPlaceDeactivate();
  });
}

STDMETHODIMP ControlFrame::GetWindow(HWND* out) {
  if (out == nullptr) return E_POINTER;
  *out = window_;
  return window_ != nullptr ? S_OK : E_FAIL;
}

STDMETHODIMP ControlFrame::SetObjectRects(LPCRECT place, LPCRECT clip) {
  if (place == nullptr) return E_POINTER;
  return call([&] {
    place_ = *place;
    const int width = static_cast<int>(place->right - place->left);
    const int height = static_cast<int>(place->bottom - place->top);
    extent_ = to_himetric(width, height);
    if (window_ != nullptr) {
      SetWindowPos(window_, nullptr, place->left, place->top, width, height,
                   SWP_NOZORDER | SWP_NOACTIVATE);
      // A container that shows only part of the control clips its window.
      RECT visible{};
      if (mask_colour() == CLR_INVALID) {
        if (clip != nullptr && IntersectRect(&visible, place, clip) &&
            !EqualRect(&visible, place)) {
          OffsetRect(&visible, -place->left, -place->top);
          SetWindowRgn(window_, CreateRectRgnIndirect(&visible), TRUE);
          clipped_ = true;
        } else if (clipped_) {
          SetWindowRgn(window_, nullptr, TRUE);
          clipped_ = false;
        }
      }
      RECT client{};
      GetClientRect(window_, &client);
      return set_size(static_cast<int>(client.right), static_cast<int>(client.bottom));
    }
    set_size(width, height);
  });
}

bool ControlFrame::takes_input() const {
  const Property<bool>* const enabled = enabled_property();
  return enabled == nullptr || enabled->get();
}

STDMETHODIMP ControlFrame::OnWindowMessage(UINT message, WPARAM wparam, LPARAM lparam,
                                           LRESULT* out) {
  if (!windowless_ || out == nullptr) return E_UNEXPECTED;
  const Hold hold(*this);
  try {
    *out = 0;
    const bool mouse = message >= WM_MOUSEFIRST && message <= WM_MOUSELAST;
    if ((mouse || (message >= WM_KEYFIRST && message <= WM_KEYLAST)) && !takes_input())
      return S_FALSE;
    if (message == WM_MOUSELEAVE && leave_watch_.running()) {
      report_leave();
      return S_OK;
    }
    if (message == WM_MOUSEMOVE) GetCursorPos(&last_move_);
    // The container speaks in its own coordinates; the wheel, in those of the screen.
    if (mouse && message != WM_MOUSEWHEEL && message != WM_MOUSEHWHEEL) {
      const int x = static_cast<short>(LOWORD(lparam)) - static_cast<int>(place_.left);
      const int y = static_cast<short>(HIWORD(lparam)) - static_cast<int>(place_.top);
      lparam = MAKELPARAM(x, y);
    }
    return handle_message(message, wparam, lparam, *out) ? S_OK : S_FALSE;
  } catch (...) {
    return E_FAIL;
  }
}

void ControlFrame::request_size(int width, int height) {
  const ComPtr<IOleInPlaceSite> site = in_place_site_;
  if (!site) {
    extent_ = to_himetric(width, height);
    return set_size(width, height);
  }
  const RECT wanted{place_.left, place_.top, place_.left + width, place_.top + height};
  site->OnPosRectChange(&wanted);  // answers with SetObjectRects
}

ComPtr<IDispatch> ControlFrame::extender() const {
  ComPtr<IDispatch> out;
  if (control_site_) control_site_->GetExtendedControl(out.put());
  return out;
}

void ControlFrame::set_size(int width, int height) {
  if (width == width_ && height == height_ && surface_) return;
  width_ = width;
  height_ = height;
  surface_.resize(width, height);
  resized();
}

}  // namespace kestrelon
