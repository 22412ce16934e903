// One button or separator of a tool bar, as it is kept and saved.
#pragma once

#include <ocidl.h>
#include <olectl.h>

#include <string>

#include "base/com_win.h"
#include "contract/us_tool_bar.h"

namespace kestrelon {

struct ToolButton {
  static constexpr OLE_COLOR kForeColor = 0xB75F31;
  static constexpr OLE_COLOR kMaskColor = 0xC0C0C0;

  std::wstring caption, key, tool_tip;
  ComPtr<IPictureDisp> icon;
  short icon_size = 16;    // pixels at 96 dots an inch
  ComPtr<IFontDisp> font;  // null: the bar's
  OLE_COLOR fore_color = kForeColor;
  ENUM_ICON_ALIGNMENT alignment = Icon_Left;
  ENUM_BUTTON_TYPE type = Button;
  ButtonStyle style = Normal_button;
  ENUM_BUTTON_STATE state = State_Normal;
  bool value = false;
  bool enabled = true;
  bool use_mask_color = true;
  OLE_COLOR mask_color = kMaskColor;
  // What layout has computed, in twips of the control.
  long left = 0, top = 0, width = 0, height = 0, natural_height = 0;

  bool usable() const { return type != Separator && enabled && state != State_Disabled; }
};

}  // namespace kestrelon
