// Mouse and what is dragged over the picture.
#include "controls/us_alpha_image/us_alpha_image.h"

namespace kestrelon {

void USAlphaImage::mouse_down(short button, short shift, float x, float y) {
  raise_mouse_down(button, shift, x, y);
}

void USAlphaImage::mouse_up(short button, short shift, float x, float y) {
  raise_mouse_up(button, shift, x, y);
}

void USAlphaImage::mouse_move(short button, short shift, float x, float y) {
  if (!user_mode()) return;
  switch (hover_.moved(pointer_over_window())) {
    case Hover::Move::kEnter:
      track_leave();
      raise_mouse_enter();
      break;
    case Hover::Move::kInside:
      raise_mouse_move(button, shift, x, y);
      break;
    case Hover::Move::kExit:
      raise_mouse_exit();
      break;
    case Hover::Move::kNothing:
      break;
  }
}

void USAlphaImage::window_message_after(UINT message, WPARAM, LPARAM) {
  if (message != WM_MOUSELEAVE || !user_mode()) return;
  hover_.left();
  raise_mouse_exit();
}

void USAlphaImage::drag(Drag& step) {
  // By reference, as all arguments: a handler may put another object in the place of this one.
  IDispatch* data = ComPtr<IDispatch>(step.data).detach();
  if (step.stage == Drag::Stage::kDrop) {
    raise_ole_drag_drop(data, step.effect, step.button, step.shift, step.x, step.y);
  } else {
    auto state = static_cast<short>(step.stage);
    raise_ole_drag_over(data, step.effect, step.button, step.shift, step.x, step.y, state);
  }
  if (data != nullptr) data->Release();
}

}  // namespace kestrelon
