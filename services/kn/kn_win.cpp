#include "services/kn/kn_win.h"

namespace kestrelon {
namespace {

// The text of an optional argument, "" when it is left out or holds none.
std::wstring optional_text(const VARIANT& argument) {
  Variant copy;
  if (V_VT(&argument) == VT_ERROR ||
      FAILED(VariantCopyInd(&copy, const_cast<VARIANT*>(&argument))) || !copy.change(VT_BSTR))
    return {};
  return to_wstring(V_BSTR(&copy));
}

// The moment of an argument that is a date and not a text.
std::optional<DateTime> moment_of(const VARIANT& argument) {
  Variant copy;
  if (FAILED(VariantCopyInd(&copy, const_cast<VARIANT*>(&argument))) || V_VT(&copy) != VT_DATE)
    return std::nullopt;
  return date_time_of_value(V_DATE(&copy));
}

// The number of a format that came as a number or as its text; -1 for none of the list.
int date_format_of(const VARIANT& argument) {
  Variant copy;
  if (FAILED(VariantCopyInd(&copy, const_cast<VARIANT*>(&argument)))) return -1;
  if (V_VT(&copy) == VT_BSTR)
    if (const auto known = find_date_format(trim_blanks(to_wstring(V_BSTR(&copy))))) return *known;
  return copy.change(VT_I4) ? static_cast<int>(V_I4(&copy)) : -1;
}

}  // namespace

bool KN::kn_validar_data(Text text, const VARIANT& format) {
  return is_valid_date(text, date_format_of(format));
}

std::wstring KN::kn_formatar_data(const VARIANT& text, Text format) {
  const auto moment = moment_of(text);
  return format_date(moment ? format_moment(*moment, L"dd/mm/yyyy") : optional_text(text), format);
}

std::wstring KN::kn_formatar_data_ex(const VARIANT& text, Text format) {
  if (const auto moment = moment_of(text)) return format_moment(*moment, format);
  return format_date_ex(optional_text(text), format, current_year());
}

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
