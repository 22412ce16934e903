#include "base/automation_win.h"

namespace kestrelon {
namespace {

// A script passes a variable as a reference to a VARIANT, and the type library's Invoke refuses it
// where a method declares a typed reference. This call frame gives such an argument a variable of
// the declared type for the time of the call, and carries the result back into the script's own.
class TypedReferences {
 public:
  TypedReferences(ITypeInfo& info, DISPID member, WORD flags, DISPPARAMS& parameters)
      : original_(parameters), changed_(parameters) {
    if (!needs_work()) return;
    FUNCDESC* const function = find_function(info, member, flags);
    if (function == nullptr) return;
    arguments_.assign(original_.rgvarg, original_.rgvarg + original_.cArgs);
    locals_.resize(original_.cArgs);
    for (UINT i = 0; i < original_.cArgs; ++i) {
      const UINT position = original_.cArgs - 1 - i;  // in declaration order
      if (position >= static_cast<UINT>(function->cParams)) continue;
      const TYPEDESC& declared = function->lprgelemdescParam[position].tdesc;
      if (is_negative(arguments_[i]) && is_unsigned_long(info, declared)) {
        const long value =
            V_VT(&arguments_[i]) == VT_I2 ? V_I2(&arguments_[i]) : V_I4(&arguments_[i]);
        V_VT(&arguments_[i]) = VT_UI4;
        V_UI4(&arguments_[i]) = static_cast<ULONG>(value);
      } else if (original_.cNamedArgs == 0) {
        retype(declared, i);
      }
    }
    info.ReleaseFuncDesc(function);
    changed_.rgvarg = arguments_.data();
  }

  DISPPARAMS* parameters() { return &changed_; }

  void carry_back() {
    for (size_t i = 0; i < locals_.size(); ++i) {
      if (V_VT(&locals_[i]) == VT_EMPTY) continue;
      VARIANT& place = *V_VARIANTREF(&original_.rgvarg[i]);
      if (!is_list(V_VT(&locals_[i])) || V_VT(&place) == V_VT(&locals_[i]) ||
          !copy_list(V_ARRAY(&locals_[i]), V_VT(&locals_[i]) & VT_TYPEMASK, VT_VARIANT, place))
        VariantCopy(&place, &locals_[i]);
    }
  }

 private:
  bool needs_work() const {
    for (UINT i = 0; i < original_.cArgs; ++i) {
      const VARIANT& argument = original_.rgvarg[i];
      if (V_VT(&argument) == (VT_VARIANT | VT_BYREF) || is_negative(argument)) return true;
    }
    return false;
  }

  // The description of a member, to be released, or null. In an expression a script leaves open
  // whether it calls a method or reads a property. The system's own search by number counts
  // otherwise than its access by index where an interface inherits.
  static FUNCDESC* find_function(ITypeInfo& info, DISPID member, WORD flags) {
    FUNCDESC* function = nullptr;
    for (UINT i = 0; SUCCEEDED(info.GetFuncDesc(i, &function)); ++i) {
      if (function->memid == member && (function->invkind & flags) != 0) return function;
      info.ReleaseFuncDesc(function);
    }
    return nullptr;
  }

  static bool is_negative(const VARIANT& v) {
    return (V_VT(&v) == VT_I4 && V_I4(&v) < 0) || (V_VT(&v) == VT_I2 && V_I2(&v) < 0);
  }

  // OLE_COLOR is an unsigned type, but Basic has none: a system colour comes as a negative Long.
  static bool is_unsigned_long(ITypeInfo& info, const TYPEDESC& declared) {
    if (declared.vt != VT_USERDEFINED) return declared.vt == VT_UI4;
    ComPtr<ITypeInfo> referred;
    TYPEATTR* attributes = nullptr;
    if (FAILED(info.GetRefTypeInfo(declared.hreftype, referred.put())) ||
        FAILED(referred->GetTypeAttr(&attributes))) {
      return false;
    }
    const bool out = attributes->typekind == TKIND_ALIAS && attributes->tdescAlias.vt == VT_UI4;
    referred->ReleaseTypeAttr(attributes);
    return out;
  }

