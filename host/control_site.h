// The place of one OLE control on a form: what the control sees of its container, and how the
// container drives the control.
#pragma once

#include <windows.h>
//
#include <ocidl.h>
#include <olectl.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/com_object.h"
#include "host/event_sink.h"
#include "host/form_item.h"

namespace kestrelon::host {

class ContainedBox;
class Extender;
class PropertyBag;

/// How a control comes to its first properties. Exactly one way is taken: a saved bag or stream is
/// loaded, else the control is told that it is new.
struct ControlState {
  IPropertyBag* bag = nullptr;
  IErrorLog* errors = nullptr;
  IStream* stream = nullptr;
  IStorage* storage = nullptr;
  /// Not shown until Visible is set.
  bool hidden = false;
};

using ControlSiteBase = ComObject<IOleClientSite, IOleInPlaceSiteWindowless, IOleControlSite,
                                  IAdviseSink, IPropertyNotifySink, ISimpleFrameSite, IDispatch>;

class ControlSite final : public ControlSiteBase, public FormItem {
 public:
  ControlSite(Form& form, ContainerWindow& container, std::wstring name, const RECT& bounds,
              ComPtr<IUnknown> control);

  /// Sites the control, gives it its state and extent, and activates it when it is visible. Returns
  /// the first failure; a control that fails is closed.
  HRESULT open(const ControlState& state);

  IUnknown* control() const { return control_.get(); }
  ComPtr<IDispatch> control_dispatch() const { return control_.as<IDispatch>(); }
  /// The control's class, such as `USCheckBox`.
  const std::wstring& class_name() const { return class_name_; }
  CLSID clsid() const;

  HRESULT verb(LONG verb, MSG* message = nullptr);
  HRESULT activate() { return verb(OLEIVERB_INPLACEACTIVATE); }
  HRESULT deactivate();
  void ui_deactivate();
  bool active() const { return static_cast<bool>(in_place_); }
  bool ui_active() const { return ui_active_; }
  DWORD misc_status() const { return misc_status_; }

  /// Events of the control. The handler is called after the line went to the sink's log; events
  /// that come while the container froze them are the control's fault and are counted.
  EventSink* events() const { return sink_.get(); }
  void on_event(EventHandler handler) { handler_ = std::move(handler); }
  void freeze_events(bool freeze);
  int events_while_frozen() const { return events_while_frozen_; }

  /// Told to the control: an ambient member has changed (DISPID_UNKNOWN for several).
  void ambient_changed(DISPID id);
  void set_display_as_default(bool shown);

  /// Properties that the control reported as changed, oldest first.
  const std::vector<DISPID>& changes() const { return changes_; }
  void clear_changes() { changes_.clear(); }
  /// Asked before a bindable property changes; all changes are allowed without it.
  std::function<bool(DISPID)> on_request_edit;

  /// Access keys and the keys that the control wants for itself.
  bool has_mnemonic(const MSG& message) const;
  bool eats(DWORD control_info_flag) const;
  HRESULT mnemonic(MSG message);

  /// Draws the control as it stands, active or not, into any device context.
  HRESULT draw_into(HDC hdc, const RECT& area, HDC target = nullptr) const;

  // FormItem
  ULONG STDMETHODCALLTYPE AddRef() override { return ControlSiteBase::AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return ControlSiteBase::Release(); }
  IDispatch* dispatch() override;
  HWND window() const override;
  IOleInPlaceObjectWindowless* windowless() const override { return windowless_.get(); }
  IViewObjectEx* view() const override { return view_ex_.get(); }
  ContainerWindow* box() override;
  void draw(HDC hdc) override;
  bool can_focus() const override;
  void take_focus() override;

