#include "tests/server/type_library_text.h"

#include <map>
#include <vector>

#include "base/com_win.h"

namespace kestrelon {
namespace {

std::string utf8(std::wstring_view text) {
  const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                       nullptr, 0, nullptr, nullptr);
  std::string out(static_cast<size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), out.data(), size,
                      nullptr, nullptr);
  return out;
}

std::string guid_text(const GUID& guid) {
  wchar_t text[40];
  StringFromGUID2(guid, text, ARRAYSIZE(text));
  return utf8(text);
}

std::string name_of(ITypeInfo& info, MEMBERID member) {
  Bstr name;
  info.GetDocumentation(member, name.put(), nullptr, nullptr, nullptr);
  return utf8(name.view());
}

std::string basic_type(VARTYPE type) {
  static const std::map<VARTYPE, const char*> kNames = {
      {VT_I2, "short"},        {VT_I4, "long"},
      {VT_R4, "float"},        {VT_R8, "double"},
      {VT_CY, "CURRENCY"},     {VT_DATE, "DATE"},
      {VT_BSTR, "BSTR"},       {VT_DISPATCH, "IDispatch*"},
      {VT_ERROR, "SCODE"},     {VT_BOOL, "VARIANT_BOOL"},
      {VT_VARIANT, "VARIANT"}, {VT_UNKNOWN, "IUnknown*"},
      {VT_UI1, "uint8"},       {VT_UI2, "uint16"},
      {VT_UI4, "uint32"},      {VT_INT, "int"},
      {VT_UINT, "uint"},       {VT_VOID, "void"},
      {VT_HRESULT, "HRESULT"}};
  const auto found = kNames.find(type);
  return found != kNames.end() ? found->second : "vt" + std::to_string(type);
}

std::string type_text(ITypeInfo& info, const TYPEDESC& type) {
  switch (type.vt) {
    case VT_PTR:
      return type_text(info, *type.lptdesc) + "*";
    case VT_SAFEARRAY:
      return "SAFEARRAY(" + type_text(info, *type.lptdesc) + ")";
    case VT_USERDEFINED: {
      ComPtr<ITypeInfo> referred;
      if (FAILED(info.GetRefTypeInfo(type.hreftype, referred.put()))) return "?";
      return name_of(*referred, MEMBERID_NIL);
    }
    default:
      return basic_type(type.vt);
  }
}

std::string argument_text(ITypeInfo& info, const ELEMDESC& element, const std::string& name) {
  const USHORT flags = element.paramdesc.wParamFlags;
  std::string out;
  if (flags & PARAMFLAG_FIN) out += "in ";
  if (flags & PARAMFLAG_FOUT) out += "out ";
  if (flags & PARAMFLAG_FRETVAL) out += "retval ";
  if (flags & PARAMFLAG_FOPT) out += "optional ";
  out += type_text(info, element.tdesc) + " " + name;
  if (flags & PARAMFLAG_FHASDEFAULT) {
    Variant value;
    VariantCopy(&value, &element.paramdesc.pparamdescex->varDefaultValue);
    if (value.change(VT_BSTR)) out += " = " + utf8(to_wstring(V_BSTR(&value)));
  }
  return out;
}

std::string function_text(ITypeInfo& info, const FUNCDESC& function) {
  BSTR raw[64] = {};
  UINT count = 0;
  info.GetNames(function.memid, raw, ARRAYSIZE(raw), &count);
  std::vector<std::string> names;
  for (UINT i = 0; i < count; ++i) {
    names.push_back(utf8(to_wstring(raw[i])));
    SysFreeString(raw[i]);
  }
  static const std::map<INVOKEKIND, const char*> kKinds = {{INVOKE_FUNC, "method"},
                                                           {INVOKE_PROPERTYGET, "get"},
                                                           {INVOKE_PROPERTYPUT, "put"},
                                                           {INVOKE_PROPERTYPUTREF, "putref"}};
  std::string out = "  " + std::to_string(function.memid) + " " + kKinds.at(function.invkind) +
                    " " + (names.empty() ? "?" : names[0]) + "(";
  for (SHORT i = 0; i < function.cParams; ++i) {
    const auto place = static_cast<size_t>(i) + 1;
    out += (i != 0 ? ", " : "") + argument_text(info, function.lprgelemdescParam[i],
                                                place < names.size() ? names[place] : "value");
  }
  out += ") " + type_text(info, function.elemdescFunc.tdesc);
  if (function.wFuncFlags != 0) out += " flags " + std::to_string(function.wFuncFlags);
  return out + "\n";
}

