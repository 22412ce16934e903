// What the container tells about itself, each value with the default that stands when it tells
// nothing.
#pragma once

#include <ocidl.h>

#include <string>

#include "base/com_win.h"

namespace kestrelon {

class Ambient {
 public:
  /// The container's ambient properties, if its site has any; null drops them.
  void attach(IOleClientSite* site) { source_ = query<IDispatch>(site); }

  /// A value as the container gives it; false when it gives none.
  bool raw(DISPID id, Variant& out) const;
  bool user_mode() const;             ///< default true: most strangers only ever run
  std::wstring display_name() const;  ///< default empty
  ComPtr<IFontDisp> font() const;     ///< default none
  OLE_COLOR back_color() const;       ///< default: the system's button face
  bool display_as_default() const;    ///< default false
  bool ui_dead() const;               ///< default false
  bool right_to_left() const;         ///< default false
  LCID locale() const;                ///< default the user's

 private:
  bool get(DISPID id, VARTYPE type, Variant& out) const;
  bool flag(DISPID id, bool fallback) const;

  ComPtr<IDispatch> source_;
};

}  // namespace kestrelon
