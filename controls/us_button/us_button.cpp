// Life, and the setters that do more than draw again.
#include "controls/us_button/us_button.h"

#include "frame/kit/access_key.h"
#include "frame/kit/theme.h"
#include "frame/platform.h"
#include "frame/translate_color.h"

namespace kestrelon {
namespace {

ControlTraits button_traits() {
  ControlTraits traits;
  traits.acts_like_button = true;
  traits.initial_pixels = {100, 32};
  return traits;
}

// The system's hand as a picture that does not own it.
ComPtr<IPictureDisp> hand_picture() {
  PICTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_ICON;
  description.icon.hicon = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_HAND));
  ComPtr<IPictureDisp> out;
  OleCreatePictureIndirect(&description, IID_IPictureDisp, FALSE, out.put_void());
  return out;
}

}  // namespace

USButton::USButton() : USButtonGlue(button_traits()) {}

void USButton::take_ambient_defaults() {
  Font.set_default(ambient().font().get());
}

void USButton::init_properties() {
  Caption.assign(ambient().display_name());
  Font.reset();
  ready();
}

void USButton::properties_read() {
  if (user_mode() && HandPointer.get()) hand_pointer_changed();
  if (DrawnState.get() < kFaceNormal || DrawnState.get() > kFaceDisabled)
    DrawnState.assign(kFaceNormal);
  input_.read_default();
  show_bytes(Picture32Dib.get());
  ready();
}

void USButton::ready() {
  update_access_key();
  base_color_changed();
  refresh();
  initialised_ = true;
}

void USButton::refresh() {
  relayout();
}

void USButton::relayout() {
  layout_dirty_ = true;
  repaint();
}

void USButton::resized() {
  using button_layout::kSmallest;
  if (width() < kSmallest || height() < kSmallest) {
    request_size(std::max(width(), kSmallest), std::max(height(), kSmallest));
    return;
  }
  layout_dirty_ = true;
  if (user_mode() || initialised_) repaint();
}

void USButton::window_created() {
  apply_shape();
}

void USButton::shown() {
  create_tool_tip();
  paint_suspended_ = false;
  if (paint_missed_) repaint();
  paint_missed_ = false;
}

void USButton::hidden() {
  paint_suspended_ = true;
}

void USButton::ambient_changed(DISPID id) {
  input_.read_default();
  if (id == DISPID_AMBIENT_DISPLAYASDEFAULT) input_.default_changed();
}

void USButton::terminate() {
  paint_suspended_ = true;
  tip_.Destroy();
}

void USButton::set_state(int state, bool force) {
  paint_missed_ = paint_missed_ || paint_suspended_;
  if (paint_suspended_ || in_batch_) return;
  if (state < 0) state = static_cast<int>(DrawnState.get());
  if (!Enabled.get()) {
    state = kFaceDisabled;
  } else if (state == kFaceDisabled) {
    state = kFaceNormal;
  }
  const bool focus = input_.has_focus();
  if (!force && state == DrawnState.get() && focus == last_focus_) return;
  last_focus_ = focus;
  DrawnState.assign(state);
  if (!surface() || width() < button_layout::kSmallest || height() < button_layout::kSmallest)
    return;
  draw(state);
  surface_changed();
}

void USButton::apply_theme() {
  // Each colour goes through its own setter; the button is drawn once, at the end.
  in_batch_ = true;
  assign_theme(theme::kButton, Theme.get());
  in_batch_ = false;
  repaint();
}

void USButton::update_access_key() {
  set_access_keys(access_key_from_end(Caption.get()));
}

void USButton::base_color_changed() {
  derived_ = derive_colors(TranslateColor(BackColor.get()), TranslateColor(ForeColor.get()),
                           TranslateColor(MaskColor.get()));
  repaint();
}

void USButton::caption_changed() {
  tell_readers(EVENT_OBJECT_NAMECHANGE);
  update_access_key();
  relayout();
}

void USButton::check_mode_changed() {
  if (!CheckBoxMode.get()) Value.assign(false);
  repaint();
}

void USButton::enabled_changed() {
  apply_enabled();
  if (!Enabled.get()) {
    input_.disabled();
    return set_state(kFaceDisabled, true);
  }
  set_state(user_mode() && pointer_over_window() ? kFaceOver : kFaceNormal, true);
}

void USButton::value_changed() {
  if (!Value.get() || CheckBoxMode.get()) return repaint();
  if (user_mode()) input_.click_by_code();
  clear_value();
}

void USButton::flip_value() {
  Value.assign(!Value.get());
  property_changed(Value.name());
  tell_readers(EVENT_OBJECT_STATECHANGE);
}

void USButton::clear_value() {
  Value.assign(false);
}

void USButton::hand_pointer_changed() {
  const bool hand = HandPointer.get();
  MousePointer.assign(hand ? vbCustom : vbDefault);
  MouseIcon.assign(hand ? hand_picture().get() : nullptr);
  apply_mouse_pointer();
}

void USButton::mouse_icon_changed() {
  MousePointer.assign(MouseIcon ? vbCustom : vbDefault);
  apply_mouse_pointer();
}

void USButton::set_mouse_pointer(MousePointerConstants pointer) {
  if (pointer != vbCustom && HandPointer.get()) HandPointer.put(false);
  MousePointer.put(pointer);
}

void USButton::create_tool_tip() {
  if (ToolTipDescription.get().empty() || !user_mode()) return;
  tip_.Destroy();
  tip_.BackColor = ToolTipBackColor.get();
  tip_.Centered = ToolTipCentered.get();
  tip_.DelayTime = ToolDelayTime.get();
  tip_.ForeColor = ToolTipForeColor.get();
  tip_.set_Icon(ToolTipIcon.get());
  tip_.Style = ToolTipStyle.get();
  tip_.set_TipText(ToolTipDescription.get());
  tip_.set_Title(ToolTipTitle.get());
  tip_.VisibleTime = ToolTipVisibleTime.get();
  if (window() != nullptr) tip_.Create(window());
}

void USButton::destroy_tool_tip() {
  if (!ToolTipDescription.get().empty() && user_mode()) tip_.Destroy();
}

// A change reaches a tip that is there; a tip left without a text goes.
void USButton::tip() {
  if (!initialised_ || !user_mode()) return;
  ToolTipDescription.get().empty() ? tip_.Destroy() : create_tool_tip();
}

void USButton::describe(AccessibleItem& item) const {
  item.role = ROLE_SYSTEM_PUSHBUTTON;
  item.state = STATE_SYSTEM_FOCUSABLE;
  if (CheckBoxMode.get() && Value.get()) item.state |= STATE_SYSTEM_PRESSED;
  item.default_action = L"Clicar";
  item.description = ToolTipDescription.get();
  name_after(item, Caption.get());
  if (item.name.empty()) item.name = ToolTipTitle.get();  // a button with a picture alone
}

}  // namespace kestrelon
