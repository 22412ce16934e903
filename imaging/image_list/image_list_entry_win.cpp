#include "imaging/image_list/image_list_entry_win.h"

namespace kestrelon {
namespace {

ComPtr<NativeImageLists> native_lists_of(IUnknown* object) {
  ComPtr<NativeImageLists> out;
  if (object != nullptr) object->QueryInterface(IID_NativeImageLists, out.put_void());
  return out;
}

// A container's wrapper may answer for the control by name alone.
ComPtr<IUnknown> lists_by_name(IDispatch& wrapper) {
  Variant result;
  DISPID id = DISPID_UNKNOWN;
  wchar_t name[] = L"ImageLists";
  LPOLESTR names = name;
  DISPPARAMS none = {};
  if (FAILED(wrapper.GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id)) ||
      FAILED(wrapper.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &result,
                            nullptr, nullptr)))
    return {};
  const bool object = V_VT(&result) == VT_DISPATCH || V_VT(&result) == VT_UNKNOWN;
  return object ? ComPtr<IUnknown>(V_UNKNOWN(&result)) : ComPtr<IUnknown>();
}

}  // namespace

bool copy_image_list_entry(IDispatch* source, const VARIANT& list, const VARIANT& image,
                           c32bppDIB& out) {
  if (source == nullptr) return false;
  const ComPtr<IDispatch> hold(source);
  auto native = native_lists_of(source);
  if (!native) native = native_lists_of(lists_by_name(*source).get());
  try {
    return native && native->copy_entry(list, image, out);
  } catch (const ComError&) {
    return false;
  }
}

}  // namespace kestrelon
