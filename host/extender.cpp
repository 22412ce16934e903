#include "host/extender.h"

#include "host/control_site.h"

namespace kestrelon::host {

Extender::Extender(ControlSite& site) : ItemDispatch(site, site.class_name()), site_(site) {
  property(L"Object", [this] { return Variant(control().get()); });
  if (!has_own_enabled()) {
    property(
        L"Enabled", [this] { return Variant(!site_.window() || IsWindowEnabled(site_.window())); },
        [this](const VARIANT& value) {
          if (HWND window = site_.window()) EnableWindow(window, to_bool(value));
        },
        DISPID_ENABLED);
  }
}

ComPtr<IDispatch> Extender::control() const {
  return attached() ? site_.control_dispatch() : nullptr;
}

bool Extender::has_own_enabled() const {
  DISPID id = DISPID_UNKNOWN;
  LPOLESTR name = const_cast<LPOLESTR>(L"Enabled");
  const auto dispatch = control();
  return dispatch &&
         SUCCEEDED(dispatch->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id));
}

bool Extender::enabled() const {
  try {
    return !has_own_enabled() || to_bool(get_property(control().get(), L"Enabled"));
  } catch (const ComError&) {
    return true;
  }
}

HRESULT Extender::GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) {
  if (const auto dispatch = control();
      dispatch && SUCCEEDED(dispatch->GetTypeInfo(index, locale, info)))
    return S_OK;
  return ItemDispatch::GetTypeInfo(index, locale, info);
}

bool Extender::answer(REFIID iid, void** out) {
  if (!attached() || FAILED(site_.control()->QueryInterface(iid, out))) return false;
  // The caller counts the pointer itself; the control outlives this moment.
  static_cast<IUnknown*>(*out)->Release();
  return true;
}

HRESULT Extender::unknown_name(LPOLESTR* names, UINT count, LCID locale, DISPID* ids) {
  const auto dispatch = control();
  return dispatch ? dispatch->GetIDsOfNames(IID_NULL, names, count, locale, ids)
                  : DISP_E_UNKNOWNNAME;
}

HRESULT Extender::unknown_id(DISPID id, LCID locale, WORD flags, DISPPARAMS* params,
                             VARIANT* result, EXCEPINFO* error, UINT* bad) {
  const auto dispatch = control();
  return dispatch ? dispatch->Invoke(id, IID_NULL, locale, flags, params, result, error, bad)
                  : numbered_error(398);
}

}  // namespace kestrelon::host
