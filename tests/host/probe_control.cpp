#include "tests/host/probe_control.h"

#include "host/event_sink.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

// {5C0B1E52-97B3-4E0D-8F43-5E1B6A3F7C01}
constexpr GUID kEventsIid = {
    0x5c0b1e52, 0x97b3, 0x4e0d, {0x8f, 0x43, 0x5e, 0x1b, 0x6a, 0x3f, 0x7c, 0x01}};

ComPtr<ICreateTypeInfo> create_type(ICreateTypeLib2* library, const wchar_t* name, TYPEKIND kind) {
  ComPtr<ICreateTypeInfo> type;
  library->CreateTypeInfo(const_cast<LPOLESTR>(name), kind, type.put());
  return type;
}

void add_event(ICreateTypeInfo* events, UINT index, DISPID id, std::vector<const wchar_t*> names,
               std::vector<VARTYPE> types) {
  std::vector<TYPEDESC> inner(types.size());
  std::vector<ELEMDESC> parameters(types.size());
  for (size_t i = 0; i < types.size(); ++i) {
    inner[i].vt = types[i];
    parameters[i].tdesc.vt = VT_PTR;
    parameters[i].tdesc.lptdesc = &inner[i];
  }
  FUNCDESC function = {};
  function.memid = id;
  function.funckind = FUNC_DISPATCH;
  function.invkind = INVOKE_FUNC;
  function.callconv = CC_STDCALL;
  function.cParams = static_cast<SHORT>(types.size());
  function.lprgelemdescParam = parameters.data();
  function.elemdescFunc.tdesc.vt = VT_VOID;
  events->AddFuncDesc(index, &function);
  std::vector<LPOLESTR> raw;
  for (const wchar_t* name : names) raw.push_back(const_cast<LPOLESTR>(name));
  events->SetFuncAndParamNames(index, raw.data(), static_cast<UINT>(raw.size()));
}

ComPtr<ITypeInfo> build_class() {
  ComPtr<ICreateTypeLib2> library;
  CreateTypeLib2(SYS_WIN32, L"probe.tlb", library.put());
  const auto events = create_type(library.get(), L"__Probe", TKIND_DISPATCH);
  events->SetGuid(kEventsIid);
  add_event(events.get(), 0, kProbeChanging, {L"Changing", L"Text", L"Cancel"}, {VT_BSTR, VT_BOOL});
  add_event(events.get(), 1, kProbePressed, {L"Pressed", L"Button", L"X"}, {VT_I2, VT_R4});
  events->LayOut();
  const auto coclass = create_type(library.get(), L"Probe", TKIND_COCLASS);
  HREFTYPE reference = 0;
  coclass->AddRefTypeInfo(events.as<ITypeInfo>().get(), &reference);
  coclass->AddImplType(0, reference);
  coclass->SetImplTypeFlags(0, IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE);
  coclass->LayOut();
  return coclass.as<ITypeInfo>();
}

}  // namespace

ProbeControl::~ProbeControl() {
  if (keys_) DestroyAcceleratorTable(keys_);
}

bool ProbeControl::answer(REFIID iid, void** out) {
  if (IsEqualIID(iid, IID_IOleInPlaceObject) || IsEqualIID(iid, IID_IOleWindow)) {
    *out = static_cast<IOleInPlaceObjectWindowless*>(this);
    return true;
  }
  if (IsEqualIID(iid, IID_IViewObject)) {
    *out = static_cast<IViewObjectEx*>(this);
    return true;
  }
  return false;
}

Variant ProbeControl::ambient(DISPID id) const {
  Variant value;
  DISPPARAMS none = {};
  if (const auto ambients = site_.as<IDispatch>())
    ambients->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, value.put(),
                     nullptr, nullptr);
  return value;
}

STDMETHODIMP ProbeControl::SetClientSite(IOleClientSite* site) {
  log.push_back(site ? L"site" : L"no site");
  site_ = ComPtr<IOleClientSite>(site);
  return S_OK;
}

