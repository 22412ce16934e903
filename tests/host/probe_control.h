// A small control made in the test program, with or without a window of its own, that writes down
// what its container does with it.
#pragma once

#include <windows.h>
//
#include <ocidl.h>
#include <olectl.h>

#include <string>
#include <vector>

#include "host/com_object.h"

namespace kestrelon::host {

struct ProbeOptions {
  bool windowless = false;
  DWORD misc_status = OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_INSIDEOUT | OLEMISC_SETCLIENTSITEFIRST;
  COLORREF color = RGB(200, 0, 0);
  wchar_t access_key = 0;
};

constexpr DISPID kProbeText = 0;
constexpr DISPID kProbeChanging = 1;
constexpr DISPID kProbePressed = 2;

using ProbeBase = ComObject<IOleObject, IOleInPlaceObjectWindowless, IOleControl, IViewObjectEx,
                            IPersistPropertyBag, IPersistStreamInit, IProvideClassInfo,
                            IConnectionPointContainer, IConnectionPoint, IDispatch>;

class ProbeControl final : public ProbeBase {
 public:
  explicit ProbeControl(const ProbeOptions& options) : options_(options) {}

  std::vector<std::wstring> log;
  std::wstring text = L"probe";
  int mnemonics = 0;
  bool has_focus = false;
  IOleClientSite* site() const { return site_.get(); }
  Variant ambient(DISPID id) const;
  // Raises Changing(Text, Cancel), both by reference, and answers what came back.
  std::pair<std::wstring, bool> raise_changing(const std::wstring& value);
  void raise_pressed(short button, float x);

  // IOleObject
  STDMETHODIMP SetClientSite(IOleClientSite* site) override;
  STDMETHODIMP GetClientSite(IOleClientSite** out) override { return site_.copy_to(out); }
  STDMETHODIMP SetHostNames(LPCOLESTR, LPCOLESTR) override { return S_OK; }
  STDMETHODIMP Close(DWORD) override;
  STDMETHODIMP SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
  STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
  STDMETHODIMP InitFromData(IDataObject*, WINBOOL, DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP GetClipboardData(DWORD, IDataObject**) override { return E_NOTIMPL; }
  STDMETHODIMP DoVerb(LONG verb, LPMSG, IOleClientSite*, LONG, HWND parent, LPCRECT place) override;
  STDMETHODIMP EnumVerbs(IEnumOLEVERB**) override { return E_NOTIMPL; }
  STDMETHODIMP Update() override { return S_OK; }
  STDMETHODIMP IsUpToDate() override { return S_OK; }
  STDMETHODIMP GetUserClassID(CLSID*) override { return E_FAIL; }
  STDMETHODIMP GetUserType(DWORD, LPOLESTR*) override { return E_NOTIMPL; }
  STDMETHODIMP SetExtent(DWORD, SIZEL* size) override;
  STDMETHODIMP GetExtent(DWORD, SIZEL* size) override;
  STDMETHODIMP Advise(IAdviseSink*, DWORD* cookie) override;
  STDMETHODIMP Unadvise(DWORD cookie) override;
  STDMETHODIMP EnumAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }
  STDMETHODIMP GetMiscStatus(DWORD, DWORD* status) override;
  STDMETHODIMP SetColorScheme(LOGPALETTE*) override { return E_NOTIMPL; }

  // IOleInPlaceObjectWindowless
  STDMETHODIMP GetWindow(HWND* out) override;
  STDMETHODIMP ContextSensitiveHelp(WINBOOL) override { return S_OK; }
  STDMETHODIMP InPlaceDeactivate() override;
  STDMETHODIMP UIDeactivate() override;
  STDMETHODIMP SetObjectRects(LPCRECT place, LPCRECT clip) override;
  STDMETHODIMP ReactivateAndUndo() override { return E_NOTIMPL; }
  STDMETHODIMP OnWindowMessage(UINT message, WPARAM, LPARAM lparam, LRESULT* result) override;
  STDMETHODIMP GetDropTarget(IDropTarget**) override { return E_NOTIMPL; }

