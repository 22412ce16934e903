// Life, layout and the list of buttons.
#include "chrome/us_tool_bar/us_tool_bar.h"

#include <cwchar>

#include "frame/himetric.h"
#include "frame/kit/access_key.h"
#include "frame/text.h"

namespace kestrelon {
namespace {

ControlTraits bar_traits() {
  ControlTraits traits;
  traits.initial_pixels = {320, 28};
  return traits;
}

constexpr int kTwipsPerInch = 1440;
constexpr short kLargestIcon = 256;
constexpr UINT kTextFlags = DT_LEFT | DT_TOP | DT_NOCLIP;

long to_twips(int pixels, int per_inch) {
  return MulDiv(pixels, kTwipsPerInch, per_inch);
}

ComPtr<IFontDisp> system_font() {
  LOGFONTW look{};
  GetObjectW(GetStockObject(DEFAULT_GUI_FONT), sizeof look, &look);
  wchar_t name[] = L"Tahoma";
  FONTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.lpstrName = name;
  description.cySize.int64 = 82500;
  description.sWeight = FW_NORMAL;
  description.sCharset = look.lfCharSet;
  ComPtr<IFontDisp> out;
  OleCreateFontIndirect(&description, IID_IFontDisp, out.put_void());
  return out;
}

ComPtr<IFontDisp> copy_of(const ComPtr<IFontDisp>& font) {
  ComPtr<IFont> copy;
  if (const auto source = font.as<IFont>()) source->Clone(copy.put());
  return copy ? copy.as<IFontDisp>() : font;
}

}  // namespace

USToolBar::USToolBar() : USToolBarGlue(bar_traits()) {}

void USToolBar::property_changed(const wchar_t* name) {
  // A theme tells of the gripper by a name with a blank behind it, which names no member: hosts
  // hear of it when it is set by itself only.
  const bool silent = theming_ && std::wcscmp(name, L"GripperColor") == 0;
  ControlFrame::property_changed(silent ? L"GripperColor " : name);
}

void USToolBar::apply_theme() {
  left_alone_ = theming_ = true;
  assign_theme(theme::kToolBar, Theme.get());
  property_changed(L"BorderPicture ");
  left_alone_ = theming_ = false;
  draw();
}

void USToolBar::enabled_changed() {
  apply_enabled();
  forget_input();
  draw();
}

void USToolBar::ambient_changed(DISPID id) {
  if (id != DISPID_AMBIENT_FONT && id != DISPID_UNKNOWN) return;
  own_font_.reset();
  refresh();
}

void USToolBar::terminate() {
  left_alone_ = true;
  tip_.Destroy();
}

void USToolBar::refresh() {
  if (left_alone_) return;
  lay_out();
  draw();
}

ComPtr<IFontDisp> USToolBar::bar_font() {
  if (!own_font_) own_font_ = ambient().font();
  if (!own_font_) own_font_ = system_font();
  return own_font_;
}

HFONT USToolBar::font_of(const ToolButton& button) {
  HFONT out = nullptr;
  const auto font = (button.font ? button.font : bar_font()).as<IFont>();
  if (font) font->get_hFont(&out);
  return out;
}

tool_bar::Item USToolBar::item_of(const ToolButton& button) {
  tool_bar::Item out;
  out.separator = button.type == Separator;
  out.side = static_cast<tool_bar::IconSide>(button.alignment);
  out.drop_mark = button.style == Dropdown_button;
  if (button.icon) out.icon = scale()(std::clamp<short>(button.icon_size, 0, kLargestIcon));
  if (button.caption.empty()) return out;
  const HGDIOBJ displaced = SelectObject(surface().dc(), font_of(button));
  RECT measured{};
  DrawTextUnicode(surface().dc(), button.caption, -1, &measured, kTextFlags | DT_CALCRECT);
  SelectObject(surface().dc(), displaced);
  out.text_width = static_cast<int>(measured.right);
  out.text_height = static_cast<int>(measured.bottom);
  return out;
}

void USToolBar::lay_out() {
  std::wstring keys;
  for (const ToolButton& button : buttons.get())
    if (button.usable()) keys += access_key_from_start(button.caption);
  set_access_keys(keys);
  if (!surface()) return;
  items_.clear();
  for (const ToolButton& button : buttons.get()) items_.push_back(item_of(button));
  bar_ = tool_bar::arrange(
      {width(), height(), ShowGripper.get(), ShowEndPanel.get(), IsStrech.get(), scale()}, items_);
  const auto [across, down] = screen_resolution();
  std::vector<ToolButton>& list = buttons.quietly();
  for (size_t i = 0; i < list.size(); ++i) {
    const PixelRect& area = bar_.places[i].area;
    list[i].left = to_twips(area.left, across);
    list[i].top = to_twips(area.top, down);
    list[i].width = to_twips(area.right - area.left, across);
    list[i].height = to_twips(area.bottom - area.top, down);
    list[i].natural_height = to_twips(bar_.places[i].natural_height, down);
  }
}

// Numbers have changed their meaning: what was pressed or hot is no more.
void USToolBar::forget_input() {
  hot_ = pressed_ = tool_bar::kNothing;
  if (!known(focus_)) focus_ = tool_bar::kNothing;
  tip_.Destroy();
}

short USToolBar::add_button(ENUM_BUTTON_TYPE type, std::wstring caption, std::wstring key,
                            IPictureDisp* icon, short icon_size, ENUM_ICON_ALIGNMENT alignment,
                            std::wstring tool_tip, long fore_color, IFontDisp* font,
                            ButtonStyle style, ENUM_BUTTON_STATE state, bool use_mask_color,
                            const VARIANT& mask_color) {
  if (buttons.size() >= RecordList<ToolButton>::kMost) return 0;
  ToolButton added;
  added.type = type;
  added.caption = std::move(caption);
  added.key = std::move(key);
  added.icon = ComPtr<IPictureDisp>(icon);
  added.icon_size = icon_size;
  added.alignment = alignment;
  added.tool_tip = std::move(tool_tip);
  added.fore_color = static_cast<OLE_COLOR>(fore_color);
  added.font = font != nullptr ? ComPtr<IFontDisp>(font) : copy_of(bar_font());
  added.style = style;
  added.state = state;
  added.use_mask_color = use_mask_color;
  Variant mask;
  if (V_VT(&mask_color) != VT_ERROR &&
      SUCCEEDED(VariantChangeType(&mask, const_cast<VARIANT*>(&mask_color), 0, VT_I4)))
    added.mask_color = static_cast<OLE_COLOR>(V_I4(&mask));
  const auto position = static_cast<short>(buttons.size() + 1);
  buttons.change(L"ButtonCount",
                 [&](std::vector<ToolButton>& list) { list.push_back(std::move(added)); });
  tell_readers(EVENT_OBJECT_CREATE, position);
  return position;
}

short USToolBar::delete_button(long index) {
  if (!known(index)) return 0;
  buttons.change(L"ButtonCount", [&](std::vector<ToolButton>& list) {
    list.erase(list.begin() + (index - 1));
    bar_.places.clear();
    forget_input();
  });
  tell_readers(EVENT_OBJECT_DESTROY, index);
  return static_cast<short>(buttons.size());
}

short USToolBar::move_button(long index, ENUM_MOVE direction) {
  const long to = direction == Move_ToLeft ? index - 1 : index + 1;
  const bool told = direction == Move_ToLeft || direction == Move_ToRight;
  if (!told || !known(index) || !known(to)) return 0;
  buttons.change(L"ButtonCount", [&](std::vector<ToolButton>& list) {
    std::swap(list[static_cast<size_t>(index - 1)], list[static_cast<size_t>(to - 1)]);
    forget_input();
  });
  tell_readers(EVENT_OBJECT_REORDER);
  return static_cast<short>(to);
}

}  // namespace kestrelon