STDMETHODIMP ProbeControl::Close(DWORD) {
  log.push_back(L"close");
  return InPlaceDeactivate();
}

STDMETHODIMP ProbeControl::DoVerb(LONG verb, LPMSG, IOleClientSite*, LONG, HWND parent,
                                  LPCRECT place) {
  log.push_back(L"verb " + std::to_wstring(verb));
  if (verb == OLEIVERB_HIDE) {
    ui_active_ ? UIDeactivate() : S_OK;
    if (hwnd_) ShowWindow(hwnd_, SW_HIDE);
    return S_OK;
  }
  activate(parent, *place);
  if (hwnd_) ShowWindow(hwnd_, SW_SHOWNA);
  if (verb == OLEIVERB_UIACTIVATE) ui_activate();
  return S_OK;
}

void ProbeControl::activate(HWND parent, const RECT& place) {
  if (active_) return;
  active_ = true;
  place_ = place;
  place_site_ = site_.as<IOleInPlaceSiteWindowless>();
  const bool windowless = options_.windowless && place_site_->CanWindowlessActivate() == S_OK;
  WINBOOL no_redraw = FALSE;
  place_site_->OnInPlaceActivateEx(&no_redraw, windowless ? ACTIVATE_WINDOWLESS : 0);
  if (windowless) return;
  WNDCLASSW wc = {};
  wc.lpfnWndProc = window_proc;
  wc.hInstance = GetModuleHandleW(nullptr);
  wc.lpszClassName = L"KestrelonProbe";
  RegisterClassW(&wc);
  hwnd_ = CreateWindowExW(0, wc.lpszClassName, L"", WS_CHILD | WS_VISIBLE, place.left, place.top,
                          place.right - place.left, place.bottom - place.top, parent, nullptr,
                          wc.hInstance, nullptr);
  SetWindowLongPtrW(hwnd_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

void ProbeControl::ui_activate() {
  ui_active_ = true;
  place_site_->OnUIActivate();
  if (hwnd_)
    ::SetFocus(hwnd_);
  else
    place_site_->SetFocus(TRUE);
}

LRESULT CALLBACK ProbeControl::window_proc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* self = reinterpret_cast<ProbeControl*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  if (self && (message == WM_SETFOCUS || message == WM_KILLFOCUS)) {
    self->has_focus = message == WM_SETFOCUS;
    if (self->has_focus && !self->ui_active_) self->ui_activate();
  }
  if (message == WM_LBUTTONDOWN) ::SetFocus(hwnd);
  return DefWindowProcW(hwnd, message, wparam, lparam);
}

STDMETHODIMP ProbeControl::SetExtent(DWORD, SIZEL* size) {
  extent_ = *size;
  return S_OK;
}
STDMETHODIMP ProbeControl::GetExtent(DWORD, SIZEL* size) {
  *size = extent_;
  return S_OK;
}
STDMETHODIMP ProbeControl::Advise(IAdviseSink*, DWORD* cookie) {
  *cookie = 1;
  return S_OK;
}
STDMETHODIMP ProbeControl::Unadvise(DWORD cookie) {
  if (cookie == 2) sink_.reset();
  return S_OK;
}
STDMETHODIMP ProbeControl::GetMiscStatus(DWORD, DWORD* status) {
  *status = options_.misc_status;
  return S_OK;
}

STDMETHODIMP ProbeControl::GetWindow(HWND* out) {
  *out = hwnd_;
  return hwnd_ ? S_OK : E_FAIL;
}
STDMETHODIMP ProbeControl::InPlaceDeactivate() {
  if (!active_) return S_OK;
  active_ = false;
  if (ui_active_) UIDeactivate();
  if (HWND hwnd = std::exchange(hwnd_, nullptr)) {
    SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
    DestroyWindow(hwnd);
  }
  log.push_back(L"inactive");
  return place_site_->OnInPlaceDeactivate();
}
STDMETHODIMP ProbeControl::UIDeactivate() {
  ui_active_ = false;
  return place_site_->OnUIDeactivate(FALSE);
}
STDMETHODIMP ProbeControl::SetObjectRects(LPCRECT place, LPCRECT) {
  place_ = *place;
  if (hwnd_)
    MoveWindow(hwnd_, place->left, place->top, place->right - place->left,
               place->bottom - place->top, TRUE);
  return S_OK;
}
STDMETHODIMP ProbeControl::OnWindowMessage(UINT message, WPARAM, LPARAM lparam, LRESULT* result) {
  *result = 0;
  switch (message) {
    case WM_MOUSEMOVE:
      log.push_back(L"move");
      return S_OK;
    case WM_LBUTTONDOWN:
      log.push_back(L"down " + std::to_wstring(LOWORD(lparam)) + L"," +
                    std::to_wstring(HIWORD(lparam)));
      place_site_->SetCapture(TRUE);
      if (!ui_active_) ui_activate();
      return S_OK;
    case WM_LBUTTONUP:
      log.push_back(L"up");
      place_site_->SetCapture(FALSE);
      return S_OK;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      has_focus = message == WM_SETFOCUS;
      return S_OK;
    case WM_CHAR:
      log.push_back(L"char");
      return S_OK;
    default:
      return S_FALSE;
  }
}

STDMETHODIMP ProbeControl::GetControlInfo(CONTROLINFO* info) {
  *info = {};
  info->cb = sizeof *info;
  if (!options_.access_key) return S_OK;
  ACCEL key = {FALT, static_cast<WORD>(options_.access_key), 1};
  if (!keys_) keys_ = CreateAcceleratorTableW(&key, 1);
  info->hAccel = keys_;
  info->cAccel = 1;
  return S_OK;
}
STDMETHODIMP ProbeControl::OnMnemonic(LPMSG) {
  ++mnemonics;
  return S_OK;
}
STDMETHODIMP ProbeControl::OnAmbientPropertyChange(DISPID id) {
  log.push_back(L"ambient " + std::to_wstring(id));
  return S_OK;
}
STDMETHODIMP ProbeControl::FreezeEvents(WINBOOL freeze) {
  log.push_back(freeze ? L"freeze" : L"thaw");
  return S_OK;
}

STDMETHODIMP ProbeControl::Draw(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, HDC hdc, LPCRECTL bounds,
                                LPCRECTL, WINBOOL(CALLBACK*)(ULONG_PTR), ULONG_PTR) {
  RECT area = place_;
  if (bounds) area = {bounds->left, bounds->top, bounds->right, bounds->bottom};
  // The left half only: the right half stays transparent.
  area.right = (area.left + area.right) / 2;
  HBRUSH brush = CreateSolidBrush(options_.color);
  FillRect(hdc, &area, brush);
  DeleteObject(brush);
  return S_OK;
}
STDMETHODIMP ProbeControl::GetViewStatus(DWORD* status) {
  *status = 0;
  return S_OK;
}
STDMETHODIMP ProbeControl::QueryHitPoint(DWORD, LPCRECT bounds, POINT at, LONG, DWORD* hit) {
  const bool left = at.x < (bounds->left + bounds->right) / 2;
  *hit = left ? HITRESULT_HIT : HITRESULT_OUTSIDE;
  return S_OK;
}

STDMETHODIMP ProbeControl::InitNew() {
  log.push_back(L"new");
  return S_OK;
}
STDMETHODIMP ProbeControl::Load(IPropertyBag* bag, IErrorLog* errors) {
  log.push_back(L"load bag");
  Variant value(L"");
  if (FAILED(bag->Read(L"Text", &value, errors))) return E_FAIL;
  text = to_text(value);
  return S_OK;
}
STDMETHODIMP ProbeControl::Save(IPropertyBag* bag, WINBOOL, WINBOOL) {
  Variant value(text);
  return bag->Write(L"Text", &value);
}
STDMETHODIMP ProbeControl::Load(IStream* stream) {
  log.push_back(L"load stream");
  ULONG length = 0;
  ULONG read = 0;
  if (FAILED(stream->Read(&length, sizeof length, &read)) || read != sizeof length || length > 1000)
    return E_FAIL;
  text.resize(length);
  const ULONG bytes = length * static_cast<ULONG>(sizeof(wchar_t));
  return SUCCEEDED(stream->Read(text.data(), bytes, &read)) && read == bytes ? S_OK : E_FAIL;
}
STDMETHODIMP ProbeControl::Save(IStream* stream, WINBOOL) {
  const auto length = static_cast<ULONG>(text.size());
  stream->Write(&length, sizeof length, nullptr);
  return stream->Write(text.data(), length * static_cast<ULONG>(sizeof(wchar_t)), nullptr);
}

STDMETHODIMP ProbeControl::GetClassInfo(ITypeInfo** out) {
  return build_class().copy_to(out);
}
STDMETHODIMP ProbeControl::FindConnectionPoint(REFIID iid, IConnectionPoint** out) {
  *out = nullptr;
  if (!IsEqualIID(iid, kEventsIid)) return CONNECT_E_NOCONNECTION;
  *out = static_cast<IConnectionPoint*>(this);
  AddRef();
  return S_OK;
}
STDMETHODIMP ProbeControl::Advise(IUnknown* sink, DWORD* cookie) {
  *cookie = 2;
  return sink->QueryInterface(kEventsIid, sink_.put_void());
}

std::pair<std::wstring, bool> ProbeControl::raise_changing(const std::wstring& value) {
  BSTR changed = Bstr(value).detach();
  VARIANT_BOOL cancel = VARIANT_FALSE;
  VARIANT raw[2] = {};
  raw[1].vt = VT_BSTR | VT_BYREF;
  raw[1].pbstrVal = &changed;
  raw[0].vt = VT_BOOL | VT_BYREF;
  raw[0].pboolVal = &cancel;
  DISPPARAMS params = {raw, nullptr, 2, 0};
  const ComPtr<IDispatch> sink = sink_;
  if (sink)
    sink->Invoke(kProbeChanging, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, nullptr,
                 nullptr, nullptr);
  std::pair<std::wstring, bool> out(to_wstring(changed), cancel != VARIANT_FALSE);
  SysFreeString(changed);
  return out;
}

void ProbeControl::raise_pressed(short button, float x) {
  VARIANT raw[2] = {};
  raw[1].vt = VT_I2 | VT_BYREF;
  raw[1].piVal = &button;
  raw[0].vt = VT_R4 | VT_BYREF;
  raw[0].pfltVal = &x;
  DISPPARAMS params = {raw, nullptr, 2, 0};
  const ComPtr<IDispatch> sink = sink_;
  if (sink)
    sink->Invoke(kProbePressed, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, nullptr,
                 nullptr, nullptr);
}

STDMETHODIMP ProbeControl::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}
STDMETHODIMP ProbeControl::GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) {
  ids[0] = lower_case(names[0]) == L"text" ? kProbeText : DISPID_UNKNOWN;
  return ids[0] == kProbeText ? S_OK : DISP_E_UNKNOWNNAME;
}
STDMETHODIMP ProbeControl::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params,
                                  VARIANT* result, EXCEPINFO*, UINT*) {
  if (id != kProbeText) return DISP_E_MEMBERNOTFOUND;
  if (flags & DISPATCH_PROPERTYPUT) {
    text = to_text(params->rgvarg[0]);
    return S_OK;
  }
  Variant value(text);
  return result && copy_value(value, *result) ? S_OK : E_FAIL;
}

}  // namespace kestrelon::host