  // IOleControl
  STDMETHODIMP GetControlInfo(CONTROLINFO* info) override;
  STDMETHODIMP OnMnemonic(LPMSG) override;
  STDMETHODIMP OnAmbientPropertyChange(DISPID id) override;
  STDMETHODIMP FreezeEvents(WINBOOL freeze) override;

  // IViewObjectEx
  STDMETHODIMP Draw(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, HDC hdc, LPCRECTL bounds, LPCRECTL,
                    WINBOOL(CALLBACK*)(ULONG_PTR), ULONG_PTR) override;
  STDMETHODIMP GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE**) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP Freeze(DWORD, LONG, void*, DWORD*) override { return E_NOTIMPL; }
  STDMETHODIMP Unfreeze(DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP SetAdvise(DWORD, DWORD, IAdviseSink*) override { return S_OK; }
  STDMETHODIMP GetAdvise(DWORD*, DWORD*, IAdviseSink**) override { return E_NOTIMPL; }
  STDMETHODIMP GetExtent(DWORD, LONG, DVTARGETDEVICE*, LPSIZEL) override { return E_NOTIMPL; }
  STDMETHODIMP GetRect(DWORD, LPRECTL) override { return E_NOTIMPL; }
  STDMETHODIMP GetViewStatus(DWORD* status) override;
  STDMETHODIMP QueryHitPoint(DWORD, LPCRECT bounds, POINT at, LONG, DWORD* hit) override;
  STDMETHODIMP QueryHitRect(DWORD, LPCRECT, LPCRECT, LONG, DWORD*) override { return E_NOTIMPL; }
  STDMETHODIMP GetNaturalExtent(DWORD, LONG, DVTARGETDEVICE*, HDC, DVEXTENTINFO*,
                                LPSIZEL) override {
    return E_NOTIMPL;
  }

  // IPersistPropertyBag, IPersistStreamInit
  STDMETHODIMP GetClassID(CLSID*) override { return E_NOTIMPL; }
  STDMETHODIMP InitNew() override;
  STDMETHODIMP Load(IPropertyBag* bag, IErrorLog* errors) override;
  STDMETHODIMP Save(IPropertyBag* bag, WINBOOL, WINBOOL) override;
  STDMETHODIMP IsDirty() override { return S_FALSE; }
  STDMETHODIMP Load(IStream* stream) override;
  STDMETHODIMP Save(IStream* stream, WINBOOL) override;
  STDMETHODIMP GetSizeMax(ULARGE_INTEGER*) override { return E_NOTIMPL; }

  // IProvideClassInfo, IConnectionPointContainer, IConnectionPoint
  STDMETHODIMP GetClassInfo(ITypeInfo** out) override;
  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
  STDMETHODIMP FindConnectionPoint(REFIID iid, IConnectionPoint** out) override;
  STDMETHODIMP GetConnectionInterface(IID*) override { return E_NOTIMPL; }
  STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer**) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
  STDMETHODIMP EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

  // IDispatch
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                      EXCEPINFO*, UINT*) override;

 protected:
  ~ProbeControl() override;
  bool answer(REFIID iid, void** out) override;

 private:
  void activate(HWND parent, const RECT& place);
  void ui_activate();
  static LRESULT CALLBACK window_proc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam);

  ProbeOptions options_;
  ComPtr<IOleClientSite> site_;
  ComPtr<IOleInPlaceSiteWindowless> place_site_;
  ComPtr<IDispatch> sink_;
  SIZEL extent_ = {2540, 1270};
  RECT place_ = {};
  HWND hwnd_ = nullptr;
  HACCEL keys_ = nullptr;
  bool active_ = false;
  bool ui_active_ = false;
};

}  // namespace kestrelon::host
