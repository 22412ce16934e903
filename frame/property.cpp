#include "frame/property.h"

#include <cstring>

namespace kestrelon {

void PropertyBase::read(BagReader& bag) {
  Variant value = empty_value();
  bag.read(key(), value) ? load(value) : reset();
}

}  // namespace kestrelon

namespace kestrelon::property_detail {

std::vector<uint8_t> Automation<std::vector<uint8_t>>::from(const VARIANT& v) {
  SAFEARRAY* const array = V_ARRAY(&v);
  if (array == nullptr || SafeArrayGetDim(array) != 1) return {};
  long low = 0, high = -1;
  SafeArrayGetLBound(array, 1, &low);
  SafeArrayGetUBound(array, 1, &high);
  void* data = nullptr;
  if (high < low || FAILED(SafeArrayAccessData(array, &data))) return {};
  const auto* const bytes = static_cast<const uint8_t*>(data);
  std::vector<uint8_t> out(bytes, bytes + (static_cast<size_t>(high) - low + 1));
  SafeArrayUnaccessData(array);
  return out;
}

Variant Automation<std::vector<uint8_t>>::to(const std::vector<uint8_t>& value) {
  Variant out;
  SAFEARRAY* const array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(value.size()));
  if (array == nullptr) throw std::bad_alloc();
  V_VT(&out) = kType;
  V_ARRAY(&out) = array;
  void* data = nullptr;
  if (!value.empty() && SUCCEEDED(SafeArrayAccessData(array, &data))) {
    std::memcpy(data, value.data(), value.size());
    SafeArrayUnaccessData(array);
  }
  return out;
}

}  // namespace kestrelon::property_detail
