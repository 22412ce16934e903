// What a control tells screen readers of itself and of what it shows.
#pragma once

#include <windows.h>

#include <oleacc.h>

#include <string>
#include <vector>

#include "base/com_win.h"

namespace kestrelon {

/// One thing a reader can name: the control itself or an item in it.
struct AccessibleItem {
  long role = ROLE_SYSTEM_CLIENT;
  long state = 0;  ///< STATE_SYSTEM_ bits; the control's own get focus, visibility and enabling
  std::wstring name;
  std::wstring value;
  std::wstring description;
  std::wstring shortcut;        ///< "Alt+s"
  std::wstring default_action;  ///< in Portuguese: "Clicar"
  RECT place{};                 ///< pixels of the control
};

/// A control's answers. Items are numbered from 1 and made on demand, so that 100,000 of them cost
/// nothing before somebody asks; CHILDID_SELF (0) is the control. A number that names no item any
/// more is asked for all the same: a reader works on what it saw a moment ago.
class AccessibleView {
 public:
  virtual long accessible_count() const { return 0; }
  virtual bool accessible_item(long child, AccessibleItem& item) const = 0;
  /// The item at a point in pixels of the control; CHILDID_SELF without one.
  virtual long accessible_at(POINT) const { return CHILDID_SELF; }
  /// The item that has the focus while the control has it.
  virtual long accessible_focus() const { return CHILDID_SELF; }
  virtual std::vector<long> accessible_selection() const { return {}; }
  virtual void accessible_default_action(long /*child*/) {}
  /// SELFLAG_ bits; false when the item cannot be selected.
  virtual bool accessible_select(long /*child*/, long /*flags*/) { return false; }
  virtual bool accessible_set_value(long /*child*/, const std::wstring&) { return false; }
  /// The next item in a direction (NAVDIR_...); 0 for none. By default the order of the numbers.
  virtual long accessible_navigate(long child, long direction) const;
  /// An item that is an object of its own, such as a window in the control.
  virtual ComPtr<IDispatch> accessible_object(long /*child*/) const { return nullptr; }

 protected:
  ~AccessibleView() = default;
};

}  // namespace kestrelon