  void retype(const TYPEDESC& declared, UINT i) {
    if (V_VT(&original_.rgvarg[i]) != (VT_VARIANT | VT_BYREF) || declared.vt != VT_PTR) return;
    const VARTYPE wanted = declared.lptdesc->vt;
    if (wanted == VT_VARIANT || wanted == VT_USERDEFINED || wanted == VT_PTR) return;
    if (wanted == VT_SAFEARRAY && give_array(declared.lptdesc->lptdesc->vt, i)) return;
    const VARTYPE type = wanted == VT_SAFEARRAY ? V_VT(V_VARIANTREF(&original_.rgvarg[i])) : wanted;
    if (FAILED(VariantChangeType(&locals_[i], V_VARIANTREF(&original_.rgvarg[i]), 0, type)) ||
        V_VT(&locals_[i]) == VT_EMPTY) {
      return;
    }
    V_VT(&arguments_[i]) = static_cast<VARTYPE>(type | VT_BYREF);
    V_BYREF(&arguments_[i]) = &V_I8(&locals_[i]);
  }

  // Arrays that a script takes element by element, which it does with Variants only. Arrays of
  // bytes it hands on as they are.
  static bool is_list(VARTYPE type) {
    return type == (VT_ARRAY | VT_BSTR) || type == (VT_ARRAY | VT_I4);
  }

  // Elements of a list, from 0 and with the type wanted. False, with `out` as it was, if one of
  // them has no such form.
  static bool copy_list(SAFEARRAY* list, VARTYPE from, VARTYPE to, VARIANT& out) {
    LONG low = 0, high = -1;
    if (list == nullptr || SafeArrayGetDim(list) != 1 ||
        FAILED(SafeArrayGetLBound(list, 1, &low)) || FAILED(SafeArrayGetUBound(list, 1, &high)))
      return false;
    Variant copy;
    V_ARRAY(&copy) = SafeArrayCreateVector(to, 0, static_cast<ULONG>(high - low + 1));
    if (V_ARRAY(&copy) == nullptr) return false;
    V_VT(&copy) = static_cast<VARTYPE>(VT_ARRAY | to);
    for (LONG i = low; i <= high; ++i) {
      Variant element;
      if (!read_element(list, from, i, element) || (to != VT_VARIANT && !element.change(to)) ||
          !write_element(V_ARRAY(&copy), to, i - low, element))
        return false;
    }
    return SUCCEEDED(VariantCopy(&out, &copy));
  }

  static bool read_element(SAFEARRAY* list, VARTYPE type, LONG index, Variant& out) {
    if (type == VT_VARIANT) return SUCCEEDED(SafeArrayGetElement(list, &index, &out));
    const bool read = SUCCEEDED(SafeArrayGetElement(list, &index, &V_I4(&out)));
    if (read) V_VT(&out) = type;
    return read;
  }

  static bool write_element(SAFEARRAY* list, VARTYPE type, LONG index, Variant& value) {
    void* const data = type == VT_VARIANT ? static_cast<void*>(&value)
                       : type == VT_BSTR  ? static_cast<void*>(V_BSTR(&value))
                                          : static_cast<void*>(&V_I4(&value));
    return SUCCEEDED(SafeArrayPutElement(list, &index, data));
  }

  // A variable without a value stands for an array without elements.
  bool give_array(VARTYPE element, UINT i) {
    const VARIANT& variable = *V_VARIANTREF(&original_.rgvarg[i]);
    const auto type = static_cast<VARTYPE>(VT_ARRAY | element);
    if (V_VT(&variable) == (VT_ARRAY | VT_VARIANT) && is_list(type)) {
      if (!copy_list(V_ARRAY(&variable), VT_VARIANT, element, locals_[i])) return false;
    } else if (V_VT(&variable) == VT_EMPTY) {
      V_ARRAY(&locals_[i]) = SafeArrayCreateVector(element, 0, 0);
      if (V_ARRAY(&locals_[i]) == nullptr) return false;
      V_VT(&locals_[i]) = type;
    } else {
      return false;
    }
    V_VT(&arguments_[i]) = static_cast<VARTYPE>(VT_ARRAY | element | VT_BYREF);
    V_ARRAYREF(&arguments_[i]) = &V_ARRAY(&locals_[i]);
    return true;
  }

