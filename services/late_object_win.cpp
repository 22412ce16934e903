#include "services/late_object_win.h"

#include <vector>

namespace kestrelon {
namespace {

// Takes over the texts of an exception that an object told.
ComError error_of(HRESULT hr, EXCEPINFO& exception) {
  if (hr != DISP_E_EXCEPTION) return ComError(hr);
  if (exception.pfnDeferredFillIn != nullptr) exception.pfnDeferredFillIn(&exception);
  ComError error(exception.scode != 0 ? exception.scode : static_cast<HRESULT>(exception.wCode),
                 to_wstring(exception.bstrDescription), to_wstring(exception.bstrSource));
  SysFreeString(exception.bstrDescription);
  SysFreeString(exception.bstrSource);
  SysFreeString(exception.bstrHelpFile);
  return error;
}

}  // namespace

DISPID LateObject::id(const wchar_t* name) {
  const auto known = ids_.find(name);
  if (known != ids_.end()) return known->second;
  if (!object_) throw ComError(DISP_E_UNKNOWNNAME, name);
  std::wstring text(name);
  LPOLESTR names = text.data();
  DISPID member = DISPID_UNKNOWN;
  const HRESULT hr = object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &member);
  if (FAILED(hr)) throw ComError(hr, name);
  ids_.emplace(name, member);
  return member;
}

Variant LateObject::invoke(DISPID member, WORD flags, std::initializer_list<Variant> arguments) {
  // The callee sees the last argument first and owns none of them.
  std::vector<VARIANT> reversed(std::rbegin(arguments), std::rend(arguments));
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
  const bool is_put = (flags & DISPATCH_PROPERTYPUT) != 0;
  if (is_put) {
    parameters.rgdispidNamedArgs = &put;
    parameters.cNamedArgs = 1;
  }
  Variant result;
  EXCEPINFO exception{};
  const ComPtr<IDispatch> object = object_;  // the call may re-enter and drop ours
  const HRESULT hr = object->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                    is_put ? nullptr : &result, &exception, nullptr);
  if (FAILED(hr)) throw error_of(hr, exception);
  return result;
}

LateObject LateObject::get_object(const wchar_t* name) {
  return object_of(get_property(name));
}

void LateObject::put_property(const wchar_t* name, const Variant& value) {
  invoke(id(name), DISPATCH_PROPERTYPUT, {value});
}

Variant LateObject::call(const wchar_t* name, std::initializer_list<Variant> arguments) {
  return call(id(name), arguments);
}

Variant LateObject::call(DISPID member, std::initializer_list<Variant> arguments) {
  return invoke(member, DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments);
}

LateObject object_of(const VARIANT& value) {
  if (V_VT(&value) == (VT_VARIANT | VT_BYREF)) return object_of(*V_VARIANTREF(&value));
  IUnknown* unknown = nullptr;
  if (V_VT(&value) == VT_DISPATCH || V_VT(&value) == VT_UNKNOWN) unknown = V_UNKNOWN(&value);
  if (V_VT(&value) == (VT_DISPATCH | VT_BYREF) || V_VT(&value) == (VT_UNKNOWN | VT_BYREF))
    unknown = *V_UNKNOWNREF(&value);
  return LateObject(query<IDispatch>(unknown));
}

Variant missing_argument() {
  Variant missing;
  V_VT(&missing) = VT_ERROR;
  V_ERROR(&missing) = DISP_E_PARAMNOTFOUND;
  return missing;
}

int64_t number_of(const Variant& value) {
  Variant number = value;
  if (!number.change(VT_I8)) throw ComError(DISP_E_TYPEMISMATCH);
  return V_I8(&number);
}

void pump_messages(unsigned long long most_milliseconds) {
  const ULONGLONG end = GetTickCount64() + most_milliseconds;
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
    if (GetTickCount64() >= end) return;
  }
}

}  // namespace kestrelon
