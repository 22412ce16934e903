#include "host/event_sink.h"

#include <ocidl.h>

#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

// The attributes of a type description, given back with it.
class TypeAttributes {
 public:
  explicit TypeAttributes(ITypeInfo* info) : info_(info) {
    if (info_ && FAILED(info_->GetTypeAttr(&attr_))) attr_ = nullptr;
  }
  TypeAttributes(const TypeAttributes&) = delete;
  TypeAttributes& operator=(const TypeAttributes&) = delete;
  ~TypeAttributes() {
    if (attr_) info_->ReleaseTypeAttr(attr_);
  }
  explicit operator bool() const { return attr_ != nullptr; }
  const TYPEATTR* operator->() const { return attr_; }
  const TYPEATTR& operator*() const { return *attr_; }

 private:
  ComPtr<ITypeInfo> info_;
  TYPEATTR* attr_ = nullptr;
};

// The class of a library whose default interface is the one described by `interface_info`.
ComPtr<ITypeInfo> coclass_around(ITypeInfo* interface_info) {
  const TypeAttributes wanted(interface_info);
  ComPtr<ITypeLib> library;
  UINT own_index = 0;
  if (!wanted || FAILED(interface_info->GetContainingTypeLib(library.put(), &own_index)))
    return nullptr;
  for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
    TYPEKIND kind;
    ComPtr<ITypeInfo> candidate;
    if (FAILED(library->GetTypeInfoType(i, &kind)) || kind != TKIND_COCLASS ||
        FAILED(library->GetTypeInfo(i, candidate.put())))
      continue;
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> first;
    if (FAILED(candidate->GetRefTypeOfImplType(0, &reference)) ||
        FAILED(candidate->GetRefTypeInfo(reference, first.put())))
      continue;
    const TypeAttributes attributes(first.get());
    if (attributes && IsEqualGUID(attributes->guid, wanted->guid)) return candidate;
  }
  return nullptr;
}

}  // namespace

ComPtr<ITypeInfo> class_info_of(IUnknown* object) {
  ComPtr<ITypeInfo> info;
  if (const auto provider = query<IProvideClassInfo>(object);
      provider && SUCCEEDED(provider->GetClassInfo(info.put())))
    return info;
  if (const auto dispatch = query<IDispatch>(object);
      dispatch && SUCCEEDED(dispatch->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.put())) && info) {
    if (ComPtr<ITypeInfo> coclass = coclass_around(info.get())) return coclass;
  }
  return info;
}

ComPtr<ITypeInfo> source_interface_of(ITypeInfo* coclass) {
  const TypeAttributes attributes(coclass);
  if (!attributes || attributes->typekind != TKIND_COCLASS) return nullptr;
  for (UINT i = 0; i < attributes->cImplTypes; ++i) {
    constexpr int kWanted = IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE;
    int flags = 0;
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> source;
    if (SUCCEEDED(coclass->GetImplTypeFlags(i, &flags)) && (flags & kWanted) == kWanted &&
        SUCCEEDED(coclass->GetRefTypeOfImplType(i, &reference)) &&
        SUCCEEDED(coclass->GetRefTypeInfo(reference, source.put())))
      return source;
  }
  return nullptr;
}

std::wstring type_name_of(ITypeInfo* info) {
  Bstr name;
  if (!info || FAILED(info->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr)))
    return {};
  std::wstring text = to_wstring(name.get());
  if (!text.empty() && text[0] == L'_') text.erase(0, 1);
  return text;
}

EventSink::EventSink(ComPtr<ITypeInfo> source, const TYPEATTR& attributes, EventHandler handler)
    : source_(std::move(source)), source_iid_(attributes.guid), handler_(std::move(handler)) {
  for (UINT i = 0; i < attributes.cFuncs; ++i) {
    FUNCDESC* function = nullptr;
    if (FAILED(source_->GetFuncDesc(i, &function))) continue;
    Bstr name;
    UINT count = 0;
    if (SUCCEEDED(source_->GetNames(function->memid, name.put(), 1, &count)) && count == 1 &&
        names_.emplace(function->memid, to_wstring(name.get())).second)
      order_.push_back(function->memid);
    source_->ReleaseFuncDesc(function);
  }
}

