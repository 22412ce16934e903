// Methods of the form as a window: size, place, dimming, attaching, the task bar.
#include <limits>

#include "chrome/us_form/form_back.h"
#include "chrome/us_form/us_form.h"
#include "frame/platform.h"
#include "frame/screen.h"
#include "frame/task_bar.h"
#include "frame/translate_color.h"
#include "services/late_object_win.h"

namespace kestrelon {
namespace {

struct Child {
  HWND window;
  RECT place;
};

BOOL CALLBACK shift_child(HWND child, LPARAM by) {
  const auto& shift = *reinterpret_cast<const Child*>(by);
  const HWND parent = GetParent(child);
  if (child == shift.window || parent != GetAncestor(child, GA_ROOT)) return TRUE;
  RECT place{};
  GetWindowRect(child, &place);
  MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
  SetWindowPos(child, nullptr, place.left + shift.place.left, place.top + shift.place.top, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  return TRUE;
}

// Moves what lies directly on a window, but for one child of it.
void shift_children(HWND parent, HWND but, int dx, int dy) {
  const Child shift{but, {dx, dy, 0, 0}};
  EnumChildWindows(parent, shift_child, reinterpret_cast<LPARAM>(&shift));
}

}  // namespace

void USForm::full_screen(bool maximize) {
  if (!host_.takes_skin() || host_.gone()) return;
  const Hold hold(*this);
  if (host_.normal()) {
    const RECT area = work_area(host_.place());
    SetWindowPos(host_.window(), nullptr, area.left, area.top, area.right - area.left,
                 area.bottom - area.top, SWP_NOZORDER | SWP_NOACTIVATE);
  }
  if (maximize && !host_.gone()) SendMessageW(host_.window(), WM_SYSCOMMAND, SC_MAXIMIZE, 0);
  redraw_chrome();
}

void USForm::center_on_screen(IDispatch* form, long left, long top) {
  const HWND window = WindowOfObject(form);
  if (window == nullptr || IsIconic(window) || IsZoomed(window)) return;
  constexpr int kTwipsPerInch = 1440;
  const int dpi = system_scale().dpi();
  RECT place{};
  GetWindowRect(window, &place);
  const int x = (GetSystemMetrics(SM_CXSCREEN) - static_cast<int>(place.right - place.left)) / 2;
  const int y = (GetSystemMetrics(SM_CYSCREEN) - static_cast<int>(place.bottom - place.top)) / 2;
  SetWindowPos(window, nullptr, x + MulDiv(left, dpi, kTwipsPerInch),
               y + MulDiv(top, dpi, kTwipsPerInch), 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void USForm::center_on_screen_ex() {
  if (!host_.takes_skin() || host_.gone() || !host_.normal()) return;
  const RECT place = host_.place(), area = work_area(place);
  SetWindowPos(host_.window(), nullptr,
               area.left + (area.right - area.left - place.right + place.left) / 2,
               area.top + (area.bottom - area.top - place.bottom + place.top) / 2, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void USForm::translucent_form(unsigned char level) {
  if (host_.gone() || host_.window() == nullptr || !IsNtPlatform()) return;
  SetWindowLongPtrW(host_.window(), GWL_EXSTYLE, WS_EX_LAYERED);
  SetLayeredWindowAttributes(host_.window(), 0, level, LWA_ALPHA);
}

void USForm::back_inicalize(IDispatch* parent, const VARIANT& color) {
  Variant number;
  const bool given = V_VT(&color) != VT_ERROR && V_VT(&color) != VT_EMPTY &&
                     SUCCEEDED(VariantChangeType(&number, const_cast<VARIANT*>(&color), 0, VT_I4));
  FormBack::show(WindowOfObject(parent),
                 given ? TranslateColor(static_cast<OLE_COLOR>(V_I4(&number))) : 0);
}

void USForm::back_kill() {
  FormBack::hide();
}

// What lay on the window keeps its place on the screen: the title takes the room of the one before
// and what more it needs, at the window's lower end.
bool USForm::attach_window(long window) {
  const Hold hold(*this);
  if (given_.strip_parent != nullptr) {
    const HWND former = host_.window();
    const Given given = std::exchange(given_, {});
    running_ = false;
    host_sub_.sc_Terminate();
    edges_.destroy();
    if (cut_ && IsWindow(former)) SetWindowRgn(former, nullptr, TRUE);
    cut_ = first_paint_done_ = false;
    host_.forget();
    if (this->window() != nullptr) {
      SetParent(this->window(), given.strip_parent);
      const RECT& place = given.strip_place;
      SetWindowPos(this->window(), HWND_TOP, place.left, place.top, place.right - place.left,
                   place.bottom - place.top, SWP_NOACTIVATE);
    }
    if (IsWindow(former)) {
      shift_children(former, nullptr, -given.dx, -given.dy);
      SetWindowLongPtrW(former, GWL_STYLE,
                        (GetWindowLongPtrW(former, GWL_STYLE) &
                         (WS_VISIBLE | WS_MAXIMIZE | WS_MINIMIZE | WS_DISABLED)) |
                            given.style);
      SetWindowLongPtrW(former, GWL_EXSTYLE, given.ex_style);
      RECT place{};
      GetWindowRect(former, &place);
      SetWindowPos(former, nullptr, 0, 0, place.right - place.left,
                   place.bottom - place.top - given.grown,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
      RedrawWindow(former, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_ALLCHILDREN);
    }
    if (window == 0) return true;
  }
  const HWND target = reinterpret_cast<HWND>(static_cast<LONG_PTR>(window));
  if (!user_mode() || this->window() == nullptr ||
      (host_.takes_skin() && host_.kind() != SkinHost::Kind::kWindow) || !host_.attach(target))
    return false;
  POINT origin{};
  ClientToScreen(target, &origin);
  const RECT place = host_.place();
  given_.style = GetWindowLongPtrW(target, GWL_STYLE) &
                 ~LONG_PTR{WS_VISIBLE | WS_MAXIMIZE | WS_MINIMIZE | WS_DISABLED};
  given_.ex_style = GetWindowLongPtrW(target, GWL_EXSTYLE);
  given_.dx = static_cast<int>(origin.x - place.left);
  given_.grown = std::max(0, strip_height() - static_cast<int>(origin.y - place.top));
  given_.dy = static_cast<int>(origin.y - place.top) + given_.grown;
  given_.strip_parent = GetParent(this->window());
  GetWindowRect(this->window(), &given_.strip_place);
  MapWindowPoints(nullptr, given_.strip_parent, reinterpret_cast<POINT*>(&given_.strip_place), 2);
  SetParent(this->window(), target);
  running_ = true;
  closing_ = false;
  active_ = GetActiveWindow() == target || GetActiveWindow() == nullptr;
  listen();
  if (KeepFrame.get()) {
    frame_kept();
  } else {
    strip_border(true);
  }
  if (!live()) return false;
  shift_children(target, this->window(), given_.dx, given_.dy);
  SetWindowPos(target, nullptr, 0, 0, place.right - place.left,
               place.bottom - place.top + given_.grown, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  if (!live()) return false;
  first_paint();
  redraw_chrome();
  return live();
}

long USForm::task_bar_set_progress_state(long window, ENUM_TASKBAR flags) {
  return task_bar::set_state(window, flags);
}
long USForm::task_bar_set_progress_value(long window, long percent) {
  return task_bar::set_value(window, percent);
}
long USForm::task_bar_set_overlay_icon(long window, long icon, const std::wstring& description) {
  return task_bar::set_overlay(window, icon, description);
}
long USForm::task_bar_set_thumbnail_clip(long window, long left, long top, long right,
                                         long bottom) {
  return task_bar::set_clip(window, {left, top, right, bottom});
}
long USForm::task_bar_set_thumbnail_tooltip(long window, const std::wstring& tip) {
  return task_bar::set_tip(window, tip);
}
long USForm::task_bar_thumb_bar_add_buttons(long window, long count, SAFEARRAY** icons) {
  constexpr long kMost = 7;
  if (thumb_buttons_added_ || count < 1 || count > kMost || icons == nullptr || *icons == nullptr)
    return 0;
  thumb_buttons_added_ = true;
  VARIANT list;
  V_VT(&list) = VT_ARRAY | VT_I4;
  V_ARRAY(&list) = *icons;  // stays the caller's
  return task_bar::add_buttons(window, count, list);
}

}  // namespace kestrelon
