// Bytes as a stream of the system, for decoders that want one.
#pragma once

#include <windows.h>

#include <objidl.h>

#include <cstdint>
#include <span>
#include <vector>

#include "base/com_win.h"

namespace kestrelon {

/// A stream over a copy of `bytes`, at its start; null when memory is short.
ComPtr<IStream> stream_over(std::span<const uint8_t> bytes);
/// All bytes of a stream into `out`; false if it cannot be read whole.
bool stream_content(IStream& stream, std::vector<uint8_t>& out);

}  // namespace kestrelon
