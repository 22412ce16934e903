// The counted base of the host's own COM objects.
#pragma once

#include "base/com_win.h"

namespace kestrelon::host {

/// Implements IUnknown for a class that stands behind the listed interfaces. The object is born
/// with one reference, which the creator owns; make_com() takes it over.
template <class First, class... Rest>
class ComObject : public First, public Rest... {
 public:
  ComObject() = default;
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (IsEqualIID(iid, IID_IUnknown)) {
      *out = static_cast<First*>(this);
    } else if (!(offer<First>(iid, out) || ... || offer<Rest>(iid, out)) && !answer(iid, out)) {
      return E_NOINTERFACE;
    }
    static_cast<IUnknown*>(*out)->AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  virtual ~ComObject() = default;

  /// Interfaces that are answered besides the listed ones, such as the bases of a derived
  /// interface. Stores an uncounted pointer and answers true.
  virtual bool answer(REFIID, void**) { return false; }

 private:
  template <class I>
  bool offer(REFIID iid, void** out) {
    if (!IsEqualIID(iid, __uuidof(I))) return false;
    *out = static_cast<I*>(this);
    return true;
  }

  ULONG references_ = 1;
};

template <class T, class... Args>
ComPtr<T> make_com(Args&&... args) {
  ComPtr<T> object;
  object.attach(new T(std::forward<Args>(args)...));
  return object;
}

}  // namespace kestrelon::host
