#include "services/kn/kn_win.h"

namespace kestrelon {
namespace {

// The text of an optional argument, "" when it is left out or holds none.
std::wstring optional_text(VARIANT& argument) {
  Variant copy;
  if (V_VT(&argument) == VT_ERROR || FAILED(VariantCopyInd(&copy, &argument)) ||
      !copy.change(VT_BSTR))
    return {};
  return to_wstring(V_BSTR(&copy));
}

}  // namespace

Variant KN::kn_selecionar_pasta(VARIANT form, VARIANT title, VARIANT start, bool offer_new) {
  HWND owner = GetActiveWindow();
  if (V_VT(&form) != VT_ERROR) {
    Variant object;
    if (FAILED(VariantCopyInd(&object, &form)) || V_VT(&object) != VT_DISPATCH) return Variant();
    owner = WindowOfObject(V_DISPATCH(&object));
    if (owner == nullptr) return Variant();
  }
  const auto folder = select_folder(owner, optional_text(title), optional_text(start), offer_new);
  return folder ? Variant(std::wstring_view(*folder)) : Variant();
}

}  // namespace kestrelon
