// What accessibility takes from the system: the description of its interface, the objects of
// windows, the way of an object to another process.
#include "frame/accessible/accessible_object.h"
#include "frame/accessible/oleacc.h"

namespace kestrelon {
namespace {

// {1EA4DBF0-3C3B-11CF-810C-00AA00389B71}, the type library that describes IAccessible
constexpr GUID kAccessibilityLibrary = {
    0x1ea4dbf0, 0x3c3b, 0x11cf, {0x81, 0x0c, 0x00, 0xaa, 0x00, 0x38, 0x9b, 0x71}};

ITypeInfo* interface_description() {
  static ITypeInfo* const info = [] {
    ComPtr<ITypeLib> library;
    ITypeInfo* found = nullptr;
    if (FAILED(LoadRegTypeLib(kAccessibilityLibrary, 1, 1, 0, library.put())) &&
        FAILED(LoadTypeLibEx(L"oleacc.dll", REGKIND_NONE, library.put())))
      return found;
    library->GetTypeInfoOfGuid(IID_IAccessible, &found);
    return found;  // for the life of the process
  }();
  return info;
}

}  // namespace

STDMETHODIMP AccessibleObject::GetTypeInfoCount(UINT* out) {
  if (out == nullptr) return E_POINTER;
  *out = interface_description() != nullptr ? 1 : 0;
  return S_OK;
}

STDMETHODIMP AccessibleObject::GetTypeInfo(UINT index, LCID, ITypeInfo** out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  ITypeInfo* const info = interface_description();
  if (info == nullptr || index != 0) return DISP_E_BADINDEX;
  info->AddRef();
  *out = info;
  return S_OK;
}

STDMETHODIMP AccessibleObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                             DISPID* ids) {
  ITypeInfo* const info = interface_description();
  return info == nullptr ? E_NOTIMPL : DispGetIDsOfNames(info, names, count, ids);
}

STDMETHODIMP AccessibleObject::Invoke(DISPID member, REFIID, LCID, WORD flags,
                                      DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                      UINT* bad) {
  ITypeInfo* const info = interface_description();
  if (info == nullptr) return E_NOTIMPL;
  const ComPtr<AccessibleObject> self(this);
  return DispInvoke(static_cast<IAccessible*>(this), info, member, flags, parameters, result,
                    exception, bad);
}

ComPtr<IDispatch> accessible_of_window(HWND window, DWORD object) {
  using Get = HRESULT WINAPI(HWND, DWORD, REFIID, void**);
  ComPtr<IDispatch> out;
  if (Get* const get = oleacc_function<Get>("AccessibleObjectFromWindow"))
    get(window, object, IID_IDispatch, out.put_void());
  return out;
}

LRESULT accessible_result(WPARAM wparam, IAccessible* object) {
  using Give = LRESULT WINAPI(REFIID, WPARAM, LPUNKNOWN);
  Give* const give = oleacc_function<Give>("LresultFromObject");
  return give != nullptr ? give(IID_IAccessible, wparam, object) : 0;
}

}  // namespace kestrelon
