#include "server/class_factory.h"

namespace kestrelon {
namespace {

class ClassFactory final : public IClassFactory {
 public:
  explicit ClassFactory(const ServerClass& entry) : entry_(entry) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** out) override {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    if (iid != IID_IUnknown && iid != IID_IClassFactory) return E_NOINTERFACE;
    *out = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return InterlockedIncrement(&references_); }
  STDMETHODIMP_(ULONG) Release() override {
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0) delete this;
    return left;
  }

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** out) override {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    // An aggregating object must ask for the inner identity, or it could never release it.
    if (outer != nullptr && iid != IID_IUnknown) return CLASS_E_NOAGGREGATION;
    return guarded(iid, [&]() -> HRESULT {
      AutomationObject* const object = entry_.create();
      if (outer != nullptr) object->aggregate_into(outer);
      const HRESULT hr = object->own_unknown()->QueryInterface(iid, out);
      object->own_unknown()->Release();
      return hr;
    });
  }
  STDMETHODIMP LockServer(BOOL lock) override {
    lock ? module_lock() : module_unlock();
    return S_OK;
  }

 private:
  const ServerClass& entry_;
  LONG references_ = 1;
  ModuleLock module_lock_;
};

}  // namespace

IClassFactory* make_class_factory(const ServerClass& entry) {
  return new ClassFactory(entry);
}

}  // namespace kestrelon
