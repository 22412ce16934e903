// What a JPEG file says of its size, before anyone decodes it.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "imaging/image_view.h"

namespace kestrelon {

/// Width and height out of the frame header (x and y are 0), or nothing if `file` is no JPEG or
/// ends before that header. A height of 0 is told later in the file.
std::optional<ImageRect> jpeg_size(std::span<const uint8_t> file);

}  // namespace kestrelon
