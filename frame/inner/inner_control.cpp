#include "frame/inner/inner_control.h"

#include "frame/inner/inner_site.h"

namespace kestrelon {

STDMETHODIMP InnerSite::QueryInterface(REFIID iid, void** out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  if (iid == IID_IUnknown || iid == IID_IOleClientSite) {
    *out = static_cast<IOleClientSite*>(this);
  } else if (iid == IID_IOleWindow || iid == IID_IOleInPlaceSite) {
    *out = static_cast<IOleInPlaceSite*>(this);
  } else if (iid == IID_IOleControlSite) {
    *out = static_cast<IOleControlSite*>(this);
  } else if (iid == IID_IDispatch) {
    *out = static_cast<IDispatch*>(this);
  } else {
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

STDMETHODIMP InnerSite::GetWindow(HWND* out) {
  if (out == nullptr) return E_POINTER;
  *out = parent_;
  return parent_ != nullptr ? S_OK : E_FAIL;
}

STDMETHODIMP InnerSite::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                         LPRECT place, LPRECT clip, LPOLEINPLACEFRAMEINFO) {
  if (frame == nullptr || document == nullptr || place == nullptr || clip == nullptr)
    return E_POINTER;
  *frame = nullptr;
  *document = nullptr;
  *place = *clip = place_;
  return S_OK;
}

STDMETHODIMP InnerSite::GetExtendedControl(IDispatch** out) {
  if (out != nullptr) *out = nullptr;
  return E_NOTIMPL;
}

STDMETHODIMP InnerSite::GetTypeInfoCount(UINT* out) {
  if (out == nullptr) return E_POINTER;
  *out = 0;
  return S_OK;
}

STDMETHODIMP InnerSite::Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                               VARIANT* result, EXCEPINFO*, UINT*) {
  if (!open_) return DISP_E_MEMBERNOTFOUND;
  const ComPtr<IOleClientSite> self(static_cast<IOleClientSite*>(this));
  return guarded(IID_IDispatch, [&]() -> HRESULT {
    if ((flags & DISPATCH_PROPERTYGET) != 0 && result != nullptr) {
      Variant value;
      if (!ambient_.raw(member, value)) return DISP_E_MEMBERNOTFOUND;
      std::swap(*result, static_cast<VARIANT&>(value));
      return S_OK;
    }
    const InnerEvents events = events_;  // the handler may be replaced while it runs
    if (events && parameters != nullptr) events(member, *parameters);
    return S_OK;
  });
}

InnerControlBase::InnerControlBase(ControlFrame& inner, Ambient& ambient, InnerEvents events)
    : inner_(inner), site_(new InnerSite(ambient, std::move(events))) {
  life_.attach(inner.own_unknown());
  inner_.SetClientSite(site_.get());
  // Read from an empty bag, as a control of a saved form is: it then knows hover at run time.
  inner_.load_defaults();
  const auto container = life_.as<IConnectionPointContainer>();
  ComPtr<IConnectionPoint> point;
  if (inner_.class_info().events_id != nullptr && container &&
      SUCCEEDED(container->FindConnectionPoint(*inner_.class_info().events_id, point.put())))
    point->Advise(site_->sink(), &cookie_);
}

InnerControlBase::~InnerControlBase() {
  close();
}

void InnerControlBase::close() {
  if (!site_) return;
  site_->close();
  inner_.Close(OLECLOSE_NOSAVE);
  inner_.SetClientSite(nullptr);
  site_.reset();
}

void InnerControlBase::place(HWND parent, const RECT& where) {
  if (!site_ || parent == nullptr) return;
  site_->set_place(parent, where);
  if (IsRectEmpty(&where)) {
    if (window() != nullptr) ShowWindow(window(), SW_HIDE);
    shown_ = false;
    return;
  }
  if (window() == nullptr)
    inner_.DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, site_.get(), 0, parent, &where);
  if (!site_) return;
  inner_.SetObjectRects(&where, &where);
  if (!shown_ && window() != nullptr) ShowWindow(window(), SW_SHOWNA);
  shown_ = true;
}

HWND InnerControlBase::window() const {
  HWND out = nullptr;
  inner_.GetWindow(&out);
  return out;
}

}  // namespace kestrelon
