#include "services/kn_tooltip/kn_tooltip_win.h"

#include "services/late_object_win.h"

namespace kestrelon {
namespace {

constexpr POINT kPlace{1, 4};  // of the tip's tool, in the control

// A step that fails is passed over.
template <class Step>
void attempt(Step step) {
  try {
    step();
  } catch (const ComError&) {
  }
}

bool is_enabled(LateObject& control) {
  Variant enabled = control.get_property(L"Enabled");
  return enabled.change(VT_BOOL) && V_BOOL(&enabled) != VARIANT_FALSE;
}

}  // namespace

void KN_TOOLTIP::show_tool_tip(std::wstring title, std::wstring message, IDispatch* control,
                               iIconType icon, bool centred, long back_color, long fore_color) {
  LateObject served{ComPtr<IDispatch>(control)};
  attempt([&] {
    if (is_enabled(served)) served.call(L"SetFocus");
  });
  attempt([&] { served_window_ = static_cast<long>(number_of(served.get_property(L"hWnd"))); });
  tip_.ForeColor = static_cast<OLE_COLOR>(fore_color);
  tip_.BackColor = static_cast<OLE_COLOR>(back_color);
  tip_.Centered = centred;
  set_icon(icon);
  tip_.set_TipText(std::move(message));
  tip_.set_Title(std::move(title));
  const HWND window = reinterpret_cast<HWND>(static_cast<LONG_PTR>(served_window_));
  if (!IsWindow(window) || !tip_.Create(window)) return;
  POINT place = kPlace;
  ClientToScreen(window, &place);
  tip_.show_at(place);
}

}  // namespace kestrelon
