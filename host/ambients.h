// What a form tells its controls of their surroundings.
#pragma once

#include <windows.h>
//
#include <ocidl.h>

#include <set>
#include <string>

#include "base/com_win.h"

namespace kestrelon::host {

/// Shared by all controls of a form. DisplayName and DisplayAsDefault belong to each control.
struct Ambients {
  bool user_mode = true;
  OLE_COLOR back_color = 0x8000000F;
  OLE_COLOR fore_color = 0x80000012;
  ComPtr<IFontDisp> font;
  LCID locale = 0x0416;  // Brazilian Portuguese
  bool ui_dead = false;
  bool supports_mnemonics = true;
  /// Members that this form does not offer, by DISPID: what a poorer container lacks.
  std::set<DISPID> missing;
};

/// The value of an ambient member; false when it is not offered.
bool ambient_value(const Ambients& ambients, DISPID id, const std::wstring& display_name,
                   bool display_as_default, Variant& value);

/// An OLE font object; points as in a font dialog.
ComPtr<IFontDisp> make_font(const wchar_t* name, double points, bool bold = false);

}  // namespace kestrelon::host
