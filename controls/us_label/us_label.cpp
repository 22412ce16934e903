#include "controls/us_label/us_label.h"

#include "frame/kit/access_key.h"
#include "services/kn_paths.h"
#include "services/kn_shell_win.h"

namespace kestrelon {
namespace {

constexpr ControlTraits traits() {
  ControlTraits out;
  out.misc_status |= OLEMISC_ACTSLIKELABEL | OLEMISC_NOUIACTIVATE;
  out.windowless = true;
  out.initial_pixels = {81, 17};
  return out;
}

}  // namespace

USLabel::USLabel() : USLabelGlue(traits()), TipProperties(*this, &USLabel::update_tip) {}

void USLabel::take_ambient_defaults() {
  DisplayControl::take_ambient_defaults();
  BackColor.set_default(ambient().back_color());
}

void USLabel::init_properties() {
  BackColor.reset();
  Caption.assign(ambient().display_name());
  DisplayControl::init_properties();
  began_ = true;
  mnemonic_changed();
}

void USLabel::properties_read() {
  began_ = true;
  mnemonic_changed();
  DisplayControl::properties_read();
}

void USLabel::terminate() {
  destroy_tool_tip();
  DisplayControl::terminate();
}

void USLabel::shown() {
  if (!windowless()) create_tool_tip();
}

void USLabel::resized() {
  redraw();
  // A new width breaks the text anew, and that takes another height.
  if (AutoSize.get() && WordWrap.get()) fit();
}

void USLabel::ambient_changed(DISPID id) {
  if (id == DISPID_AMBIENT_RIGHTTOLEFT || id == DISPID_UNKNOWN) redraw();
}

void USLabel::set_caption(const std::wstring& caption) {
  if (may_change(Caption.name())) Caption.put(caption);
}

void USLabel::caption_changed() {
  const Hold hold(*this);
  tell_readers(EVENT_OBJECT_NAMECHANGE);
  mnemonic_changed();
  raise_change();
}

void USLabel::mnemonic_changed() {
  set_access_keys(UseMnemonic.get() ? access_key_from_start(Caption.get()) : std::wstring());
  text_changed();
}

void USLabel::text_changed() {
  redraw();
  fit();
}

void USLabel::mouse_icon_changed() {
  MousePointer.assign(MouseIcon ? vbCustom : vbDefault);
  apply_mouse_pointer();
}

// Every movement beyond the edge, under capture, tells of the exit again.
void USLabel::mouse_move(short button, short shift, float x, float y) {
  if (!user_mode()) return;
  if (pointer_over() || pointer_over_window())
    return DisplayControl::mouse_move(button, shift, x, y);
  raise_mouse_exit();
}

void USLabel::hover_changed() {
  if (windowless()) pointer_over() ? create_tool_tip() : destroy_tool_tip();
  if (is_link()) redraw();
}

void USLabel::click() {
  if (!left_pressed()) return;
  const Hold hold(*this);
  raise_click();
  follow_link();
}

void USLabel::accessible_default_action(long) {
  if (!is_link() || !Enabled.get()) return;
  const Hold hold(*this);
  raise_click();
  follow_link();
}

// What the handler of the click has left of the address.
void USLabel::follow_link() {
  if (!is_link() || !user_mode()) return;
  const std::wstring address = browsable_url(LinkUrl.get());
  if (!address.empty()) open_by_shell(address);
}

HWND USLabel::tip_place(RECT& area) const {
  return user_mode() ? shown_in(area) : nullptr;
}

void USLabel::describe(AccessibleItem& item) const {
  item.role = is_link() ? ROLE_SYSTEM_LINK : ROLE_SYSTEM_STATICTEXT;
  item.state = is_link() ? STATE_SYSTEM_LINKED : STATE_SYSTEM_READONLY;
  if (is_link()) {
    item.value = LinkUrl.get();
    item.default_action = L"Abrir";
  }
  item.description = ToolTipDescription.get();
  if (UseMnemonic.get()) return name_after(item, Caption.get());
  if (item.name.empty()) item.name = Caption.get();
}

}  // namespace kestrelon
