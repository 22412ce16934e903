// What is dragged over the control, with a window of its own or within the container's.
#include "frame/control_frame.h"

namespace kestrelon {
namespace {

// Absent from the headers of some compilers.
constexpr DWORD kAltHeld = 0x20;

short held(DWORD keys, DWORD key, short value) {
  return (keys & key) != 0 ? value : short{0};
}

}  // namespace

STDMETHODIMP ControlFrame::GetDropTarget(IDropTarget** out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  if (!takes_drops()) return E_NOTIMPL;
  return call([&] {
    if (!drop_target_) drop_target_ = ComPtr<DropTarget>(new DropTarget(*this));
    *out = ComPtr<IDropTarget>(drop_target_.get()).detach();
  });
}

void ControlFrame::apply_drops() {
  const bool wanted = window_ != nullptr && takes_drops();
  if (wanted == drops_registered_) return;
  if (!wanted) return stop_drops();
  ComPtr<IDropTarget> target;
  GetDropTarget(target.put());
  // Hosts that have not started OLE on this thread cannot be dragged to.
  drops_registered_ = target && SUCCEEDED(RegisterDragDrop(window_, target.get()));
}

void ControlFrame::stop_drops() {
  if (drops_registered_) RevokeDragDrop(window_);
  drops_registered_ = false;
}

DWORD ControlFrame::dragged(Drag::Stage stage, IDispatch* data, DWORD keys, POINT screen,
                            DWORD effects) {
  const Hold hold(*this);
  if (!takes_drops() || !takes_input()) return DROPEFFECT_NONE;
  HWND base = window_;
  if (windowless_ && in_place_site_) in_place_site_->GetWindow(&base);
  if (base == nullptr || !ScreenToClient(base, &screen)) return DROPEFFECT_NONE;
  if (windowless_) {
    screen.x -= place_.left;
    screen.y -= place_.top;
  }
  Drag step{stage, ComPtr<IDispatch>(data), static_cast<long>(effects)};
  step.button = static_cast<short>(held(keys, MK_LBUTTON, 1) | held(keys, MK_RBUTTON, 2) |
                                   held(keys, MK_MBUTTON, 4));
  step.shift = static_cast<short>(held(keys, MK_SHIFT, 1) | held(keys, MK_CONTROL, 2) |
                                  held(keys, kAltHeld, 4));
  step.x = static_cast<float>(screen.x);
  step.y = static_cast<float>(screen.y);
  drag(step);
  return static_cast<DWORD>(step.effect);
}

}  // namespace kestrelon
