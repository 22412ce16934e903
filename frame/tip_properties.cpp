#include "frame/tip_properties.h"

namespace kestrelon {

void TipProperties::create_tool_tip() {
  tip_.Destroy();
  RECT area{};
  const HWND window = ToolTipDescription.get().empty() ? nullptr : tip_place(area);
  if (window == nullptr) return;
  tip_.BackColor = ToolTipBackColor.get();
  tip_.Centered = ToolTipCentered.get();
  tip_.DelayTime = ToolDelayTime.get();
  tip_.ForeColor = ToolTipForeColor.get();
  tip_.set_Icon(ToolTipIcon.get());
  tip_.Style = ToolTipStyle.get();
  tip_.set_TipText(ToolTipDescription.get());
  tip_.set_Title(ToolTipTitle.get());
  tip_.VisibleTime = ToolTipVisibleTime.get();
  tip_.Create(window, &area);
}

void TipProperties::update_tip() {
  create_tool_tip();
}

}  // namespace kestrelon