  // IOleClientSite
  HRESULT STDMETHODCALLTYPE SaveObject() override;
  HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker** moniker) override;
  HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) override;
  HRESULT STDMETHODCALLTYPE ShowObject() override;
  HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override;
  HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override;

  // IOleWindow, IOleInPlaceSite
  HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override;
  HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override;
  HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override;
  HRESULT STDMETHODCALLTYPE OnUIActivate() override;
  HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** doc,
                                             LPRECT place, LPRECT clip,
                                             LPOLEINPLACEFRAMEINFO info) override;
  HRESULT STDMETHODCALLTYPE Scroll(SIZE) override;
  HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) override;
  HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override;
  HRESULT STDMETHODCALLTYPE DiscardUndoState() override;
  HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override;
  HRESULT STDMETHODCALLTYPE OnPosRectChange(LPCRECT place) override;

  // IOleInPlaceSiteEx
  HRESULT STDMETHODCALLTYPE OnInPlaceActivateEx(WINBOOL* no_redraw, DWORD flags) override;
  HRESULT STDMETHODCALLTYPE OnInPlaceDeactivateEx(WINBOOL no_redraw) override;
  HRESULT STDMETHODCALLTYPE RequestUIActivate() override;

  // IOleInPlaceSiteWindowless
  HRESULT STDMETHODCALLTYPE CanWindowlessActivate() override;
  HRESULT STDMETHODCALLTYPE GetCapture() override;
  HRESULT STDMETHODCALLTYPE SetCapture(WINBOOL capture) override;
  HRESULT STDMETHODCALLTYPE GetFocus() override;
  HRESULT STDMETHODCALLTYPE SetFocus(WINBOOL focus) override;
  HRESULT STDMETHODCALLTYPE GetDC(LPCRECT area, DWORD flags, HDC* hdc) override;
  HRESULT STDMETHODCALLTYPE ReleaseDC(HDC hdc) override;
  HRESULT STDMETHODCALLTYPE InvalidateRect(LPCRECT area, WINBOOL erase) override;
  HRESULT STDMETHODCALLTYPE InvalidateRgn(HRGN region, WINBOOL erase) override;
  HRESULT STDMETHODCALLTYPE ScrollRect(INT dx, INT dy, LPCRECT scroll, LPCRECT clip) override;
  HRESULT STDMETHODCALLTYPE AdjustRect(LPRECT area) override;
  HRESULT STDMETHODCALLTYPE OnDefWindowMessage(UINT message, WPARAM wparam, LPARAM lparam,
                                               LRESULT* result) override;

  // IOleControlSite
  HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override;
  HRESULT STDMETHODCALLTYPE LockInPlaceActive(WINBOOL lock) override;
  HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch** extended) override;
  HRESULT STDMETHODCALLTYPE TransformCoords(POINTL* himetric, POINTF* container,
                                            DWORD flags) override;
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message, DWORD modifiers) override;
  HRESULT STDMETHODCALLTYPE OnFocus(WINBOOL got_focus) override;
  HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override;

  // IAdviseSink
  void STDMETHODCALLTYPE OnDataChange(FORMATETC*, STGMEDIUM*) override {}
  void STDMETHODCALLTYPE OnViewChange(DWORD aspect, LONG index) override;
  void STDMETHODCALLTYPE OnRename(IMoniker*) override {}
  void STDMETHODCALLTYPE OnSave() override {}
  void STDMETHODCALLTYPE OnClose() override {}

  // IPropertyNotifySink
  HRESULT STDMETHODCALLTYPE OnChanged(DISPID id) override;
  HRESULT STDMETHODCALLTYPE OnRequestEdit(DISPID id) override;

  // ISimpleFrameSite
  HRESULT STDMETHODCALLTYPE PreMessageFilter(HWND, UINT, WPARAM, LPARAM, LRESULT*, DWORD*) override;
  HRESULT STDMETHODCALLTYPE PostMessageFilter(HWND, UINT, WPARAM, LPARAM, LRESULT*, DWORD) override;

  // IDispatch: the ambient members
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*,
                                   VARIANT* result, EXCEPINFO*, UINT*) override;

 protected:
  ~ControlSite() override;
  bool answer(REFIID iid, void** out) override;
  void place() override;
  void show(bool visible) override;
  void enter_container() override;
  void leave_container() override;
  void on_close() override;

 private:
  HRESULT load(const ControlState& state);
  void send_extent();
  void read_extent();
  void connect();
  void disconnect();
  void read_control_info();
  void handle_event(const std::wstring& event, DISPPARAMS& params);
  RECT clip_rect() const;
  void fill_box();
  void clear_box();

  ComPtr<IUnknown> control_;
  ComPtr<IOleObject> ole_;
  ComPtr<IOleControl> ole_control_;
  ComPtr<IViewObject> view_;
  ComPtr<IViewObjectEx> view_ex_;
  ComPtr<IOleInPlaceObject> in_place_;
  ComPtr<IOleInPlaceObjectWindowless> windowless_;
  ComPtr<IConnectionPoint> notify_point_;
  ComPtr<Extender> extender_;
  std::unique_ptr<ContainedBox> box_;  // of a control that others stand on
  ComPtr<EventSink> sink_;
  EventHandler handler_;
  std::wstring class_name_;
  std::vector<DISPID> changes_;
  CONTROLINFO control_info_ = {};
  DWORD misc_status_ = 0;
  DWORD notify_cookie_ = 0;
  DWORD advise_cookie_ = 0;
  int frozen_ = 0;
  int events_while_frozen_ = 0;
  bool ui_active_ = false;
  bool display_as_default_ = false;
};

}  // namespace kestrelon::host
