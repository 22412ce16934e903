#include "host/class_library.h"

#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
using CanUnloadNow = HRESULT(STDAPICALLTYPE*)();

// `Library.Class.1` and `Library.Class` to `Class`.
std::wstring class_part(const std::wstring& prog_id) {
  const size_t first = prog_id.find(L'.');
  if (first == std::wstring::npos) return prog_id;
  const size_t second = prog_id.find(L'.', first + 1);
  return prog_id.substr(first + 1, second == std::wstring::npos ? second : second - first - 1);
}

}  // namespace

ClassLibrary::ClassLibrary(const std::wstring& path) : module_(LoadLibraryW(path.c_str())) {
  if (!module_) throw ComError(HRESULT_FROM_WIN32(GetLastError()), L"Cannot load " + path);
  LoadTypeLibEx(path.c_str(), REGKIND_NONE, types_.put());
}

ClassLibrary::~ClassLibrary() {
  types_.reset();
  FreeLibrary(module_);
}

FARPROC ClassLibrary::entry(const char* name) const {
  return GetProcAddress(module_, name);
}

bool ClassLibrary::can_unload() const {
  const auto call =
      reinterpret_cast<CanUnloadNow>(reinterpret_cast<void*>(entry("DllCanUnloadNow")));
  return call && call() == S_OK;
}

ComPtr<IUnknown> ClassLibrary::create(const CLSID& clsid) const {
  const auto call =
      reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(entry("DllGetClassObject")));
  ComPtr<IClassFactory> factory;
  ComPtr<IUnknown> object;
  if (call && SUCCEEDED(call(clsid, IID_IClassFactory, factory.put_void())))
    factory->CreateInstance(nullptr, IID_IUnknown, object.put_void());
  return object;
}

ComPtr<IUnknown> ClassLibrary::create(const std::wstring& class_name) const {
  if (!types_) return nullptr;
  const std::wstring wanted = lower_case(class_part(class_name));
  for (UINT i = 0; i < types_->GetTypeInfoCount(); ++i) {
    TYPEKIND kind;
    Bstr name;
    ComPtr<ITypeInfo> info;
    TYPEATTR* attributes = nullptr;
    if (FAILED(types_->GetTypeInfoType(i, &kind)) || kind != TKIND_COCLASS ||
        FAILED(
            types_->GetDocumentation(static_cast<INT>(i), name.put(), nullptr, nullptr, nullptr)) ||
        lower_case(name.view()) != wanted || FAILED(types_->GetTypeInfo(i, info.put())) ||
        FAILED(info->GetTypeAttr(&attributes)))
      continue;
    const CLSID clsid = attributes->guid;
    info->ReleaseTypeAttr(attributes);
    return create(clsid);
  }
  return nullptr;
}

}  // namespace kestrelon::host
