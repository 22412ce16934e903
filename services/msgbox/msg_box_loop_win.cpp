// The modal loop: the owner stands still, everything else of the thread runs on.
#include <algorithm>

#include "base/text.h"
#include "frame/kit/access_key.h"
#include "services/msgbox/msg_box_window_win.h"

namespace kestrelon {
namespace {

bool holds_focus(HWND window, HWND focus) {
  return window != nullptr && (focus == window || IsChild(window, focus));
}

}  // namespace

void MsgBoxWindow::take_owner(HWND owner) {
  focus_before_ = GetFocus();
  owner_ = IsWindow(owner) ? GetAncestor(owner, GA_ROOT) : nullptr;
  if (owner_ == nullptr) return;
  // Under an open box its owner stands still already.
  owner_was_enabled_ = IsWindowEnabled(owner_) != FALSE;
  if (owner_was_enabled_) EnableWindow(owner_, FALSE);
}

void MsgBoxWindow::release_owner() {
  if (owner_was_enabled_ && IsWindow(owner_)) EnableWindow(owner_, TRUE);
  owner_was_enabled_ = false;
}

void MsgBoxWindow::loop() {
  MSG message{};
  while (!done_) {
    const BOOL got = GetMessageW(&message, nullptr, 0, 0);
    if (got <= 0) {
      if (got == 0) PostQuitMessage(static_cast<int>(message.wParam));
      if (!done_) answer_ = msg_box::gone_answer(request_.rules.buttons);
      done_ = true;
      return;
    }
    if (window_ != nullptr && holds_focus(window_, message.hwnd) && translate(message)) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

bool MsgBoxWindow::translate(const MSG& message) {
  switch (message.message) {
    case WM_KEYDOWN:
      return translate_key(message.wParam, false);
    case WM_SYSKEYDOWN:
      return translate_key(message.wParam, true);
    case WM_CHAR:
    case WM_SYSCHAR:
      return GetKeyState(VK_CONTROL) >= 0 && translate_letter(static_cast<wchar_t>(message.wParam));
    case WM_MOUSEWHEEL:
      // Over the text and the buttons the wheel is the text's.
      if (message.hwnd == details_) return false;
      SendMessageW(window_, WM_MOUSEWHEEL, message.wParam, message.lParam);
      return true;
    default:
      return false;
  }
}

bool MsgBoxWindow::translate_key(WPARAM key, bool alt) {
  const bool control = GetKeyState(VK_CONTROL) < 0;
  const bool reading = details_ != nullptr && GetFocus() == details_;
  if (alt) {
    if (key != VK_F4) return false;
    SendMessageW(window_, WM_CLOSE, 0, 0);
    return true;
  }
  switch (key) {
    case VK_TAB:
      move_focus(GetKeyState(VK_SHIFT) < 0 ? -1 : 1, false);
      return true;
    case VK_LEFT:
    case VK_UP:
    case VK_RIGHT:
    case VK_DOWN: {
      if (reading) return false;
      const bool back = key == VK_UP || (key == VK_LEFT) != request_.rules.right_to_left;
      move_focus(key == VK_DOWN || !back ? 1 : -1, true);
      return true;
    }
    case VK_PRIOR:
    case VK_NEXT:
      if (reading) return false;
      scroll_by_bar(key == VK_PRIOR ? SB_PAGEUP : SB_PAGEDOWN);
      return true;
    case VK_RETURN: {
      if (details_button_ && holds_focus(details_button_->window(), GetFocus())) {
        toggle_details();
        return true;
      }
      size_t pressed = request_.rules.chosen;
      for (size_t i = 0; i < buttons_.size(); ++i)
        if (holds_focus(buttons_[i]->window(), GetFocus())) pressed = i;
      close(request_.rules.buttons[pressed]);
      return true;
    }
    case VK_ESCAPE:
      SendMessageW(window_, WM_CLOSE, 0, 0);
      return true;
    case 'C':
    case VK_INSERT:
      if (!control) return false;
      if (reading) {
        DWORD start = 0, end = 0;
        SendMessageW(details_, EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                     reinterpret_cast<LPARAM>(&end));
        if (start != end) return false;
      }
      copy();
      return true;
    default:
      return false;
  }
}

// Access keys act with Alt and without.
bool MsgBoxWindow::translate_letter(wchar_t letter) {
  const std::wstring wanted(1, fold_case(letter));
  for (size_t i = 0; i < captions_.size(); ++i)
    if (access_key_from_end(captions_[i]) == wanted) {
      close(request_.rules.buttons[i]);
      return true;
    }
  if (details_button_ && access_key_from_end((*details_button_)->Caption.get()) == wanted) {
    toggle_details();
    return true;
  }
  if (check_ && access_key_from_end(request_.check_caption) == wanted) {
    SetFocus(check_->window());
    (*check_)->Value.put((*check_)->Value.get() != 0 ? short{0} : short{1});
    return true;
  }
  return false;
}

// What Tab visits, in the order of reading.
std::vector<HWND> MsgBoxWindow::stops() const {
  std::vector<HWND> out;
  if (check_) out.push_back(check_->window());
  for (const auto& button : buttons_) out.push_back(button->window());
  if (details_button_) out.push_back(details_button_->window());
  if (details_open_) out.push_back(details_);
  return out;
}

void MsgBoxWindow::move_focus(int step, bool among_buttons) {
  std::vector<HWND> order = stops();
  if (among_buttons) {
    order.clear();
    for (const auto& button : buttons_) order.push_back(button->window());
  }
  const HWND focus = GetFocus();
  const auto at = std::find_if(order.begin(), order.end(),
                               [focus](HWND stop) { return holds_focus(stop, focus); });
  const auto count = static_cast<int>(order.size());
  if (count == 0) return;
  const int now = at == order.end() ? (step > 0 ? -1 : 0) : static_cast<int>(at - order.begin());
  SetFocus(order[static_cast<size_t>((now + step + count) % count)]);
}

void MsgBoxWindow::copy() const {
  const std::wstring text = msg_box::copied_text(request_.title, request_.text, captions_);
  const size_t bytes = (text.size() + 1) * sizeof(wchar_t);
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
  if (memory == nullptr) return;
  memcpy(GlobalLock(memory), text.c_str(), bytes);
  GlobalUnlock(memory);
  bool taken = false;
  if (OpenClipboard(window_)) {
    EmptyClipboard();
    taken = SetClipboardData(CF_UNICODETEXT, memory) != nullptr;
    CloseClipboard();
  }
  if (!taken) GlobalFree(memory);
}

}  // namespace kestrelon
