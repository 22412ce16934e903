#include "host/late_bound.h"

#include <algorithm>

namespace kestrelon::host {
namespace {

// Own ids start high enough not to meet those of a control behind an extender.
constexpr DISPID kFirstOwnId = 0x68000000;

Variant converted(const VARIANT& value, VARTYPE type) {
  Variant out;
  if (!convert_value(value, type, out))
    throw ComError(numbered_error(kTypeMismatch), L"Type mismatch");
  return out;
}

void describe(EXCEPINFO* error, HRESULT code, std::wstring_view text) {
  if (!error) return;
  *error = {};
  error->scode = code;
  error->bstrSource = SysAllocString(L"Form");
  error->bstrDescription = Bstr(text).detach();
}

}  // namespace

std::wstring lower_case(std::wstring_view text) {
  std::wstring out(text);
  CharLowerBuffW(out.data(), static_cast<DWORD>(out.size()));
  return out;
}

Variant plain_value(const VARIANT& value) {
  Variant out;
  if (FAILED(VariantCopyInd(&out, const_cast<VARIANT*>(&value)))) throw ComError(E_OUTOFMEMORY);
  return out;
}

// The system's declarations lack the const of these two sources.
bool copy_value(const VARIANT& value, VARIANT& out) {
  return SUCCEEDED(VariantCopy(&out, const_cast<VARIANT*>(&value)));
}
bool convert_value(const VARIANT& value, VARTYPE type, Variant& out) {
  return SUCCEEDED(
      VariantChangeTypeEx(&out, const_cast<VARIANT*>(&value), LOCALE_INVARIANT, 0, type));
}

long to_long(const VARIANT& value) {
  return converted(value, VT_I4).lVal;
}
double to_double(const VARIANT& value) {
  return converted(value, VT_R8).dblVal;
}
bool to_bool(const VARIANT& value) {
  return converted(value, VT_BOOL).boolVal != 0;
}
std::wstring to_text(const VARIANT& value) {
  return to_wstring(converted(value, VT_BSTR).bstrVal);
}
ComPtr<IDispatch> to_object(const VARIANT& value) {
  const Variant plain = plain_value(value);
  if (plain.vt == VT_DISPATCH) return ComPtr<IDispatch>(plain.pdispVal);
  if (plain.vt == VT_UNKNOWN) return query<IDispatch>(plain.punkVal);
  if (plain.vt == VT_EMPTY) return nullptr;
  throw ComError(numbered_error(kTypeMismatch), L"Type mismatch");
}

const VARIANT& Arguments::raw(UINT index) const {
  if (index >= count_) throw ComError(numbered_error(449), L"Argument not optional");
  return params_.rgvarg[params_.cArgs - 1 - index];
}
bool Arguments::has(UINT index) const {
  if (index >= count_) return false;
  const VARIANT& v = raw(index);
  return !(v.vt == VT_ERROR && v.scode == DISP_E_PARAMNOTFOUND);
}
long Arguments::integer(UINT index) const {
  return to_long(raw(index));
}
double Arguments::number(UINT index) const {
  return to_double(raw(index));
}
bool Arguments::boolean(UINT index) const {
  return to_bool(raw(index));
}
std::wstring Arguments::text(UINT index) const {
  return to_text(raw(index));
}
ComPtr<IDispatch> Arguments::object(UINT index) const {
  return to_object(raw(index));
}

LateBound::LateBound(std::wstring type_name)
    : type_name_(std::move(type_name)), next_id_(kFirstOwnId) {}

void LateBound::add(const wchar_t* name, Member member, DISPID id) {
  if (id == DISPID_UNKNOWN) id = next_id_++;
  ids_[lower_case(name)] = id;
  members_[id] = std::move(member);
}
void LateBound::property(const wchar_t* name, std::function<Variant()> get, Setter set, DISPID id) {
  Getter with_arguments;
  if (get) with_arguments = [get = std::move(get)](const Arguments&) { return get(); };
  add(name, {std::move(with_arguments), std::move(set)}, id);
}
void LateBound::method(const wchar_t* name, Getter call, DISPID id) {
  add(name, {std::move(call), nullptr, true}, id);
}
void LateBound::action(const wchar_t* name, std::function<void(const Arguments&)> call) {
  method(name, [call = std::move(call)](const Arguments& arguments) {
    call(arguments);
    return Variant();
  });
}

HRESULT LateBound::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 1;
  return S_OK;
}

HRESULT LateBound::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
  if (!info) return E_POINTER;
  *info = nullptr;
  if (index != 0) return DISP_E_BADINDEX;
  *info = make_named_type(type_name_).detach();
  return *info ? S_OK : E_FAIL;
}

HRESULT LateBound::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) {
  if (!names || !ids || count == 0) return E_INVALIDARG;
  const auto found = ids_.find(lower_case(names[0]));
  if (found == ids_.end()) return unknown_name(names, count, locale, ids);
  ids[0] = found->second;
  std::fill(ids + 1, ids + count, DISPID_UNKNOWN);
  return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
}

