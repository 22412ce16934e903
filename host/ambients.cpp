#include "host/ambients.h"

#include <olectl.h>

namespace kestrelon::host {

bool ambient_value(const Ambients& ambients, DISPID id, const std::wstring& display_name,
                   bool display_as_default, Variant& value) {
  if (ambients.missing.count(id)) return false;
  switch (id) {
    case DISPID_AMBIENT_USERMODE:
      value = Variant(ambients.user_mode);
      return true;
    case DISPID_AMBIENT_UIDEAD:
      value = Variant(ambients.ui_dead);
      return true;
    case DISPID_AMBIENT_DISPLAYNAME:
      value = Variant(display_name);
      return true;
    case DISPID_AMBIENT_DISPLAYASDEFAULT:
      value = Variant(display_as_default);
      return true;
    case DISPID_AMBIENT_BACKCOLOR:
      value = Variant(static_cast<long>(ambients.back_color));
      return true;
    case DISPID_AMBIENT_FORECOLOR:
      value = Variant(static_cast<long>(ambients.fore_color));
      return true;
    case DISPID_AMBIENT_FONT:
      if (!ambients.font) return false;
      value = Variant(static_cast<IDispatch*>(ambients.font.get()));
      return true;
    case DISPID_AMBIENT_LOCALEID:
      value = Variant(static_cast<long>(ambients.locale));
      return true;
    case DISPID_AMBIENT_SCALEUNITS:
      value = Variant(L"Twip");
      return true;
    case DISPID_AMBIENT_SUPPORTSMNEMONICS:
      value = Variant(ambients.supports_mnemonics);
      return true;
    case DISPID_AMBIENT_AUTOCLIP:
      value = Variant(true);
      return true;
    case DISPID_AMBIENT_SHOWGRABHANDLES:
    case DISPID_AMBIENT_SHOWHATCHING:
    case DISPID_AMBIENT_MESSAGEREFLECT:
      value = Variant(false);
      return true;
    default:
      return false;
  }
}

ComPtr<IFontDisp> make_font(const wchar_t* name, double points, bool bold) {
  FONTDESC desc = {};
  desc.cbSizeofstruct = sizeof desc;
  desc.lpstrName = const_cast<LPOLESTR>(name);
  desc.cySize.int64 = static_cast<LONGLONG>(points * 10000.0);
  desc.sWeight = bold ? FW_BOLD : FW_NORMAL;
  desc.sCharset = DEFAULT_CHARSET;
  ComPtr<IFontDisp> font;
  OleCreateFontIndirect(&desc, __uuidof(IFontDisp), font.put_void());
  return font;
}

}  // namespace kestrelon::host
