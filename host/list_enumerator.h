// The COM enumerator over a list that was taken when it was made.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "host/late_bound.h"

namespace kestrelon::host {

inline void copy_to_caller(const Variant& held, VARIANT& out) {
  VariantInit(&out);
  copy_value(held, out);
}
inline void copy_to_caller(const ComPtr<IUnknown>& held, IUnknown*& out) {
  held.copy_to(&out);
}

/// `Raw` is what Next fills; `Held` owns it and gives copies through copy_to_caller().
template <class I, class Raw, class Held>
class ListEnumerator final : public ComObject<I> {
 public:
  explicit ListEnumerator(std::vector<Held> items) : items_(std::move(items)) {}

  HRESULT STDMETHODCALLTYPE Next(ULONG count, Raw* out, ULONG* fetched) override {
    if (!out) return E_POINTER;
    ULONG done = 0;
    while (done < count && next_ < items_.size()) copy_to_caller(items_[next_++], out[done++]);
    if (fetched) *fetched = done;
    return done == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    const size_t step = std::min<size_t>(count, items_.size() - next_);
    next_ += step;
    return step == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    next_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(I** out) override {
    if (!out) return E_POINTER;
    auto copy = make_com<ListEnumerator>(items_);
    copy->next_ = next_;
    *out = copy.detach();
    return S_OK;
  }

 private:
  std::vector<Held> items_;
  size_t next_ = 0;
};

}  // namespace kestrelon::host
