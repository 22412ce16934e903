#include "controls/items/text_lines.h"

#include <string_view>

namespace kestrelon {
namespace {

std::vector<std::wstring> lines_of(std::wstring_view text) {
  std::vector<std::wstring> lines;
  while (!text.empty()) {
    const size_t end = text.find_first_of(L"\r\n");
    lines.emplace_back(text.substr(0, end));
    if (end == std::wstring_view::npos) break;
    const bool pair = text.substr(end, 2) == L"\r\n";
    text.remove_prefix(end + (pair ? 2 : 1));
  }
  return lines;
}

std::wstring text_of(const VARIANT& value) {
  Variant copy;
  if (V_VT(&value) == VT_NULL ||
      FAILED(VariantChangeType(&copy, const_cast<VARIANT*>(&value), VARIANT_ALPHABOOL, VT_BSTR)))
    return {};
  return to_wstring(V_BSTR(&copy));
}

std::vector<std::wstring> elements_of(SAFEARRAY* array, VARTYPE type) {
  std::vector<std::wstring> texts;
  LONG first = 0, last = -1;
  if (array == nullptr || SafeArrayGetDim(array) != 1 ||
      FAILED(SafeArrayGetLBound(array, 1, &first)) || FAILED(SafeArrayGetUBound(array, 1, &last)))
    return texts;
  for (LONG i = first; i <= last; ++i) {
    Variant element;
    if (type == VT_VARIANT) {
      if (FAILED(SafeArrayGetElement(array, &i, element.put()))) break;
    } else {
      if (FAILED(SafeArrayGetElement(array, &i, &V_BYREF(&element)))) break;
      V_VT(&element) = type;
    }
    texts.push_back(text_of(element));
  }
  return texts;
}

}  // namespace

std::vector<std::wstring> texts_in(const VARIANT& value) {
  const VARIANT* inner = &value;
  while (V_VT(inner) == (VT_VARIANT | VT_BYREF)) inner = V_VARIANTREF(inner);
  const VARTYPE type = V_VT(inner);
  if ((type & VT_ARRAY) != 0) {
    SAFEARRAY* const array = (type & VT_BYREF) != 0 ? *V_ARRAYREF(inner) : V_ARRAY(inner);
    return elements_of(array, static_cast<VARTYPE>(type & VT_TYPEMASK));
  }
  if (type == VT_ERROR || type == VT_EMPTY || type == VT_NULL) return {};
  return lines_of(text_of(*inner));
}

}  // namespace kestrelon
