// Life of a hosted control: siting, state, extent, activation, events, ambient members.
#include "host/control_site.h"

#include "host/contained_box.h"
#include "host/container_window.h"
#include "host/extender.h"
#include "host/form.h"
#include "host/late_bound.h"

namespace kestrelon::host {

ControlSite::ControlSite(Form& form, ContainerWindow& container, std::wstring name,
                         const RECT& bounds, ComPtr<IUnknown> control)
    : FormItem(form, container, std::move(name), bounds),
      control_(std::move(control)),
      ole_(control_.as<IOleObject>()),
      ole_control_(control_.as<IOleControl>()),
      view_(control_.as<IViewObject>()),
      view_ex_(control_.as<IViewObjectEx>()) {
  class_name_ = type_name_of(class_info_of(control_.get()).get());
  extender_ = make_com<Extender>(*this);
}

ControlSite::~ControlSite() = default;

bool ControlSite::answer(REFIID iid, void** out) {
  if (IsEqualIID(iid, IID_IOleWindow) || IsEqualIID(iid, IID_IOleInPlaceSite) ||
      IsEqualIID(iid, IID_IOleInPlaceSiteEx)) {
    *out = static_cast<IOleInPlaceSiteWindowless*>(this);
    return true;
  }
  return false;
}

HRESULT ControlSite::open(const ControlState& state) {
  if (!ole_) return E_NOINTERFACE;
  const ComPtr<ControlSite> alive(this);
  start_visible(!state.hidden);
  ole_->GetMiscStatus(DVASPECT_CONTENT, &misc_status_);
  const bool site_first = (misc_status_ & OLEMISC_SETCLIENTSITEFIRST) != 0;
  HRESULT hr = S_OK;
  if (site_first) hr = ole_->SetClientSite(this);
  if (SUCCEEDED(hr)) hr = load(state);
  if (SUCCEEDED(hr) && !site_first) hr = ole_->SetClientSite(this);
  if (FAILED(hr)) {
    close();
    return hr;
  }
  const std::wstring title = name();
  ole_->SetHostNames(L"Kestrelon", title.c_str());
  if (misc_status_ & OLEMISC_INVISIBLEATRUNTIME && form().ambients().user_mode) {
    connect();
    return S_OK;
  }
  if (IsRectEmpty(&bounds()))
    read_extent();
  else
    send_extent();
  connect();
  read_control_info();
  if ((misc_status_ & OLEMISC_SIMPLEFRAME) != 0) box_ = std::make_unique<ContainedBox>(*this);
  if (visible()) return activate();
  // What others stand on has its window even while it is hidden.
  hr = box_ ? activate() : S_OK;
  if (box_ && SUCCEEDED(hr)) verb(OLEIVERB_HIDE);
  return hr;
}

HRESULT ControlSite::load(const ControlState& state) {
  if (state.bag) {
    if (const auto persist = control_.as<IPersistPropertyBag>())
      return persist->Load(state.bag, state.errors);
  }
  if (state.storage) {
    if (const auto persist = control_.as<IPersistStorage>()) return persist->Load(state.storage);
  }
  if (const auto persist = control_.as<IPersistStreamInit>())
    return state.stream ? persist->Load(state.stream) : persist->InitNew();
  if (const auto persist = control_.as<IPersistPropertyBag>()) return persist->InitNew();
  return S_OK;
}

void ControlSite::connect() {
  if (view_) view_->SetAdvise(DVASPECT_CONTENT, 0, this);
  ole_->Advise(this, &advise_cookie_);
  if (const auto points = control_.as<IConnectionPointContainer>();
      points &&
      SUCCEEDED(points->FindConnectionPoint(IID_IPropertyNotifySink, notify_point_.put())))
    notify_point_->Advise(static_cast<IPropertyNotifySink*>(this), &notify_cookie_);
  sink_ = EventSink::connect(control_.get(), [this](const std::wstring& event, DISPPARAMS& params) {
    handle_event(event, params);
  });
}

void ControlSite::disconnect() {
  if (sink_) sink_->disconnect();
  if (notify_point_) notify_point_->Unadvise(std::exchange(notify_cookie_, 0));
  notify_point_.reset();
  if (advise_cookie_) ole_->Unadvise(std::exchange(advise_cookie_, 0));
  if (view_) view_->SetAdvise(DVASPECT_CONTENT, 0, nullptr);
}

void ControlSite::on_close() {
  const ComPtr<ControlSite> alive(this);
  if (box_) form().remove_items_of(*box_);
  disconnect();
  if (in_place_) in_place_->InPlaceDeactivate();
  in_place_.reset();
  windowless_.reset();
  if (ole_) {
    ole_->Close(OLECLOSE_NOSAVE);
    ole_->SetClientSite(nullptr);
  }
  form().item_left(*this);
  extender_->detach();
  view_ex_.reset();
  view_.reset();
  ole_control_.reset();
  ole_.reset();
  control_.reset();
}

CLSID ControlSite::clsid() const {
  CLSID clsid = CLSID_NULL;
  if (ole_) ole_->GetUserClassID(&clsid);
  return clsid;
}

HRESULT ControlSite::verb(LONG verb, MSG* message) {
  if (!ole_ || !container().hwnd()) return E_FAIL;
  const ComPtr<ControlSite> alive(this);
  const RECT place = bounds();
  const ComPtr<IOleObject> object = ole_;
  const HRESULT hr = object->DoVerb(verb, message, this, 0, container().hwnd(), &place);
  if (!closed()) fill_box();
  return hr;
}

ContainerWindow* ControlSite::box() {
  return box_.get();
}

// The control's window comes and goes with its activation, and the windows of what stands on it
// with that.
void ControlSite::fill_box() {
  const HWND now = window();
  if (!box_ || box_->hwnd() == now) return;
  box_->stand_on(now);
  if (now) box_->put_items_in();
}

void ControlSite::clear_box() {
  if (!box_ || !box_->hwnd()) return;
  box_->take_items_out();
  box_->stand_on(nullptr);
}

HRESULT ControlSite::deactivate() {
  const ComPtr<ControlSite> alive(this);
  clear_box();
  const ComPtr<IOleInPlaceObject> object = in_place_;
  return object ? object->InPlaceDeactivate() : S_FALSE;
}

void ControlSite::ui_deactivate() {
  const ComPtr<ControlSite> alive(this);
  const ComPtr<IOleInPlaceObject> object = in_place_;
  if (object && ui_active_) object->UIDeactivate();
}

void ControlSite::handle_event(const std::wstring& event, DISPPARAMS& params) {
  if (frozen_ > 0) ++events_while_frozen_;
  const ComPtr<ControlSite> alive(this);
  if (const EventHandler handler = handler_) handler(event, params);
  if (!closed()) form().raise_control_event(*this, event, params);
}

void ControlSite::freeze_events(bool freeze) {
  frozen_ += freeze ? 1 : -1;
  if (ole_control_) ole_control_->FreezeEvents(freeze);
}

void ControlSite::ambient_changed(DISPID id) {
  const ComPtr<IOleControl> control = ole_control_;
  if (control) control->OnAmbientPropertyChange(id);
}

void ControlSite::set_display_as_default(bool shown) {
  if (!(misc_status_ & OLEMISC_ACTSLIKEBUTTON) || display_as_default_ == shown) return;
  display_as_default_ = shown;
  ambient_changed(DISPID_AMBIENT_DISPLAYASDEFAULT);
}

void ControlSite::read_control_info() {
  control_info_ = {};
  control_info_.cb = sizeof control_info_;
  if (!ole_control_ || FAILED(ole_control_->GetControlInfo(&control_info_))) control_info_ = {};
}

bool ControlSite::has_mnemonic(const MSG& message) const {
  if (!control_info_.hAccel || control_info_.cAccel == 0) return false;
  return IsAccelerator(control_info_.hAccel, control_info_.cAccel, const_cast<MSG*>(&message),
                       nullptr);
}

bool ControlSite::eats(DWORD flag) const {
  return (control_info_.dwFlags & flag) != 0;
}

HRESULT ControlSite::mnemonic(MSG message) {
  const ComPtr<ControlSite> alive(this);
  const ComPtr<IOleControl> control = ole_control_;
  return control ? control->OnMnemonic(&message) : E_NOTIMPL;
}

void ControlSite::send_extent() {
  if (!ole_) return;
  SIZEL size = {pixels_to_himetric(width_of(bounds_), Axis::kX),
                pixels_to_himetric(height_of(bounds_), Axis::kY)};
  ole_->SetExtent(DVASPECT_CONTENT, &size);
}

void ControlSite::read_extent() {
  SIZEL size = {};
  if (!ole_ || FAILED(ole_->GetExtent(DVASPECT_CONTENT, &size))) return;
  bounds_.right = bounds_.left + himetric_to_pixels(size.cx, Axis::kX);
  bounds_.bottom = bounds_.top + himetric_to_pixels(size.cy, Axis::kY);
}

RECT ControlSite::clip_rect() const {
  RECT client = {};
  RECT clip = {};
  GetClientRect(container().hwnd(), &client);
  IntersectRect(&clip, &client, &bounds());
  return clip;
}

void ControlSite::place() {
  send_extent();
  const ComPtr<IOleInPlaceObject> object = in_place_;
  const RECT clip = clip_rect();
  // A control wholly outside keeps its own rectangle as clip: an empty one would mean "unclipped".
  if (object) object->SetObjectRects(&bounds_, IsRectEmpty(&clip) ? &bounds_ : &clip);
}

void ControlSite::show(bool visible) {
  if (misc_status_ & OLEMISC_INVISIBLEATRUNTIME && form().ambients().user_mode) return;
  verb(visible ? OLEIVERB_SHOW : OLEIVERB_HIDE);
}

void ControlSite::leave_container() {
  deactivate();
}
void ControlSite::enter_container() {
  if (visible()) activate();
}

HWND ControlSite::window() const {
  HWND window = nullptr;
  if (!in_place_ || windowless_ || FAILED(in_place_->GetWindow(&window))) return nullptr;
  return window;
}

IDispatch* ControlSite::dispatch() {
  return extender_.get();
}

bool ControlSite::can_focus() const {
  constexpr DWORD kNever = OLEMISC_NOUIACTIVATE | OLEMISC_INVISIBLEATRUNTIME;
  if (closed() || !visible() || !tab_stop || (misc_status_ & kNever)) return false;
  const HWND own = window();
  return own ? IsWindowVisible(own) && IsWindowEnabled(own) : windowless_ && extender_->enabled();
}

void ControlSite::take_focus() {
  verb(OLEIVERB_UIACTIVATE);
}

void ControlSite::draw(HDC hdc) {
  if (!view_) return;
  const RECTL place = {bounds().left, bounds().top, bounds().right, bounds().bottom};
  // An active windowless object knows its place; an inactive one must be told.
  view_->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, hdc, windowless_ ? nullptr : &place,
              nullptr, nullptr, 0);
}

