// The pointer on the title and on the edges: hover, press, drag, the window's menu.
#include <windowsx.h>

#include "chrome/us_form/us_form.h"
#include "frame/input_state.h"
#include "services/late_object_win.h"

namespace kestrelon {

using skin::Button;

bool USForm::window_message_before(UINT message, WPARAM wparam, LPARAM lparam, LRESULT&) {
  if (message >= WM_MOUSEMOVE && message <= WM_MBUTTONDBLCLK) {
    last_mouse_ = {scale().to_unit(GET_X_LPARAM(lparam)), scale().to_unit(GET_Y_LPARAM(lparam))};
    last_keys_ = wparam;
  }
  // The title keeps to the top of the form, whatever its container thinks of aligning.
  if (message == WM_WINDOWPOSCHANGING && live() && GetParent(window()) == host_.window() &&
      !host_.minimized()) {
    auto& place = *reinterpret_cast<WINDOWPOS*>(lparam);
    if ((place.flags & (SWP_NOMOVE | SWP_NOSIZE)) == (SWP_NOMOVE | SWP_NOSIZE)) return false;
    RECT client{};
    GetClientRect(host_.window(), &client);
    place.flags &= ~static_cast<UINT>(SWP_NOMOVE | SWP_NOSIZE);
    place.x = place.y = 0;
    place.cx = static_cast<int>(client.right);
    place.cy = strip_height();
  }
  return false;
}

void USForm::window_message_after(UINT message, WPARAM, LPARAM) {
  if (message == WM_MOUSELEAVE) leave_box();
}

void USForm::set_pointer(long pointer) {
  if (pointer == pointer_) return;
  pointer_ = pointer;
  apply_mouse_pointer();
}

void USForm::show_tip() {
  tip_.Destroy();
  if (hover_ == Button::kNone || window() == nullptr) return;
  const std::wstring* const texts[] = {&ToolTipMinimize.get(), &ToolTipMaximize.get(),
                                       &ToolTipClose.get()};
  const std::wstring& text = *texts[static_cast<size_t>(hover_) - 1];
  if (text.empty()) return;
  tip_.set_TipText(text);
  tip_.Create(window());
}

void USForm::hit_test(int x, int y) {
  const Button before = hover_;
  hover_ = skin::button_at(Theme.get(), buttons(), unit_width(), x, y);
  if (hover_ != before) show_tip();
}

void USForm::mouse_move(short button, short shift, float x, float y) {
  raise_mouse_move(button, shift, x, y);
  if (!live() || window() == nullptr) return;
  track_leave();
  const int px = static_cast<int>(last_mouse_.x), py = static_cast<int>(last_mouse_.y);
  const int width = unit_width();
  if (ShowControlBox.get() && !skin::moves_over_edge(Theme.get(), width, px, py)) {
    set_pointer(skin::kDefaultPointer);
    hit_test(px, py);
    if (hover_ != painted_) {
      painted_ = hover_;
      redraw();
    }
    return;
  }
  if (py > 2 || skin::is_flat(Theme.get())) leave_box();
  if (!AllowResize.get()) return;
  set_pointer(host_.maximized() ? skin::kDefaultPointer : skin::title_pointer(width, px, py));
}

// The plain picture again, if a hot one was shown.
void USForm::leave_box() {
  if (!live() || !ShowControlBox.get()) return;
  hover_ = Button::kNone;
  show_tip();
  if (painted_ != Button::kNone) {
    painted_ = Button::kNone;
    redraw();
  }
}

void USForm::take_hold(int grip) {
  const Hold hold(*this);
  pump_messages();
  if (!live() || !title_down_) return;  // released meanwhile: a drag would stick to the pointer
  ReleaseCapture();
  POINT at{};
  GetCursorPos(&at);
  SendMessageW(host_.window(), WM_NCLBUTTONDOWN, static_cast<WPARAM>(grip), MAKELPARAM(at.x, at.y));
  title_down_ = false;  // the drag has eaten the release
  last_keys_ = 0;
}

void USForm::mouse_down(short button, short shift, float x, float y) {
  const bool alone = last_keys_ == MK_LBUTTON;
  raise_mouse_down(button, shift, x, y);
  if (button != kLeftButton || !live()) return;
  const int px = static_cast<int>(last_mouse_.x), py = static_cast<int>(last_mouse_.y);
  title_down_ = true;
  if (!skin::button_rows(Theme.get()).contains(py)) {
    if (sizable()) return take_hold(skin::title_grip(unit_width(), px));
  } else {
    hit_test(px, py);
    if (hover_ != Button::kNone) {
      painted_ = hover_;
      redraw();
      update_now();
    }
  }
  if (!alone || host_.maximized() || !AllowMove.get() || hover_ != Button::kNone) return;
  take_hold(skin::kCaptionGrip);
}

void USForm::mouse_up(short button, short shift, float x, float y) {
  raise_mouse_up(button, shift, x, y);
  if (!live()) return;
  const int px = static_cast<int>(last_mouse_.x), py = static_cast<int>(last_mouse_.y);
  if (button == kRightButton) {
    POINT at{scale()(px), scale()(py)};
    ClientToScreen(window(), &at);
    return show_system_menu(at);
  }
  if (button != kLeftButton) return;
  title_down_ = false;
  redraw();
  if (!skin::kReleaseRows.contains(py) || !ShowControlBox.get()) return;
  hit_test(px, py);
  const Button hit = hover_;
  painted_ = hit;
  const Hold hold(*this);
  pump_messages();
  if (live()) press(hit);
}

void USForm::press(Button button) {
  switch (button) {
    case Button::kMinimize:
      if (ShowMinimize.get()) send_command(SC_MINIMIZE);
      return;
    case Button::kMaximize:
      return send_command(host_.normal() && ShowMaximize.get() ? SC_MAXIMIZE : SC_RESTORE);
    case Button::kClose:
      return deactivate_form();
    case Button::kNone:
      return;
  }
}

void USForm::send_command(WPARAM command) {
  const Hold hold(*this);
  hover_ = painted_ = Button::kNone;
  tip_.Destroy();
  SendMessageW(host_.window(), WM_SYSCOMMAND, command, 0);
  if (live()) redraw_chrome();
}

void USForm::double_click() {
  raise_dbl_click();
  if (!live()) return;
  const auto x = last_mouse_.x, y = last_mouse_.y;
  const bool on_icon = x >= 8 && x < 8 + skin::kIconSide && y >= 6 && y < 6 + skin::kIconSide;
  if (on_icon && icon() && buttons().answers(Button::kClose)) return deactivate_form();
  if (!AllowResize.get() || !buttons().answers(Button::kMaximize)) return;
  // On the buttons it is two clicks.
  if (skin::button_at(Theme.get(), buttons(), unit_width(), static_cast<int>(x),
                      static_cast<int>(y)) != Button::kNone)
    return;
  const Hold hold(*this);
  pump_messages();
  if (live()) send_command(host_.normal() ? SC_MAXIMIZE : SC_RESTORE);
}

void USForm::edge_moved(skin::Edge edge, int x, int width) {
  const bool now = live() && sizable();
  const int unit_x = scale().to_unit(x), unit = scale().to_unit(width);
  LPCWSTR name = reinterpret_cast<LPCWSTR>(IDC_ARROW);
  if (now && edge != skin::Edge::kBottom) {
    name = reinterpret_cast<LPCWSTR>(IDC_SIZEWE);
  } else if (now) {
    const skin::Pointer pointer = skin::bottom_pointer(unit, unit_x);
    name = reinterpret_cast<LPCWSTR>(pointer == skin::kPointerNESW   ? IDC_SIZENESW
                                     : pointer == skin::kPointerNWSE ? IDC_SIZENWSE
                                                                     : IDC_SIZENS);
  }
  SetCursor(LoadCursorW(nullptr, name));
}

void USForm::edge_pressed(skin::Edge edge, int x, int width) {
  const Hold hold(*this);
  if (!live() || !sizable()) return;
  const int grip = edge == skin::Edge::kLeft ? skin::kLeftGrip
                   : edge == skin::Edge::kRight
                       ? skin::kRightGrip
                       : skin::bottom_grip(scale().to_unit(width), scale().to_unit(x));
  ReleaseCapture();
  POINT at{};
  GetCursorPos(&at);
  SendMessageW(host_.window(), WM_NCLBUTTONDOWN, static_cast<WPARAM>(grip), MAKELPARAM(at.x, at.y));
}

// The system's own menu goes with the window's style bits, so it is made here.
void USForm::show_system_menu(POINT screen) {
  const Hold hold(*this);
  const HMENU menu = CreatePopupMenu();
  if (menu == nullptr || !live()) return;
  const skin::Buttons now = buttons();
  const auto add = [&](WPARAM command, const wchar_t* text, bool usable) {
    AppendMenuW(menu, MF_STRING | (usable ? 0u : UINT{MF_GRAYED}), command, text);
  };
  const bool normal = host_.normal();
  add(SC_RESTORE, L"&Restaurar", !normal && now.answers(Button::kMaximize));
  add(SC_MOVE, L"&Mover", normal && AllowMove.get());
  add(SC_SIZE, L"&Tamanho", normal && AllowResize.get());
  add(SC_MINIMIZE, L"Mi&nimizar", now.answers(Button::kMinimize));
  add(SC_MAXIMIZE, L"Ma&ximizar", normal && now.answers(Button::kMaximize));
  AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
  add(SC_CLOSE, L"&Fechar\tAlt+F4", now.answers(Button::kClose));
  SetMenuDefaultItem(menu, SC_CLOSE, FALSE);
  const BOOL chosen =
      TrackPopupMenu(menu, TPM_RETURNCMD | TPM_RIGHTBUTTON, static_cast<int>(screen.x),
                     static_cast<int>(screen.y), 0, host_.window(), nullptr);
  DestroyMenu(menu);
  if (!live() || chosen == 0) return;
  if (chosen == SC_CLOSE) return deactivate_form();
  send_command(static_cast<WPARAM>(chosen));
}

}  // namespace kestrelon
