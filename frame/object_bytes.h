// Values of a property bag as bytes, fonts and pictures included.
#pragma once

#include "base/com_win.h"
#include "base/property_stream.h"

namespace kestrelon {

/// The record of a value; an object that cannot be saved gives a record of type VT_EMPTY.
PropertyRecord to_record(std::wstring_view key, const VARIANT& value);

/// The value of a record. Bytes that do not fit their type, and objects other than fonts and
/// pictures, give an empty value: a stream can name any class, and none is created on its word.
Variant from_record(const PropertyRecord& record);

}  // namespace kestrelon
