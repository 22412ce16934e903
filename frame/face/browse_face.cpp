#include "frame/face/browse_face.h"

#include <algorithm>

#include "frame/face/task_memory.h"
#include "frame/pages/page_ids.h"

namespace kestrelon {
namespace {

void add_once(std::vector<CLSID>& pages, const CLSID* page) {
  if (page != nullptr && std::find(pages.begin(), pages.end(), *page) == pages.end())
    pages.push_back(*page);
}

}  // namespace

const CLSID* BrowseFace::own_page(const BrowsedProperty& property) const {
  return property.type == L"ENUM_THEME" ? &kThemePage : nullptr;
}

STDMETHODIMP BrowseFace::GetPages(CAUUID* pages) {
  if (pages == nullptr) return E_POINTER;
  *pages = {};
  return guarded(browsed(), [&]() -> HRESULT {
    const auto properties = browsed_properties(browsed());
    std::vector<CLSID> found;
    for (const auto& each : properties) add_once(found, own_page(each));
    for (const auto& each : properties) add_once(found, stock_page(each.type));
    pages->pElems = task_array<GUID>(found.size());
    if (pages->pElems == nullptr) return E_OUTOFMEMORY;
    pages->cElems = static_cast<ULONG>(found.size());
    std::copy(found.begin(), found.end(), pages->pElems);
    return S_OK;
  });
}

STDMETHODIMP BrowseFace::MapPropertyToPage(DISPID id, CLSID* page) {
  if (page == nullptr) return E_POINTER;
  *page = CLSID_NULL;
  return guarded(browsed(), [&]() -> HRESULT {
    for (const auto& each : browsed_properties(browsed())) {
      if (each.id != id) continue;
      const CLSID* const own = own_page(each);
      const CLSID* const found = own != nullptr ? own : stock_page(each.type);
      if (found == nullptr) continue;
      *page = *found;
      return S_OK;
    }
    return PERPROP_E_NOPAGEAVAILABLE;
  });
}

STDMETHODIMP BrowseFace::GetDisplayString(DISPID id, BSTR* out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  return guarded(browsed(), [&]() -> HRESULT {
    const auto choices = property_choices(browsed(), id);
    if (choices.empty()) return S_FALSE;
    Variant value;
    DISPPARAMS none{};
    const HRESULT hr = object_.dispatch()->Invoke(
        id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &value, nullptr, nullptr);
    if (FAILED(hr) || !value.change(VT_I4)) return S_FALSE;
    for (const EnumChoice& choice : choices) {
      if (choice.value != V_I4(&value)) continue;
      *out = Bstr(choice.name).detach();
      return S_OK;
    }
    return S_FALSE;
  });
}

STDMETHODIMP BrowseFace::GetPredefinedStrings(DISPID id, CALPOLESTR* names, CADWORD* cookies) {
  if (names == nullptr || cookies == nullptr) return E_POINTER;
  *names = {};
  *cookies = {};
  return guarded(browsed(), [&]() -> HRESULT {
    const auto choices = property_choices(browsed(), id);
    if (choices.empty()) return E_NOTIMPL;
    names->pElems = task_array<LPOLESTR>(choices.size());
    cookies->pElems = task_array<DWORD>(choices.size());
    if (names->pElems == nullptr || cookies->pElems == nullptr) {
      CoTaskMemFree(names->pElems);
      CoTaskMemFree(cookies->pElems);
      *names = {};
      *cookies = {};
      return E_OUTOFMEMORY;
    }
    for (size_t i = 0; i < choices.size(); ++i) {
      names->pElems[i] = task_text(choices[i].name);
      cookies->pElems[i] = static_cast<DWORD>(i);
    }
    names->cElems = cookies->cElems = static_cast<ULONG>(choices.size());
    return S_OK;
  });
}

STDMETHODIMP BrowseFace::GetPredefinedValue(DISPID id, DWORD cookie, VARIANT* out) {
  if (out == nullptr) return E_POINTER;
  VariantInit(out);
  return guarded(browsed(), [&]() -> HRESULT {
    const auto choices = property_choices(browsed(), id);
    if (cookie >= choices.size()) return E_INVALIDARG;
    V_VT(out) = VT_I4;
    V_I4(out) = choices[cookie].value;
    return S_OK;
  });
}

}  // namespace kestrelon
