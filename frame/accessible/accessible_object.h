// IAccessible over a control's answers. Readers may keep it after the control is gone.
#pragma once

#include "base/counted_win.h"
#include "frame/accessible/accessible_view.h"

namespace kestrelon {

/// What the object needs of the control beside its answers; implemented by ControlFrame.
class AccessibleHost {
 public:
  virtual AccessibleView* accessible_view() = 0;
  /// The window whose client area the control is drawn in, and the control's place there.
  virtual HWND accessible_window(RECT& place) const = 0;
  virtual bool accessible_focused() const = 0;
  virtual bool accessible_enabled() const = 0;
  virtual void accessible_take_focus() = 0;
  /// Keeps the control alive during a call.
  virtual IUnknown* accessible_life() = 0;

 protected:
  ~AccessibleHost() = default;
};

class AccessibleObject final : public Counted<IAccessible> {
 public:
  explicit AccessibleObject(AccessibleHost& host) : host_(&host) {}
  /// The control is gone: every call answers CO_E_OBJNOTCONNECTED from here on.
  void detach() { host_ = nullptr; }

  STDMETHODIMP QueryInterface(REFIID iid, void** out) override;
  // IDispatch, by the system's description of IAccessible
  STDMETHODIMP GetTypeInfoCount(UINT* out) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** out) override;
  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                             DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID member, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                      VARIANT* result, EXCEPINFO* exception, UINT* bad) override;
  // IAccessible
  STDMETHODIMP get_accParent(IDispatch** out) override;
  STDMETHODIMP get_accChildCount(long* out) override;
  STDMETHODIMP get_accChild(VARIANT child, IDispatch** out) override;
  STDMETHODIMP get_accName(VARIANT child, BSTR* out) override;
  STDMETHODIMP get_accValue(VARIANT child, BSTR* out) override;
  STDMETHODIMP get_accDescription(VARIANT child, BSTR* out) override;
  STDMETHODIMP get_accRole(VARIANT child, VARIANT* out) override;
  STDMETHODIMP get_accState(VARIANT child, VARIANT* out) override;
  STDMETHODIMP get_accHelp(VARIANT, BSTR* out) override;
  STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT, long* topic) override;
  STDMETHODIMP get_accKeyboardShortcut(VARIANT child, BSTR* out) override;
  STDMETHODIMP get_accFocus(VARIANT* out) override;
  STDMETHODIMP get_accSelection(VARIANT* out) override;
  STDMETHODIMP get_accDefaultAction(VARIANT child, BSTR* out) override;
  STDMETHODIMP accSelect(long flags, VARIANT child) override;
  STDMETHODIMP accLocation(long* left, long* top, long* width, long* height,
                           VARIANT child) override;
  STDMETHODIMP accNavigate(long direction, VARIANT start, VARIANT* out) override;
  STDMETHODIMP accHitTest(long left, long top, VARIANT* out) override;
  STDMETHODIMP accDoDefaultAction(VARIANT child) override;
  STDMETHODIMP put_accName(VARIANT, BSTR) override { return E_NOTIMPL; }
  STDMETHODIMP put_accValue(VARIANT child, BSTR value) override;

 private:
  template <class Body>
  HRESULT ask(Body&& body);
  template <class Body>
  HRESULT ask_item(const VARIANT& child, Body&& body);
  HRESULT text(const VARIANT& child, std::wstring AccessibleItem::*member, BSTR* out);
  bool item(long child, AccessibleItem& out);
  RECT place() const;

  AccessibleHost* host_;
};

/// IAccessible of a part that is drawn by the system (a window's frame, a parent); empty where the
/// system has no accessibility.
ComPtr<IDispatch> accessible_of_window(HWND window, DWORD object);
/// The answer to WM_GETOBJECT for an object.
LRESULT accessible_result(WPARAM wparam, IAccessible* object);

}  // namespace kestrelon
