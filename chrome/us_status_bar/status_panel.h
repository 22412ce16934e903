// One panel of a status bar, as it is kept and saved.
#pragma once

#include <string>

#include "base/com_win.h"
#include "contract/us_status_bar.h"

namespace kestrelon {

struct StatusPanel {
  static constexpr OLE_COLOR kBarColor = 0xFFFFFFFF;

  ENUM_ALIGNMENTS alignment = To_Left_Justify;
  ENUM_PANEL_SIZE auto_size = Panel_Fixed;
  bool bold = false;
  std::wstring caption;
  bool enabled = true;
  OLE_COLOR fore_color = kBarColor;
  std::wstring format;
  bool hand_pointer = false;
  Variant image{0L};  // a position from 1 or a key
  std::wstring key;
  double most = 100;
  long min_width = 20;  // pixels at 96 dots an inch
  ENUM_PANEL_STYLE style = Panel_Text;
  std::wstring tool_tip;
  double value = 0;
  bool visible = true;
  long width = 100;  // pixels at 96 dots an inch

  bool is_clock() const { return style >= Panel_Date && style <= Panel_DateTime; }
  bool is_lock() const { return style >= Panel_CapsLock && style <= Panel_Insert; }
};

}  // namespace kestrelon
