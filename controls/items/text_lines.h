// Several texts in one argument.
#pragma once

#include <string>
#include <vector>

#include "base/com_win.h"

namespace kestrelon {

/// The texts of an array of one dimension (of texts or of anything that reads as one), or the lines
/// of a text: CR LF, LF or CR ends one, and an end after the last begins no other.
std::vector<std::wstring> texts_in(const VARIANT& value);

}  // namespace kestrelon
