// The fields of a button by its number.
#include "chrome/us_tool_bar/us_tool_bar.h"

namespace kestrelon {

template <class T>
void USToolBar::set(const wchar_t* name, long index, T ToolButton::*member, T value) {
  if (!known(index)) return;
  buttons.change(name, [&](std::vector<ToolButton>& list) {
    list[static_cast<size_t>(index - 1)].*member = std::move(value);
  });
}

void USToolBar::set_button_caption(long index, std::wstring caption) {
  set(L"ButtonCaption", index, &ToolButton::caption, std::move(caption));
}

void USToolBar::set_button_key(long index, std::wstring key) {
  set(L"ButtonKey", index, &ToolButton::key, std::move(key));
}

void USToolBar::set_button_tool_tip_text(long index, std::wstring text) {
  set(L"ButtonToolTipText", index, &ToolButton::tool_tip, std::move(text));
}

void USToolBar::set_button_icon(long index, IPictureDisp* icon) {
  set(L"ButtonIcon", index, &ToolButton::icon, ComPtr<IPictureDisp>(icon));
}

void USToolBar::set_button_icon_size(long index, short size) {
  set(L"ButtonIconSize", index, &ToolButton::icon_size, size);
}

void USToolBar::set_button_font(long index, IFontDisp* font) {
  set(L"ButtonFont", index, &ToolButton::font, ComPtr<IFontDisp>(font));
}

void USToolBar::set_button_fore_color(long index, OLE_COLOR color) {
  set(L"ButtonForeColor", index, &ToolButton::fore_color, color);
}

ENUM_ICON_ALIGNMENT USToolBar::button_alignment(long index) const {
  return get(index, &ToolButton::alignment);
}

void USToolBar::set_button_alignment(long index, ENUM_ICON_ALIGNMENT alignment) {
  set(L"ButtonAlignment", index, &ToolButton::alignment, alignment);
}

void USToolBar::set_button_type(long index, ENUM_BUTTON_TYPE type) {
  set(L"ButtonType", index, &ToolButton::type, type);
}

void USToolBar::set_button_style(long index, ButtonStyle style) {
  set(L"ButtonStyle", index, &ToolButton::style, style);
}

void USToolBar::set_button_state(long index, ENUM_BUTTON_STATE state) {
  set(L"ButtonState", index, &ToolButton::state, state);
}

void USToolBar::set_button_value(long index, bool value) {
  set(L"ButtonValue", index, &ToolButton::value, value);
}

void USToolBar::set_button_enabled(long index, bool enabled) {
  set(L"ButtonEnabled", index, &ToolButton::enabled, enabled);
}

void USToolBar::set_button_use_mask_color(long index, bool use) {
  set(L"ButtonUseMaskColor", index, &ToolButton::use_mask_color, use);
}

void USToolBar::set_button_mask_color(long index, OLE_COLOR color) {
  set(L"ButtonMaskColor", index, &ToolButton::mask_color, color);
}

}  // namespace kestrelon
