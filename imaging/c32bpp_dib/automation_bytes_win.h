// Arrays and output arguments of automation calls.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "base/com_win.h"
#include "imaging/dib_arguments.h"

namespace kestrelon {

/// The bytes of an array for the time of this object; empty if it is no array of bytes.
class ArrayBytes {
 public:
  /// Arrays of more than `dimensions` dimensions count as none.
  ArrayBytes(SAFEARRAY* array, UINT dimensions);
  ~ArrayBytes();
  ArrayBytes(const ArrayBytes&) = delete;
  ArrayBytes& operator=(const ArrayBytes&) = delete;
  explicit operator bool() const { return array_ != nullptr; }
  std::span<const uint8_t> bytes() const { return bytes_; }
  /// The index of the first byte.
  LONG lower_bound() const;

 private:
  SAFEARRAY* array_ = nullptr;
  std::span<const uint8_t> bytes_;
};

/// Replaces `*out` by a new array: of one dimension, or with a `row_length` above 0 of two (byte in
/// row, row), from 0. False, and `*out` as it was, if it is fixed or in use.
bool give_bytes(SAFEARRAY** out, std::span<const uint8_t> bytes, size_t row_length = 0);

/// The array in an argument, wherever it lies, or null; it stays the caller's.
SAFEARRAY* array_in(const VARIANT& argument);
/// Makes a variable, or the array that it refers to, an array of these bytes. False if it can hold
/// none.
bool give_bytes(VARIANT* out, std::span<const uint8_t> bytes);
/// Answers pictures of an icon as an array of (picture, fact) with width, height and depth, from 0.
void give_icon_sizes(VARIANT* out, std::span<const IconSize> sizes);
/// The number in a variable, or `otherwise`.
long number_in(const VARIANT* variable, long otherwise);

/// Writes into a variable handed over as VARIANT*, whatever it holds; a missing argument is left.
void give_number(VARIANT* out, long value);
void give_object(VARIANT* out, IDispatch* object);
void give_array(VARIANT* out, SAFEARRAY* array);  ///< takes the array over

/// A copy of what an argument holds, references followed.
void copy_value(Variant& out, const VARIANT& argument);

/// The object in a variable, or empty.
ComPtr<IDispatch> object_in(const VARIANT* variable);

bool is_missing(const VARIANT& argument);

}  // namespace kestrelon
