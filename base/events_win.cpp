#include "base/events_win.h"

#include <olectl.h>

#include <algorithm>

namespace kestrelon {

void ConnectionPoint::fire(DISPID method, std::vector<VARIANT> arguments) {
  if (sinks_.empty()) return;
  std::reverse(arguments.begin(), arguments.end());  // DISPPARAMS hold the last argument first
  for (const auto& sink : sinks<IDispatch>()) {
    DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    Variant result;
    EXCEPINFO exception{};
    sink->Invoke(method, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &result,
                 &exception, nullptr);
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
  }
}

STDMETHODIMP ConnectionPoint::QueryInterface(REFIID iid, void** out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  if (iid != IID_IUnknown && iid != IID_IConnectionPoint) return E_NOINTERFACE;
  *out = static_cast<IConnectionPoint*>(this);
  AddRef();
  return S_OK;
}

STDMETHODIMP ConnectionPoint::GetConnectionInterface(IID* iid) {
  if (iid == nullptr) return E_POINTER;
  *iid = iid_;
  return S_OK;
}

STDMETHODIMP ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** out) {
  if (out == nullptr) return E_POINTER;
  owner_.AddRef();
  *out = &owner_;
  return S_OK;
}

STDMETHODIMP ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
  if (sink == nullptr || cookie == nullptr) return E_POINTER;
  *cookie = 0;
  return guarded(IID_IConnectionPoint, [&]() -> HRESULT {
    ComPtr<IUnknown> wanted;
    if (FAILED(sink->QueryInterface(iid_, wanted.put_void())) &&
        (iid_ == IID_IPropertyNotifySink ||
         FAILED(sink->QueryInterface(IID_IDispatch, wanted.put_void())))) {
      return CONNECT_E_CANNOTCONNECT;
    }
    sinks_.push_back({++last_cookie_, std::move(wanted)});
    *cookie = last_cookie_;
    return S_OK;
  });
}

STDMETHODIMP ConnectionPoint::Unadvise(DWORD cookie) {
  const auto found = std::find_if(sinks_.begin(), sinks_.end(),
                                  [&](const Entry& entry) { return entry.cookie == cookie; });
  if (found == sinks_.end()) return CONNECT_E_NOCONNECTION;
  const ComPtr<IUnknown> last = std::move(found->sink);  // released once the list is whole again
  sinks_.erase(found);
  return S_OK;
}

STDMETHODIMP ConnectionPoint::EnumConnections(IEnumConnections** out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  return guarded(IID_IConnectionPoint, [&] {
    std::vector<CONNECTDATA> items;
    items.reserve(sinks_.size());
    for (const Entry& entry : sinks_) {
      entry.sink->AddRef();
      items.push_back({entry.sink.get(), entry.cookie});
    }
    *out = make_enumerator<IEnumConnections>(
        std::move(items),
        [](const CONNECTDATA& from, CONNECTDATA& to) {
          to = from;
          to.pUnk->AddRef();
        },
        [](CONNECTDATA& item) { item.pUnk->Release(); });
  });
}

}  // namespace kestrelon
