#include "frame/face/type_browser.h"

#include <olectl.h>

#include "base/module_win.h"

namespace kestrelon {
namespace {

// Owns one description that a type information has handed out.
template <class Description, void (STDMETHODCALLTYPE ITypeInfo::*release)(Description*)>
class Described {
 public:
  explicit Described(ITypeInfo& info) : info_(info) {}
  ~Described() {
    if (value_ != nullptr) (info_.*release)(value_);
  }
  Described(const Described&) = delete;
  Described& operator=(const Described&) = delete;
  Description** put() { return &value_; }
  Description* operator->() const { return value_; }

 private:
  ITypeInfo& info_;
  Description* value_ = nullptr;
};
using Attributes = Described<TYPEATTR, &ITypeInfo::ReleaseTypeAttr>;
using Function = Described<FUNCDESC, &ITypeInfo::ReleaseFuncDesc>;
using Variable = Described<VARDESC, &ITypeInfo::ReleaseVarDesc>;

// The declared type of a property; empty for one the language has.
ComPtr<ITypeInfo> declared_type(ITypeInfo& info, const Function& function) {
  // The stored form of a dual interface has the result as its last argument.
  const TYPEDESC* type = function->cParams > 0
                             ? &function->lprgelemdescParam[function->cParams - 1].tdesc
                             : &function->elemdescFunc.tdesc;
  while (type->vt == VT_PTR) type = type->lptdesc;
  ComPtr<ITypeInfo> out;
  if (type->vt == VT_USERDEFINED) info.GetRefTypeInfo(type->hreftype, out.put());
  return out;
}

std::wstring type_name(ITypeInfo* type) {
  Bstr name;
  if (type != nullptr) type->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr);
  return std::wstring(name.view());
}

// visit(id, declared type) for each readable property without arguments of its own.
template <class Visit>
void visit_properties(const IID& interface_id, Visit visit) {
  const auto info = type_info(interface_id);
  if (!info) return;
  Attributes attributes(*info);
  if (FAILED(info->GetTypeAttr(attributes.put()))) return;
  for (UINT i = 0; i < attributes->cFuncs; ++i) {
    Function function(*info);
    if (FAILED(info->GetFuncDesc(i, function.put()))) continue;
    if (function->invkind == INVOKE_PROPERTYGET && function->cParams <= 1)
      visit(function->memid, declared_type(*info, function));
  }
}

}  // namespace

std::vector<BrowsedProperty> browsed_properties(const IID& interface_id) {
  std::vector<BrowsedProperty> out;
  visit_properties(interface_id, [&](DISPID id, const ComPtr<ITypeInfo>& type) {
    out.push_back({id, type_name(type.get())});
  });
  return out;
}

std::vector<EnumChoice> property_choices(const IID& interface_id, DISPID id) {
  ComPtr<ITypeInfo> type;
  visit_properties(interface_id, [&](DISPID each, const ComPtr<ITypeInfo>& declared) {
    if (each == id) type = declared;
  });
  std::vector<EnumChoice> out;
  if (!type) return out;
  Attributes attributes(*type);
  if (FAILED(type->GetTypeAttr(attributes.put())) || attributes->typekind != TKIND_ENUM) return out;
  for (UINT i = 0; i < attributes->cVars; ++i) {
    Variable variable(*type);
    Bstr name;
    if (FAILED(type->GetVarDesc(i, variable.put())) || variable->varkind != VAR_CONST) continue;
    type->GetDocumentation(variable->memid, name.put(), nullptr, nullptr, nullptr);
    Variant value;
    if (SUCCEEDED(VariantChangeType(&value, variable->lpvarValue, 0, VT_I4)))
      out.push_back({std::wstring(name.view()), V_I4(&value)});
  }
  return out;
}

const CLSID* stock_page(const std::wstring& type) {
  if (type == L"OLE_COLOR") return &CLSID_CColorPropPage;
  if (type == L"IFontDisp") return &CLSID_CFontPropPage;
  if (type == L"IPictureDisp") return &CLSID_CPicturePropPage;
  return nullptr;
}

}  // namespace kestrelon
