// Connection points: who listens to an object, and how they are told.
#pragma once

#include <ocidl.h>

#include <vector>

#include "base/com_win.h"
#include "base/counted_win.h"

namespace kestrelon {

/// The listeners of one source interface of an object, and the connection point they reach it by.
/// Lives inside its owner and shares the owner's reference count.
class ConnectionPoint final : public IConnectionPoint {
 public:
  /// `owner` holds this point and outlives it.
  ConnectionPoint(IConnectionPointContainer& owner, const IID& iid) : owner_(owner), iid_(iid) {}

  const IID& iid() const { return iid_; }
  bool empty() const { return sinks_.empty(); }
  /// The listeners of the moment, referenced, so that one may leave while another is being told.
  template <class Sink>
  std::vector<ComPtr<Sink>> sinks() const {
    std::vector<ComPtr<Sink>> out;
    out.reserve(sinks_.size());
    for (const auto& entry : sinks_) out.emplace_back(static_cast<Sink*>(entry.sink.get()));
    return out;
  }
  /// Calls `method` of every listener with `arguments`, given in declaration order by reference.
  /// What a listener answers, errors included, does not concern the source.
  void fire(DISPID method, std::vector<VARIANT> arguments = {});
  void disconnect_all() { sinks_.clear(); }

  STDMETHODIMP QueryInterface(REFIID iid, void** out) override;
  STDMETHODIMP_(ULONG) AddRef() override { return owner_.AddRef(); }
  STDMETHODIMP_(ULONG) Release() override { return owner_.Release(); }
  STDMETHODIMP GetConnectionInterface(IID* iid) override;
  STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** out) override;
  STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
  STDMETHODIMP Unadvise(DWORD cookie) override;
  STDMETHODIMP EnumConnections(IEnumConnections** out) override;

 private:
  struct Entry {
    DWORD cookie;
    ComPtr<IUnknown> sink;  // the pointer of interface iid_ (IDispatch for event interfaces)
  };

  IConnectionPointContainer& owner_;
  const IID iid_;
  std::vector<Entry> sinks_;
  DWORD last_cookie_ = 0;
};

/// Event arguments go by reference, so that a listener can change them.
inline VARIANT by_reference_as(VARTYPE type, void* value) {
  VARIANT out;
  V_VT(&out) = static_cast<VARTYPE>(type | VT_BYREF);
  V_BYREF(&out) = value;
  return out;
}
inline VARIANT by_reference(short& value) {
  return by_reference_as(VT_I2, &value);
}
inline VARIANT by_reference(long& value) {
  return by_reference_as(VT_I4, &value);
}
/// OLE_COLOR, which scripts know as a Long.
inline VARIANT by_reference(unsigned long& value) {
  return by_reference_as(VT_I4, &value);
}
inline VARIANT by_reference(float& value) {
  return by_reference_as(VT_R4, &value);
}
inline VARIANT by_reference(double& value) {
  return by_reference_as(VT_R8, &value);
}
inline VARIANT by_reference(BSTR& value) {
  return by_reference_as(VT_BSTR, &value);
}
inline VARIANT by_reference(VARIANT& value) {
  return by_reference_as(VT_VARIANT, &value);
}
inline VARIANT by_reference(IDispatch*& value) {
  return by_reference_as(VT_DISPATCH, &value);
}
/// VARIANT_BOOL is a short to the compiler, so it has a name of its own.
inline VARIANT by_reference_bool(VARIANT_BOOL& value) {
  return by_reference_as(VT_BOOL, &value);
}

/// An enumerator over a list of referenced interfaces or values made at creation.
/// Enumerator: IEnumConnections, IEnumConnectionPoints, IEnumOLEVERB, IEnumVARIANT, IEnumUnknown.
template <class Interface, class Item, class Copy, class Clear>
class ListEnumerator final : public Counted<Interface> {
 public:
  ListEnumerator(std::vector<Item> items, Copy copy, Clear clear)
      : items_(std::move(items)), copy_(copy), clear_(clear) {}
  STDMETHODIMP Next(ULONG count, Item* out, ULONG* fetched) override {
    if (out == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
    ULONG done = 0;
    while (done < count && next_ < items_.size()) copy_(items_[next_++], out[done++]);
    if (fetched != nullptr) *fetched = done;
    return done == count ? S_OK : S_FALSE;
  }
  STDMETHODIMP Skip(ULONG count) override {
    const size_t left = items_.size() - next_;
    next_ += count < left ? count : left;
    return count <= left ? S_OK : S_FALSE;
  }
  STDMETHODIMP Reset() override {
    next_ = 0;
    return S_OK;
  }
  STDMETHODIMP Clone(Interface** out) override {
    if (out == nullptr) return E_POINTER;
    return guarded(__uuidof(Interface), [&] {
      std::vector<Item> items(items_.size());
      for (size_t i = 0; i < items_.size(); ++i) copy_(items_[i], items[i]);
      auto* const clone = new ListEnumerator(std::move(items), copy_, clear_);
      clone->next_ = next_;
      clone->AddRef();
      *out = clone;
    });
  }

 private:
  ~ListEnumerator() override {
    for (Item& item : items_) clear_(item);
  }

  std::vector<Item> items_;
  Copy copy_;
  Clear clear_;
  size_t next_ = 0;
};

/// Makes a ListEnumerator with one reference for the caller; takes over what `items` holds.
template <class Interface, class Item, class Copy, class Clear>
Interface* make_enumerator(std::vector<Item> items, Copy copy, Clear clear) {
  auto* const made =
      new ListEnumerator<Interface, Item, Copy, Clear>(std::move(items), copy, clear);
  made->AddRef();
  return made;
}

}  // namespace kestrelon