  DISPPARAMS& original_;
  DISPPARAMS changed_;
  std::vector<VARIANT> arguments_;  // borrowed copies
  std::vector<Variant> locals_;
};

}  // namespace

STDMETHODIMP AutomationObject::OwnUnknown::QueryInterface(REFIID iid, void** out) {
  if (out == nullptr) return E_POINTER;
  *out = iid == IID_IUnknown ? static_cast<IUnknown*>(this) : object_.find_interface(iid);
  if (*out == nullptr) return E_NOINTERFACE;
  static_cast<IUnknown*>(*out)->AddRef();
  return S_OK;
}

STDMETHODIMP_(ULONG) AutomationObject::OwnUnknown::Release() {
  const ULONG left = --references_;
  if (left != 0 || finished_) return left;
  // Final work may hand out and release references once more; it must not start over.
  finished_ = true;
  references_ = 1;
  object_.outer_ = this;
  object_.on_final_release();
  delete &object_;
  return 0;
}

void* AutomationObject::find_interface(REFIID iid) {
  if (iid == IID_IDispatch || iid == class_info().interface_id) return dispatch();
  if (iid == IID_ISupportErrorInfo) return static_cast<ISupportErrorInfo*>(this);
  if (iid == IID_IProvideClassInfo || iid == IID_IProvideClassInfo2)
    return static_cast<IProvideClassInfo2*>(this);
  if (iid == IID_IConnectionPointContainer && !connection_points().empty())
    return static_cast<IConnectionPointContainer*>(this);
  return nullptr;
}

std::vector<ConnectionPoint*> AutomationObject::connection_points() {
  if (class_info().events_id == nullptr) return {};
  return {&events()};
}

ConnectionPoint& AutomationObject::events() {
  if (!events_) events_ = std::make_unique<ConnectionPoint>(*this, *class_info().events_id);
  return *events_;
}

void AutomationObject::raise(DISPID event, std::initializer_list<VARIANT> arguments) {
  if (!events_ || events_->empty()) return;
  const Hold hold(*this);
  events_->fire(event, arguments);
}

STDMETHODIMP AutomationObject::InterfaceSupportsErrorInfo(REFIID iid) {
  return iid == class_info().interface_id || iid == IID_IDispatch ? S_OK : S_FALSE;
}

STDMETHODIMP AutomationObject::GetClassInfo(ITypeInfo** out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  const auto info = type_info(class_info().clsid);
  return info ? info.copy_to(out) : TYPE_E_ELEMENTNOTFOUND;
}

STDMETHODIMP AutomationObject::GetGUID(DWORD kind, GUID* out) {
  if (out == nullptr) return E_POINTER;
  if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID || class_info().events_id == nullptr) {
    *out = GUID_NULL;
    return E_INVALIDARG;
  }
  *out = *class_info().events_id;
  return S_OK;
}

STDMETHODIMP AutomationObject::EnumConnectionPoints(IEnumConnectionPoints** out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  return guarded(IID_IConnectionPointContainer, [&] {
    std::vector<IConnectionPoint*> items;
    for (ConnectionPoint* point : connection_points()) {
      point->AddRef();
      items.push_back(point);
    }
    *out = make_enumerator<IEnumConnectionPoints>(
        std::move(items),
        [](IConnectionPoint* const& from, IConnectionPoint*& to) {
          to = from;
          to->AddRef();
        },
        [](IConnectionPoint*& item) { item->Release(); });
  });
}

STDMETHODIMP AutomationObject::FindConnectionPoint(REFIID iid, IConnectionPoint** out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  for (ConnectionPoint* point : connection_points()) {
    if (point->iid() != iid) continue;
    point->AddRef();
    *out = point;
    return S_OK;
  }
  return CONNECT_E_NOCONNECTION;
}

HRESULT AutomationObject::get_type_info(UINT index, ITypeInfo** out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  if (index != 0) return DISP_E_BADINDEX;
  const auto info = type_info(class_info().interface_id);
  return info ? info.copy_to(out) : TYPE_E_ELEMENTNOTFOUND;
}

HRESULT AutomationObject::ids_of_names(REFIID iid, LPOLESTR* names, UINT count, DISPID* ids) {
  if (iid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (names == nullptr || ids == nullptr) return E_POINTER;
  const auto info = type_info(class_info().interface_id);
  return info ? info->GetIDsOfNames(names, count, ids) : DISP_E_UNKNOWNNAME;
}

HRESULT AutomationObject::invoke(void* interface_pointer, DISPID member, REFIID iid, LCID,
                                 WORD flags, DISPPARAMS* parameters, VARIANT* result,
                                 EXCEPINFO* exception, UINT* bad_argument) {
  if (iid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (parameters == nullptr) return E_POINTER;
  const Hold hold(*this);
  const auto info = type_info(class_info().interface_id);
  if (!info) return DISP_E_MEMBERNOTFOUND;
  return guarded(class_info().interface_id, [&]() -> HRESULT {
    SetErrorInfo(0, nullptr);
    TypedReferences frame(*info.get(), member, flags, *parameters);
    const HRESULT hr = info->Invoke(interface_pointer, member, flags, frame.parameters(), result,
                                    exception, bad_argument);
    if (SUCCEEDED(hr)) frame.carry_back();
    // Basic and scripts know no unsigned Long: colours go out as they know them.
    if (SUCCEEDED(hr) && result != nullptr && V_VT(result) == VT_UI4) V_VT(result) = VT_I4;
    return hr;
  });
}

}  // namespace kestrelon
