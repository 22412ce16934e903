// The fields of a panel by its number.
#include "chrome/us_status_bar/us_status_bar.h"
#include "frame/himetric.h"

namespace kestrelon {
namespace {

constexpr int kTwipsPerInch = 1440;

}  // namespace

template <class T>
void USStatusBar::set(const wchar_t* name, long index, T StatusPanel::*member, T value,
                      Reach reach) {
  if (!known(index)) return;
  panels.quietly()[static_cast<size_t>(index - 1)].*member = std::move(value);
  property_changed(name);
  if (!known(index)) return;  // who hears of a change may change the list
  if (reach == Reach::kLook) repaint_panel(index);
  if (reach == Reach::kText) panel_text_changed(index);
  if (reach == Reach::kPlaces) panels_changed();
}

void USStatusBar::set_panel_alignment(long index, ENUM_ALIGNMENTS alignment) {
  set(L"PanelAlignment", index, &StatusPanel::alignment, alignment, Reach::kLook);
}

void USStatusBar::set_panel_auto_size(long index, ENUM_PANEL_SIZE size) {
  set(L"PanelAutoSize", index, &StatusPanel::auto_size, size, Reach::kPlaces);
}

void USStatusBar::set_panel_bold(long index, bool bold) {
  set(L"PanelBold", index, &StatusPanel::bold, bold, Reach::kText);
}

void USStatusBar::set_panel_caption(long index, std::wstring caption) {
  if (known(index) && at(index).caption == caption) return;
  set(L"PanelCaption", index, &StatusPanel::caption, std::move(caption), Reach::kText);
}

void USStatusBar::set_panel_enabled(long index, bool enabled) {
  set(L"PanelEnabled", index, &StatusPanel::enabled, enabled, Reach::kLook);
}

OLE_COLOR USStatusBar::panel_fore_color(long index) const {
  return known(index) ? at(index).fore_color : 0;
}

void USStatusBar::set_panel_fore_color(long index, OLE_COLOR color) {
  set(L"PanelForeColor", index, &StatusPanel::fore_color, color, Reach::kLook);
}

void USStatusBar::set_panel_format(long index, std::wstring format) {
  set(L"PanelFormat", index, &StatusPanel::format, std::move(format), Reach::kPlaces);
}

void USStatusBar::set_panel_hand_pointer(long index, bool hand) {
  set(L"PanelHandPointer", index, &StatusPanel::hand_pointer, hand, Reach::kLook);
}

void USStatusBar::set_panel_image(long index, const VARIANT& image) {
  set(L"PanelImage", index, &StatusPanel::image, images().value(images().number(image)),
      Reach::kPlaces);
}

// A key that another panel has is refused.
void USStatusBar::set_panel_key(long index, std::wstring key) {
  if (panel_index(key) == 0)
    set(L"PanelKey", index, &StatusPanel::key, std::move(key), Reach::kLook);
}

void USStatusBar::set_panel_max(long index, double most) {
  set(L"PanelMax", index, &StatusPanel::most, most, Reach::kLook);
}

void USStatusBar::set_panel_min_width(long index, long width) {
  set(L"PanelMinWidth", index, &StatusPanel::min_width, width, Reach::kPlaces);
}

void USStatusBar::set_panel_style(long index, ENUM_PANEL_STYLE style) {
  set(L"PanelStyle", index, &StatusPanel::style, style, Reach::kPlaces);
}

void USStatusBar::set_panel_tool_tip_text(long index, std::wstring text) {
  set(L"PanelToolTipText", index, &StatusPanel::tool_tip, std::move(text), Reach::kLook);
}

void USStatusBar::set_panel_value(long index, double value) {
  if (known(index) && at(index).value == value) return;
  set(L"PanelValue", index, &StatusPanel::value, value, Reach::kLook);
  if (known(index) && at(index).style == Panel_Progress)
    tell_readers(EVENT_OBJECT_VALUECHANGE, index);
}

void USStatusBar::set_panel_visible(long index, bool visible) {
  set(L"PanelVisible", index, &StatusPanel::visible, visible, Reach::kPlaces);
}

void USStatusBar::set_panel_width(long index, long width) {
  set(L"PanelWidth", index, &StatusPanel::width, width, Reach::kPlaces);
}

long USStatusBar::panel_left(long index) {
  ensure_layout();
  return MulDiv(area_of(index).left, kTwipsPerInch, screen_resolution().x);
}

long USStatusBar::panel_top(long index) {
  ensure_layout();
  return MulDiv(area_of(index).top, kTwipsPerInch, screen_resolution().y);
}

long USStatusBar::panel_height(long index) {
  ensure_layout();
  const PixelRect area = area_of(index);
  return MulDiv(area.bottom - area.top, kTwipsPerInch, screen_resolution().y);
}

void USStatusBar::raise_for_panel(int index, bool twice) {
  ensure_layout();
  const PixelRect area = area_of(index);
  const auto [across, down] = screen_resolution();
  auto number = static_cast<short>(index);
  Bstr key(at(index).key);
  BSTR passed = key.detach();
  long left = MulDiv(area.left, kTwipsPerInch, across);
  long top = MulDiv(area.top, kTwipsPerInch, down);
  long wide = MulDiv(area.right - area.left, kTwipsPerInch, across);
  long high = MulDiv(area.bottom - area.top, kTwipsPerInch, down);
  if (twice)
    raise_panel_dbl_click(number, passed, left, top, wide, high);
  else
    raise_panel_click(number, passed, left, top, wide, high);
  SysFreeString(passed);
}

}  // namespace kestrelon
