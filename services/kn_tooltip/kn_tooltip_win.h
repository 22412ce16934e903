// KN_TOOLTIP: a system tip that an application shows at a control on demand.
#pragma once

#include "base/automation_win.h"
#include "frame/tooltip.h"
#include "kn_tooltip_glue.h"

namespace kestrelon {

class KN_TOOLTIP final : public KN_TOOLTIPGlue<KN_TOOLTIP, AutomationObject> {
 public:
  /// Gives the focus to `control` if it is enabled, and shows the tip there until it is destroyed.
  /// Any object with `Enabled`, `SetFocus` and `hWnd` will do; only `hWnd` is needed. Raises
  /// nothing.
  void show_tool_tip(std::wstring title, std::wstring message, IDispatch* control, iIconType icon,
                     bool centred, long back_color, long fore_color);
  void destroy_tool_tip() { tip_.Destroy(); }
  long toolh_wnd() const { return served_window_; }

  ENUM_TOOLTIP_STYLE style() const { return tip_.Style; }
  void set_style(ENUM_TOOLTIP_STYLE style) { tip_.Style = style; }
  bool centered() const { return tip_.Centered; }
  void set_centered(bool centred) { tip_.Centered = centred; }
  iIconType icon() const { return static_cast<iIconType>(tip_.Icon()); }
  void set_icon(iIconType icon) { tip_.set_Icon(static_cast<ENUM_TOOLTIP_ICON>(icon)); }
  std::wstring title() const { return tip_.Title(); }
  void set_title(std::wstring title) { tip_.set_Title(std::move(title)); }
  std::wstring tip_text() const { return tip_.TipText(); }
  void set_tip_text(std::wstring text) { tip_.set_TipText(std::move(text)); }
  OLE_COLOR fore_color() const { return tip_.ForeColor; }
  void set_fore_color(OLE_COLOR color) { tip_.ForeColor = color; }
  OLE_COLOR back_color() const { return tip_.BackColor; }
  void set_back_color(OLE_COLOR color) { tip_.BackColor = color; }
  long visible_time() const { return tip_.VisibleTime; }
  void set_visible_time(long milliseconds) { tip_.VisibleTime = milliseconds; }
  long delay_time() const { return tip_.DelayTime; }
  void set_delay_time(long milliseconds) { tip_.DelayTime = milliseconds; }

 private:
  void on_final_release() override { tip_.Destroy(); }

  CTooltip tip_;
  long served_window_ = 0;
};

}  // namespace kestrelon