std::string members_text(ITypeInfo& info, const TYPEATTR& attributes) {
  std::string out;
  for (UINT i = 0; i < attributes.cVars; ++i) {
    VARDESC* variable = nullptr;
    if (FAILED(info.GetVarDesc(i, &variable))) continue;
    out += "  " + name_of(info, variable->memid);
    if (variable->varkind == VAR_CONST) out += " = " + std::to_string(V_I4(variable->lpvarValue));
    out += "\n";
    info.ReleaseVarDesc(variable);
  }
  for (UINT i = 0; i < attributes.cFuncs; ++i) {
    FUNCDESC* function = nullptr;
    if (FAILED(info.GetFuncDesc(i, &function))) continue;
    // What IDispatch itself brings is the system's to describe.
    if ((function->wFuncFlags & FUNCFLAG_FRESTRICTED) == 0) out += function_text(info, *function);
    info.ReleaseFuncDesc(function);
  }
  return out;
}

std::string implemented_text(ITypeInfo& info, const TYPEATTR& attributes) {
  std::string out;
  for (UINT i = 0; i < attributes.cImplTypes; ++i) {
    HREFTYPE reference = 0;
    INT flags = 0;
    ComPtr<ITypeInfo> type;
    if (FAILED(info.GetRefTypeOfImplType(i, &reference)) ||
        FAILED(info.GetRefTypeInfo(reference, type.put()))) {
      continue;
    }
    info.GetImplTypeFlags(i, &flags);
    out +=
        "  implements " + name_of(*type, MEMBERID_NIL) + " flags " + std::to_string(flags) + "\n";
  }
  return out;
}

}  // namespace

std::string describe_type_library(ITypeLib& library) {
  static const std::map<TYPEKIND, const char*> kKinds = {
      {TKIND_ENUM, "enum"},           {TKIND_RECORD, "record"},     {TKIND_MODULE, "module"},
      {TKIND_INTERFACE, "interface"}, {TKIND_DISPATCH, "dispatch"}, {TKIND_COCLASS, "coclass"},
      {TKIND_ALIAS, "alias"},         {TKIND_UNION, "union"}};
  std::string out;
  TLIBATTR* head = nullptr;
  if (SUCCEEDED(library.GetLibAttr(&head))) {
    Bstr name;
    library.GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr);
    out += "library " + utf8(name.view()) + " " + guid_text(head->guid) + " " +
           std::to_string(head->wMajorVerNum) + "." + std::to_string(head->wMinorVerNum) + "\n";
    library.ReleaseTLibAttr(head);
  }
  for (UINT i = 0; i < library.GetTypeInfoCount(); ++i) {
    ComPtr<ITypeInfo> info;
    TYPEATTR* attributes = nullptr;
    if (FAILED(library.GetTypeInfo(i, info.put())) || FAILED(info->GetTypeAttr(&attributes)))
      continue;
    out += std::string(kKinds.at(attributes->typekind)) + " " + name_of(*info, MEMBERID_NIL) + " " +
           guid_text(attributes->guid) + " flags " + std::to_string(attributes->wTypeFlags) + "\n";
    if (attributes->typekind == TKIND_COCLASS) out += implemented_text(*info, *attributes);
    out += members_text(*info, *attributes);
    info->ReleaseTypeAttr(attributes);
  }
  return out;
}

}  // namespace kestrelon
