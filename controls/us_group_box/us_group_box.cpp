#include "controls/us_group_box/us_group_box.h"

#include <algorithm>

#include "frame/kit/access_key.h"

namespace kestrelon {
namespace {

constexpr ControlTraits traits() {
  ControlTraits out;
  out.misc_status |= OLEMISC_SIMPLEFRAME;
  out.initial_pixels = {200, 120};
  return out;
}

}  // namespace

USGroupBox::USGroupBox() : USGroupBoxGlue(traits()) {}

void USGroupBox::init_properties() {
  Caption.assign(ambient().display_name());
  set_access_keys(access_key_from_start(Caption.get()));
  USGroupBoxGlue::init_properties();
}

void USGroupBox::properties_read() {
  set_access_keys(access_key_from_start(Caption.get()));
  images_read();
  USGroupBoxGlue::properties_read();
}

void USGroupBox::terminate() {
  bars_.release();
  USGroupBoxGlue::terminate();
}

void USGroupBox::theme_changed() {
  assign_theme(theme::kGroupBox, Theme.get());
}

void USGroupBox::set_header_image(const VARIANT& image) {
  HeaderImage.put(image);
  redraw();
}

void USGroupBox::caption_changed() {
  tell_readers(EVENT_OBJECT_NAMECHANGE);
  set_access_keys(access_key_from_start(Caption.get()));
  redraw();
}

// A folded group is as high as its header.
void USGroupBox::header_changed() {
  redraw();
  if (Collapsed.get() && draws()) request_size(width(), header_height());
}

void USGroupBox::enabled_changed() {
  USGroupBoxGlue::enabled_changed();
  apply_bars();
}

void USGroupBox::bars_changed() {
  apply_bars();
  redraw();
}

bool USGroupBox::barred() const {
  return Collapsed.get() || (CheckBoxMode.get() && !Value.get());
}

// A designer moves and sets what stands on the group, barred or not.
void USGroupBox::apply_bars() {
  if (window() == nullptr || !user_mode()) return;
  set_input_barred(window(), barred());
  barred() ? bars_.bar(window()) : bars_.release();
}

void USGroupBox::set_value(bool value) {
  const bool changed = value != Value.get();
  const Hold hold(*this);
  Value.put(value);
  bars_changed();
  tell_readers(EVENT_OBJECT_STATECHANGE);
  if (changed) raise_value_changed();
}

void USGroupBox::set_collapsed(bool collapsed) {
  if (collapsed == Collapsed.get()) return;
  const Hold hold(*this);
  VARIANT_BOOL cancel = VARIANT_FALSE;
  raise_before_collapse(cancel);
  if (cancel != VARIANT_FALSE || collapsed == Collapsed.get()) return;
  fold(collapsed);
  VARIANT_BOOL now = Collapsed.get() ? VARIANT_TRUE : VARIANT_FALSE;
  raise_after_collapse(now);
}

// The height to come back to is kept with the form, in pixels of 96 dots an inch.
void USGroupBox::fold(bool collapsed) {
  if (collapsed) ExpandedHeight.put(scale().to_unit(height()));
  Collapsed.put(collapsed);
  folding_ = true;
  const int open = scale()(static_cast<int>(std::clamp(ExpandedHeight.get(), 0L, 32000L)));
  request_size(width(), collapsed ? header_height() : std::max(header_height(), open));
  folding_ = false;
  tell_readers(EVENT_OBJECT_STATECHANGE);
  bars_changed();
}

void USGroupBox::set_expanded_height(long height) {
  ExpandedHeight.put(height);
}

std::vector<StandingControl> USGroupBox::standing() {
  ComPtr<IOleClientSite> site;
  GetClientSite(site.put());
  return standing_controls(site.get(), window());
}

// A child's own property knows whether it takes input; a window of another kind did before.
bool USGroupBox::wants_input_again(HWND child) {
  ComPtr<IDispatch> control;
  for (const StandingControl& each : standing())
    if (each.window == child) control = each.object.as<IDispatch>();
  DISPPARAMS none{};
  Variant enabled;
  if (!control ||
      FAILED(control->Invoke(DISPID_ENABLED, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                             &none, enabled.put(), nullptr, nullptr)))
    return true;
  return !enabled.change(VT_BOOL) || V_BOOL(&enabled) != VARIANT_FALSE;
}

void USGroupBox::describe(AccessibleItem& item) const {
  item.role = ROLE_SYSTEM_GROUPING;
  if (CheckBoxMode.get() && Value.get()) item.state |= STATE_SYSTEM_CHECKED;
  if (can_fold()) {
    item.state |= Collapsed.get() ? STATE_SYSTEM_COLLAPSED : STATE_SYSTEM_EXPANDED;
    item.default_action = Collapsed.get() ? L"Expandir" : L"Recolher";
  } else if (CheckBoxMode.get()) {
    item.default_action = Value.get() ? L"Desmarcar" : L"Marcar";
  }
  name_after(item, Caption.get());
}

void USGroupBox::accessible_default_action(long) {
  if (!Enabled.get()) return;
  if (can_fold()) return set_collapsed(!Collapsed.get());
  if (CheckBoxMode.get()) toggle_value();
}

}  // namespace kestrelon