HRESULT LateBound::Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* params,
                          VARIANT* result, EXCEPINFO* error, UINT* bad) {
  if (!params) return E_INVALIDARG;
  const auto found = members_.find(id);
  if (found == members_.end()) return unknown_id(id, locale, flags, params, result, error, bad);
  const ComPtr<IDispatch> alive(this);
  const Member member = found->second;
  try {
    before_call();
    return call(member, flags, *params, result);
  } catch (const ComError& failure) {
    describe(error, failure.hr, failure.description);
  } catch (const std::exception&) {
    describe(error, E_FAIL, L"");
  }
  return error ? DISP_E_EXCEPTION : E_FAIL;
}

HRESULT LateBound::call(const Member& member, WORD flags, DISPPARAMS& params, VARIANT* result) {
  if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) {
    if (!member.set) return member.is_method ? DISP_E_MEMBERNOTFOUND : numbered_error(383);
    if (params.cArgs != 1) return DISP_E_BADPARAMCOUNT;
    member.set(plain_value(params.rgvarg[0]));
    return S_OK;
  }
  if (!member.get) return DISP_E_MEMBERNOTFOUND;
  if (!member.is_method && params.cArgs != 0) {
    // `object.Property(index)` of a property that holds a collection means its default member.
    Variant holder = member.get(Arguments(params));
    if (holder.vt != VT_DISPATCH || !holder.pdispVal) return DISP_E_BADPARAMCOUNT;
    return holder.pdispVal->Invoke(DISPID_VALUE, IID_NULL, LOCALE_INVARIANT, flags, &params, result,
                                   nullptr, nullptr);
  }
  Variant value = member.get(Arguments(params));
  if (result) {
    *result = value;
    VariantInit(&value);
  }
  return S_OK;
}

HRESULT LateBound::unknown_name(LPOLESTR*, UINT count, LCID, DISPID* ids) {
  std::fill(ids, ids + count, DISPID_UNKNOWN);
  return DISP_E_UNKNOWNNAME;
}
HRESULT LateBound::unknown_id(DISPID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) {
  return DISP_E_MEMBERNOTFOUND;
}

ComPtr<ITypeInfo> make_named_type(const std::wstring& name) {
  static std::map<std::wstring, ComPtr<ITypeInfo>> known;
  ComPtr<ITypeInfo>& info = known[name];
  if (info) return info;
  // A library in memory with one empty dispinterface; it is never saved, so the file name is
  // unused.
  ComPtr<ICreateTypeLib2> library;
  ComPtr<ICreateTypeInfo> type;
  if (SUCCEEDED(CreateTypeLib2(SYS_WIN32, L"kestrelon_host.tlb", library.put())) &&
      SUCCEEDED(
          library->CreateTypeInfo(const_cast<LPOLESTR>(name.c_str()), TKIND_DISPATCH, type.put())))
    info = type.as<ITypeInfo>();
  return info;
}

namespace {

Variant invoke(IDispatch* object, const wchar_t* name, WORD flags, std::vector<Variant> arguments) {
  if (!object) throw ComError(numbered_error(91), L"Object variable not set");
  DISPID id = DISPID_UNKNOWN;
  LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
  HRESULT hr = object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
  if (FAILED(hr)) throw ComError(hr, std::wstring(L"No member ") + name);
  std::vector<VARIANT> raw;
  for (auto it = arguments.rbegin(); it != arguments.rend(); ++it) raw.push_back(*it);
  DISPID put = DISPID_PROPERTYPUT;
  const bool putting = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  DISPPARAMS params = {raw.data(), putting ? &put : nullptr, static_cast<UINT>(raw.size()),
                       putting ? 1u : 0u};
  Variant result;
  EXCEPINFO error = {};
  hr = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params,
                      putting ? nullptr : result.put(), &error, nullptr);
  if (hr == DISP_E_EXCEPTION && error.pfnDeferredFillIn) error.pfnDeferredFillIn(&error);
  const std::wstring text = error.bstrDescription ? error.bstrDescription : L"";
  SysFreeString(error.bstrDescription);
  SysFreeString(error.bstrSource);
  SysFreeString(error.bstrHelpFile);
  if (hr == DISP_E_EXCEPTION) hr = error.scode ? error.scode : numbered_error(error.wCode);
  if (FAILED(hr)) throw ComError(hr, text);
  return result;
}

}  // namespace

Variant get_property(IDispatch* object, const wchar_t* name, std::vector<Variant> arguments) {
  return invoke(object, name, DISPATCH_PROPERTYGET | DISPATCH_METHOD, std::move(arguments));
}
void put_property(IDispatch* object, const wchar_t* name, const Variant& value,
                  std::vector<Variant> arguments) {
  const bool by_reference = value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN;
  arguments.push_back(value);
  try {
    invoke(object, name, by_reference ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT, arguments);
  } catch (const ComError& error) {
    if (!by_reference || error.hr != DISP_E_MEMBERNOTFOUND) throw;
    invoke(object, name, DISPATCH_PROPERTYPUT, std::move(arguments));
  }
}
Variant call_method(IDispatch* object, const wchar_t* name, std::vector<Variant> arguments) {
  return invoke(object, name, DISPATCH_METHOD, std::move(arguments));
}

}  // namespace kestrelon::host
