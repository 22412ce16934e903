#include "host/put_indexed.h"

namespace kestrelon::host {

void put_indexed(IDispatch* object, const wchar_t* name, std::vector<Variant> arguments,
                 const Variant& value) {
  std::wstring member(name);
  LPOLESTR names = member.data();
  DISPID id = DISPID_UNKNOWN, put = DISPID_PROPERTYPUT;
  const HRESULT known = object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
  if (FAILED(known)) throw ComError(known, name);
  arguments.push_back(value);
  // The callee sees the last argument first and owns none of them.
  std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
  DISPPARAMS parameters{reversed.data(), &put, static_cast<UINT>(reversed.size()), 1};
  const WORD flags = value.vt == VT_DISPATCH ? DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF
                                             : DISPATCH_PROPERTYPUT;
  const HRESULT hr = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, nullptr,
                                    nullptr, nullptr);
  if (FAILED(hr)) throw ComError(hr, name);
}

}  // namespace kestrelon::host
