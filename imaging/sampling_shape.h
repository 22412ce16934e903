// How a source rectangle comes to the destination.
#pragma once

#include <cstdint>

namespace kestrelon {

struct SamplingShape {
  int32_t dest_width = 0, dest_height = 0;  ///< of the whole picture at the destination, above 0
  int32_t first_column = 0;                 ///< first visible destination column
  int32_t columns = 0;                      ///< visible columns
  int32_t origin_x = 0, origin_y = 0;       ///< where the source rectangle lies in its image
  bool mirror_x = false, mirror_y = false;
  bool high_quality = false;  ///< bilinear instead of nearest
};

}  // namespace kestrelon
