// Keys that the form handles before the focused control's window sees them.
#include <algorithm>

#include "host/form.h"

namespace kestrelon::host {
namespace {

bool pressed(int key) {
  return GetKeyState(key) < 0;
}

}  // namespace

bool Form::translate(MSG& message) {
  if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST || !hwnd()) return false;
  if (message.hwnd != hwnd() && !IsChild(hwnd(), message.hwnd)) return false;
  if (const ComPtr<IOleInPlaceActiveObject> object = active_object_;
      object && object->TranslateAccelerator(&message) == S_OK)
    return true;
  if (!hwnd()) return true;
  if (message.message == WM_KEYDOWN && !pressed(VK_CONTROL)) {
    if (message.wParam == VK_TAB) {
      move_focus(pressed(VK_SHIFT));
      return true;
    }
    if (message.wParam == VK_RETURN) return translate_enter(message, false);
    if (message.wParam == VK_ESCAPE) return translate_enter(message, true);
  }
  return translate_mnemonic(message);
}

bool Form::focusable(const FormItem& item) const {
  // An item inside hidden or disabled boxes takes no focus.
  HWND box = item.container().hwnd();
  if (!item.can_focus() || !IsWindowVisible(box)) return false;
  for (; box != hwnd(); box = GetParent(box))
    if (!box || !IsWindowEnabled(box)) return false;
  return IsWindowEnabled(box) != FALSE;
}

void Form::move_focus(bool backwards) {
  if (tab_order_.empty()) return;
  const auto count = static_cast<long>(tab_order_.size());
  const auto at = std::find(tab_order_.begin(), tab_order_.end(), active_);
  long index = at != tab_order_.end() ? static_cast<long>(at - tab_order_.begin())
                                      : (backwards ? count : -1);
  for (long tried = 0; tried < count; ++tried) {
    index = (index + (backwards ? -1 : 1) + count) % count;
    FormItem* item = tab_order_[static_cast<size_t>(index)];
    if (!focusable(*item)) continue;
    if (item != active_) item->take_focus();
    return;
  }
}

bool Form::translate_enter(MSG& message, bool cancel) {
  auto* active = dynamic_cast<ControlSite*>(active_);
  if (active && active->eats(cancel ? CTRLINFO_EATS_ESCAPE : CTRLINFO_EATS_RETURN)) return false;
  ControlSite* button = cancel ? nullptr : shown_default_;
  if (cancel)
    for (const auto& item : all_)
      if (item->is_cancel) button = dynamic_cast<ControlSite*>(item.get());
  if (!button || !button->visible()) return false;
  return SUCCEEDED(button->mnemonic(message));
}

bool Form::translate_mnemonic(MSG& message) {
  const bool alt = message.message == WM_SYSKEYDOWN || message.message == WM_SYSCHAR;
  if (!alt && message.message != WM_KEYDOWN && message.message != WM_CHAR) return false;
  // The search starts behind the active item, so that a letter shared by several goes round.
  const auto count = tab_order_.size();
  const size_t start = active_ ? tab_index(*active_) + 1 : 0;
  for (size_t i = 0; i < count; ++i) {
    FormItem* item = tab_order_[(start + i) % count];
    auto* site = dynamic_cast<ControlSite*>(item);
    if (!site || !site->visible() || !site->has_mnemonic(message)) continue;
    const ComPtr<ControlSite> alive(site);
    if (site->misc_status() & OLEMISC_ACTSLIKELABEL) {
      site->mnemonic(message);
      if (site->closed()) return true;
      // From the label on, not from the item that has the focus: that one is left as it always is.
      for (size_t next = tab_index(*site) + 1, tried = 0; tried < tab_order_.size(); ++tried) {
        FormItem* const candidate = tab_order_[(next + tried) % tab_order_.size()];
        if (!focusable(*candidate)) continue;
        if (candidate != active_) candidate->take_focus();
        break;
      }
      return true;
    }
    if (focusable(*site) && active_ != site) site->take_focus();
    if (!site->closed()) site->mnemonic(message);
    return true;
  }
  return false;
}

}  // namespace kestrelon::host
