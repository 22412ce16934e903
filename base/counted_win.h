// Small objects that the library hands to the system: sinks and listeners with one interface.
#pragma once

#include "base/com_win.h"
#include "base/module_win.h"

namespace kestrelon {

/// IUnknown for an object behind one interface, born without a reference: the first ComPtr takes
/// one. Deleted with its last reference; until then the library stays loaded.
template <class Interface>
class Counted : public Interface {
 public:
  Counted() = default;
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

  STDMETHODIMP QueryInterface(REFIID iid, void** out) override {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    if (iid != IID_IUnknown && iid != __uuidof(Interface)) return E_NOINTERFACE;
    *out = static_cast<Interface*>(this);
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  virtual ~Counted() = default;

 private:
  ULONG references_ = 0;
  ModuleLock module_lock_;
};

}  // namespace kestrelon
