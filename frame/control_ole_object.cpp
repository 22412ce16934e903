// IOleObject, IOleControl, IQuickActivate.
#include <array>
#include <string_view>

#include "frame/control_frame.h"
#include "frame/face/task_memory.h"
#include "frame/himetric.h"

namespace kestrelon {

STDMETHODIMP ControlFrame::SetClientSite(IOleClientSite* site) {
  site_ = ComPtr<IOleClientSite>(site);
  control_site_ = query<IOleControlSite>(site);
  frame_site_.reset();
  if ((traits_.misc_status & OLEMISC_SIMPLEFRAME) != 0) frame_site_ = query<ISimpleFrameSite>(site);
  if (terminated_) return S_OK;
  return call([&] {
    ambient_.attach(site);
    // A container that initialised the control before it gave a site gets the ambient values now.
    if (site != nullptr && ambient_missing_) run_init_properties();
  });
}

STDMETHODIMP ControlFrame::GetClientSite(IOleClientSite** out) {
  return site_.copy_to(out);
}

STDMETHODIMP ControlFrame::Close(DWORD save) {
  return call([&] {
    if (save != OLECLOSE_NOSAVE && dirty_ && site_) {
      const ComPtr<IOleClientSite> site = site_;
      site->SaveObject();
    }
    closing();
    InPlaceDeactivate();
    if (advise_holder_) advise_holder_->SendOnClose();
  });
}

STDMETHODIMP ControlFrame::EnumVerbs(IEnumOLEVERB** out) {
  return OleRegEnumVerbs(class_info().clsid, out);
}

// The container's own frame for pages where it has one, else the system's.
HRESULT ControlFrame::show_pages(HWND parent) {
  const ComPtr<IOleControlSite> site = control_site_;
  if (site && site->ShowPropertyFrame() == S_OK) return S_OK;
  CAUUID pages{};
  const HRESULT hr = GetPages(&pages);
  if (FAILED(hr)) return hr;
  IUnknown* object = own_unknown();
  const HRESULT shown =
      OleCreatePropertyFrame(parent != nullptr ? parent : window_, 0, 0, class_info().name, 1,
                             &object, pages.cElems, pages.pElems, ambient_.locale(), 0, nullptr);
  CoTaskMemFree(pages.pElems);
  return shown;
}

STDMETHODIMP ControlFrame::GetUserType(DWORD, LPOLESTR* out) {
  if (out == nullptr) return E_POINTER;
  *out = task_text(class_info().name);
  return *out != nullptr ? S_OK : E_OUTOFMEMORY;
}

STDMETHODIMP ControlFrame::SetExtent(DWORD aspect, SIZEL* size) {
  if (size == nullptr) return E_POINTER;
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (size->cx < 0 || size->cy < 0) return E_INVALIDARG;
  return call([&] {
    if (size->cx == extent_.cx && size->cy == extent_.cy) return;
    extent_ = *size;
    // In place the rectangle rules; before that the extent is all there is.
    if (in_place_active_) return;
    const SIZE pixels = to_pixels(extent_);
    set_size(static_cast<int>(pixels.cx), static_cast<int>(pixels.cy));
  });
}

STDMETHODIMP ControlFrame::GetExtent(DWORD aspect, SIZEL* size) {
  if (size == nullptr) return E_POINTER;
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  *size = extent_;
  return S_OK;
}

STDMETHODIMP ControlFrame::Advise(IAdviseSink* sink, DWORD* cookie) {
  if (!advise_holder_) {
    const HRESULT hr = CreateOleAdviseHolder(advise_holder_.put());
    if (FAILED(hr)) return hr;
  }
  return advise_holder_->Advise(sink, cookie);
}

STDMETHODIMP ControlFrame::Unadvise(DWORD cookie) {
  return advise_holder_ ? advise_holder_->Unadvise(cookie) : OLE_E_NOCONNECTION;
}

STDMETHODIMP ControlFrame::EnumAdvise(IEnumSTATDATA** out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  return advise_holder_ ? advise_holder_->EnumAdvise(out) : S_OK;
}

STDMETHODIMP ControlFrame::GetMiscStatus(DWORD aspect, DWORD* status) {
  if (status == nullptr) return E_POINTER;
  *status = aspect == DVASPECT_CONTENT ? traits_.misc_status : 0;
  return S_OK;
}

STDMETHODIMP ControlFrame::GetControlInfo(CONTROLINFO* info) {
  if (info == nullptr) return E_POINTER;
  if (info->cb != sizeof(CONTROLINFO)) return E_INVALIDARG;
  info->hAccel = nullptr;
  info->cAccel = 0;
  info->dwFlags = 0;
  if (wants_key(VK_RETURN, 0)) info->dwFlags |= CTRLINFO_EATS_RETURN;
  if (wants_key(VK_ESCAPE, 0)) info->dwFlags |= CTRLINFO_EATS_ESCAPE;
  if (access_keys_.empty()) return S_OK;
  // Containers match either the character or the virtual key; both are offered.
  std::vector<ACCEL> keys;
  for (const wchar_t key : access_keys_) {
    keys.push_back({FALT, static_cast<WORD>(key), 1});
    const auto upper = static_cast<WORD>(reinterpret_cast<ULONG_PTR>(
        CharUpperW(reinterpret_cast<LPWSTR>(static_cast<ULONG_PTR>(key)))));
    if (upper != key) keys.push_back({FALT, upper, 1});
    const SHORT code = VkKeyScanW(key);
    if (code != -1) keys.push_back({FALT | FVIRTKEY, static_cast<WORD>(LOBYTE(code)), 1});
  }
  info->hAccel = CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size()));
  if (info->hAccel == nullptr) return E_OUTOFMEMORY;
  info->cAccel = static_cast<USHORT>(keys.size());
  return S_OK;
}

STDMETHODIMP ControlFrame::OnMnemonic(MSG* message) {
  const Property<bool>* const enabled = enabled_property();
  if (enabled != nullptr && !enabled->get()) return S_OK;
  return call([&] {
    grab_focus();
    const WPARAM key = message != nullptr ? message->wParam : 0;
    access_key_press(static_cast<short>(key));
  });
}

STDMETHODIMP ControlFrame::OnAmbientPropertyChange(DISPID id) {
  return call([&] { ambient_changed(id); });
}

STDMETHODIMP ControlFrame::FreezeEvents(BOOL freeze) {
  freeze_count_ += freeze ? 1 : -1;
  if (freeze_count_ < 0) freeze_count_ = 0;
  return S_OK;
}

STDMETHODIMP ControlFrame::QuickActivate(QACONTAINER* container, QACONTROL* control) {
  if (container == nullptr || control == nullptr) return E_POINTER;
  if (container->cbSize < sizeof(QACONTAINER) || control->cbSize < sizeof(QACONTROL))
    return E_INVALIDARG;
  return call([&] {
    const ULONG size = control->cbSize;
    *control = QACONTROL{};
    control->cbSize = size;
    SetClientSite(container->pClientSite);
    if (container->pAdviseSink != nullptr)
      SetAdvise(DVASPECT_CONTENT, 0, reinterpret_cast<IAdviseSink*>(container->pAdviseSink));
    if (container->pPropertyNotifySink != nullptr)
      notify_point_.Advise(container->pPropertyNotifySink, &control->dwPropNotifyCookie);
    if (container->pUnkEventSink != nullptr && class_info().events_id != nullptr)
      events().Advise(container->pUnkEventSink, &control->dwEventCookie);
    control->dwMiscStatus = traits_.misc_status;
    GetViewStatus(&control->dwViewStatus);
  });
}

}  // namespace kestrelon
