#include "imaging/c32bpp_dib/automation_bytes_win.h"

#include <cstring>

namespace kestrelon {
namespace {

// The variable at the end of a chain of references.
VARIANT& final_variable(VARIANT* variable) {
  while (V_VT(variable) == (VT_VARIANT | VT_BYREF)) variable = V_VARIANTREF(variable);
  return *variable;
}

// Puts a value in place of what a variable holds, through a reference where there is one.
void give(VARIANT* out, Variant value) {
  if (out == nullptr || is_missing(*out)) return;
  VARIANT& variable = final_variable(out);
  if ((V_VT(&variable) & VT_BYREF) == 0) {
    VariantClear(&variable);
    variable = static_cast<const VARIANT&>(value);
    VariantInit(&value);
    return;
  }
  const auto type = static_cast<VARTYPE>(V_VT(&variable) & ~VT_BYREF);
  if (!value.change(type)) return;
  switch (type) {
    case VT_I2:
      *V_I2REF(&variable) = V_I2(&value);
      break;
    case VT_I4:
      *V_I4REF(&variable) = V_I4(&value);
      break;
    case VT_R4:
      *V_R4REF(&variable) = V_R4(&value);
      break;
    case VT_R8:
      *V_R8REF(&variable) = V_R8(&value);
      break;
    case VT_DISPATCH:
      std::swap(*V_DISPATCHREF(&variable), V_DISPATCH(&value));
      break;
    default:
      break;
  }
}

}  // namespace

ArrayBytes::ArrayBytes(SAFEARRAY* array, UINT dimensions) {
  if (array == nullptr || SafeArrayGetDim(array) > dimensions || SafeArrayGetElemsize(array) != 1) {
    return;
  }
  void* data = nullptr;
  if (FAILED(SafeArrayAccessData(array, &data))) return;
  array_ = array;
  size_t count = data == nullptr ? 0 : 1;
  for (UINT i = 0; i < SafeArrayGetDim(array); ++i) count *= array->rgsabound[i].cElements;
  bytes_ = {static_cast<const uint8_t*>(data), count};
}

ArrayBytes::~ArrayBytes() {
  if (array_ != nullptr) SafeArrayUnaccessData(array_);
}

LONG ArrayBytes::lower_bound() const {
  LONG bound = 0;
  SafeArrayGetLBound(array_, 1, &bound);
  return bound;
}

bool give_bytes(SAFEARRAY** out, std::span<const uint8_t> bytes, size_t row_length) {
  if (out == nullptr) return false;
  if (*out != nullptr && ((*out)->fFeatures & (FADF_STATIC | FADF_FIXEDSIZE)) != 0) return false;
  SAFEARRAYBOUND bounds[2] = {{static_cast<ULONG>(bytes.size()), 0}, {0, 0}};
  if (row_length != 0) {
    bounds[0].cElements = static_cast<ULONG>(row_length);
    bounds[1].cElements = static_cast<ULONG>(bytes.size() / row_length);
  }
  SAFEARRAY* const array = SafeArrayCreate(VT_UI1, row_length != 0 ? 2 : 1, bounds);
  if (array == nullptr) return false;
  if (!bytes.empty()) std::memcpy(array->pvData, bytes.data(), bytes.size());
  if (*out != nullptr && FAILED(SafeArrayDestroy(*out))) {
    SafeArrayDestroy(array);
    return false;
  }
  *out = array;
  return true;
}

SAFEARRAY* array_in(const VARIANT& argument) {
  const VARIANT& inner = final_variable(const_cast<VARIANT*>(&argument));
  if ((V_VT(&inner) & VT_ARRAY) == 0) return nullptr;
  return (V_VT(&inner) & VT_BYREF) != 0 ? *V_ARRAYREF(&inner) : V_ARRAY(&inner);
}

bool give_bytes(VARIANT* out, std::span<const uint8_t> bytes) {
  if (out == nullptr || is_missing(*out)) return false;
  VARIANT& variable = final_variable(out);
  if (V_VT(&variable) == (VT_ARRAY | VT_UI1 | VT_BYREF))
    return give_bytes(V_ARRAYREF(&variable), bytes);
  if ((V_VT(&variable) & VT_BYREF) != 0) return false;
  SAFEARRAY* array = nullptr;
  if (!give_bytes(&array, bytes)) return false;
  VariantClear(&variable);
  V_VT(&variable) = VT_ARRAY | VT_UI1;
  V_ARRAY(&variable) = array;
  return true;
}

void give_icon_sizes(VARIANT* out, std::span<const IconSize> sizes) {
  SAFEARRAYBOUND bounds[2] = {{static_cast<ULONG>(sizes.size()), 0}, {3, 0}};
  SAFEARRAY* const array = SafeArrayCreate(VT_VARIANT, 2, bounds);
  if (array == nullptr) throw std::bad_alloc();
  for (size_t i = 0; i < sizes.size(); ++i) {
    const long facts[3] = {sizes[i].Width, sizes[i].Height, sizes[i].bitDepth};
    for (LONG column = 0; column < 3; ++column) {
      LONG place[2] = {static_cast<LONG>(i), column};
      Variant value(facts[column]);
      SafeArrayPutElement(array, place, &value);
    }
  }
  give_array(out, array);
}

long number_in(const VARIANT* variable, long otherwise) {
  Variant value;
  if (variable == nullptr || is_missing(*variable)) return otherwise;
  copy_value(value, *variable);
  if (V_VT(&value) == VT_DISPATCH || !value.change(VT_I4)) return otherwise;
  return V_I4(&value);
}

void give_number(VARIANT* out, long value) {
  give(out, Variant(value));
}

void give_object(VARIANT* out, IDispatch* object) {
  give(out, Variant(object));
}

void give_array(VARIANT* out, SAFEARRAY* array) {
  Variant value;
  V_VT(&value) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(&value) = array;
  give(out, std::move(value));
}

void copy_value(Variant& out, const VARIANT& argument) {
  VariantCopyInd(out.put(), const_cast<VARIANT*>(&argument));
}

ComPtr<IDispatch> object_in(const VARIANT* variable) {
  if (variable == nullptr) return {};
  const VARIANT& inner = final_variable(const_cast<VARIANT*>(variable));
  if (V_VT(&inner) == VT_DISPATCH) return ComPtr<IDispatch>(V_DISPATCH(&inner));
  if (V_VT(&inner) == (VT_DISPATCH | VT_BYREF)) return ComPtr<IDispatch>(*V_DISPATCHREF(&inner));
  if (V_VT(&inner) == VT_UNKNOWN) return query<IDispatch>(V_UNKNOWN(&inner));
  return {};
}

bool is_missing(const VARIANT& argument) {
  return V_VT(&argument) == VT_ERROR && V_ERROR(&argument) == DISP_E_PARAMNOTFOUND;
}

}  // namespace kestrelon