HRESULT ControlSite::draw_into(HDC hdc, const RECT& area, HDC target) const {
  if (!view_) return E_NOINTERFACE;
  const RECTL place = {area.left, area.top, area.right, area.bottom};
  return view_->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, target, hdc, &place, nullptr, nullptr,
                     0);
}

HRESULT ControlSite::OnChanged(DISPID id) {
  changes_.push_back(id);
  return S_OK;
}
HRESULT ControlSite::OnRequestEdit(DISPID id) {
  return !on_request_edit || on_request_edit(id) ? S_OK : S_FALSE;
}

void ControlSite::OnViewChange(DWORD, LONG) {
  if (!closed() && !window()) container().invalidate(bounds());
}

HRESULT ControlSite::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}
HRESULT ControlSite::GetTypeInfo(UINT, LCID, ITypeInfo**) {
  return E_NOTIMPL;
}
HRESULT ControlSite::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
  return DISP_E_UNKNOWNNAME;
}

HRESULT ControlSite::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result,
                            EXCEPINFO*, UINT*) {
  if (!(flags & DISPATCH_PROPERTYGET) || closed()) return DISP_E_MEMBERNOTFOUND;
  Variant value;
  if (!ambient_value(form().ambients(), id, name(), display_as_default_, value))
    return DISP_E_MEMBERNOTFOUND;
  if (!result) return S_OK;
  *result = value;
  VariantInit(&value);
  return S_OK;
}

}  // namespace kestrelon::host
