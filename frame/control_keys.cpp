// The keyboard in one place: which keys a control keeps from its container, and the way of key
// messages, its own window's and its inner windows', to its handlers.
#include "frame/control_frame.h"
#include "frame/input_state.h"

namespace kestrelon {
namespace {

// What an edit box needs although dialogs and menus have uses for it.
bool edit_box_key(int key, short shift) {
  switch (key) {
    case VK_LEFT:
    case VK_RIGHT:
    case VK_UP:
    case VK_DOWN:
    case VK_HOME:
    case VK_END:
    case VK_PRIOR:
    case VK_NEXT:
    case VK_DELETE:
    case VK_BACK:
    case VK_INSERT:
      return true;
    case 'A':
    case 'C':
    case 'V':
    case 'X':
    case 'Y':
    case 'Z':
      return (shift & kControlKey) != 0 && (shift & kAltKey) == 0;
    default:
      return false;
  }
}

}  // namespace

bool ControlFrame::keeps_key(int key) {
  const short shift = shift_state();
  if (wants_key(key, shift)) return true;
  const HWND focus = ::GetFocus();
  return focus != window_ && edit_box_key(key, shift);
}

LRESULT ControlFrame::dialog_code(const MSG* key) {
  LRESULT out = 0;
  if (wants_key(VK_LEFT, 0)) out |= DLGC_WANTARROWS;
  if (wants_characters()) out |= DLGC_WANTCHARS;
  if (key != nullptr && key->message == WM_KEYDOWN && keeps_key(static_cast<int>(key->wParam)))
    out |= DLGC_WANTMESSAGE;
  return out;
}

STDMETHODIMP ControlFrame::TranslateAccelerator(MSG* message) {
  if (message == nullptr) return E_POINTER;
  return call([&]() -> HRESULT {
    const bool key = message->message == WM_KEYDOWN || message->message == WM_KEYUP;
    const bool ours = window_ != nullptr &&
                      (message->hwnd == window_ || IsChild(window_, message->hwnd) != FALSE);
    if (key && ours && keeps_key(static_cast<int>(message->wParam))) {
      TranslateMessage(message);
      DispatchMessageW(message);
      return S_OK;
    }
    const ComPtr<IOleControlSite> site = control_site_;
    return site ? site->TranslateAccelerator(message, static_cast<DWORD>(shift_state())) : S_FALSE;
  });
}

bool ControlFrame::inner_key(UINT message, WPARAM& wparam) {
  auto code = static_cast<short>(wparam);
  short shift = shift_state();
  switch (message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      key_down(code, shift);
      break;
    case WM_KEYUP:
    case WM_SYSKEYUP:
      key_up(code, shift);
      break;
    default:
      key_press(code);
      break;
  }
  wparam = static_cast<unsigned short>(code);
  return code != 0;
}

bool ControlFrame::handle_key(UINT message, WPARAM wparam) {
  const bool goes_on = inner_key(message, wparam);
  // The window's own work with Alt goes on.
  return !goes_on || (message != WM_SYSKEYDOWN && message != WM_SYSKEYUP);
}

void ControlFrame::grab_focus() {
  if ((traits_.misc_status & OLEMISC_NOUIACTIVATE) != 0) return;  // a picture, for one
  if (windowless_) {
    if (windowless_site_->GetFocus() != S_OK) activate_ui();
    return;
  }
  if (window_ != nullptr && ::GetFocus() != window_ && !IsChild(window_, ::GetFocus()))
    ::SetFocus(window_);
}

bool ControlFrame::holds(HWND window) const {
  return window_ != nullptr && window != nullptr &&
         (window == window_ || IsChild(window_, window) != FALSE);
}

void ControlFrame::handle_focus(bool gained, HWND other) {
  if (gained && !ui_active_ && in_place_active_) activate_ui();
  if (!gained && holds(other)) return;  // to an inner window: the control keeps it
  if (gained != focus_within_) {
    focus_within_ = gained;
    const ComPtr<IOleControlSite> site = control_site_;
    if (site) site->OnFocus(gained);
    if (window_ == nullptr && !windowless_) return;
    gained ? got_focus() : lost_focus();
    if (gained) tell_readers(EVENT_OBJECT_FOCUS, accessible_focus());
  }
  const HWND target = gained && window_ != nullptr ? focus_target() : nullptr;
  if (target != nullptr && ::GetFocus() == window_) ::SetFocus(target);
}

void ControlFrame::inner_focus(bool gained, HWND other) {
  handle_focus(gained, other);
}

void ControlFrame::key_wishes_changed() {
  const ComPtr<IOleControlSite> site = control_site_;
  if (site) site->OnControlInfoChanged();
}

void ControlFrame::send_tab(bool backwards) {
  INPUT keys[4]{};
  UINT count = 0;
  const auto key = [&](WORD code, DWORD flags) {
    keys[count].type = INPUT_KEYBOARD;
    keys[count].ki.wVk = code;
    keys[count].ki.wScan = static_cast<WORD>(MapVirtualKeyW(code, 0));
    keys[count++].ki.dwFlags = flags;
  };
  if (backwards) key(VK_SHIFT, 0);
  key(VK_TAB, 0);
  key(VK_TAB, KEYEVENTF_KEYUP);
  if (backwards) key(VK_SHIFT, KEYEVENTF_KEYUP);
  SendInput(count, keys, sizeof(INPUT));
}

}  // namespace kestrelon
