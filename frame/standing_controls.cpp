#include "frame/standing_controls.h"

#include <olectl.h>

#include <algorithm>

namespace kestrelon {
namespace {

constexpr wchar_t kBarred[] = L"Kestrelon2012.InputBarred";  // a property of the window
constexpr size_t kMostControls = 10000;  // of a form; a container that tells of more is mistaken

// What the container adds to a control tells its place among the others.
long tab_index_of(IUnknown* object) {
  const auto ole = query<IOleObject>(object);
  ComPtr<IOleClientSite> site;
  if (!ole || FAILED(ole->GetClientSite(site.put())) || !site) return 0;
  const auto control_site = site.as<IOleControlSite>();
  ComPtr<IDispatch> extender;
  if (!control_site || FAILED(control_site->GetExtendedControl(extender.put())) || !extender)
    return 0;
  wchar_t text[] = L"TabIndex";
  LPOLESTR name = text;
  DISPID id = DISPID_UNKNOWN;
  DISPPARAMS none{};
  Variant index;
  if (FAILED(extender->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id)) ||
      FAILED(extender->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                              index.put(), nullptr, nullptr)) ||
      !index.change(VT_I4))
    return 0;
  return V_I4(&index);
}

}  // namespace

std::vector<StandingControl> standing_controls(IOleClientSite* site, HWND parent) {
  std::vector<StandingControl> out;
  ComPtr<IOleContainer> container;
  ComPtr<IEnumUnknown> objects;
  if (site == nullptr || parent == nullptr || FAILED(site->GetContainer(container.put())) ||
      !container || FAILED(container->EnumObjects(OLECONTF_EMBEDDINGS, objects.put())) || !objects)
    return out;
  ComPtr<IUnknown> object;
  for (size_t i = 0; i < kMostControls && objects->Next(1, object.put(), nullptr) == S_OK; ++i) {
    const auto place = object.as<IOleWindow>();
    HWND window = nullptr;
    if (!place || FAILED(place->GetWindow(&window)) || GetParent(window) != parent) continue;
    out.push_back({object, window, tab_index_of(object.get())});
  }
  std::ranges::stable_sort(out, {}, &StandingControl::tab_index);
  return out;
}

void set_input_barred(HWND window, bool barred) {
  if (barred)
    SetPropW(window, kBarred, reinterpret_cast<HANDLE>(1));
  else
    RemovePropW(window, kBarred);
}

bool input_barred(HWND window) {
  return GetPropW(window, kBarred) != nullptr;
}

}  // namespace kestrelon
