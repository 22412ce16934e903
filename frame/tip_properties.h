// The nine properties of a control's tip and its two methods, as a second base of a control:
//
//   class USLabel final : public USLabelGlue<USLabel, DisplayControl>, public TipProperties {
//     USLabel() : USLabelGlue(traits()), TipProperties(*this, &USLabel::update_tip) {}
#pragma once

#include "frame/property.h"
#include "frame/tooltip.h"

namespace kestrelon {

class TipProperties {
 public:
  // In the order of the property bag.
  Property<OLE_COLOR> ToolTipBackColor;
  Property<OLE_COLOR> ToolTipForeColor;
  Property<ENUM_TOOLTIP_ICON> ToolTipIcon;
  Property<bool> ToolTipCentered;
  Property<long> ToolTipVisibleTime;  // milliseconds
  Property<long> ToolDelayTime;       // milliseconds
  Property<ENUM_TOOLTIP_STYLE> ToolTipStyle;
  Property<std::wstring> ToolTipTitle;
  Property<std::wstring> ToolTipDescription;

  /// Makes the tip anew with what the properties say. Without a text, in the designer and before
  /// there is a place nothing happens.
  void create_tool_tip();
  void destroy_tool_tip() { tip_.Destroy(); }

 protected:
  template <class Owner, class Base>
  TipProperties(Owner& owner, void (Base::*effect)())
      : ToolTipBackColor(owner, L"ToolTipBackColor", 0xD7FCFE, effect),
        ToolTipForeColor(owner, L"ToolTipForeColor", 0, effect),
        ToolTipIcon(owner, L"ToolTipIcon", No_Icon, effect),
        ToolTipCentered(owner, L"ToolTipCentered", false, effect),
        ToolTipVisibleTime(owner, L"ToolTipVisibleTime", 5000, effect),
        ToolDelayTime(owner, L"ToolDelayTime", 500, effect),
        ToolTipStyle(owner, L"ToolTipStyle", ToolTip_Balloon, effect),
        ToolTipTitle(owner, L"ToolTipTitle", L"", effect),
        ToolTipDescription(owner, L"ToolTipDescription", L"", effect) {}
  ~TipProperties() = default;

  /// A change reaches a tip that is there; a tip left without a text goes.
  void update_tip();
  /// The window whose pointer the tip watches and the area of it, null when there is none or no tip
  /// is to be shown now.
  virtual HWND tip_place(RECT& area) const = 0;

 private:
  CTooltip tip_;
};

}  // namespace kestrelon
