// Arguments and errors of the image list classes as automation has them.
#pragma once

#include <optional>

#include "imaging/c32bpp_dib/automation_bytes_win.h"
#include "imaging/image_list/keyed_items.h"
#include "imaging/image_list/list_error.h"

namespace kestrelon {

/// Runs `body`; its numbered errors go on to the caller as automation errors.
template <class Body>
auto raising(Body&& body) {
  try {
    return body();
  } catch (const ImageListError& error) {
    throw ComError(numbered_error(error.number), error.description, error.source);
  }
}

/// The argument was left out; an empty variable counts as left out.
inline bool is_omitted(const VARIANT& argument) {
  Variant value;
  if (is_missing(argument)) return true;
  copy_value(value, argument);
  return V_VT(&value) == VT_EMPTY || (V_VT(&value) == VT_ERROR && is_missing(value));
}

/// What an Index argument names: a text is a key, a number a position. Anything else names nothing.
inline ItemIndex item_index(const VARIANT& argument) {
  Variant value;
  copy_value(value, argument);
  if (V_VT(&value) == VT_BSTR) return to_wstring(V_BSTR(&value));
  const bool plain = V_VT(&value) != VT_DISPATCH && V_VT(&value) != VT_UNKNOWN;
  return plain && value.change(VT_I4) ? int64_t{V_I4(&value)} : int64_t{0};
}

}  // namespace kestrelon
