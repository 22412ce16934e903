// What a control tells screen readers, and when.
#include "frame/accessible/accessible_object.h"
#include "frame/control_frame.h"
#include "frame/kit/access_key.h"

namespace kestrelon {

IAccessible* ControlFrame::accessible() {
  if (!accessible_) accessible_ = ComPtr<AccessibleObject>(new AccessibleObject(*this));
  return accessible_.get();
}

bool ControlFrame::accessible_item(long child, AccessibleItem& item) const {
  if (child != CHILDID_SELF) return false;
  item.name = AccessibleName.get();
  describe(item);
  return true;
}

void ControlFrame::name_after(AccessibleItem& item, const std::wstring& caption) {
  if (item.name.empty()) item.name = without_access_marks(caption);
  const std::wstring key = access_key_from_end(caption);
  if (!key.empty()) item.shortcut = L"Alt+" + key;
}

HWND ControlFrame::accessible_window(RECT& place) const {
  place = {0, 0, width_, height_};
  if (!windowless_ || !in_place_site_) return window_;
  place = place_;
  HWND container = nullptr;
  in_place_site_->GetWindow(&container);
  return container;
}

void ControlFrame::tell_readers(DWORD event, long child) const {
  if (window_ != nullptr && IsWinEventHookInstalled(event))
    NotifyWinEvent(event, window_, OBJID_CLIENT, child);
}

bool ControlFrame::answer_readers(WPARAM wparam, LPARAM lparam, LRESULT& result) {
  if (static_cast<DWORD>(lparam) != static_cast<DWORD>(OBJID_CLIENT)) return false;
  result = accessible_result(wparam, accessible());
  return result != 0;
}

}  // namespace kestrelon
