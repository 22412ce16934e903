// A copy of a control that a page may change and show while the original stays as it is.
#pragma once

#include <ocidl.h>

#include "base/com_win.h"

namespace kestrelon {

class PreviewControl {
 public:
  /// Makes a copy with the original's saved state; empty when the class does not allow it.
  void copy(IDispatch* original);
  IDispatch* dispatch() const { return copy_.get(); }
  /// Draws the copy in its own size, or smaller, in the middle of a rectangle.
  void draw(HDC dc, const RECT& place) const;

 private:
  ComPtr<IDispatch> copy_;
};

/// Late-bound access by dispatch id; false where the object refuses.
bool get_by_id(IDispatch* object, DISPID id, VARTYPE type, Variant& out);
bool put_by_id(IDispatch* object, DISPID id, const Variant& value);
/// DISPID_UNKNOWN for a name that the object does not have.
DISPID id_of(IDispatch* object, const wchar_t* name);

}  // namespace kestrelon
