// Identity, life and the services that controls call.
#include "frame/control_frame.h"

#include "frame/about.h"
#include "frame/himetric.h"
#include "frame/platform.h"
#include "frame/screen.h"
#include "frame/translate_color.h"

namespace kestrelon {

ControlFrame::ControlFrame(const ControlTraits& traits)
    : BrowseFace(static_cast<AutomationObject&>(*this)),
      traits_(traits),
      notify_point_(*this, IID_IPropertyNotifySink) {
  if (traits.acts_like_button) traits_.misc_status |= OLEMISC_ACTSLIKEBUTTON;
  AccessibleName.saved_when([this] { return !AccessibleName.get().empty(); });
  width_ = static_cast<int>(traits.initial_pixels.cx);
  height_ = static_cast<int>(traits.initial_pixels.cy);
  extent_ = to_himetric(width_, height_);
}

ControlFrame::~ControlFrame() {
  if (own_cursor_ != nullptr) DestroyCursor(own_cursor_);
}

void ControlFrame::on_final_release() {
  if (in_place_active_) InPlaceDeactivate();
  if (drop_target_) drop_target_->detach();
  if (accessible_) accessible_->detach();
  interception_.sc_Terminate();
  if (!terminated_) {
    terminated_ = true;
    terminate();
  }
  SetClientSite(nullptr);
}

void* ControlFrame::find_interface(REFIID iid) {
  if (iid == IID_IOleObject) return static_cast<IOleObject*>(this);
  if (iid == IID_IOleWindow || iid == IID_IOleInPlaceObject)
    return static_cast<IOleInPlaceObject*>(this);
  if (iid == IID_IOleInPlaceObjectWindowless && traits_.windowless)
    return static_cast<IOleInPlaceObjectWindowless*>(this);
  if (iid == IID_IOleInPlaceActiveObject) return static_cast<IOleInPlaceActiveObject*>(this);
  if (iid == IID_IOleControl) return static_cast<IOleControl*>(this);
  if (iid == IID_IViewObject || iid == IID_IViewObject2 || iid == IID_IViewObjectEx)
    return static_cast<IViewObjectEx*>(this);
  if (iid == IID_IPersist || iid == IID_IPersistStreamInit)
    return static_cast<IPersistStreamInit*>(this);
  if (iid == IID_IPersistStorage) return static_cast<IPersistStorage*>(this);
  if (iid == IID_IPersistPropertyBag) return static_cast<IPersistPropertyBag*>(this);
  if (iid == IID_ISpecifyPropertyPages) return static_cast<ISpecifyPropertyPages*>(this);
  if (iid == IID_IPerPropertyBrowsing) return static_cast<IPerPropertyBrowsing*>(this);
  if (iid == IID_IQuickActivate) return static_cast<IQuickActivate*>(this);
  // Not the control's identity: readers may keep it when the control is gone.
  if (iid == IID_IAccessible) return accessible();
  return AutomationObject::find_interface(iid);
}

std::vector<ConnectionPoint*> ControlFrame::connection_points() {
  auto points = AutomationObject::connection_points();
  points.push_back(&notify_point_);
  return points;
}

void ControlFrame::raise(DISPID event, std::initializer_list<VARIANT> arguments) {
  if (freeze_count_ > 0) return;
  AutomationObject::raise(event, arguments);
}

void ControlFrame::about() {
  show_about_window(window_);
}

void ControlFrame::property_changed(const wchar_t* name) {
  if (loading_) return;
  dirty_ = true;
  ambient_missing_ = false;  // the host has begun to set properties: they stay
  if (notify_point_.empty()) return;
  const DISPID id = member_id(class_info().interface_id, name);
  if (id == DISPID_UNKNOWN) return;
  const Hold hold(*this);
  for (const auto& sink : notify_point_.sinks<IPropertyNotifySink>()) sink->OnChanged(id);
}

void ControlFrame::invalidate() {
  if (view_sink_ && !in_place_active_) {
    const Hold hold(*this);
    view_sink_->OnViewChange(DVASPECT_CONTENT, -1);
    if ((view_flags_ & ADVF_ONLYONCE) != 0) view_sink_.reset();
  }
  if (window_ != nullptr) {
    InvalidateRect(window_, nullptr, FALSE);
  } else if (windowless_site_) {
    windowless_site_->InvalidateRect(nullptr, FALSE);
  }
}

void ControlFrame::invalidate(const RECT& part) {
  if (window_ != nullptr) {
    InvalidateRect(window_, &part, FALSE);
  } else {
    invalidate();
  }
}

void ControlFrame::update_now() {
  if (window_ != nullptr) {
    UpdateWindow(window_);
    return;
  }
  HWND container = nullptr;
  if (windowless_site_ && in_place_site_ && SUCCEEDED(in_place_site_->GetWindow(&container)))
    RedrawWindow(container, &place_, nullptr, RDW_UPDATENOW | RDW_NOCHILDREN);
}

void ControlFrame::set_access_keys(std::wstring keys) {
  if (keys == access_keys_) return;
  access_keys_ = std::move(keys);
  const ComPtr<IOleControlSite> site = control_site_;
  if (site) site->OnControlInfoChanged();
}

bool ControlFrame::has_capture() const {
  if (windowless_site_) return windowless_site_->GetCapture() == S_OK;
  return window_ != nullptr && ::GetCapture() == window_;
}

void ControlFrame::capture_mouse() {
  if (windowless_site_) {
    windowless_site_->SetCapture(TRUE);
  } else if (window_ != nullptr) {
    ::SetCapture(window_);
  }
}

void ControlFrame::release_mouse() {
  if (windowless_site_) {
    windowless_site_->SetCapture(FALSE);
  } else if (has_capture()) {
    ::ReleaseCapture();
  }
}

bool ControlFrame::pointer_over_window() const {
  POINT point{};
  if (!GetCursorPos(&point)) return false;
  if (!windowless_) {
    const HWND under = WindowFromPoint(point);
    return window_ != nullptr && (under == window_ || (!inner_windows_.empty() && holds(under)));
  }
  HWND container = nullptr;
  if (!in_place_site_ || FAILED(in_place_site_->GetWindow(&container)) ||
      WindowFromPoint(point) != container)
    return false;
  ScreenToClient(container, &point);
  return PtInRect(&place_, point) && hit({point.x - place_.left, point.y - place_.top});
}

void ControlFrame::track_leave() {
  if (!windowless_ && inner_windows_.empty()) return TrackMouseLeave(window_);
  // Short enough to look immediate, long enough to cost nothing. A pointer that moves within the
  // control without a word from the container is over something that covers it.
  constexpr UINT kInterval = 50;
  leave_watch_.start(kInterval, [this] {
    POINT point{};
    GetCursorPos(&point);
    const bool told = !windowless_ || (point.x == last_move_.x && point.y == last_move_.y);
    if (!told || !pointer_over_window()) report_leave();
  });
}

void ControlFrame::report_leave() {
  leave_watch_.stop();
  const Hold hold(*this);
  window_message_after(WM_MOUSELEAVE, 0, 0);
}

void ControlFrame::apply_enabled() {
  const Property<bool>* const enabled = enabled_property();
  if (enabled != nullptr && window_ != nullptr) EnableWindow(window_, enabled->get());
}

void ControlFrame::assign_theme(ThemeTable table, long number) {
  apply_theme(table, static_cast<int32_t>(number), [this](const wchar_t* name, uint32_t value) {
    for (PropertyBase* const property : properties())
      if (wcscmp(property->name(), name) == 0) property->put_number(value);
  });
}

COLORREF ControlFrame::shown_color(OLE_COLOR color, int role) {
  return high_contrast() ? GetSysColor(role) : TranslateColor(color);
}

}  // namespace kestrelon
