// Arrays that a method fills for its caller.
#pragma once

#include <new>

#include "base/com_win.h"

namespace kestrelon {

/// Puts a new array, from 0, in place of the caller's; `put(array, index, item)` stores an item.
template <class Items, class Put>
void fill_array(SAFEARRAY** place, VARTYPE type, const Items& items, Put&& put) {
  if (place == nullptr) throw ComError(E_POINTER);
  SAFEARRAY* const array = SafeArrayCreateVector(type, 0, static_cast<ULONG>(items.size()));
  if (array == nullptr) throw std::bad_alloc();
  for (LONG i = 0; i < static_cast<LONG>(items.size()); ++i)
    put(array, i, items[static_cast<size_t>(i)]);
  if (*place != nullptr && FAILED(SafeArrayDestroy(*place))) {
    SafeArrayDestroy(array);
    throw ComError(DISP_E_ARRAYISLOCKED);
  }
  *place = array;
}

}  // namespace kestrelon
