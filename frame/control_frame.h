// The control frame: everything that makes an object an OLE control, written once for all of them.
//
// A control derives from its generated glue over ControlFrame (or over SimpleControl, which adds
// the behaviour of the small controls) and overrides the container events it needs, from initialise
// to terminate. All code runs on the thread of the container's windows.
#pragma once

#include <docobj.h>
#include <ocidl.h>
#include <olectl.h>

#include <span>
#include "base/automation_win.h"

#include "base/property_stream.h"
#include "frame/accessible/accessible_object.h"
#include "frame/ambient.h"
#include "frame/drag_drop/drop_target.h"
#include "frame/face/browse_face.h"
#include "frame/inner/inner_window.h"
#include "frame/kit/scale.h"
#include "frame/kit/theme.h"
#include "frame/private_timer.h"
#include "frame/property_objects.h"
#include "frame/self_sub.h"
#include "frame/simple_frame.h"
#include "frame/surface.h"

namespace kestrelon {

/// A registered window message; a control's window answers the number of times it has been drawn
/// anew, and with a wParam of 1 that of drawings of a part. What shows a change of state must cost
/// one drawing, and what shows none no drawing.
inline constexpr wchar_t kFullRepaintsMessage[] = L"Kestrelon2012.FullRepaints";

/// How a class of controls presents itself to containers.
struct ControlTraits {
  DWORD misc_status = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE | OLEMISC_INSIDEOUT |
                      OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_SETCLIENTSITEFIRST;
  bool windowless = false;  ///< prefers to live without a window of its own
  bool acts_like_button = false;
  SIZE initial_pixels{120, 30};  ///< size until the container gives one
};

class ControlFrame : public AutomationObject,
                     public PropertyOwner,
                     public InnerWindowHost,
                     public AccessibleView,
                     private AccessibleHost,
                     private SelfSubOwner,
                     private DropListener,
                     public IOleObject,
                     public IOleInPlaceObjectWindowless,
                     public IOleInPlaceActiveObject,
                     public IOleControl,
                     public IViewObjectEx,
                     public IPersistStreamInit,
                     public IPersistStorage,
                     public IPersistPropertyBag,
                     public BrowseFace,
                     public IQuickActivate {
 public:
  explicit ControlFrame(const ControlTraits& traits);

  /// What screen readers call the control; empty: its caption. Saved only where it is set.
  Property<std::wstring> AccessibleName{*this, L"AccessibleName", L"", &ControlFrame::name_changed};

  // Members every control has; the glue finds them by name.
  void about();
  bool font_bold();
  void set_font_bold(bool value);
  bool font_italic();
  void set_font_italic(bool value);
  bool font_underline();
  void set_font_underline(bool value);
  bool font_strike_thru();
  void set_font_strike_thru(bool value);
  double font_size();
  void set_font_size(double points);
  long h_wnd() const { return static_cast<long>(reinterpret_cast<LONG_PTR>(window_)); }

  // IOleObject
  STDMETHODIMP SetClientSite(IOleClientSite* site) override;
  STDMETHODIMP GetClientSite(IOleClientSite** out) override;
  STDMETHODIMP SetHostNames(LPCOLESTR, LPCOLESTR) override { return S_OK; }
  STDMETHODIMP Close(DWORD save) override;
  STDMETHODIMP SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
  STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
  STDMETHODIMP InitFromData(IDataObject*, BOOL, DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP GetClipboardData(DWORD, IDataObject**) override { return E_NOTIMPL; }
  STDMETHODIMP DoVerb(LONG verb, MSG* message, IOleClientSite* site, LONG index, HWND parent,
                      LPCRECT place) override;
  STDMETHODIMP EnumVerbs(IEnumOLEVERB** out) override;
  STDMETHODIMP Update() override { return S_OK; }
  STDMETHODIMP IsUpToDate() override { return S_OK; }
  STDMETHODIMP GetUserClassID(CLSID* out) override { return GetClassID(out); }
  STDMETHODIMP GetUserType(DWORD form, LPOLESTR* out) override;
  STDMETHODIMP SetExtent(DWORD aspect, SIZEL* size) override;
  STDMETHODIMP GetExtent(DWORD aspect, SIZEL* size) override;
  STDMETHODIMP Advise(IAdviseSink* sink, DWORD* cookie) override;
  STDMETHODIMP Unadvise(DWORD cookie) override;
  STDMETHODIMP EnumAdvise(IEnumSTATDATA** out) override;
  STDMETHODIMP GetMiscStatus(DWORD aspect, DWORD* status) override;
  STDMETHODIMP SetColorScheme(LOGPALETTE*) override { return S_OK; }
  // IOleWindow
  STDMETHODIMP GetWindow(HWND* out) override;
  STDMETHODIMP ContextSensitiveHelp(BOOL) override { return S_OK; }
  // IOleInPlaceObjectWindowless
  STDMETHODIMP InPlaceDeactivate() override;
  STDMETHODIMP UIDeactivate() override;
  STDMETHODIMP SetObjectRects(LPCRECT place, LPCRECT clip) override;
  STDMETHODIMP ReactivateAndUndo() override { return INPLACE_E_NOTUNDOABLE; }
  STDMETHODIMP OnWindowMessage(UINT message, WPARAM wparam, LPARAM lparam, LRESULT* out) override;
  STDMETHODIMP GetDropTarget(IDropTarget** out) override;
  // IOleInPlaceActiveObject
  STDMETHODIMP TranslateAccelerator(MSG* message) override;
  STDMETHODIMP OnFrameWindowActivate(BOOL) override { return S_OK; }
  STDMETHODIMP OnDocWindowActivate(BOOL) override { return S_OK; }
  STDMETHODIMP ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) override { return S_OK; }
  STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }
  // IOleControl
  STDMETHODIMP GetControlInfo(CONTROLINFO* info) override;
  STDMETHODIMP OnMnemonic(MSG* message) override;
  STDMETHODIMP OnAmbientPropertyChange(DISPID id) override;
  STDMETHODIMP FreezeEvents(BOOL freeze) override;
  // IViewObjectEx
  STDMETHODIMP Draw(DWORD aspect, LONG index, void* aspect_info, DVTARGETDEVICE* device,
                    HDC target_dc, HDC dc, LPCRECTL bounds, LPCRECTL window_bounds,
                    BOOL(STDMETHODCALLTYPE* proceed)(ULONG_PTR), ULONG_PTR argument) override;
  STDMETHODIMP GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE**) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP Freeze(DWORD, LONG, void*, DWORD*) override { return E_NOTIMPL; }
  STDMETHODIMP Unfreeze(DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
  STDMETHODIMP GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
  STDMETHODIMP GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, SIZEL* size) override;
  STDMETHODIMP GetRect(DWORD aspect, RECTL* out) override;
  STDMETHODIMP GetViewStatus(DWORD* status) override;
  STDMETHODIMP QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG close_by,
                             DWORD* out) override;
  STDMETHODIMP QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT area, LONG close_by,
                            DWORD* out) override;
  STDMETHODIMP GetNaturalExtent(DWORD, LONG, DVTARGETDEVICE*, HDC, DVEXTENTINFO*, SIZEL*) override {
    return E_NOTIMPL;
  }
  // IPersist..., see control_persist.cpp
  STDMETHODIMP GetClassID(CLSID* out) override;
  STDMETHODIMP IsDirty() override { return dirty_ ? S_OK : S_FALSE; }
  STDMETHODIMP InitNew() override;
  STDMETHODIMP Load(IStream* stream) override;
  STDMETHODIMP Save(IStream* stream, BOOL clear_dirty) override;
  STDMETHODIMP GetSizeMax(ULARGE_INTEGER* out) override;
  STDMETHODIMP InitNew(IStorage* storage) override;
  STDMETHODIMP Load(IStorage* storage) override;
  STDMETHODIMP Save(IStorage* storage, BOOL same_as_load) override;
  STDMETHODIMP SaveCompleted(IStorage*) override { return S_OK; }
  STDMETHODIMP HandsOffStorage() override { return S_OK; }
  STDMETHODIMP Load(IPropertyBag* bag, IErrorLog* log) override;
  STDMETHODIMP Save(IPropertyBag* bag, BOOL clear_dirty, BOOL save_all) override;
  // IQuickActivate
  STDMETHODIMP QuickActivate(QACONTAINER* container, QACONTROL* control) override;
  STDMETHODIMP SetContentExtent(LPSIZEL size) override { return SetExtent(DVASPECT_CONTENT, size); }
  STDMETHODIMP GetContentExtent(LPSIZEL size) override { return GetExtent(DVASPECT_CONTENT, size); }

  /// Loads from nothing, as an empty bag would: for a control inside another.
  void load_defaults() { load_payload({}); }

  // PropertyOwner
  void property_changed(const wchar_t* name) override;

 protected:
  ~ControlFrame() override;

  // The life of a control, in this order; InitProperties and ReadProperties never both.
  /// Hands the container's font and colours to the properties that default to them; runs before
  /// either.
  virtual void take_ambient_defaults() {}
  virtual void init_properties() {}
  virtual void properties_read() {}
  virtual void resized() {}
  /// The scale of the window has changed; before the resized() that follows.
  virtual void rescaled() {}
  virtual void shown() {}
  virtual void hidden() {}
  virtual void ambient_changed(DISPID) {}
  /// The window has been made, or its parent changed; before the first message that matters.
  virtual void window_created() {}
  virtual void terminate() {}
  /// The container closes the control; its events can still be heard.
  virtual void closing() {}

  // Input. Coordinates are pixels of the control.
  virtual void mouse_down(short /*button*/, short /*shift*/, float /*x*/, float /*y*/) {}
  virtual void mouse_move(short /*button*/, short /*shift*/, float /*x*/, float /*y*/) {}
  virtual void mouse_up(short /*button*/, short /*shift*/, float /*x*/, float /*y*/) {}
  virtual void click() {}
  virtual void double_click() {}
  /// Keys, an inner window's too. A control goes on with what its host's handlers have left in the
  /// arguments; 0 ends the key, and an inner window does not get it.
  virtual void key_down(short& /*key*/, short& /*shift*/) {}
  /// `character` is a UTF-16 unit.
  virtual void key_press(short& /*character*/) {}
  virtual void key_up(short& /*key*/, short& /*shift*/) {}
  /// The wheel over the control or while it has the focus; `delta` in 120ths of a notch, away from
  /// the user or to the right positive. True when the control has used it.
  virtual bool mouse_wheel(bool /*horizontal*/, int /*delta*/, short /*shift*/) { return false; }
  /// Whether the control keeps a key that containers and dialogs would take: arrows, Tab, Enter,
  /// Escape ... Where that depends on its state, it calls key_wishes_changed() when it changes.
  virtual bool wants_key(int key, short /*shift*/) const {
    return key >= VK_LEFT && key <= VK_DOWN;
  }
  /// Whether characters are for the control, or else may serve as access keys of a dialog.
  virtual bool wants_characters() const { return false; }
  /// The inner window that the focus belongs to when the control gets it; null: the control's own.
  virtual HWND focus_target() { return nullptr; }
  virtual void got_focus() {}
  virtual void lost_focus() {}
  virtual void access_key_press(short /*key*/) {}
  /// The messages a control wants to see after the window procedure, beside WM_MOUSELEAVE. They
  /// arrive only at a control that was read from a saved state, at run time.
  virtual std::span<const UINT> intercepted_messages() const { return {}; }
  /// The callback of message interception.
  virtual void window_message_after(UINT /*message*/, WPARAM, LPARAM) {}
  /// First look at a message, before the frame acts on it; true when `result` is the answer.
  virtual bool window_message_before(UINT, WPARAM, LPARAM, LRESULT& /*result*/) { return false; }

  // Common events, implemented by the glue where the class declares them.
  virtual void raise_click() {}
  virtual void raise_dbl_click() {}
  virtual void raise_mouse_enter() {}
  virtual void raise_mouse_exit() {}
  virtual void raise_mouse_down(short&, short&, float&, float&) {}
  virtual void raise_mouse_move(short&, short&, float&, float&) {}
  virtual void raise_mouse_up(short&, short&, float&, float&) {}
  virtual void raise_key_down(short&, short&) {}
  virtual void raise_key_press(short&) {}
  virtual void raise_key_up(short&, short&) {}

  /// Tells screen readers about the control itself: role, state beside what the frame knows, value,
  /// default action, and a name unless the program has given one (name_after() takes a caption). A
  /// control with items overrides more of AccessibleView.
  virtual void describe(AccessibleItem&) const {}
  static void name_after(AccessibleItem& item, const std::wstring& caption);
  bool accessible_item(long child, AccessibleItem& item) const override;

  /// The colour whose pixels let through what lies behind, or CLR_INVALID for an opaque control.
  virtual COLORREF mask_colour() const { return CLR_INVALID; }
  /// The outline of a control that is no rectangle, in its pixels; null otherwise. The caller
  /// deletes it. Its window, if it has one, the control cuts itself.
  virtual HRGN outline() const { return nullptr; }
  /// True for a control whose surface holds premultiplied pixels with alpha, to be drawn over what
  /// lies behind it: the container's picture, or in a window of its own what its parent paints.
  virtual bool has_alpha() const { return false; }
  /// Before the surface is shown, for a control that draws on demand: it draws what has changed and
  /// tells by surface_drawn(), which must not call for another paint.
  virtual void about_to_show() {}
  /// Whether a point inside the control, in its pixels, belongs to it; the mouse at any other goes
  /// to what lies below.
  virtual bool hit(POINT) const { return true; }
  /// Whether the control wants to hear of what is dragged over it; see drag().
  virtual bool takes_drops() const { return false; }
  /// What is dragged over the control has entered, moved, left or been dropped.
  virtual void drag(Drag&) {}
  /// The stock properties the frame needs to know; null where a control has none.
  virtual const Property<bool>* enabled_property() const { return nullptr; }
  virtual FontProperty* font_property() { return nullptr; }
  /// Pointer over the control: an OLE pointer number and the custom picture.
  virtual long mouse_pointer() const { return 0; }
  virtual const PictureProperty* mouse_icon() const { return nullptr; }

  // What controls use.
  Ambient& ambient() { return ambient_; }
  Surface& surface() { return surface_; }
  HWND window() const { return window_; }
  bool windowless() const { return windowless_; }
  /// The client area in pixels: what borders and scroll bars of its window leave.
  int width() const { return width_; }
  int height() const { return height_; }
  /// The scale of the window the control is drawn for. A change comes as resized().
  Scale scale() const { return scale_; }
  /// Reading order of the container, right to left.
  bool right_to_left() const { return ambient_.right_to_left(); }
  /// The focus is on the control or a window in it.
  bool focus_within() const { return focus_within_; }
  /// Whether a window is the control's or lies in it.
  bool holds(HWND window) const;
  bool user_mode() const { return user_mode_; }
  bool properties_were_read() const { return was_read_; }
  /// To be called when the surface has been drawn anew: shapes the window and shows it at the next
  /// paint.
  void surface_changed();
  /// The same for a part of the surface, of a control that has a rectangular window.
  void surface_changed(const RECT& part);
  void surface_drawn() { ++full_repaints_; }
  void part_drawn() { ++part_repaints_; }
  void invalidate();
  void invalidate(const RECT& part);
  /// Shows at once what has been drawn.
  void update_now();
  /// Keys that move the focus in the container, as the user would press them.
  void send_tab(bool backwards);
  void key_wishes_changed();
  void set_access_keys(std::wstring keys);
  bool has_capture() const;
  void capture_mouse();
  void release_mouse();
  /// Asks the container for another size in pixels; resized() follows when it agrees.
  void request_size(int width, int height);
  /// The container's object for this control, with `Parent` and `Container`; null without one.
  ComPtr<IDispatch> extender() const;
  /// True when the pointer is over this very window (children and windows above do not count), or
  /// over the control's part of the container's window when it has none of its own.
  bool pointer_over_window() const;
  /// Asks for one WM_MOUSELEAVE at window_message_after() when the pointer leaves.
  void track_leave();
  /// Gives the properties of a theme's table their values, each through its own setter. The
  /// control draws once, at the end, if its repainting can wait that long.
  void assign_theme(ThemeTable table, long number);
  /// A colour property as it is drawn: in high contrast the system's colour of a role (COLOR_...).
  static COLORREF shown_color(OLE_COLOR color, int role);
  /// The window the control is shown in, its own or the container's, and its place there; null
  /// while it is not active.
  HWND shown_in(RECT& place) const { return accessible_window(place); }
  /// Asks the container whether a bindable property may change.
  bool may_change(const wchar_t* name);
  /// Tells screen readers of a change (EVENT_OBJECT_...), if any listens.
  void tell_readers(DWORD event, long child = CHILDID_SELF) const;
  /// To be called when takes_drops() has changed.
  void apply_drops();
  void apply_enabled();
  void apply_mouse_pointer();

  void* find_interface(REFIID iid) override;
  void on_final_release() override;
  std::vector<ConnectionPoint*> connection_points() override;
  void raise(DISPID event, std::initializer_list<VARIANT> arguments) override;

 private:
  HRESULT show_pages(HWND parent);
  // control_inplace.cpp
  HRESULT activate(LONG verb, MSG* message);
  HRESULT activate_in_place();
  HRESULT activate_ui();
  bool create_window(HWND parent, const RECT& place);
  void set_size(int width, int height);
  // control_window.cpp
  void intercept_messages();
  void WindowProcHook(bool before, bool& handled, LRESULT& result, HWND window, UINT message,
                      WPARAM wparam, LPARAM lparam, LPARAM user) override;
  static LRESULT CALLBACK window_procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT dispatch_message(UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT own_message(UINT message, WPARAM wparam, LPARAM lparam);
  bool handle_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result);
  bool handle_mouse(UINT message, WPARAM wparam, LPARAM lparam);
  bool handle_wheel(UINT message, WPARAM wparam);
  bool handle_life(UINT message, WPARAM wparam, LPARAM lparam);
  bool handle_query(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result);
  void rescale();
  // control_keys.cpp
  bool handle_key(UINT message, WPARAM wparam);
  void handle_focus(bool gained, HWND other);
  bool keeps_key(int key);
  LRESULT dialog_code(const MSG* key);
  // control_inner.cpp
  HWND host_window() const override { return window_; }
  AutomationObject& host_object() override { return *this; }
  void inner_added(InnerWindow& window) override;
  void inner_removed(InnerWindow& window) override;
  void inner_focus(bool gained, HWND other) override;
  bool inner_key(UINT message, WPARAM& wparam) override;
  void inner_mouse(UINT message, WPARAM wparam, POINT point) override;
  bool inner_wants_key(int key) override { return keeps_key(key); }
  InnerWindow* inner_of(HWND window) const;
  bool handle_reflected(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result);
  // control_accessible.cpp
  IAccessible* accessible();
  AccessibleView* accessible_view() override {
    about_to_show();  // a control that lays out on demand answers by what it is about to show
    return this;
  }
  HWND accessible_window(RECT& place) const override;
  bool accessible_focused() const override { return focus_within_; }
  bool accessible_enabled() const override { return takes_input(); }
  void accessible_take_focus() override { grab_focus(); }
  IUnknown* accessible_life() override { return own_unknown(); }
  bool answer_readers(WPARAM wparam, LPARAM lparam, LRESULT& result);
  void name_changed() { tell_readers(EVENT_OBJECT_NAMECHANGE); }
  // control_mouse.cpp
  bool set_cursor();
  HCURSOR own_cursor();
  void paint_window();
  void report_leave();
  /// A disabled window gets no input from the system; without a window that is the control's care.
  bool takes_input() const;
  void grab_focus();
  // control_drop.cpp
  DWORD dragged(Drag::Stage stage, IDispatch* data, DWORD keys, POINT screen,
                DWORD effects) override;
  void stop_drops();
  // control_view.cpp
  void draw_to(HDC dc, const RECT& bounds);
  void draw_over_parent(HDC dc);
  void update_window_shape();
  // control_persist.cpp
  void run_init_properties();
  /// For containers that neither load a control nor tell it that it is new before they show it.
  void ensure_initialised();
  void read_properties(BagReader& bag);
  HRESULT load_payload(std::span<const uint8_t> payload);
  std::vector<PropertyRecord> records() const;

  ControlTraits traits_;
  ConnectionPoint notify_point_;
  Ambient ambient_;
  ComPtr<IOleClientSite> site_;
  ComPtr<IOleControlSite> control_site_;
  ComPtr<ISimpleFrameSite> frame_site_;  // of a control that others stand on
  ComPtr<IOleInPlaceSite> in_place_site_;
  ComPtr<IOleInPlaceSiteWindowless> windowless_site_;
  ComPtr<IOleInPlaceFrame> in_place_frame_;
  ComPtr<IOleInPlaceUIWindow> in_place_document_;
  ComPtr<IOleAdviseHolder> advise_holder_;
  ComPtr<IAdviseSink> view_sink_;
  DWORD view_aspects_ = 0;
  DWORD view_flags_ = 0;

  ComPtr<AccessibleObject> accessible_;
  ComPtr<DropTarget> drop_target_;
  bool drops_registered_ = false;
  cSelfSub interception_;
  Surface surface_;
  HWND window_ = nullptr;
  RECT place_{};    // in the container's client coordinates
  SIZEL extent_{};  // himetric
  int width_ = 0;
  int height_ = 0;
  std::wstring access_keys_;
  HCURSOR own_cursor_ = nullptr;
  PrivateTimer leave_watch_;  // without a window no one tells of the pointer's leaving
  POINT last_move_{};         // where the container last sent the pointer to us; screen
  LONG full_repaints_ = 0;    // drawings of the whole surface, for those who ask by message
  LONG part_repaints_ = 0;
  std::vector<InnerWindow*> inner_windows_;
  Scale scale_;
  int freeze_count_ = 0;
  short buttons_down_ = 0;

  bool dirty_ = false;
  bool user_mode_ = false;
  bool was_read_ = false;
  bool was_initialised_ = false;
  bool ambient_missing_ = false;  // InitProperties ran before there was a site to ask
  bool loading_ = false;
  bool in_place_active_ = false;
  bool ui_active_ = false;
  bool windowless_ = false;
  bool visible_ = false;
  bool click_pending_ = false;
  bool focus_within_ = false;
  bool in_inner_mouse_ = false;
  bool terminated_ = false;
  bool shaped_ = false;   // the window has the shape of its mask
  bool clipped_ = false;  // the window is cut to what the container shows
};

}  // namespace kestrelon
