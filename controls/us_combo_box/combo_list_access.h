// The list of a combo box as screen readers see it: a window of its own with items on demand.
#pragma once

#include "frame/accessible/accessible_object.h"

namespace kestrelon {

class USComboBox;

class ComboListAccess final : private AccessibleHost, private AccessibleView {
 public:
  explicit ComboListAccess(USComboBox& combo) : combo_(combo) {}
  ~ComboListAccess() { detach(); }
  ComboListAccess(const ComboListAccess&) = delete;
  ComboListAccess& operator=(const ComboListAccess&) = delete;

  /// The answer to WM_GETOBJECT of the list's window, 0 for what is not ours.
  LRESULT answer(WPARAM wparam, LPARAM lparam);
  IAccessible* object();
  /// The list has closed: whoever still holds the object is told that it is gone.
  void detach();

 private:
  // AccessibleHost
  AccessibleView* accessible_view() override { return this; }
  HWND accessible_window(RECT& place) const override;
  bool accessible_focused() const override { return false; }
  bool accessible_enabled() const override { return true; }
  void accessible_take_focus() override {}
  IUnknown* accessible_life() override;
  // AccessibleView: items are numbered by the rows that show
  long accessible_count() const override;
  bool accessible_item(long child, AccessibleItem& item) const override;
  long accessible_at(POINT point) const override;
  long accessible_focus() const override;
  std::vector<long> accessible_selection() const override;
  void accessible_default_action(long child) override;
  bool accessible_select(long child, long flags) override;

  USComboBox& combo_;
  ComPtr<AccessibleObject> object_;
};

}  // namespace kestrelon
