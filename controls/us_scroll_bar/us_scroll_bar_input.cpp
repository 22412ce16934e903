// Mouse and timer messages to steps, drags and events.
//
// Events are raised when all else of a message has been done: a handler may show a dialog, move the
// value, or destroy the control.
#include <algorithm>

#include "controls/us_scroll_bar/update_lock.h"
#include "controls/us_scroll_bar/us_scroll_bar.h"
#include "frame/input_state.h"
#include "frame/platform.h"

namespace kestrelon {
namespace {

constexpr UINT_PTR kRepeatTimer = 1;

}  // namespace

bool USScrollBar::window_message_before(UINT message, WPARAM wparam, LPARAM lparam,
                                        LRESULT& result) {
  if (!user_mode()) return false;
  switch (message) {
    case WM_LBUTTONDBLCLK:  // one more press
      result = SendMessageW(window(), WM_LBUTTONDOWN, wparam, lparam);
      return true;
    case WM_TIMER:
      if (wparam != kRepeatTimer) return false;
      repeat();
      return true;
    case WM_CANCELMODE:
      release();
      return false;
    case WM_CAPTURECHANGED:  // without the capture no release will come
      if (reinterpret_cast<HWND>(lparam) != window()) release();
      return false;
    default:
      return false;
  }
}

void USScrollBar::window_message_after(UINT message, WPARAM, LPARAM) {
  if (message != WM_MOUSELEAVE) return;
  hover_.left();
  draw_if_changed();
}

void USScrollBar::mouse_down(short button, short, float x, float y) {
  if (!user_mode() || button != kLeftButton) return;
  last_point_ = {static_cast<LONG>(x), static_cast<LONG>(y)};
  press();
}

void USScrollBar::press() {
  const BarPart part =
      layout_.hit(static_cast<int>(last_point_.x), static_cast<int>(last_point_.y));
  bool moved = false;
  {
    const UpdateLock lock(window());
    stop_timer();
    hit_part_ = part;
    value_at_press_ = Value.get();
    switch (part) {
      case BarPart::kNone:
        return;
      case BarPart::kThumb:
        grab_offset_ =
            layout_.along(static_cast<int>(last_point_.x), static_cast<int>(last_point_.y)) -
            layout_.thumb_start;
        draw();
        return;
      default:
        moved = step(part);
        if (!moved && (part == BarPart::kTopLeft || part == BarPart::kBottomRight)) draw();
    }
  }
  if (moved) raise_change();
  // The handler may have waited for the user, who has let go by now.
  if (hit_part_ == part) start_timer(ChangeDelay.get());
}

void USScrollBar::repeat() {
  stop_timer();
  const BarPart part = hit_part_;
  if (part == BarPart::kNone || part == BarPart::kThumb) return;
  bool moved = false;
  {
    const UpdateLock lock(window());
    if (pointer_in_pressed_part()) moved = step(part);
  }
  if (moved) raise_change();
  if (hit_part_ != part || window() == nullptr) return;
  POINT point{};
  if (GetCursorPos(&point) && ScreenToClient(window(), &point)) last_point_ = point;
  if (pointer_in_pressed_part()) start_timer(ChangeFrequency.get());
  draw_if_changed();
}

void USScrollBar::mouse_move(short, short, float x, float y) {
  if (!user_mode()) return;
  last_point_ = {static_cast<LONG>(x), static_cast<LONG>(y)};
  if (hover_.moved(pointer_over_window()) == Hover::Move::kEnter) track_leave();
  switch (hit_part_) {
    case BarPart::kNone:
      draw_if_changed();
      break;
    case BarPart::kThumb:
      drag();
      break;
    default:
      draw_if_changed();
      if (!timer_on_ && pointer_in_pressed_part()) start_timer(ChangeFrequency.get());
  }
}

void USScrollBar::drag() {
  const int pointer =
      layout_.along(static_cast<int>(last_point_.x), static_cast<int>(last_point_.y));
  const int32_t value =
      value_at(layout_, range(), pointer - grab_offset_, static_cast<int32_t>(Value.get()));
  if (take_value(value)) raise_scroll();
}

void USScrollBar::mouse_up(short button, short, float x, float y) {
  if (!user_mode() || button != kLeftButton) return;
  last_point_ = {static_cast<LONG>(x), static_cast<LONG>(y)};
  release();
}

void USScrollBar::release() {
  if (hit_part_ == BarPart::kNone) return;
  const bool dragged = hit_part_ == BarPart::kThumb && Value.get() != value_at_press_;
  {
    const UpdateLock lock(window());
    hit_part_ = BarPart::kNone;  // first: giving the capture back comes here again
    release_mouse();
    stop_timer();
    draw();
  }
  if (dragged) raise_change();
}

void USScrollBar::key_down(short& key, short&) {
  if (key == VK_LEFT || key == VK_UP) send_tab(true);
  if (key == VK_RIGHT || key == VK_DOWN) send_tab(false);
}

bool USScrollBar::step(BarPart part) {
  const bool button = part == BarPart::kTopLeft || part == BarPart::kBottomRight;
  const bool down = part == BarPart::kTopLeft || part == BarPart::kBefore;
  const int64_t by = button ? SmallChange.get() : LargeChange.get();
  return take_value(range().moved(static_cast<int32_t>(Value.get()), down ? -by : by));
}

bool USScrollBar::take_value(long value) {
  if (value == Value.get()) return false;
  Value.assign(value);
  refresh();
  property_changed(Value.name());
  return true;
}

bool USScrollBar::pointer_in_pressed_part() const {
  return hit_part_ != BarPart::kNone &&
         layout_.hit(static_cast<int>(last_point_.x), static_cast<int>(last_point_.y)) == hit_part_;
}

void USScrollBar::start_timer(long milliseconds) {
  if (window() == nullptr) return;
  timer_on_ =
      SetTimer(window(), kRepeatTimer, static_cast<UINT>(std::max(milliseconds, 1L)), nullptr) != 0;
}

void USScrollBar::stop_timer() {
  if (timer_on_ && window() != nullptr) KillTimer(window(), kRepeatTimer);
  timer_on_ = false;
}

}  // namespace kestrelon
