// `CTooltip`: the system's tip window for one control.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <cstddef>
#include <string>

#include "base/com_win.h"
#include "contract/frame_types.h"

namespace kestrelon {

/// Owns one tip window at most. Values set before Create count; only title, icon and text reach a
/// tip that lives.
class CTooltip {
 public:
  CTooltip();
  ~CTooltip() { Destroy(); }
  CTooltip(const CTooltip&) = delete;
  CTooltip& operator=(const CTooltip&) = delete;

  /// Makes the tip for a window of this process, in place of one made before. The tip appears by
  /// itself when the pointer rests there. False when the system refuses.
  bool Create(HWND parent);
  /// The same for an area of the window's client pixels; null for all of it.
  bool Create(HWND parent, const RECT* area);
  void Destroy();
  /// The tip window; null while there is none. It may have died with its owner.
  HWND hWnd() const { return window_; }

  ENUM_TOOLTIP_STYLE Style = ToolTip_Standard;
  bool Centered = false;
  OLE_COLOR ForeColor = 0;  ///< 0: the system's colour
  OLE_COLOR BackColor = 0;  ///< 0: the system's colour
  long VisibleTime = 5000;  ///< milliseconds
  long DelayTime = 500;     ///< milliseconds

  ENUM_TOOLTIP_ICON Icon() const { return icon_; }
  void set_Icon(ENUM_TOOLTIP_ICON icon);
  const std::wstring& Title() const { return title_; }
  /// A title cannot be taken from a living tip.
  void set_Title(std::wstring title);
  const std::wstring& TipText() const { return text_; }
  void set_TipText(std::wstring text);

  /// Shows the tip at a point of the screen until it is destroyed.
  void show_at(POINT point);

 private:
  // The record that common controls of every version know: 44 bytes in the 32-bit build.
  static constexpr UINT kToolInfoBytes = offsetof(TOOLINFOA, lpReserved);
  static_assert(sizeof(void*) != 4 || kToolInfoBytes == 44);

  TOOLINFOA tool() const;
  void send_title();
  void update_title();

  HWND window_ = nullptr;
  HWND parent_ = nullptr;
  RECT area_{};
  UINT tool_flags_ = 0;
  ENUM_TOOLTIP_ICON icon_ = No_Icon;
  std::wstring title_;
  std::wstring text_;
  mutable std::string narrow_text_;  // what the record points to
};

}  // namespace kestrelon