ComPtr<EventSink> EventSink::connect(IUnknown* object, EventHandler handler) {
  const ComPtr<ITypeInfo> coclass = class_info_of(object);
  const ComPtr<ITypeInfo> source = source_interface_of(coclass.get());
  const TypeAttributes attributes(source.get());
  const auto container = query<IConnectionPointContainer>(object);
  if (!attributes || !container) return nullptr;
  ComPtr<EventSink> sink = make_com<EventSink>(source, *attributes, std::move(handler));
  if (FAILED(container->FindConnectionPoint(sink->source_iid_, sink->point_.put())) ||
      FAILED(sink->point_->Advise(sink.get(), &sink->cookie_))) {
    sink->point_.reset();
    return nullptr;
  }
  return sink;
}

void EventSink::disconnect() {
  const ComPtr<EventSink> alive(this);
  if (const ComPtr<IConnectionPoint> point = std::exchange(point_, nullptr))
    point->Unadvise(cookie_);
  handler_ = nullptr;
}

std::vector<std::wstring> EventSink::event_names() const {
  std::vector<std::wstring> names;
  for (DISPID id : order_) names.push_back(names_.at(id));
  return names;
}

bool EventSink::answer(REFIID iid, void** out) {
  if (!IsEqualIID(iid, source_iid_)) return false;
  *out = static_cast<IDispatch*>(this);
  return true;
}

HRESULT EventSink::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}
HRESULT EventSink::GetTypeInfo(UINT, LCID, ITypeInfo**) {
  return E_NOTIMPL;
}
HRESULT EventSink::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
  return E_NOTIMPL;
}

HRESULT EventSink::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*, EXCEPINFO*,
                          UINT*) {
  const auto name = names_.find(id);
  if (name == names_.end()) return DISP_E_MEMBERNOTFOUND;
  if (!params) return E_INVALIDARG;
  const ComPtr<EventSink> alive(this);
  try {
    std::wstring line = name->second;
    for (UINT i = 0; i < params->cArgs; ++i)
      line += (i == 0 ? L"(" : L", ") + describe_value(event_argument(*params, i));
    if (params->cArgs != 0) line += L")";
    log_.push_back(std::move(line));
    // A copy: the handler may disconnect this sink while it runs.
    if (const EventHandler handler = handler_) handler(name->second, *params);
  } catch (const std::exception&) {
    return E_FAIL;
  }
  return S_OK;
}

VARIANT& event_argument(DISPPARAMS& params, UINT index) {
  return params.rgvarg[params.cArgs - 1 - index];
}

Variant event_value(const DISPPARAMS& params, UINT index) {
  return plain_value(params.rgvarg[params.cArgs - 1 - index]);
}

bool set_event_argument(DISPPARAMS& params, UINT index, const Variant& value) {
  VARIANT& target = event_argument(params, index);
  if (!(target.vt & VT_BYREF)) return false;
  if (target.vt == (VT_VARIANT | VT_BYREF)) return copy_value(value, *target.pvarVal);
  Variant changed;
  const VARTYPE type = target.vt & ~VT_BYREF;
  if (!convert_value(value, type, changed)) return false;
  const VARIANT& v = changed;
  switch (type) {
    case VT_I2:
    case VT_BOOL:
      *target.piVal = v.iVal;
      return true;
    case VT_UI1:
      *target.pbVal = v.bVal;
      return true;
    case VT_I4:
    case VT_INT:
      *target.plVal = v.lVal;
      return true;
    case VT_R4:
      *target.pfltVal = v.fltVal;
      return true;
    case VT_R8:
      *target.pdblVal = v.dblVal;
      return true;
    case VT_BSTR:
      SysFreeString(*target.pbstrVal);
      *target.pbstrVal = std::exchange(changed.bstrVal, nullptr);
      return true;
    default:
      return false;
  }
}

std::wstring describe_value(const VARIANT& value) {
  const Variant plain = plain_value(value);
  switch (plain.vt) {
    case VT_EMPTY:
      return L"Empty";
    case VT_NULL:
      return L"Null";
    case VT_BOOL:
      return plain.boolVal ? L"True" : L"False";
    case VT_BSTR:
      return L"\"" + to_wstring(plain.bstrVal) + L"\"";
    case VT_DISPATCH: {
      if (!plain.pdispVal) return L"Nothing";
      ComPtr<ITypeInfo> info;
      plain.pdispVal->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.put());
      const std::wstring name = type_name_of(info.get());
      return name.empty() ? L"Object" : name;
    }
    default:
      break;
  }
  Variant text;
  if (!convert_value(plain, VT_BSTR, text)) return L"?";
  return to_wstring(text.bstrVal);
}

}  // namespace kestrelon::host
