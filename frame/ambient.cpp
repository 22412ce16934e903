#include "frame/ambient.h"

#include <olectl.h>

namespace kestrelon {

bool Ambient::raw(DISPID id, Variant& out) const {
  if (!source_) return false;
  DISPPARAMS none{};
  if (FAILED(source_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                             out.put(), nullptr, nullptr))) {
    return false;
  }
  return V_VT(&out) != VT_EMPTY;
}

bool Ambient::get(DISPID id, VARTYPE type, Variant& out) const {
  return raw(id, out) && out.change(type);
}

bool Ambient::flag(DISPID id, bool fallback) const {
  Variant value;
  return get(id, VT_BOOL, value) ? V_BOOL(&value) != VARIANT_FALSE : fallback;
}

bool Ambient::user_mode() const {
  return flag(DISPID_AMBIENT_USERMODE, true);
}
bool Ambient::display_as_default() const {
  return flag(DISPID_AMBIENT_DISPLAYASDEFAULT, false);
}
bool Ambient::ui_dead() const {
  return flag(DISPID_AMBIENT_UIDEAD, false);
}

bool Ambient::right_to_left() const {
  return flag(DISPID_AMBIENT_RIGHTTOLEFT, false);
}

LCID Ambient::locale() const {
  Variant value;
  return get(DISPID_AMBIENT_LOCALEID, VT_I4, value) ? static_cast<LCID>(V_I4(&value))
                                                    : GetUserDefaultLCID();
}

std::wstring Ambient::display_name() const {
  Variant value;
  return get(DISPID_AMBIENT_DISPLAYNAME, VT_BSTR, value) ? to_wstring(V_BSTR(&value))
                                                         : std::wstring();
}

ComPtr<IFontDisp> Ambient::font() const {
  Variant value;
  return get(DISPID_AMBIENT_FONT, VT_DISPATCH, value) ? query<IFontDisp>(V_DISPATCH(&value))
                                                      : ComPtr<IFontDisp>();
}

OLE_COLOR Ambient::back_color() const {
  Variant value;
  return get(DISPID_AMBIENT_BACKCOLOR, VT_I4, value) ? static_cast<OLE_COLOR>(V_I4(&value))
                                                     : 0x80000000u | COLOR_BTNFACE;
}

}  // namespace kestrelon
